// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/removalreporter.h"

#include "transport/log.h"

#include <exception>

namespace Velmo::Emulation::Internal
{

CRemovalReporter::CRemovalReporter(std::shared_ptr<CNotifier> notifier) : m_notifier(std::move(notifier)) {}

void CRemovalReporter::SetOpen(bool isOpen)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isOpen = isOpen;
}

bool CRemovalReporter::IsRemoved() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isRemoved;
}

void CRemovalReporter::SetRemoved(unsigned int reports)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_isRemoved)
        {
            return;
        }
        m_isRemoved = true;
        m_pendingReports = m_isOpen ? reports : 0;
    }
    PostReports();
}

void CRemovalReporter::SetCallback(std::function<void()> callback)
{
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_callback = std::move(callback);
        if (m_callingThread != std::this_thread::get_id())
        {
            m_called.wait(lock, [this] { return !m_isCalling; });
        }
    }
    PostReports(); // of a loss noticed before there was a callback
}

void CRemovalReporter::PostReports()
{
    unsigned int reports = 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_callback)
        {
            return;
        }
        std::swap(reports, m_pendingReports);
    }
    for (unsigned int i = 0; i < reports; ++i)
    {
        m_notifier->Post([self = shared_from_this()] { self->Report(); });
    }
}

void CRemovalReporter::Report()
{
    std::function<void()> callback;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_callback || !m_isOpen)
        {
            return;
        }
        callback = m_callback;
        m_isCalling = true;
        m_callingThread = std::this_thread::get_id();
    }
    try
    {
        callback();
    }
    catch (const std::exception& error)
    {
        Log(ELogLevel::Error, "velmo.emulation", std::string("A removal callback failed: ") + error.what());
    }
    callback = nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isCalling = false;
    m_callingThread = {};
    m_called.notify_all();
}

} // namespace Velmo::Emulation::Internal
