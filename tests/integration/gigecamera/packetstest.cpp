// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/gigecamera/messagepeer.h"
#include "protocols/chunks.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/gvcppeer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <unistd.h>

using namespace Test;
using namespace std::chrono_literals;
namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;
namespace Gvsp = Velmo::Gvsp;
namespace Register = Simulator::Register;
using Gvcp::EStatus;
using testing::HasSubstr;
using testing::Not;

namespace
{

constexpr std::size_t ImageBytes = 640 * 480;

void Put(std::string& file, std::uint64_t value, int bytes)
{
    for (int i = bytes - 1; i >= 0; --i)
    {
        file.push_back(static_cast<char>(value >> 8 * i & 0xFF));
    }
}

/** The datagrams as a capture file; big-endian, link type 101: bare IP packets. */
std::string WriteCapture(const std::vector<SDatagram>& datagrams)
{
    std::string file;
    Put(file, 0xA1B2C3D4, 4);
    Put(file, 0x00020004, 4);
    Put(file, 0, 8);
    Put(file, 65535, 4);
    Put(file, 101, 4);
    for (const SDatagram& datagram : datagrams)
    {
        const std::size_t bytes = 28 + datagram.data.size();
        Put(file, 0, 8);
        Put(file, bytes, 4);
        Put(file, bytes, 4);
        Put(file, 0x4500, 2);
        Put(file, bytes, 2);
        Put(file, 0, 4);
        Put(file, 0x40110000, 4); // time to live, UDP, no checksum
        Put(file, datagram.sourceIp, 4);
        Put(file, datagram.destinationIp, 4);
        Put(file, datagram.sourcePort, 2);
        Put(file, datagram.destinationPort, 2);
        Put(file, bytes - 20, 2);
        Put(file, 0, 2);
        file += std::string(datagram.data.begin(), datagram.data.end());
    }
    const std::string name = ::testing::TempDir() + "gigecamera-" + std::to_string(getpid()) + ".pcap";
    std::ofstream(name, std::ios::binary) << file;
    return name;
}

std::size_t CountIn(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    {
        ++count;
    }
    return count;
}

void Execute(CGvcpPeer& peer, std::int64_t command)
{
    EXPECT_EQ(peer.Write(static_cast<std::uint32_t>(command), 1), EStatus::Success);
}

void SetChunks(CGvcpPeer& peer)
{
    EXPECT_EQ(peer.Write(static_cast<std::uint32_t>(Register::ChunkModeActive), 1), EStatus::Success);
    EXPECT_EQ(peer.Write(static_cast<std::uint32_t>(Register::ChunkEnable) + 4, 1), EStatus::Success);
}

void Drain(CGvcpPeer& peer)
{
    while (peer.ReceivePacket(100ms).has_value())
    {
    }
}

/** Takes packets up to one like that. */
template <class IsWanted> void ReceiveUntil(CGvcpPeer& peer, IsWanted isWanted)
{
    for (;;)
    {
        const auto packet = peer.ReceivePacket(30s);
        ASSERT_TRUE(packet.has_value());
        if (isWanted(packet->header))
        {
            return;
        }
    }
}

/** What a camera sends on demand: one packet again, one that it does not have, a test packet. */
void AskForMore(CGvcpPeer& peer, bool isExtended)
{
    Execute(peer, Register::AcquisitionStart);
    std::uint64_t block = 0;
    ReceiveUntil(peer,
                 [&block](const Gvsp::SHeader& header)
                 {
                     block = header.blockId;
                     return header.format == Gvsp::EPacketFormat::Trailer;
                 });
    const auto ask = [&](std::uint64_t id, EStatus answer)
    {
        peer.Send(Gvcp::EncodePacketResendCmd(peer.NextId(), {0, isExtended, id, 2, 2}));
        ReceiveUntil(peer, [answer](const Gvsp::SHeader& header)
                     { return header.status == static_cast<std::uint16_t>(answer); });
    };
    ask(block, EStatus::PacketResend);
    constexpr std::uint64_t unknown = 0xFFFF;
    ask(unknown, EStatus::PacketUnavailable);
    EXPECT_EQ(peer.Write(Gvbs::StreamChannelPacketSize, Gvbs::ScpsFireTestPacket | 8000), EStatus::Success);
    ReceiveUntil(peer, [](const Gvsp::SHeader& header) { return header.blockId == 0; });
}

std::vector<std::uint8_t> PayloadOf(const std::map<std::uint32_t, std::vector<std::uint8_t>>& block)
{
    std::vector<std::uint8_t> payload;
    for (const auto& [id, data] : block)
    {
        Gvsp::SPacket packet;
        EXPECT_EQ(Gvsp::ParsePacket(data.data(), data.size(), packet), Gvsp::EParseResult::Ok);
        if (packet.header.format == Gvsp::EPacketFormat::Payload)
        {
            payload.insert(payload.end(), packet.pPayload, packet.pPayload + packet.payloadBytes);
        }
    }
    return payload;
}

} // namespace

