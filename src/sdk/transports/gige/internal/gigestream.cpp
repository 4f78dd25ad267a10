// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigestream.h"

#include "protocols/gvbsregisters.h"
#include "transport/log.h"
#include "transports/gige/internal/enginereception.h"
#include "transports/gige/internal/multicastreception.h"
#include "transports/gige/internal/opencamera.h"
#include "transports/gige/internal/reaper.h"
#include "transports/gige/internal/socketbuffer.h"

#include <chrono>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

/** So that the camera sends nothing more to the group. */
void CloseChannel(const SOpenCamera& camera)
{
    if (camera.pRemoval->IsRemoved() || !camera.isAnswering())
    {
        return; // the engine would wait for its answer for seconds
    }
    try
    {
        camera.pPort->WriteRegister(Gvbs::StreamChannelPort, 0);
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Info, "velmo.gige",
            "Camera " + camera.name + " may go on sending to its multicast group: " + e.GetDescription());
    }
}

} // namespace

CGigEStream::CGigEStream(CReaper& reaper) : ACameraStream("GigEStreamGrabber"), m_reaper(reaper) {}

CGigEStream::~CGigEStream() = default;

void CGigEStream::Attach(SOpenCamera& camera)
{
    AttachTo(camera);
}

SOpenCamera& CGigEStream::Controlled() const
{
    return static_cast<SOpenCamera&>(Camera()); // see Attach
}

GenApi::INodeMap& CGigEStream::Features()
{
    return *Controlled().pNodeMap;
}

std::unique_ptr<IReception> CGigEStream::MakeReception(Deliver deliver)
{
    Controlled().packetSize.ChooseForGrab(Controlled(), m_isChoosingPacketSize);
    AskForGeometry();
    return m_transmissionType == TransmissionType::Multicast ? MakeMulticast(std::move(deliver))
                                                             : MakeUnicast(std::move(deliver));
}

std::unique_ptr<IReception> CGigEStream::MakeUnicast(Deliver deliver)
{
    CEngineReception::SSettings settings;
    settings.isResending = m_isResending;
    settings.packetTimeoutUs = m_packetTimeoutUs;
    settings.frameRetentionUs = m_frameRetentionUs;
    settings.payloadBytes = GetPayloadBytes();
    return std::make_unique<CEngineReception>(Controlled(), m_reaper, settings, std::move(deliver));
}

std::unique_ptr<IReception> CGigEStream::MakeMulticast(Deliver deliver)
{
    SOpenCamera& camera = Controlled();
    CGvspReceiver::SConfig config;
    config.group.ip = static_cast<std::uint32_t>(m_groupIp);
    config.group.port = static_cast<std::uint16_t>(m_groupPort);
    config.adapterIp = camera.adapterIp;
    config.cameraIp = camera.deviceIp;
    config.cameraName = camera.name;
    config.packetBytes = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize) & Gvbs::ScpsPacketSizeMask;
    config.socketBufferBytes = SizeMulticastSocketBuffer(camera.name, GetPayloadBytes());
    camera.receiveBufferBytes = config.socketBufferBytes;
    camera.receiveBufferWanted =
        std::max(config.socketBufferBytes, ChooseSocketBuffer(GetPayloadBytes(), 0).wantedBytes);
    CMulticastReception::SHooks hooks;
    hooks.joined = [&camera](const SMulticastGroup& group)
    {
        // The port last: it opens the channel.
        camera.pPort->WriteRegister(Gvbs::StreamChannelDestination, group.ip);
        camera.pPort->WriteRegister(Gvbs::StreamChannelPort, group.port);
    };
    hooks.lookAgain = []
    {
        return std::nullopt; // it is this application that says where the stream goes
    };
    hooks.left = [&camera]
    {
        CloseChannel(camera);
    };
    return std::make_unique<CMulticastReception>(std::move(config), std::chrono::microseconds(m_frameRetentionUs),
                                                 std::move(hooks), std::move(deliver));
}

void CGigEStream::AskForGeometry()
{
    // Payloads with chunks tell the image's geometry only to an application that said that it understands it. Cameras
    // before version 2 of the standard do not have the register.
    SOpenCamera& camera = Controlled();
    constexpr std::uint32_t firstVersion = 0x00020000;
    try
    {
        if (camera.pPort->ReadRegister(Gvbs::Version) < firstVersion ||
            (camera.pPort->ReadRegister(Gvbs::StreamChannelCapability) & Gvbs::SccExtendedChunkData) == 0)
        {
            return;
        }
        const std::uint32_t setting = camera.pPort->ReadRegister(Gvbs::StreamChannelConfiguration);
        if ((setting & Gvbs::SccfgExtendedChunkData) == 0)
        {
            camera.pPort->WriteRegister(Gvbs::StreamChannelConfiguration, setting | Gvbs::SccfgExtendedChunkData);
            camera.pNodeMap->InvalidateNodes();
        }
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Info, "velmo.gige",
            "Camera " + camera.name + ": images with chunks may come without their geometry: " + e.GetDescription());
    }
}

} // namespace Velmo::GigE::Internal
