// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/gvcppeer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bitset>
#include <set>

using namespace Test;
using namespace std::chrono_literals;
namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;
namespace Register = Simulator::Register;
using Gvcp::EStatus;

namespace
{

constexpr std::uint32_t PacketBytes = 1500;
constexpr std::uint32_t PayloadPackets = (640 * 480 + 1463) / 1464;

/** The packet identifiers of one image in the order of their arrival. */
std::vector<std::uint32_t> OrderOfOneImage(const std::string& fault)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\""), "--fault", fault});
    CGvcpPeer peer;
    peer.OpenStream(PacketBytes);
    EXPECT_EQ(peer.Write(static_cast<std::uint32_t>(Register::AcquisitionStart), 1), EStatus::Success);
    std::vector<std::uint32_t> order;
    for (auto packet = peer.ReceivePacket(5s); packet.has_value(); packet = peer.ReceivePacket(300ms))
    {
        order.push_back(packet->header.packetId);
    }
    return order;
}

/** The datagrams of one image in the order of their arrival; every run shows the same image. */
std::vector<std::vector<std::uint8_t>> DatagramsOfOneImage(const std::vector<std::string>& faults)
{
    std::vector<std::string> arguments{"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")};
    arguments.insert(arguments.end(), faults.begin(), faults.end());
    const CCameraProgram cameras(arguments);
    CGvcpPeer peer;
    peer.OpenStream(PacketBytes);
    EXPECT_EQ(peer.Write(static_cast<std::uint32_t>(Register::AcquisitionStart), 1), EStatus::Success);
    std::vector<std::vector<std::uint8_t>> datagrams;
    for (auto data = peer.ReceiveStreamDatagram(5s); data.has_value(); data = peer.ReceiveStreamDatagram(300ms))
    {
        datagrams.push_back(*data);
    }
    return datagrams;
}

std::size_t CountWrongBits(const std::vector<std::uint8_t>& one, const std::vector<std::uint8_t>& other)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < one.size(); ++i)
    {
        count += std::bitset<8>(one[i] ^ other.at(i)).count();
    }
    return count;
}

} // namespace

TEST(Faults, corruptedPacketsHaveOneWrongBit)
{
    const auto right = DatagramsOfOneImage({});
    const auto wrong = DatagramsOfOneImage({"--fault", "corrupted=500"});
    ASSERT_EQ(right.size(), PayloadPackets + 2);
    ASSERT_EQ(wrong.size(), right.size());
    std::size_t corrupted = 0;
    std::size_t inHeaders = 0;
    for (std::size_t i = 1; i <= PayloadPackets; ++i) // the leader has a time stamp
    {
        ASSERT_EQ(wrong[i].size(), right[i].size());
        const std::size_t bits = CountWrongBits(right[i], wrong[i]);
        EXPECT_LE(bits, 1U);
        corrupted += bits;
        constexpr std::ptrdiff_t headerBytes = 8;
        inHeaders += std::equal(right[i].begin(), right[i].begin() + headerBytes, wrong[i].begin()) ? 0 : 1;
    }
    EXPECT_GT(corrupted, PayloadPackets / 3);
    EXPECT_LT(corrupted, PayloadPackets * 2 / 3);
    EXPECT_GT(inHeaders, corrupted / 4);
    EXPECT_LT(inHeaders, corrupted * 3 / 4);
}

TEST(Faults, lostPacketsAreMissingInTheMiddleOfOthers)
{
    const std::vector<std::uint32_t> order = OrderOfOneImage("lost=100");
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_LT(order.size(), PayloadPackets);
    EXPECT_GT(order.size(), PayloadPackets / 2);
}

TEST(Faults, reorderedPacketsAllArrive)
{
    const std::vector<std::uint32_t> order = OrderOfOneImage("reordered=200");
    EXPECT_FALSE(std::is_sorted(order.begin(), order.end()));
    EXPECT_EQ(std::set<std::uint32_t>(order.begin(), order.end()).size(), PayloadPackets + 2);
    EXPECT_EQ(order.size(), PayloadPackets + 2);
}

