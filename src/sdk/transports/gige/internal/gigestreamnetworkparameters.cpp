// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigestream.h"
#include "transports/gige/internal/opencamera.h"

namespace Velmo::GigE::Internal
{

namespace
{

Transport::SSoftwareParameter Bytes(const char* name, const char* toolTip, std::function<std::int64_t()> getter)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
    parameter.unit = "B";
    parameter.getter = std::move(getter);
    return parameter;
}

} // namespace

void CGigEStream::AddPacketSize(Transport::CSoftwareNodeMap& parameters)
{
    parameters.AddInteger(Bytes("NegotiatedPacketSize",
                                "Packet size that was chosen, with all headers; 0 before the first start.",
                                [this] { return std::int64_t{Controlled().packetSize.Get().bytes}; }));
    parameters.AddInteger(Bytes("PathPacketSize",
                                "The largest packet of which a test packet arrived; 0 when none did or was asked for.",
                                [this] { return std::int64_t{Controlled().packetSize.Get().pathBytes}; }));
    Transport::SSoftwareParameter origin;
    origin.name = "PacketSizeOrigin";
    origin.toolTip = "Where the packet size comes from: as the camera had it, set by the user, the largest of which a "
                     "test packet arrived, or the limits of adapter and camera because no test packet did.";
    origin.isCustom = true;
    origin.entries = {{"Camera", static_cast<std::int64_t>(EPacketSizeOrigin::Camera)},
                      {"User", static_cast<std::int64_t>(EPacketSizeOrigin::User)},
                      {"TestPackets", static_cast<std::int64_t>(EPacketSizeOrigin::TestPackets)},
                      {"Limits", static_cast<std::int64_t>(EPacketSizeOrigin::Limits)}};
    origin.getter = [this]
    {
        return static_cast<std::int64_t>(Controlled().packetSize.Get().origin);
    };
    parameters.AddEnumeration(std::move(origin));
    Transport::SSoftwareParameter probe;
    probe.name = "ProbePacketSize";
    probe.toolTip = "Find out by test packets how large packets may be, and use that size unless the user set one. "
                    "Only while no images are taken.";
    probe.isCustom = true;
    probe.setter = [this](std::int64_t)
    {
        RunWhileStopped([this] { Controlled().packetSize.Probe(Controlled()); });
    };
    parameters.AddCommand(std::move(probe));
}

void CGigEStream::AddReceiveBuffer(Transport::CSoftwareNodeMap& parameters)
{
    parameters.AddInteger(Bytes("ReceiveBufferSize",
                                "Receive buffer of the socket since the last start; 0 before the first one.",
                                [this] { return static_cast<std::int64_t>(Controlled().receiveBufferBytes.load()); }));
    parameters.AddInteger(Bytes("ReceiveBufferWanted",
                                "What the receive buffer would have if the system (net.core.rmem_max) allowed it.",
                                [this] { return static_cast<std::int64_t>(Controlled().receiveBufferWanted.load()); }));
}

} // namespace Velmo::GigE::Internal
