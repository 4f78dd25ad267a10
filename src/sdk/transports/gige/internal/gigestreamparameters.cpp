// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigestream.h"
#include "transports/gige/internal/opencamera.h"

#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

// RFC 5771: the groups below are the network's own.
constexpr std::int64_t LowestGroup = 0xE0000100;  // 224.0.1.0
constexpr std::int64_t HighestGroup = 0xEFFFFFFF; // 239.255.255.255

Transport::SSoftwareParameter MakeNumber(const char* name, const char* toolTip, std::atomic<std::int64_t>& member)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
    parameter.value = member;
    parameter.setter = [&member](std::int64_t value)
    {
        member = value;
    };
    return parameter;
}

void AddSwitch(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
               std::atomic<bool>& member)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
    parameter.value = member ? 1 : 0;
    parameter.setter = [&member](std::int64_t value)
    {
        member = value != 0;
    };
    parameters.AddBoolean(std::move(parameter));
}

} // namespace

void AddTime(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
             std::atomic<std::int64_t>& member)
{
    Transport::SSoftwareParameter parameter = MakeNumber(name, toolTip, member);
    parameter.unit = "us";
    parameter.min = 1000;
    parameter.max = 10000000;
    parameters.AddInteger(std::move(parameter));
}

void CGigEStream::AddTransmission(Transport::CSoftwareNodeMap& parameters)
{
    Transport::SSoftwareParameter type =
        MakeNumber("TransmissionType",
                   "Where the camera streams to: this application alone, or a multicast group that others can listen "
                   "to; used from the next start on.",
                   m_transmissionType);
    type.entries = {{"Unicast", TransmissionType::Unicast}, {"Multicast", TransmissionType::Multicast}};
    parameters.AddEnumeration(std::move(type));
    if (m_groupIp == 0)
    {
        // Cameras of one network differ in the end of their address: each has a group of its own.
        constexpr std::uint32_t siteLocal = 0xEFFF0000; // 239.255.0.0/16, RFC 2365
        constexpr std::uint32_t hostMask = 0xFFFF;
        m_groupIp = siteLocal | (Camera().deviceIp & hostMask);
    }
    Transport::SSoftwareParameter address = MakeNumber(
        "DestinationAddr", "The group of a multicast; used from the next start with multicast on.", m_groupIp);
    address.min = LowestGroup;
    address.max = HighestGroup;
    address.representation = "IPV4Address";
    parameters.AddInteger(std::move(address));
    Transport::SSoftwareParameter port =
        MakeNumber("DestinationPort",
                   "The UDP port of a multicast, 0 for any that is free; used from the next start with multicast on.",
                   m_groupPort);
    port.max = 65535;
    parameters.AddInteger(std::move(port));
}

void CGigEStream::AddSettings(Transport::CSoftwareNodeMap& parameters)
{
    AddTransmission(parameters);
    AddTime(parameters, "PacketTimeout", "Time after which a missing packet is asked for again; not with multicast.",
            m_packetTimeoutUs);
    AddTime(parameters, "FrameRetention", "Time after the last packet until an incomplete image is given up.",
            m_frameRetentionUs);
    AddSwitch(parameters, "EnableResend",
              "Ask the camera for missing packets; used from the next start on, not with multicast.", m_isResending);
    AddSwitch(parameters, "AutoPacketSize",
              "Choose the largest packet size that gets through, unless the camera's was changed.",
              m_isChoosingPacketSize);
    AddPacketSize(parameters);
    AddReceiveBuffer(parameters);
}

} // namespace Velmo::GigE::Internal
