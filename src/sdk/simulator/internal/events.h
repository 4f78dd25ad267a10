// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "simulator/clock.h"
#include "simulator/internal/features.h"
#include "simulator/internal/settings.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace Simulator::Internal
{

/** The events that a camera can report; values of EventSelector. */
enum class EEventKind : std::uint32_t
{
    FrameStart,
    ExposureStart,
    ExposureEnd,
    Test,
    Count
};

/** The switches of events: ordinary settings. */
void AddEventControl(std::vector<SFeature>& features);
/** The values that events carry: in the description alone, as no register holds them. Their addresses count from the
 *  begin of the event in its message, whose block identifier has 16 bits. */
std::vector<SFeature> MakeEventValues();

/**
 * The events that have been asked for, from their cause until they are due.
 *
 * Times are nanoseconds of the clock that all cameras share. Threads: the owner's lock.
 */
class SIMULATOR_TEST_EXPORT CEventSource
{
public:
    static constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

    CEventSource(const CSettings& settings, const CCameraClock& clock) : m_settings(settings), m_clock(clock) {}

    /** An exposure begins; frame is its number in the acquisition. */
    void OnExposure(std::int64_t startNs, std::uint64_t frame);
    void OnTest(std::int64_t nowNs);
    /** Those that are due, the earliest first. */
    std::vector<Velmo::Gvcp::SEvent> Take(std::int64_t nowNs);
    /** When Take is to be called; Never when nothing waits. */
    std::int64_t GetDeadline() const;
    void Clear() { m_waiting.clear(); }

private:
    struct SWaiting
    {
        std::int64_t dueNs;
        Velmo::Gvcp::SEvent event;
    };
    void Add(EEventKind kind, std::int64_t dueNs, std::uint64_t frame);

    const CSettings& m_settings;
    const CCameraClock& m_clock;
    std::vector<SWaiting> m_waiting; // the earliest first
};

} // namespace Simulator::Internal
