// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/testpackets.h"

#include "protocols/gvbsregisters.h"
#include "protocols/gvsp.h"
#include "transport/log.h"
#include "transports/gige/internal/opencamera.h"

#include <chrono>
#include <poll.h>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr int Attempts = 2; // datagrams get lost
// The packet is under way when the camera acknowledges the request for it: only the network's own delay is left.
constexpr std::chrono::milliseconds Wait{60};
constexpr std::size_t LargestDatagram = 0x10000;

} // namespace

CTestPackets::CTestPackets(SOpenCamera& camera) : m_camera(camera)
{
    if (!m_socket.Bind(camera.adapterIp))
    {
        GENICAM_THROW(RuntimeException, "There is no socket for test packets: " + m_socket.GetError() + ".");
    }
    m_destinationBefore = camera.pPort->ReadRegister(Gvbs::StreamChannelDestination);
    m_portBefore = camera.pPort->ReadRegister(Gvbs::StreamChannelPort);
    camera.pPort->WriteRegister(Gvbs::StreamChannelDestination, camera.adapterIp);
    camera.pPort->WriteRegister(Gvbs::StreamChannelPort, (m_portBefore & ~Gvbs::ScpHostPortMask) | m_socket.GetPort());
}

CTestPackets::~CTestPackets()
{
    try
    {
        m_camera.pPort->WriteRegister(Gvbs::StreamChannelPort, m_portBefore);
        m_camera.pPort->WriteRegister(Gvbs::StreamChannelDestination, m_destinationBefore);
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + m_camera.name +
                ": its stream channel still points to where test packets were received: " + e.GetDescription());
    }
}

bool CTestPackets::Pass(std::uint32_t packetBytes)
{
    try
    {
        for (int attempt = 0; attempt < Attempts; ++attempt)
        {
            m_camera.pPort->WriteRegister(Gvbs::StreamChannelPacketSize,
                                          Gvbs::ScpsFireTestPacket | Gvbs::ScpsDoNotFragment | packetBytes);
            if (Await(packetBytes))
            {
                return true;
            }
        }
    }
    catch (const GenICam::TimeoutException&)
    {
        throw;
    }
    catch (const GenICam::GenericException& e)
    {
        if (m_camera.pRemoval->IsRemoved())
        {
            throw;
        }
        Log(ELogLevel::Debug, "velmo.gige",
            "Camera " + m_camera.name + ": refuses a test packet of " + std::to_string(packetBytes) +
                " bytes: " + e.GetDescription());
    }
    return false;
}

bool CTestPackets::Await(std::uint32_t packetBytes)
{
    std::vector<std::uint8_t> data(LargestDatagram);
    const Clock::time_point deadline = Clock::now() + Wait;
    for (;;)
    {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd entry{m_socket.GetDescriptor(), POLLIN, 0};
        if (left.count() <= 0 || poll(&entry, 1, static_cast<int>(left.count())) == 0)
        {
            return false;
        }
        std::uint32_t senderIp = 0;
        std::uint16_t senderPort = 0;
        // One of another size was late; one from elsewhere is none of ours.
        const std::size_t bytes = m_socket.Receive(data.data(), data.size(), senderIp, senderPort);
        if (senderIp == m_camera.deviceIp && bytes + Gvsp::IpAndUdpBytes == packetBytes)
        {
            return true;
        }
    }
}

} // namespace Velmo::GigE::Internal
