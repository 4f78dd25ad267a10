// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/monitorstream.h"

#include "protocols/gvbsregisters.h"
#include "protocols/gvcp.h"
#include "transports/gige/internal/monitorcamera.h"
#include "transports/gige/internal/multicastreception.h"
#include "transports/gige/internal/socketbuffer.h"
#include "transports/gige/internal/streamparameters.h"

#include <chrono>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

SMulticastGroup ReadGroup(CMonitorPort& port)
{
    SMulticastGroup group;
    group.ip = port.ReadRegister(Gvbs::StreamChannelDestination);
    group.port = static_cast<std::uint16_t>(port.ReadRegister(Gvbs::StreamChannelPort) & Gvbs::ScpHostPortMask);
    return group;
}

std::optional<SMulticastGroup> LookAgain(CMonitorPort& port)
{
    try
    {
        const SMulticastGroup group = ReadGroup(port);
        return IsMulticast(group.ip) && group.port != 0 ? std::optional<SMulticastGroup>(group) : std::nullopt;
    }
    catch (const GenICam::GenericException&)
    {
        return std::nullopt; // whether the camera is gone is asked elsewhere
    }
}

} // namespace

CMonitorStream::CMonitorStream() : ACameraStream("GigEMonitorStream") {}

CMonitorStream::~CMonitorStream() = default;

void CMonitorStream::Attach(SMonitorCamera& camera)
{
    AttachTo(camera);
}

SMonitorCamera& CMonitorStream::Monitored() const
{
    return static_cast<SMonitorCamera&>(Camera()); // see Attach
}

GenApi::INodeMap& CMonitorStream::Features()
{
    GenApi::INodeMap& features = *Monitored().pStreamNodeMap;
    features.InvalidateNodes(); // the controlling application may have changed them
    return features;
}

void CMonitorStream::AddSettings(Transport::CSoftwareNodeMap& parameters)
{
    Transport::SSoftwareParameter transmission;
    transmission.name = "TransmissionType";
    transmission.toolTip = "Who says where the camera streams to: the application that controls it.";
    transmission.isCustom = true;
    transmission.isWritable = true;
    transmission.entries = {{"UseCameraConfig", TransmissionType::UseCameraConfig}};
    transmission.value = TransmissionType::UseCameraConfig;
    parameters.AddEnumeration(std::move(transmission));
    AddTime(parameters, "FrameRetention",
            "Time after the last packet until an incomplete image is given up; used from the next start on.",
            m_frameRetentionUs);
}

std::unique_ptr<IReception> CMonitorStream::MakeReception(Deliver deliver)
{
    CMonitorPort& port = *Monitored().pPort;
    CMulticastReception::SHooks hooks;
    hooks.joined = [](const SMulticastGroup&) {
    };
    hooks.lookAgain = [&port]
    {
        return LookAgain(port);
    };
    hooks.left = [] {
    };
    return std::make_unique<CMulticastReception>(ReadConfig(), std::chrono::microseconds(m_frameRetentionUs),
                                                 std::move(hooks), std::move(deliver));
}

CGvspReceiver::SConfig CMonitorStream::ReadConfig()
{
    const SMonitorCamera& camera = Monitored();
    CGvspReceiver::SConfig config;
    config.group = ReadGroup(*camera.pPort);
    if (config.group.ip == 0 || (IsMulticast(config.group.ip) && config.group.port == 0))
    {
        GENICAM_THROW(RuntimeException, "The camera " + camera.name +
                                            " does not stream: start the grab of the controlling application first.");
    }
    if (!IsMulticast(config.group.ip))
    {
        GENICAM_THROW(RuntimeException, "The camera " + camera.name + " streams unicast to " +
                                            Gvcp::IpText(config.group.ip) +
                                            ": ask the controlling application for multicast.");
    }
    config.adapterIp = camera.adapterIp;
    config.cameraIp = camera.deviceIp;
    config.cameraName = camera.name;
    config.packetBytes = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize) & Gvbs::ScpsPacketSizeMask;
    config.socketBufferBytes = SizeMulticastSocketBuffer(camera.name, GetPayloadBytes());
    return config;
}

} // namespace Velmo::GigE::Internal
