// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/discoveryanswers.h"

#include "protocols/gvbsregisters.h"

#include <algorithm>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr std::uint16_t FirstQuestion = 0x8000;

/** How well a camera can be reached where it was found. A camera in several networks of this computer may answer on all
 *  of them. */
enum class EReach
{
    None,    // in another subnet, and nobody knows a way there
    Routed,  // it answered when it was asked by its address
    InSubnet // of the adapter
};

EReach ReachOf(const SFoundDevice& device)
{
    if (device.adapter.IsInSubnet(device.ip))
    {
        return EReach::InSubnet;
    }
    return device.isRemote ? EReach::Routed : EReach::None;
}

bool IsSame(const SFoundDevice& one, const SFoundDevice& other)
{
    return one.ack.mac == other.ack.mac && one.ack.serialNumber == other.ack.serialNumber &&
           one.ack.modelName == other.ack.modelName;
}

} // namespace

CDiscoveryAnswers::CDiscoveryAnswers(std::uint16_t discoveryId, std::vector<std::uint32_t> askedAddresses,
                                     std::set<std::uint32_t> expectedAddresses)
    : m_discoveryId(discoveryId), m_askedAddresses(std::move(askedAddresses)), m_expected(std::move(expectedAddresses))
{
}

CDiscoveryAnswers::STaken CDiscoveryAnswers::Take(const std::uint8_t* data, std::size_t bytes, std::uint32_t senderIp,
                                                  std::uint16_t senderPort, const SAdapter& adapter)
{
    Gvcp::SAcknowledge ack;
    if (senderPort != Gvcp::Port || Gvcp::ParseAcknowledge(data, bytes, ack) != Gvcp::EParseResult::Ok)
    {
        return {};
    }
    if (ack.command == static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryAck))
    {
        return TakeDevice(ack, senderIp, adapter);
    }
    if (ack.command == static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegAck))
    {
        TakePrivilege(ack, senderIp);
    }
    return {};
}

CDiscoveryAnswers::STaken CDiscoveryAnswers::TakeDevice(const Gvcp::SAcknowledge& ack, std::uint32_t senderIp,
                                                        const SAdapter& adapter)
{
    SFoundDevice device;
    if (ack.ackId != m_discoveryId || ack.status != 0 ||
        Gvcp::ParseDiscoveryAck(ack, device.ack) != Gvcp::EParseResult::Ok)
    {
        return {};
    }
    device.isRemote = std::find(m_askedAddresses.begin(), m_askedAddresses.end(), senderIp) != m_askedAddresses.end();
    // A camera behind a router or with a fresh address is reached where it answered from.
    device.ip = device.isRemote || device.ack.currentIp == 0 ? senderIp : device.ack.currentIp;
    device.adapter = adapter;
    if (!IsUnicast(device.ip) || adapter.IsBroadcast(device.ip))
    {
        return {}; // whoever reads or opens it would talk to everybody
    }
    const EReach reach = ReachOf(device);
    const auto known = std::find_if(m_devices.begin(), m_devices.end(),
                                    [&device](const SFoundDevice& other) { return IsSame(other, device); });
    if (known == m_devices.end() ? m_devices.size() >= MostDevices : reach <= ReachOf(*known))
    {
        return {};
    }
    STaken taken;
    m_expected.erase(device.ip);
    const auto index = static_cast<std::size_t>(known - m_devices.begin());
    if (known == m_devices.end())
    {
        taken.isNewDevice = true;
        m_devices.push_back(std::move(device));
    }
    else
    {
        device.access = known->ip == device.ip ? known->access : EAccessStatus::Unreachable;
        *known = std::move(device);
    }
    if (reach != EReach::None)
    {
        taken.question = Ask(index);
    }
    return taken;
}

void CDiscoveryAnswers::TakePrivilege(const Gvcp::SAcknowledge& ack, std::uint32_t senderIp)
{
    const auto found = m_asked.find(ack.ackId);
    if (found == m_asked.end() || m_devices[found->second].ip != senderIp)
    {
        return;
    }
    std::vector<std::uint32_t> values;
    const bool isRead = ack.status == 0 && Gvcp::ParseReadRegAck(ack, values) == Gvcp::EParseResult::Ok;
    constexpr std::uint32_t held = Gvbs::CcpExclusiveAccess | Gvbs::CcpControlAccess;
    const bool isHeld = isRead ? (values.front() & held) != 0 : true; // only its owner may read from some
    m_devices[found->second].access = isHeld ? EAccessStatus::InUse : EAccessStatus::Free;
    m_asked.erase(found);
}

SPrivilegeQuestion CDiscoveryAnswers::MakeQuestion(std::size_t index) const
{
    const SFoundDevice& device = m_devices[index];
    return {static_cast<std::uint16_t>(FirstQuestion + index), device.ip, device.adapter.id};
}

SPrivilegeQuestion CDiscoveryAnswers::Ask(std::size_t index)
{
    SPrivilegeQuestion question = MakeQuestion(index);
    m_asked[question.requestId] = index;
    return question;
}

std::vector<SPrivilegeQuestion> CDiscoveryAnswers::GetOpenQuestions() const
{
    std::vector<SPrivilegeQuestion> questions;
    for (const auto& [id, index] : m_asked)
    {
        questions.push_back(MakeQuestion(index));
    }
    return questions;
}

} // namespace Velmo::GigE::Internal
