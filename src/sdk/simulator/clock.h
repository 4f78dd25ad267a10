// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstdint>
#include <limits>

namespace Simulator
{

/** A monotonic time source. Threads: any. */
class SIMULATOR_EXPORT IClock
{
public:
    virtual ~IClock();
    /** Nanoseconds since an arbitrary moment. */
    virtual std::int64_t NowNs() const = 0;
};

/** The computer's steady clock. */
SIMULATOR_EXPORT const IClock& SteadyClock();

/**
 * A camera's own clock: 1 GHz ticks with an offset and a drift, until it follows the clock that all cameras share,
 * which is the one that the times given here are of. Threads: the owner's lock.
 */
class SIMULATOR_EXPORT CCameraClock
{
public:
    CCameraClock(std::int64_t startNs, std::int64_t offsetNs, double driftPpm);
    std::uint64_t GetTicks(std::int64_t nowNs) const;
    /** Ticks count from 0 again; nothing while it follows. */
    void Reset(std::int64_t nowNs);

    /** Follows from that time on; ticks jump then. */
    void Follow(std::int64_t fromNs);
    /** Runs by itself again, from where it is. */
    void Leave(std::int64_t nowNs);
    bool IsFollowing(std::int64_t nowNs) const { return nowNs >= m_followedFromNs; }

private:
    std::int64_t m_startNs;
    std::int64_t m_offsetNs;
    double m_driftPpm;
    std::int64_t m_followedFromNs = std::numeric_limits<std::int64_t>::max();
};

} // namespace Simulator
