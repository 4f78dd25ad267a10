// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/frameschedule.h"

#include <algorithm>

namespace Simulator::Internal
{

void CFrameSchedule::Start(std::int64_t nowNs, std::int64_t periodNs, std::int64_t phaseNs, std::uint64_t frames,
                           bool isTriggered)
{
    m_isRunning = true;
    m_isTriggered = isTriggered;
    m_periodNs = std::max<std::int64_t>(periodNs, 1);
    m_deadlineNs = isTriggered ? Never : nowNs + phaseNs;
    m_hasLast = false;
    m_left = frames;
    m_pendingTriggers = 0;
    m_skipped = 0;
}

void CFrameSchedule::Stop()
{
    m_isRunning = false;
    m_deadlineNs = Never;
    m_pendingTriggers = 0;
}

void CFrameSchedule::Change(std::int64_t nowNs, std::int64_t periodNs, bool isTriggered)
{
    const std::int64_t period = std::max<std::int64_t>(periodNs, 1);
    if (!m_isRunning || (period == m_periodNs && isTriggered == m_isTriggered))
    {
        return;
    }
    m_periodNs = period;
    m_isTriggered = isTriggered;
    m_pendingTriggers = 0;
    m_deadlineNs = isTriggered ? Never : m_hasLast ? std::max(nowNs, m_lastNs + period) : nowNs;
}

void CFrameSchedule::Trigger(std::int64_t nowNs)
{
    if (!m_isRunning || !m_isTriggered)
    {
        return;
    }
    ++m_pendingTriggers;
    if (m_deadlineNs == Never)
    {
        m_deadlineNs = m_hasLast ? std::max(nowNs, m_lastNs + m_periodNs) : nowNs;
    }
}

bool CFrameSchedule::Take(std::int64_t nowNs, std::int64_t& frameNs)
{
    if (!m_isRunning || nowNs < m_deadlineNs)
    {
        return false;
    }
    frameNs = m_deadlineNs;
    if (!m_isTriggered && nowNs - m_deadlineNs >= m_periodNs)
    {
        const std::int64_t late = (nowNs - m_deadlineNs) / m_periodNs;
        m_skipped += static_cast<std::uint64_t>(late);
        frameNs += late * m_periodNs;
    }
    m_lastNs = frameNs;
    m_hasLast = true;
    if (m_left != Unlimited && --m_left == 0)
    {
        Stop();
    }
    else if (m_isTriggered)
    {
        --m_pendingTriggers;
        m_deadlineNs = m_pendingTriggers == 0 ? Never : frameNs + m_periodNs;
    }
    else
    {
        m_deadlineNs = frameNs + m_periodNs;
    }
    return true;
}

} // namespace Simulator::Internal
