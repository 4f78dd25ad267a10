// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/streamsender.h"
#include "gigeserver/internal/sockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace GigEServer;
using namespace GigEServer::Internal;
using namespace std::chrono_literals;
namespace Gvcp = Velmo::Gvcp;
namespace Gvsp = Velmo::Gvsp;
using ::testing::ElementsAre;

namespace
{

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t StandardEnd = Gvsp::MaxPacketId; // "to the end of the block", by the standard
constexpr std::uint32_t ExtendedEnd = 0xFFFFFFFF;
constexpr std::uint32_t Packets = 102; // more than leave at once

std::uint16_t Number(Gvcp::EStatus status)
{
    return static_cast<std::uint16_t>(status);
}

/** A camera's stream on the loopback, and the application's end of it. The test is the sender's thread: its camera
 *  never acquires. */
class StreamSender : public ::testing::Test
{
protected:
    StreamSender()
    {
        m_camera.address.ip = Loopback;
        m_camera.linkBitsPerSecond = 0;
    }
    ~StreamSender() override { close(m_socket); }

    /** Sends one block. */
    void Stream(bool isExtended)
    {
        m_isExtended = isExtended;
        m_pSender = std::make_unique<CStreamSender>(m_camera, m_pModel, m_counters, [] {});
        STarget target;
        target.ip = Loopback;
        target.port = PortOf(m_socket);
        target.packetBytes =
            DataBytes + Gvsp::IpAndUdpBytes + (isExtended ? Gvsp::ExtendedHeaderBytes : Gvsp::HeaderBytes);
        target.isExtended = isExtended;
        m_pSender->SetTarget(target);
        const std::vector<std::uint8_t> image((Packets - 2) * DataBytes);
        Simulator::SFrame frame;
        frame.blockId = 1;
        frame.data = image.data();
        frame.bytes = image.size();
        ASSERT_TRUE(m_pSender->OnFrame(frame));
        ASSERT_EQ(Receive(Packets, 0).size(), Packets);
    }
    void Ask(std::uint32_t first, std::uint32_t last, std::uint64_t block = 1)
    {
        m_pSender->Resend({0, m_isExtended, block, first, last});
    }
    /** Identifiers of that many packets, all of that status. */
    std::vector<std::uint32_t> Receive(std::size_t count, std::uint16_t status)
    {
        std::vector<std::uint32_t> identifiers;
        std::uint8_t data[1024];
        pollfd entry{m_socket, POLLIN, 0};
        while (identifiers.size() < count && poll(&entry, 1, PatienceMs) > 0)
        {
            const ssize_t bytes = recv(m_socket, data, sizeof data, 0);
            Gvsp::SPacket packet;
            EXPECT_EQ(Gvsp::ParsePacket(data, static_cast<std::size_t>(bytes), packet), Gvsp::EParseResult::Ok);
            EXPECT_EQ(packet.header.status, status);
            EXPECT_EQ(packet.header.isExtended, m_isExtended);
            identifiers.push_back(packet.header.packetId);
        }
        return identifiers;
    }
    std::vector<std::uint32_t> ReceiveResent(std::size_t count)
    {
        return Receive(count, Number(Gvcp::EStatus::PacketResend));
    }

    static constexpr std::size_t DataBytes = 10;
    static constexpr int PatienceMs = 30'000;
    SServedCamera m_camera;
    std::shared_ptr<Simulator::CCameraModel> m_pModel = std::make_shared<Simulator::CCameraModel>(m_camera.config);
    SLiveCounters m_counters;
    int m_socket = OpenSocket(Loopback, 0, false);
    bool m_isExtended = false;
    std::unique_ptr<CStreamSender> m_pSender;
};

std::vector<std::uint32_t> Range(std::uint32_t first, std::uint32_t end)
{
    std::vector<std::uint32_t> identifiers(end - first);
    std::iota(identifiers.begin(), identifiers.end(), first);
    return identifiers;
}

} // namespace

TEST_F(StreamSender, requestToTheEndStopsThere)
{
    Stream(false);
    Ask(0, StandardEnd);
    EXPECT_EQ(m_counters.resentPackets, Packets);
    EXPECT_EQ(ReceiveResent(Packets), Range(0, Packets));
}

TEST_F(StreamSender, requestToTheEndStopsThereWithExtendedIdentifiers)
{
    Stream(true);
    Ask(0, ExtendedEnd);
    EXPECT_EQ(m_counters.resentPackets, Packets);
    EXPECT_EQ(ReceiveResent(Packets), Range(0, Packets));
    Ask(Packets - 1, ExtendedEnd);
    EXPECT_THAT(ReceiveResent(1), ElementsAre(Packets - 1));
    EXPECT_EQ(m_counters.resentPackets, Packets + 1);
}

TEST_F(StreamSender, requestForARangeSendsThatOnly)
{
    Stream(true);
    Ask(3, 70);
    EXPECT_EQ(m_counters.resentPackets, 68U);
    EXPECT_EQ(ReceiveResent(68), Range(3, 71));
    Ask(0, 0);
    EXPECT_THAT(ReceiveResent(1), ElementsAre(0U));
    EXPECT_EQ(m_counters.resentPackets, 69U);
}

TEST_F(StreamSender, requestWhoseEndIsBeforeItsBeginSendsNothing)
{
    Stream(true);
    const std::uint64_t before = m_counters.packets;
    Ask(5, 4);
    Ask(Packets - 1, 0);
    EXPECT_EQ(m_counters.packets, before);
    EXPECT_EQ(m_counters.missedRequests, 0U);
}

TEST_F(StreamSender, requestThatBeginsBeyondTheBlockIsToldThatThereIsNothing)
{
    Stream(true);
    for (const std::uint32_t first : {Packets, ExtendedEnd})
    {
        Ask(first, ExtendedEnd);
        EXPECT_THAT(Receive(1, Number(Gvcp::EStatus::PacketUnavailable)), ElementsAre(first));
    }
    Ask(0, ExtendedEnd, 2);
    EXPECT_THAT(Receive(1, Number(Gvcp::EStatus::PacketUnavailable)), ElementsAre(0U));
    EXPECT_EQ(m_counters.missedRequests, 3U);
    EXPECT_EQ(m_counters.resentPackets, 0U);
}
