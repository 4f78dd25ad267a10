// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/clock.h"

#include <chrono>

namespace Simulator
{

namespace
{

class CSteadyClock final : public IClock
{
public:
    std::int64_t NowNs() const override
    {
        using namespace std::chrono;
        return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
    }
};

constexpr double Million = 1.0e6;

} // namespace

IClock::~IClock() = default;

const IClock& SteadyClock()
{
    static const CSteadyClock clock;
    return clock;
}

CCameraClock::CCameraClock(std::int64_t startNs, std::int64_t offsetNs, double driftPpm)
    : m_startNs(startNs), m_offsetNs(offsetNs), m_driftPpm(driftPpm)
{
}

std::uint64_t CCameraClock::GetTicks(std::int64_t nowNs) const
{
    if (IsFollowing(nowNs))
    {
        return static_cast<std::uint64_t>(nowNs);
    }
    const std::int64_t elapsed = nowNs - m_startNs;
    // The drift alone goes through a double: the whole would lose nanoseconds after some days.
    const auto drift = static_cast<std::int64_t>(static_cast<double>(elapsed) * (m_driftPpm / Million));
    return static_cast<std::uint64_t>(m_offsetNs + elapsed + drift);
}

void CCameraClock::Reset(std::int64_t nowNs)
{
    if (!IsFollowing(nowNs))
    {
        m_startNs = nowNs;
        m_offsetNs = 0;
    }
}

void CCameraClock::Follow(std::int64_t fromNs)
{
    m_followedFromNs = fromNs;
}

void CCameraClock::Leave(std::int64_t nowNs)
{
    m_offsetNs = static_cast<std::int64_t>(GetTicks(nowNs));
    m_startNs = nowNs;
    m_followedFromNs = std::numeric_limits<std::int64_t>::max();
}

} // namespace Simulator
