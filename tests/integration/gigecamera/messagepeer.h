// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvbsregisters.h"
#include "support/gvcppeer.h"
#include "transports/gige/internal/udpsocket.h"

#include <gtest/gtest.h>

#include <chrono>
#include <poll.h>
#include <vector>

namespace Test
{

/** The application's end of a message channel, by hand, on the loopback; keeps every datagram. Threads: one at a time.
 */
class CMessagePeer
{
public:
    CMessagePeer() { EXPECT_TRUE(m_socket.Bind(Loopback)); }
    void Open(CGvcpPeer& controller, std::uint32_t timeoutMs, std::uint32_t retries)
    {
        using Velmo::Gvcp::EStatus;
        namespace Gvbs = Velmo::Gvbs;
        EXPECT_EQ(controller.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::Success);
        EXPECT_EQ(controller.Write(Gvbs::MessageChannelDestination, Loopback), EStatus::Success);
        EXPECT_EQ(controller.Write(Gvbs::MessageChannelTransmissionTimeout, timeoutMs), EStatus::Success);
        EXPECT_EQ(controller.Write(Gvbs::MessageChannelRetryCount, retries), EStatus::Success);
        EXPECT_EQ(controller.Write(Gvbs::MessageChannelPort, m_socket.GetPort()), EStatus::Success);
    }
    /** Empty when none came in time. */
    Velmo::Gvcp::Bytes Receive(std::chrono::milliseconds limit)
    {
        pollfd entry{m_socket.GetDescriptor(), POLLIN, 0};
        Velmo::Gvcp::Bytes data(1000);
        std::uint32_t ip = 0;
        const bool isReady = poll(&entry, 1, static_cast<int>(limit.count())) > 0;
        data.resize(isReady ? m_socket.Receive(data.data(), data.size(), ip, m_senderPort) : 0);
        if (!data.empty())
        {
            m_datagrams.push_back({ip, m_senderPort, Loopback, m_socket.GetPort(), data});
        }
        return data;
    }
    void Acknowledge(std::uint16_t id, Velmo::Gvcp::ECommand answer = Velmo::Gvcp::ECommand::EventAck,
                     std::uint32_t cameraIp = Loopback)
    {
        const auto data = Velmo::Gvcp::EncodePlainAck(id, answer, Velmo::Gvcp::EStatus::Success);
        EXPECT_TRUE(m_socket.Send(data, cameraIp, m_senderPort));
        m_datagrams.push_back({Loopback, m_socket.GetPort(), cameraIp, m_senderPort, data});
    }
    /** The camera's, of the latest message. */
    std::uint16_t GetSenderPort() const { return m_senderPort; }
    const std::vector<SDatagram>& GetDatagrams() const { return m_datagrams; }

private:
    static constexpr std::uint32_t Loopback = 0x7F000001;
    Velmo::GigE::Internal::CUdpSocket m_socket;
    std::uint16_t m_senderPort = 0;
    std::vector<SDatagram> m_datagrams;
};

} // namespace Test