TEST(Packets, independentDissectorFindsNothingMalformedInASession)
{
    CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")});
    CGvcpPeer peer;
    peer.Ask(Gvcp::EncodeDiscoveryCmd(peer.NextId(), false));
    peer.Ask(Gvcp::EncodeReadMemCmd(peer.NextId(), Gvbs::FirstUrl, 512));
    for (const std::uint32_t address : {Gvbs::Version, Gvbs::GvcpCapability, Gvbs::StreamChannelCapability})
    {
        peer.Read(address);
    }
    std::size_t blocks = 0;
    peer.OpenStream(8000);
    EXPECT_EQ(peer.Write(Gvbs::GvcpConfiguration, Gvbs::GvcpConfigurationHeartbeatDisable), EStatus::Success);
    for (const std::uint32_t extended : {0U, Gvbs::GvspConfigurationExtendedIds})
    {
        EXPECT_EQ(peer.Write(Gvbs::GvspConfiguration, extended), EStatus::Success);
        for (const std::uint32_t chunks : {0U, Gvbs::SccfgExtendedChunkData})
        {
            EXPECT_EQ(peer.Write(Gvbs::StreamChannelConfiguration, chunks), EStatus::Success);
            Execute(peer, Register::AcquisitionStart);
            blocks += peer.ReceiveBlock(30s).empty() ? 0 : 1;
            Execute(peer, Register::AcquisitionStop);
            Drain(peer);
            SetChunks(peer);
        }
        AskForMore(peer, extended != 0);
    }
    EXPECT_EQ(blocks, 4U);
    EXPECT_EQ(peer.Write(Gvbs::Version, 1), EStatus::WriteProtect);
    EXPECT_EQ(peer.Write(Gvbs::ControlChannelPrivilege, 0), EStatus::Success);
    const std::string file = WriteCapture(peer.GetDatagrams());
    const std::string port = std::to_string(peer.GetDatagrams().front().sourcePort);
    std::string streamPort;
    std::size_t streamed = 0;
    for (const SDatagram& datagram : peer.GetDatagrams())
    {
        const bool isStream = datagram.sourcePort != Gvcp::Port && datagram.destinationPort != Gvcp::Port;
        streamPort = isStream ? std::to_string(datagram.destinationPort) : streamPort;
        streamed += isStream ? 1 : 0;
    }
    const std::string text =
        OutputOf({"tshark", "-r", file, "-d", "udp.port==3956,gvcp", "-d", "udp.port==" + streamPort + ",gvsp", "-T",
                  "fields", "-e", "frame.protocols", "-e", "_ws.malformed", "-e", "_ws.expert.message", "-e",
                  "gvsp.status", "-e", "gvsp.flag.packetresend"});
    std::remove(file.c_str());
    EXPECT_EQ(CountIn(text, "\t0x0100\t"), 2U); // sent again
    EXPECT_EQ(CountIn(text, "\t0x0100\t0x0001\n"), 1U);
    EXPECT_EQ(CountIn(text, "\t0x800c\t"), 2U); // not there
    EXPECT_EQ(CountIn(text, "udp:gvsp"), streamed);
    EXPECT_GT(streamed, 4 * ImageBytes / 8000);
    EXPECT_THAT(text, HasSubstr("udp:gvcp"));
    EXPECT_THAT(text, Not(HasSubstr("alformed"))) << text;
}

TEST(Packets, independentDissectorReadsTheEventsOfAMessageChannel)
{
    const CCameraProgram cameras(
        {"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\", \"EventNotification[Test]\": "
                                 "\"On\", \"EventNotification[ExposureEnd]\": \"On\"")});
    CGvcpPeer controller;
    CMessagePeer messages;
    messages.Open(controller, 3000, 2);
    Execute(controller, Register::TestEventGenerate);
    ASSERT_FALSE(messages.Receive(5s).empty());
    messages.Acknowledge(1);
    Execute(controller, Register::AcquisitionStart);
    ASSERT_FALSE(messages.Receive(5s).empty());
    messages.Acknowledge(2, Gvcp::ECommand::EventDataAck);
    EXPECT_EQ(controller.Write(Gvbs::ControlChannelPrivilege, 0), EStatus::Success);

    std::vector<SDatagram> session = controller.GetDatagrams();
    session.insert(session.end(), messages.GetDatagrams().begin(), messages.GetDatagrams().end());
    const std::string file = WriteCapture(session);
    const std::string channel = "udp.port==" + std::to_string(messages.GetSenderPort());
    std::vector<std::string> command{"tshark", "-r", file, "-d", "udp.port==3956,gvcp", "-d", channel + ",gvcp"};
    command.insert(command.end(),
                   {"-Y", channel + " or _ws.malformed or _ws.expert", "-T", "fields", "-E", "separator=,"});
    for (const char* field : {"gvcp.cmd.command", "gvcp.ack", "gvcp.cmd.event.devicespecificid",
                              "gvcp.cmd.eventdata.data", "_ws.malformed", "_ws.expert.message"})
    {
        command.insert(command.end(), {"-e", field});
    }
    const std::string text = OutputOf(command);
    std::remove(file.c_str());
    EXPECT_THAT(text, testing::EndsWith("\n0x00c0,,0x9010,,,\n" // the test
                                        ",0x00c1,,,,\n"
                                        "0x00c2,,0x9003,0000000000000001,,\n" // the end of the first exposure
                                        ",0x00c3,,,,\n"));
}

