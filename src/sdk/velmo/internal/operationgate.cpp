// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/operationgate.h"

#include "genapi/exceptions.h"

#include <algorithm>
#include <utility>

namespace Velmo::Internal
{

using Lock = std::lock_guard<std::mutex>;

const CWaitGraph::Threads& COperationGate::RunnersOf(ECallbackKind kind) const
{
    return m_callbacks[kind == CallbackKind_Loop ? 0 : 1];
}

CWaitGraph::Threads& COperationGate::RunnersOf(ECallbackKind kind)
{
    return m_callbacks[kind == CallbackKind_Loop ? 0 : 1];
}

bool COperationGate::IsOwnedByThisThread() const
{
    return m_depth != 0 && m_owner.front() == std::this_thread::get_id();
}

bool COperationGate::IsExempt() const
{
    const auto runsHere = [this](ECallbackKind kind)
    {
        const auto& runners = RunnersOf(kind);
        return (m_exempt & kind) != 0 &&
               std::find(runners.begin(), runners.end(), std::this_thread::get_id()) != runners.end();
    };
    return runsHere(CallbackKind_Loop) || runsHere(CallbackKind_Removal);
}

bool COperationGate::RunsElsewhere(ECallbackKind kind) const
{
    const auto& runners = RunnersOf(kind);
    return std::any_of(runners.begin(), runners.end(),
                       [](std::thread::id runner) { return runner != std::this_thread::get_id(); });
}

bool COperationGate::Enter(unsigned int request)
{
    std::unique_lock<std::mutex> lock(m_waits->mutex);
    const auto mayGoOn = [this]
    {
        return m_depth == 0 || IsOwnedByThisThread() || IsExempt();
    };
    if (!mayGoOn())
    {
        const CWaitGraph::CWaiting waiting(*m_waits, m_owner);
        m_changed.wait(lock, mayGoOn);
    }
    if (m_depth != 0 && !IsOwnedByThisThread())
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
    m_owner.assign(1, std::this_thread::get_id());
    ++m_depth;
    return true;
}

unsigned int COperationGate::Leave()
{
    const Lock lock(m_waits->mutex);
    if (m_depth == 1 && m_requests != 0)
    {
        return std::exchange(m_requests, 0U);
    }
    if (--m_depth == 0)
    {
        m_owner.clear();
        m_changed.notify_all();
    }
    return 0;
}

void COperationGate::Post(unsigned int request)
{
    const Lock lock(m_waits->mutex);
    m_requests |= request;
}

void COperationGate::ClearRequest(unsigned int request)
{
    const Lock lock(m_waits->mutex);
    m_requests &= ~request;
}

void COperationGate::EnterCallback(ECallbackKind kind)
{
    const Lock lock(m_waits->mutex);
    RunnersOf(kind).push_back(std::this_thread::get_id());
}

void COperationGate::LeaveCallback(ECallbackKind kind)
{
    const Lock lock(m_waits->mutex);
    auto& runners = RunnersOf(kind);
    const auto found = std::find(runners.begin(), runners.end(), std::this_thread::get_id());
    if (found != runners.end())
    {
        runners.erase(found);
    }
    m_changed.notify_all();
}

void COperationGate::AwaitCallbacks(ECallbackKind kind)
{
    std::unique_lock<std::mutex> lock(m_waits->mutex);
    const unsigned int before = SetExempt(m_exempt | kind);
    if (RunsElsewhere(kind))
    {
        const CWaitGraph::CWaiting waiting(*m_waits, RunnersOf(kind));
        m_changed.wait(lock, [&] { return !RunsElsewhere(kind); });
    }
    m_exempt = before;
}

bool COperationGate::IsOwner() const
{
    const Lock lock(m_waits->mutex);
    return IsOwnedByThisThread();
}

unsigned int COperationGate::SetExempt(unsigned int kinds)
{
    m_changed.notify_all();
    return std::exchange(m_exempt, kinds);
}

COperationGate::CExemption::CExemption(COperationGate& gate, unsigned int kinds)
    : m_gate(gate), m_isOwner(gate.IsOwner())
{
    if (m_isOwner)
    {
        const Lock lock(gate.m_waits->mutex);
        m_before = gate.SetExempt(kinds);
    }
}

COperationGate::CExemption::~CExemption()
{
    if (m_isOwner)
    {
        const Lock lock(m_gate.m_waits->mutex);
        m_gate.SetExempt(m_before);
    }
}

COperationGate::CTransportWait::CTransportWait(COperationGate& gate, ECallbackKind kind)
    : m_exemption(gate, kind), m_waits(*gate.m_waits)
{
    const Lock lock(m_waits.mutex);
    m_waiting.emplace(m_waits, gate.RunnersOf(kind));
}

COperationGate::CTransportWait::~CTransportWait()
{
    const Lock lock(m_waits.mutex);
    m_waiting.reset();
}

} // namespace Velmo::Internal
