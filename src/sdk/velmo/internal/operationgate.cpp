// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/operationgate.h"

#include "genapi/exceptions.h"

#include <algorithm>

namespace Velmo::Internal
{

bool COperationGate::RunsOnThisThread(unsigned int kinds) const
{
    return std::any_of(m_callbacks.begin(), m_callbacks.end(),
                       [kinds](const auto& callback)
                       { return callback.first == std::this_thread::get_id() && (callback.second & kinds) != 0; });
}

bool COperationGate::RunsElsewhere(ECallbackKind kind) const
{
    return std::any_of(m_callbacks.begin(), m_callbacks.end(),
                       [kind](const auto& callback)
                       { return callback.first != std::this_thread::get_id() && callback.second == kind; });
}

bool COperationGate::Enter(unsigned int request)
{
    const std::thread::id self = std::this_thread::get_id();
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [&] { return m_depth == 0 || m_owner == self || RunsOnThisThread(m_awaited); });
    if (m_depth != 0 && m_owner != self)
    {
        if (request == Request_None)
        {
            GENICAM_THROW(LogicalErrorException,
                          "The camera is being stopped, closed or destroyed by another thread that waits for this "
                          "callback to return.");
        }
        m_requests |= request;
        return false;
    }
    m_owner = self;
    ++m_depth;
    return true;
}

unsigned int COperationGate::Leave()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_depth == 1 && m_requests != 0)
    {
        return std::exchange(m_requests, 0U);
    }
    if (--m_depth == 0)
    {
        m_owner = std::thread::id();
        m_changed.notify_all();
    }
    return 0;
}

void COperationGate::Post(unsigned int request)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_requests |= request;
}

void COperationGate::ClearRequest(unsigned int request)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_requests &= ~request;
}

void COperationGate::EnterCallback(ECallbackKind kind)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_callbacks.emplace_back(std::this_thread::get_id(), kind);
}

void COperationGate::LeaveCallback(ECallbackKind kind)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = std::find(m_callbacks.begin(), m_callbacks.end(), std::pair(std::this_thread::get_id(), kind));
    if (found != m_callbacks.end())
    {
        m_callbacks.erase(found);
    }
    m_changed.notify_all();
}

void COperationGate::AwaitCallbacks(ECallbackKind kind)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const unsigned int before = m_awaited;
    m_awaited |= kind;
    m_changed.notify_all();
    m_changed.wait(lock, [&] { return !RunsElsewhere(kind); });
    m_awaited = before;
}

bool COperationGate::IsOwner() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_depth != 0 && m_owner == std::this_thread::get_id();
}

unsigned int COperationGate::SetAwaited(unsigned int kinds)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_changed.notify_all();
    return std::exchange(m_awaited, kinds);
}

} // namespace Velmo::Internal
