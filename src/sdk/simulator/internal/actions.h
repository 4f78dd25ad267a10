// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "simulator/clock.h"
#include "simulator/internal/features.h"
#include "simulator/internal/frameschedule.h"
#include "simulator/internal/settings.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace Simulator::Internal
{

constexpr std::int64_t FirstActionSignal = 1; // values of ActionSelector, and TriggerSource's Action1 ...
constexpr std::int64_t LastActionSignal = 4;
constexpr std::int64_t TriggerSourceAction = 1; // an action signal's value of TriggerSource less the signal's number

// IEEE 1588-2008, 8.2.5.3.1: states of a port
constexpr std::uint32_t PtpDisabled = 3;
constexpr std::uint32_t PtpUncalibrated = 8;
constexpr std::uint32_t PtpSlave = 9;

/** What is written to a camera so that it reacts to action commands, and the clock they are scheduled by. */
void AddActionControl(std::vector<SFeature>& features);

/**
 * What a camera does with action commands, and the synchronisation of its clock that scheduled ones need.
 *
 * Times are nanoseconds of the clock that all cameras share. Threads: the owner's lock.
 */
class SIMULATOR_TEST_EXPORT CActionReceiver
{
public:
    static constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();
    static constexpr std::size_t QueueCapacity = 8;
    static constexpr std::int64_t SettlingNs = 200'000'000; // from PtpEnable until the clock follows

    CActionReceiver(CSettings& settings, CFrameSchedule& schedule, CCameraClock& clock);

    /** See CCameraModel::Action. */
    std::optional<Velmo::Gvcp::EStatus> Handle(const Velmo::Gvcp::SAction& action, std::int64_t nowNs);
    /** Does the scheduled actions that are due. */
    void Run(std::int64_t nowNs);
    /** When Run is to be called; Never when nothing is scheduled. */
    std::int64_t GetDeadline() const;
    void Clear() { m_waiting.clear(); }

    /** PtpEnable was written. What was scheduled by the shared clock is forgotten when it is switched off. */
    void Synchronise(bool isWanted, std::int64_t nowNs);
    /** Fills PtpStatus and PtpOffsetFromMaster. */
    void LatchSynchronisation(std::int64_t nowNs);

private:
    struct SWaiting
    {
        std::int64_t dueNs;
        std::uint32_t signals; // a bit for each
    };

    std::uint32_t Match(const Velmo::Gvcp::SAction& action) const;
    Velmo::Gvcp::EStatus Schedule(std::uint64_t ticks, std::uint32_t signals, std::int64_t nowNs);
    void Assert(std::uint32_t signals, std::int64_t atNs);

    CSettings& m_settings;
    CFrameSchedule& m_schedule;
    CCameraClock& m_clock;
    std::vector<SWaiting> m_waiting; // the earliest first; of one time in the order of their arrival
    bool m_isSynchronising = false;
};

} // namespace Simulator::Internal