TEST(Faults, duplicatedPacketsArriveTwice)
{
    const std::vector<std::uint32_t> order = OrderOfOneImage("duplicated=200");
    EXPECT_EQ(std::set<std::uint32_t>(order.begin(), order.end()).size(), PayloadPackets + 2);
    EXPECT_GT(order.size(), PayloadPackets + 12);
}

TEST(Faults, cameraThatDiesInAnImageSendsHalfOfItAndAnswersNoMore)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "die=3"});
    CGvcpPeer peer;
    peer.OpenStream(PacketBytes);
    EXPECT_EQ(peer.Write(static_cast<std::uint32_t>(Register::AcquisitionStart), 1), EStatus::Success);
    std::map<std::uint64_t, std::size_t> packets;
    for (auto packet = peer.ReceivePacket(5s); packet.has_value(); packet = peer.ReceivePacket(500ms))
    {
        ++packets[packet->header.blockId];
    }
    EXPECT_EQ(packets[1], PayloadPackets + 2);
    EXPECT_EQ(packets[2], PayloadPackets + 2);
    EXPECT_EQ(packets[3], (PayloadPackets + 2) / 2);
    EXPECT_EQ(packets.count(4), 0U);
    peer.Send(Gvcp::EncodeReadRegCmd(peer.NextId(), {Gvbs::Version}));
    EXPECT_FALSE(peer.Receive(500ms).has_value());
}

TEST(Faults, silentCameraAnswersNothing)
{
    const CCameraProgram cameras({"--fault", "silent"});
    CGvcpPeer peer;
    peer.Send(Gvcp::EncodeDiscoveryCmd(peer.NextId(), false));
    EXPECT_FALSE(peer.Receive(500ms).has_value());
}

TEST(Faults, slowCameraSaysThatItsAnswerIsPendingWhenThatWasEnabled)
{
    const CCameraProgram cameras({"--fault", "slow=300"});
    CGvcpPeer peer;
    ASSERT_EQ(peer.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::Success);
    const auto unasked = peer.Ask(Gvcp::EncodeReadRegCmd(peer.NextId(), {Gvbs::Version}));
    ASSERT_TRUE(unasked.has_value());
    EXPECT_EQ(unasked->command, static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegAck)) << "nobody asked for more";
    peer.Send(Gvcp::EncodeWriteRegCmd(peer.NextId(), {{Gvbs::GvcpConfiguration, Gvbs::GvcpConfigurationPendingAck}}));
    for (const Gvcp::ECommand expected : {Gvcp::ECommand::PendingAck, Gvcp::ECommand::WriteRegAck})
    {
        const auto ack = peer.Receive(5s);
        ASSERT_TRUE(ack.has_value());
        EXPECT_EQ(ack->command, static_cast<std::uint16_t>(expected));
    }
    const auto start = std::chrono::steady_clock::now();
    const auto pending = peer.Ask(Gvcp::EncodeReadRegCmd(peer.NextId(), {Gvbs::Version}));
    ASSERT_TRUE(pending.has_value());
    EXPECT_EQ(pending->command, static_cast<std::uint16_t>(Gvcp::ECommand::PendingAck));
    std::uint16_t timeMs = 0;
    ASSERT_EQ(Gvcp::ParsePendingAck(*pending, timeMs), Gvcp::EParseResult::Ok);
    EXPECT_EQ(timeMs, 300);
    const auto answer = peer.Receive(5s);
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->command, static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegAck));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms);
}

