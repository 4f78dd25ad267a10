// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/reaper.h"

#include <algorithm>
#include <utility>

namespace Velmo::GigE::Internal
{

CReaper::~CReaper()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
    {
        m_thread.join();
    }
}

void CReaper::Add(std::uint32_t deviceIp, std::function<void()> work)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_work.push_back({deviceIp, std::move(work)});
        if (!m_thread.joinable())
        {
            m_thread = std::thread([this] { Run(); });
        }
    }
    m_changed.notify_all();
}

bool CReaper::HasWorkOf(std::uint32_t deviceIp) const
{
    return m_current == deviceIp || std::any_of(m_work.begin(), m_work.end(),
                                                [deviceIp](const SItem& item) { return item.deviceIp == deviceIp; });
}

bool CReaper::IsBusyWith(std::uint32_t deviceIp)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return HasWorkOf(deviceIp);
}

bool CReaper::WaitFor(std::uint32_t deviceIp, std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    std::stable_partition(m_work.begin(), m_work.end(),
                          [deviceIp](const SItem& item) { return item.deviceIp == deviceIp; });
    return m_changed.wait_for(lock, timeout, [this, deviceIp] { return !HasWorkOf(deviceIp); });
}

void CReaper::Run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;)
    {
        m_changed.wait(lock, [this] { return m_isStopping || !m_work.empty(); });
        if (m_work.empty())
        {
            return;
        }
        SItem item = std::move(m_work.front());
        m_work.pop_front();
        m_current = item.deviceIp;
        lock.unlock();
        item.work();
        item.work = nullptr; // what it holds goes without the lock
        lock.lock();
        m_current.reset();
        m_changed.notify_all();
    }
}

} // namespace Velmo::GigE::Internal
