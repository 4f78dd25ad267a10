// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/events.h"

#include "simulator/registers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Simulator::Internal
{

namespace
{

constexpr auto Category = "EventControl";

struct SEventKind
{
    EEventKind kind;
    const char* name; // SFNC: entry of EventSelector; the features are "Event" + name ...
    std::uint16_t id; // GigE Vision: from 0x9000 on they are the manufacturer's own
    bool hasFrame;    // carries a frame's number
    const char* toolTip;
};

constexpr std::array<SEventKind, 4> Kinds{{
    {EEventKind::FrameStart, "FrameStart", 0x9001, true, "The acquisition of a frame has begun."},
    {EEventKind::ExposureStart, "ExposureStart", 0x9002, true, "The exposure of a frame has begun."},
    {EEventKind::ExposureEnd, "ExposureEnd", 0x9003, true, "The exposure of a frame has ended."},
    {EEventKind::Test, "Test", 0x9010, false, "TestEventGenerate was executed."},
}};

// GigE Vision, EVENT_CMD without extended identifiers: where the parts of an event lie.
constexpr std::int64_t IdAddress = 2;
constexpr std::int64_t TimestampAddress = 8;
constexpr std::int64_t DataAddress = 16;

const SEventKind& KindOf(EEventKind kind)
{
    return Kinds[static_cast<std::size_t>(kind)];
}

SFeature MakeSetting(const char* category, const char* name, EKind kind, std::int64_t address, const char* toolTip)
{
    SFeature feature;
    feature.category = category;
    feature.name = name;
    feature.kind = kind;
    feature.address = address;
    feature.toolTip = toolTip;
    feature.visibility = "Expert";
    return feature;
}

SFeature MakeValue(const SEventKind& kind, const std::string& suffix, std::int64_t address, std::int64_t bytes,
                   const std::string& toolTip)
{
    SFeature value;
    value.category = Category;
    value.name = std::string("Event") + kind.name + suffix;
    value.address = address;
    value.bytes = bytes;
    value.access = EAccess::ReadOnly;
    value.toolTip = toolTip;
    value.visibility = "Expert";
    value.max = bytes == 8 ? 9223372036854775807.0 : 65535.0;
    value.eventId = kind.id;
    return value;
}

} // namespace

void AddEventControl(std::vector<SFeature>& features)
{
    SFeature selector = MakeSetting(Category, "EventSelector", EKind::Enumeration, Register::EventSelector,
                                    "Event to switch on or off.");
    for (const SEventKind& kind : Kinds)
    {
        selector.entries.emplace_back(kind.name, static_cast<std::int64_t>(kind.kind));
    }
    selector.selected = "EventNotification";
    features.push_back(selector);
    SFeature notification = MakeSetting(Category, "EventNotification", EKind::Enumeration, Register::EventNotification,
                                        "Whether the selected event is reported to the application in control.");
    notification.entries = {{"Off", 0}, {"On", 1}};
    notification.selector = selector.name;
    notification.selectorAddress = selector.address;
    notification.banks = static_cast<std::int64_t>(EEventKind::Count);
    features.push_back(notification);
    SFeature test = MakeSetting("TestControl", "TestEventGenerate", EKind::Command, Register::TestEventGenerate,
                                "Reports the event Test, if that is switched on.");
    test.access = EAccess::WriteOnly;
    test.visibility = "Guru";
    features.push_back(test);
}

std::vector<SFeature> MakeEventValues()
{
    std::vector<SFeature> values;
    for (const SEventKind& kind : Kinds)
    {
        const std::string name = kind.name;
        values.push_back(MakeValue(kind, "", IdAddress, 2, "Identifier of the event " + name + ". " + kind.toolTip));
        SFeature timestamp = MakeValue(kind, "Timestamp", TimestampAddress, 8, "When the event " + name + " happened.");
        timestamp.unit = "ns";
        values.push_back(timestamp);
        if (kind.hasFrame)
        {
            values.push_back(MakeValue(kind, "FrameID", DataAddress, 8,
                                       "Number of the frame in its acquisition that the event " + name + " is of."));
        }
    }
    return values;
}

void CEventSource::Add(EEventKind kind, std::int64_t dueNs, std::uint64_t frame)
{
    const std::int64_t notification = Register::EventNotification + 4 * static_cast<std::int64_t>(kind);
    if (m_settings.GetMemory().GetInteger(notification) == 0)
    {
        return;
    }
    SWaiting waiting{dueNs, {}};
    waiting.event.id = KindOf(kind).id;
    if (KindOf(kind).hasFrame)
    {
        constexpr int bytes = 8;
        constexpr std::uint64_t blockIds = 0xFFFF;
        waiting.event.streamChannel = 0;
        waiting.event.blockId = (frame - 1) % blockIds + 1; // by the standard no block has the number 0
        for (int i = bytes - 1; i >= 0; --i)
        {
            waiting.event.data.push_back(static_cast<std::uint8_t>(frame >> (8 * i)));
        }
    }
    const auto later = std::find_if(m_waiting.begin(), m_waiting.end(),
                                    [dueNs](const SWaiting& other) { return other.dueNs > dueNs; });
    m_waiting.insert(later, std::move(waiting));
}

void CEventSource::OnExposure(std::int64_t startNs, std::uint64_t frame)
{
    constexpr double nsPerUs = 1000.0;
    const double exposureUs = m_settings.GetMemory().GetFloat(Register::ExposureTime);
    Add(EEventKind::FrameStart, startNs, frame);
    Add(EEventKind::ExposureStart, startNs, frame);
    Add(EEventKind::ExposureEnd, startNs + std::llround(exposureUs * nsPerUs), frame);
}

void CEventSource::OnTest(std::int64_t nowNs)
{
    Add(EEventKind::Test, nowNs, 0);
}

std::vector<Velmo::Gvcp::SEvent> CEventSource::Take(std::int64_t nowNs)
{
    std::vector<Velmo::Gvcp::SEvent> due;
    auto waiting = m_waiting.begin();
    for (; waiting != m_waiting.end() && waiting->dueNs <= nowNs; ++waiting)
    {
        waiting->event.timestamp = m_clock.GetTicks(waiting->dueNs);
        due.push_back(std::move(waiting->event));
    }
    m_waiting.erase(m_waiting.begin(), waiting);
    return due;
}

std::int64_t CEventSource::GetDeadline() const
{
    return m_waiting.empty() ? Never : m_waiting.front().dueNs;
}

} // namespace Simulator::Internal