TEST(Faults, cameraThatIsHeldElsewhereCannotBeTaken)
{
    const CCameraProgram cameras({"--config", WriteConfig("", R"("faults": {"refuseOpenOwner": "10.1.2.3"})")});
    CGvcpPeer peer;
    EXPECT_EQ(peer.Read(Gvbs::ControlChannelPrivilege), Gvbs::CcpControlAccess);
    EXPECT_EQ(peer.Read(Gvbs::PrimaryApplicationIpAddress), 0x0A010203U);
    EXPECT_EQ(peer.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::AccessDenied);
}

TEST(Faults, discoveryIsAnsweredAsLateAsTheDataSay)
{
    const CCameraProgram cameras({"--config", WriteConfig("", R"("faults": {"discoveryDelayMs": 300})")});
    CGvcpPeer peer;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(peer.Ask(Gvcp::EncodeDiscoveryCmd(peer.NextId(), false)).has_value());
    EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms);
}

TEST(Network, resetCameraIsAwayForItsBootTimeAndKeepsItsName)
{
    const CCameraProgram cameras({"--config", WriteConfig("", "\"bootTimeMs\": 600")});
    CGvcpPeer peer;
    EXPECT_EQ(peer.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::Success);
    EXPECT_EQ(peer.Write(Gvbs::UserDefinedName, 0x62000000), EStatus::Success); // "b"
    EXPECT_EQ(peer.Write(static_cast<std::uint32_t>(Register::DeviceReset), 1), EStatus::Success);
    const auto start = std::chrono::steady_clock::now();
    std::optional<Gvcp::SAcknowledge> back;
    while (!back.has_value() && std::chrono::steady_clock::now() - start < 10s)
    {
        peer.Send(Gvcp::EncodeReadRegCmd(peer.NextId(), {Gvbs::UserDefinedName}));
        back = peer.Receive(50ms);
    }
    ASSERT_TRUE(back.has_value());
    EXPECT_GE(std::chrono::steady_clock::now() - start, 550ms);
    std::vector<std::uint32_t> values;
    ASSERT_EQ(Gvcp::ParseReadRegAck(*back, values), Gvcp::EParseResult::Ok);
    EXPECT_EQ(values.front(), 0x62000000U);
    EXPECT_EQ(peer.Read(Gvbs::ControlChannelPrivilege), 0U);
}

TEST(Network, controlIsFreeAgainWhenItsOwnerFellSilent)
{
    const CCameraProgram cameras;
    CGvcpPeer first;
    first.OpenStream(PacketBytes);
    EXPECT_EQ(first.Write(Gvbs::HeartbeatTimeout, 500), EStatus::Success);
    CGvcpPeer second;
    EXPECT_EQ(second.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::AccessDenied);
    const auto start = std::chrono::steady_clock::now();
    while (second.Read(Gvbs::ControlChannelPrivilege) != 0 && std::chrono::steady_clock::now() - start < 10s)
    {
    }
    EXPECT_EQ(second.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::Success);
    EXPECT_EQ(second.Read(Gvbs::StreamChannelPort), 0U);
}

TEST(Network, forcedAddressIsWhereTheCameraAnswersFromThenOn)
{
    const CCameraProgram cameras;
    CGvcpPeer peer;
    Gvcp::SDiscoveryAck found;
    const auto ack = peer.Ask(Gvcp::EncodeDiscoveryCmd(peer.NextId(), false));
    ASSERT_TRUE(ack.has_value());
    ASSERT_EQ(Gvcp::ParseDiscoveryAck(*ack, found), Gvcp::EParseResult::Ok);
    Gvcp::SForceIp forceIp;
    forceIp.mac = found.mac;
    forceIp.ip = 0x7F000009;
    forceIp.subnetMask = 0xFF000000;
    const auto forced = peer.Ask(Gvcp::EncodeForceIpCmd(peer.NextId(), forceIp, false));
    ASSERT_TRUE(forced.has_value());
    EXPECT_EQ(forced->status, 0);
    CGvcpPeer there(0x7F000009);
    EXPECT_EQ(there.Read(Gvbs::CurrentIpAddress), 0x7F000009U);
}
