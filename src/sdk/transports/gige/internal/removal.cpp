// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/removal.h"

#include <utility>

namespace Velmo::GigE::Internal
{

void CRemoval::SetHandler(Handler handler)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_handler = std::move(handler);
    m_changed.wait(lock, [this] { return !m_isTelling || m_teller == std::this_thread::get_id(); });
}

void CRemoval::Arm(Handler firstHandler)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_firstHandler = std::move(firstHandler);
    m_isArmed = true;
    m_isLost = false;
}

void CRemoval::Disarm()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_isArmed = false;
    m_changed.wait(lock, [this] { return !m_isFirstRunning; });
}

void CRemoval::Report()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!m_isArmed || m_isTelling)
    {
        return;
    }
    m_isArmed = false;
    m_isRemoved = true;
    m_isTelling = true;
    m_isFirstRunning = true;
    m_teller = std::this_thread::get_id();
    const Handler first = m_firstHandler;
    lock.unlock();
    first();
    lock.lock();
    m_isFirstRunning = false;
    m_changed.notify_all();
    const Handler handler = m_handler; // only now: it may have been taken away meanwhile
    lock.unlock();
    if (handler)
    {
        handler();
    }
    lock.lock();
    m_isTelling = false;
    m_teller = std::thread::id();
    m_changed.notify_all();
}

} // namespace Velmo::GigE::Internal
