// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/actions.h"

#include "simulator/registers.h"

#include <algorithm>

namespace Simulator::Internal
{

using Velmo::Gvcp::EStatus;

namespace
{

SFeature Make(const char* category, const char* name, EKind kind, std::int64_t address, EAccess access,
              const char* toolTip)
{
    SFeature feature;
    feature.category = category;
    feature.name = name;
    feature.kind = kind;
    feature.address = address;
    feature.access = access;
    feature.toolTip = toolTip;
    feature.max = kind == EKind::Integer ? 4294967295.0 : 0.0;
    feature.visibility = "Expert";
    return feature;
}

void AddActionKeys(std::vector<SFeature>& features)
{
    constexpr auto Category = "ActionControl";
    features.push_back(Make(Category, "ActionDeviceKey", EKind::Integer, Register::ActionDeviceKey, EAccess::WriteOnly,
                            "Key that an action command must carry for this device to react."));
    SFeature selector = Make(Category, "ActionSelector", EKind::Integer, Register::ActionSelector, EAccess::ReadWrite,
                             "Action signal to configure.");
    selector.min = static_cast<double>(FirstActionSignal);
    selector.max = static_cast<double>(LastActionSignal);
    selector.selected = "ActionGroupKey";
    features.push_back(selector);
    const auto add = [&](const char* name, std::int64_t address, const char* toolTip)
    {
        SFeature feature = Make(Category, name, EKind::Integer, address, EAccess::ReadWrite, toolTip);
        feature.selector = selector.name;
        feature.selectorAddress = selector.address;
        feature.banks = LastActionSignal + 1; // the first is not used: signals are numbered from one
        features.push_back(feature);
    };
    add("ActionGroupKey", Register::ActionGroupKey, "Group that the selected action signal belongs to.");
    add("ActionGroupMask", Register::ActionGroupMask,
        "The signal is asserted when this and the command's mask have a bit in common.");
}

} // namespace

void AddActionControl(std::vector<SFeature>& features)
{
    AddActionKeys(features);
    constexpr auto Category = "TransportLayerControl";
    SFeature enable = Make(Category, "PtpEnable", EKind::Boolean, Register::PtpEnable, EAccess::ReadWrite,
                           "Lets the device's clock follow the one that all devices share (IEEE 1588).");
    features.push_back(enable);
    features.push_back(Make(Category, "PtpDataSetLatch", EKind::Command, Register::PtpDataSetLatch, EAccess::WriteOnly,
                            "Copies the state of the synchronisation to PtpStatus and PtpOffsetFromMaster."));
    SFeature status = Make(Category, "PtpStatus", EKind::Enumeration, Register::PtpStatus, EAccess::ReadOnly,
                           "The latched state of the synchronisation.");
    status.entries = {
        {"Initializing", 1}, {"Faulty", 2},  {"Disabled", PtpDisabled},         {"Listening", 4},   {"PreMaster", 5},
        {"Master", 6},       {"Passive", 7}, {"Uncalibrated", PtpUncalibrated}, {"Slave", PtpSlave}};
    status.isVolatile = true;
    features.push_back(status);
    SFeature offset = Make(Category, "PtpOffsetFromMaster", EKind::Integer, Register::PtpOffsetFromMaster,
                           EAccess::ReadOnly, "The latched difference of the device's clock from the shared one.");
    offset.bytes = 8;
    offset.isSigned = true;
    offset.min = -9223372036854775808.0;
    offset.max = 9223372036854775807.0;
    offset.unit = "ns";
    offset.isVolatile = true;
    features.push_back(offset);
}

CActionReceiver::CActionReceiver(CSettings& settings, CFrameSchedule& schedule, CCameraClock& clock)
    : m_settings(settings), m_schedule(schedule), m_clock(clock)
{
}

std::uint32_t CActionReceiver::Match(const Velmo::Gvcp::SAction& action) const
{
    const CRegisterMemory& memory = m_settings.GetMemory();
    std::uint32_t signals = 0;
    if (memory.GetInteger(Register::ActionDeviceKey) != action.deviceKey)
    {
        return signals;
    }
    for (std::int64_t signal = FirstActionSignal; signal <= LastActionSignal; ++signal)
    {
        const std::uint64_t key = memory.GetInteger(Register::ActionGroupKey + 4 * signal);
        const std::uint64_t mask = memory.GetInteger(Register::ActionGroupMask + 4 * signal);
        if (key == action.groupKey && (mask & action.groupMask) != 0)
        {
            signals |= 1U << signal;
        }
    }
    return signals;
}

std::optional<EStatus> CActionReceiver::Handle(const Velmo::Gvcp::SAction& action, std::int64_t nowNs)
{
    const std::uint32_t signals = Match(action);
    if (signals == 0)
    {
        return std::nullopt;
    }
    if (action.isScheduled)
    {
        return Schedule(action.time, signals, nowNs);
    }
    Assert(signals, nowNs);
    return EStatus::Success;
}

EStatus CActionReceiver::Schedule(std::uint64_t ticks, std::uint32_t signals, std::int64_t nowNs)
{
    if (!m_clock.IsFollowing(nowNs))
    {
        return EStatus::NoReferenceTime;
    }
    if (ticks <= m_clock.GetTicks(nowNs))
    {
        Assert(signals, nowNs);
        return EStatus::ActionLate;
    }
    if (m_waiting.size() >= QueueCapacity)
    {
        return EStatus::Overflow;
    }
    // The ticks of a clock that follows are the shared clock's nanoseconds; it never gets to those beyond its range.
    const std::int64_t dueNs = ticks < static_cast<std::uint64_t>(Never) ? static_cast<std::int64_t>(ticks) : Never;
    const auto later = std::find_if(m_waiting.begin(), m_waiting.end(),
                                    [dueNs](const SWaiting& waiting) { return waiting.dueNs > dueNs; });
    m_waiting.insert(later, {dueNs, signals});
    return EStatus::Success;
}

void CActionReceiver::Assert(std::uint32_t signals, std::int64_t atNs)
{
    const auto source = static_cast<std::int64_t>(m_settings.GetMemory().GetInteger(Register::TriggerSource));
    const std::int64_t signal = source - TriggerSourceAction;
    if (signal >= FirstActionSignal && signal <= LastActionSignal && (signals & (1U << signal)) != 0)
    {
        m_schedule.Trigger(atNs);
    }
}

void CActionReceiver::Run(std::int64_t nowNs)
{
    while (!m_waiting.empty() && m_waiting.front().dueNs <= nowNs)
    {
        const SWaiting due = m_waiting.front();
        m_waiting.erase(m_waiting.begin());
        Assert(due.signals, due.dueNs);
    }
}

std::int64_t CActionReceiver::GetDeadline() const
{
    return m_waiting.empty() ? Never : m_waiting.front().dueNs;
}

void CActionReceiver::Synchronise(bool isWanted, std::int64_t nowNs)
{
    if (isWanted == m_isSynchronising)
    {
        return;
    }
    m_isSynchronising = isWanted;
    if (isWanted)
    {
        m_clock.Follow(nowNs + SettlingNs);
        return;
    }
    m_clock.Leave(nowNs);
    Clear();
}

void CActionReceiver::LatchSynchronisation(std::int64_t nowNs)
{
    const std::uint64_t state = !m_isSynchronising           ? PtpDisabled
                                : m_clock.IsFollowing(nowNs) ? PtpSlave
                                                             : PtpUncalibrated;
    const std::uint64_t offset = m_isSynchronising ? m_clock.GetTicks(nowNs) - static_cast<std::uint64_t>(nowNs) : 0;
    m_settings.GetMemory().SetInteger(Register::PtpStatus, state);
    m_settings.GetMemory().SetInteger(Register::PtpOffsetFromMaster, offset, 8);
}

} // namespace Simulator::Internal