TEST(Packets, requestedOnesAreSentAgain)
{
    CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")});
    CGvcpPeer peer;
    peer.OpenStream(1500);
    Execute(peer, Register::AcquisitionStart);
    const auto block = peer.ReceiveBlock(5s);
    ASSERT_EQ(PayloadOf(block).size(), ImageBytes);
    peer.Send(Gvcp::EncodePacketResendCmd(peer.NextId(), {0, false, 1, 5, 7}));
    for (std::uint32_t id = 5; id <= 7; ++id)
    {
        const auto packet = peer.ReceivePacket(5s);
        ASSERT_TRUE(packet.has_value());
        EXPECT_EQ(packet->header.packetId, id);
        EXPECT_EQ(packet->header.status, static_cast<std::uint16_t>(EStatus::PacketResend));
        const std::vector<std::uint8_t>& first = block.at(id);
        EXPECT_TRUE(std::equal(packet->pPayload, packet->pPayload + packet->payloadBytes,
                               first.begin() + Gvsp::HeaderBytes, first.end()));
    }
    peer.Send(Gvcp::EncodePacketResendCmd(peer.NextId(), {0, false, 99, 5, 5}));
    const auto gone = peer.ReceivePacket(5s);
    ASSERT_TRUE(gone.has_value());
    EXPECT_EQ(gone->header.status, static_cast<std::uint16_t>(EStatus::PacketUnavailable));
    EXPECT_EQ(gone->header.blockId, 99U);
    EXPECT_EQ(gone->payloadBytes, 0U);
    EXPECT_THAT(cameras.End(), HasSubstr("3 of them again; 0 left out, 0 refused by the system, 1 requests missed"));
}

TEST(Packets, chunksFollowTheImage)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")});
    CGvcpPeer peer;
    peer.OpenStream(4000);
    SetChunks(peer);
    EXPECT_EQ(peer.Write(Gvbs::StreamChannelConfiguration, Gvbs::SccfgExtendedChunkData), EStatus::Success);
    Execute(peer, Register::AcquisitionStart);
    const auto block = peer.ReceiveBlock(5s);
    const std::vector<std::uint8_t> payload = PayloadOf(block);
    EXPECT_EQ(payload.size(), peer.Read(static_cast<std::uint32_t>(Register::PayloadSize)));
    Velmo::Chunks::SChunk image;
    ASSERT_TRUE(Velmo::Chunks::Find(payload.data(), payload.size(), Velmo::Chunks::EByteOrder::Big,
                                    Velmo::Chunks::ImageChunkId, image));
    EXPECT_EQ(image.bytes, ImageBytes);
    EXPECT_EQ(image.pData, payload.data());
}

TEST(Packets, testPacketHasTheSizeThatWasAskedFor)
{
    const CCameraProgram cameras;
    CGvcpPeer peer;
    peer.OpenStream(1500);
    EXPECT_EQ(peer.Write(Gvbs::StreamChannelPacketSize, Gvbs::ScpsFireTestPacket | Gvbs::ScpsDoNotFragment | 6000),
              EStatus::Success);
    const auto packet = peer.ReceivePacket(5s);
    ASSERT_TRUE(packet.has_value());
    EXPECT_EQ(packet->header.blockId, 0U);
    EXPECT_EQ(packet->payloadBytes + Gvsp::HeaderBytes + Gvsp::IpAndUdpBytes, 6000U);
    EXPECT_FALSE(peer.ReceivePacket(100ms).has_value());
}

TEST(Packets, goToAMulticastGroup)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")});
    CGvcpPeer peer(0x7F000001, 0xEFFF0A0A); // 239.255.10.10
    peer.OpenStream(1500);
    Execute(peer, Register::AcquisitionStart);
    EXPECT_EQ(PayloadOf(peer.ReceiveBlock(5s)).size(), ImageBytes);
}

TEST(Packets, leaveWithThePauseThatWasAskedFor)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")});
    CGvcpPeer peer;
    peer.OpenStream(1500);
    constexpr std::uint32_t pauseNs = 1'000'000;
    EXPECT_EQ(peer.Write(Gvbs::StreamChannelPacketDelay, pauseNs), EStatus::Success);
    Execute(peer, Register::AcquisitionStart);
    ASSERT_TRUE(peer.ReceivePacket(5s).has_value());
    const auto start = std::chrono::steady_clock::now();
    const auto block = peer.ReceiveBlock(5s);
    const auto took = std::chrono::steady_clock::now() - start;
    ASSERT_EQ(PayloadOf(block).size(), ImageBytes);
    // A sender that was held up at its first packet catches up 20 ms at most.
    EXPECT_GE(took + 30ms, block.size() * std::chrono::nanoseconds(pauseNs));
}
