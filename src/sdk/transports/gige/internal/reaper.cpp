// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/reaper.h"

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

void CReaper::Add(std::function<void()> work)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_work.push_back(std::move(work));
        if (!m_thread.joinable())
        {
            m_thread = std::thread([this] { Run(); });
        }
    }
    m_changed.notify_all();
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
        std::function<void()> work = std::move(m_work.front());
        m_work.pop_front();
        lock.unlock();
        work();
        work = nullptr; // what it holds goes without the lock
        lock.lock();
    }
}

} // namespace Velmo::GigE::Internal
