// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_testexport.h"

#include <cstdint>
#include <limits>

namespace Simulator::Internal
{

/**
 * When the frames of an acquisition are due: pure arithmetic over given times, nanoseconds of one monotonic clock.
 *
 * Deadlines are absolute: origin + k * period, so lateness never adds up. A schedule that is asked more than a period
 * late skips the deadlines that passed. Threads: the owner's lock.
 */
class SIMULATOR_TEST_EXPORT CFrameSchedule
{
public:
    static constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();
    static constexpr std::uint64_t Unlimited = std::numeric_limits<std::uint64_t>::max();

    /** The first deadline is nowNs + phaseNs. frames: after that many the schedule stops. */
    void Start(std::int64_t nowNs, std::int64_t periodNs, std::int64_t phaseNs, std::uint64_t frames, bool isTriggered);
    void Stop();
    /** For changed settings while running; keeps the phase of the last frame. */
    void Change(std::int64_t nowNs, std::int64_t periodNs, bool isTriggered);
    /** Asks for one frame; without effect when not running or not triggered. */
    void Trigger(std::int64_t nowNs);

    bool IsRunning() const { return m_isRunning; }
    /** Never when nothing is due until something happens. */
    std::int64_t GetDeadline() const { return m_deadlineNs; }
    /** True when a frame is due; frameNs is then its nominal time. */
    bool Take(std::int64_t nowNs, std::int64_t& frameNs);
    std::uint64_t GetSkipped() const { return m_skipped; }

private:
    bool m_isRunning = false;
    bool m_isTriggered = false;
    std::int64_t m_periodNs = 1;
    std::int64_t m_deadlineNs = Never;
    std::int64_t m_lastNs = 0; // nominal time of the latest frame
    bool m_hasLast = false;
    std::uint64_t m_left = 0;
    std::uint64_t m_pendingTriggers = 0;
    std::uint64_t m_skipped = 0;
};

} // namespace Simulator::Internal
