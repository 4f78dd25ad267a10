// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstdint>

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

/** A camera's own clock: 1 GHz ticks with an offset and a drift. Threads: the owner's lock. */
class SIMULATOR_EXPORT CCameraClock
{
public:
    CCameraClock(std::int64_t startNs, std::int64_t offsetNs, double driftPpm);
    std::uint64_t GetTicks(std::int64_t nowNs) const;
    /** Ticks count from 0 again. */
    void Reset(std::int64_t nowNs);

private:
    std::int64_t m_startNs;
    std::int64_t m_offsetNs;
    double m_driftPpm;
};

} // namespace Simulator
