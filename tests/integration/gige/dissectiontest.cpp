// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"
#include "protocols/gvsp.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

using namespace Velmo::Gvcp;

namespace
{

struct SPacketKind
{
    const char* name;
    Bytes packet;
    const char* expected; // in the dissection
};

void PrintTo(const SPacketKind& kind, std::ostream* pStream)
{
    *pStream << kind.name;
}

SDiscoveryAck Camera()
{
    SDiscoveryAck ack;
    ack.versionMajor = 2;
    ack.manufacturerName = "Maker";
    ack.modelName = "Model";
    ack.serialNumber = "S-1";
    ack.userDefinedName = "left";
    ParseIp("10.1.2.3", ack.currentIp);
    return ack;
}

SForceIp NewAddress()
{
    SForceIp forceIp;
    forceIp.mac = {0, 1, 2, 3, 4, 5};
    ParseIp("10.1.2.4", forceIp.ip);
    return forceIp;
}

SEvent SomeEvent(bool isExtended)
{
    SEvent event;
    event.id = 0x9001;
    event.isExtended = isExtended;
    event.blockId = isExtended ? 0x100000007 : 7;
    event.timestamp = 1234;
    event.data = {1, 2, 3, 4};
    return event;
}

std::vector<SPacketKind> EveryKind()
{
    return {
        {"DiscoveryCmd", EncodeDiscoveryCmd(1, true), "DISCOVERY_CMD"},
        {"DiscoveryAck", EncodeDiscoveryAck(1, Camera()), "10.1.2.3"},
        {"ForceIpCmd", EncodeForceIpCmd(1, NewAddress(), false), "10.1.2.4"},
        {"ForceIpAck", EncodeForceIpAck(1, EStatus::Success), "FORCEIP_ACK"},
        {"ReadRegCmd", EncodeReadRegCmd(1, {0x0A00, 0x0938}), "READREG_CMD"},
        {"ReadRegAck", EncodeReadRegAck(1, EStatus::Success, {2, 3000}), "READREG_ACK"},
        {"WriteRegCmd", EncodeWriteRegCmd(1, {{0x0A00, 2}}), "WRITEREG_CMD"},
        {"WriteRegAck", EncodeWriteRegAck(1, EStatus::Success, 1), "WRITEREG_ACK"},
        {"ReadMemCmd", EncodeReadMemCmd(1, 0x0200, 512), "READMEM_CMD"},
        {"ReadMemAck", EncodeReadMemAck(1, EStatus::Success, 0x0200, {1, 2, 3, 4}), "READMEM_ACK"},
        {"WriteMemCmd", EncodeWriteMemCmd(1, 0x00E8, {'c', 'a', 'm', 0}), "WRITEMEM_CMD"},
        {"WriteMemAck", EncodeWriteMemAck(1, EStatus::Success, 4), "WRITEMEM_ACK"},
        {"PendingAck", EncodePendingAck(1, 1000), "PENDING_ACK"},
        {"PacketResendCmd", EncodePacketResendCmd(1, {0, false, 7, 2, 5}), "PACKETRESEND_CMD"},
        {"PacketResendCmdExtended", EncodePacketResendCmd(1, {0, true, 0x100000007, 2, 5}), "0x0000000100000007"},
        {"EventCmd", EncodeEventCmd(1, SomeEvent(false), true), "EVENT_CMD"},
        {"EventCmdExtended", EncodeEventCmd(1, SomeEvent(true), true), "0x0000000100000007"},
        {"EventAck", EncodePlainAck(1, ECommand::EventAck, EStatus::Success), "EVENT_ACK"},
        {"EventDataCmd", EncodeEventDataCmd(1, SomeEvent(false), true), "EVENTDATA_CMD"},
        {"EventDataCmdExtended", EncodeEventDataCmd(1, SomeEvent(true), true), "0x0000000100000007"},
        {"EventDataAck", EncodePlainAck(1, ECommand::EventDataAck, EStatus::Success), "EVENTDATA_ACK"},
        {"ActionCmd", EncodeActionCmd(1, {0x11, 0x22, 0x33, false, 0}, true), "ACTION_CMD"},
        {"ScheduledActionCmd", EncodeActionCmd(1, {0x11, 0x22, 0x33, true, 0x123456789}, true), "0000000123456789"},
        {"ActionAck", EncodePlainAck(1, ECommand::ActionAck, EStatus::ActionLate), "ACTION_ACK"},
        {"RefusedWriteReg", EncodeErrorAck(1, ECommand::WriteRegAck, EStatus::AccessDenied), "ACCESS_DENIED"},
        {"RefusedWriteMem", EncodeErrorAck(1, ECommand::WriteMemAck, EStatus::WriteProtect), "WRITE_PROTECT"},
        {"RefusedReadReg", EncodeErrorAck(1, ECommand::ReadRegAck, EStatus::InvalidAddress), "INVALID_ADDRESS"},
    };
}

std::string RunCommand(const std::string& command)
{
    FILE* pPipe = popen(command.c_str(), "r");
    if (pPipe == nullptr)
    {
        return "cannot run: " + command;
    }
    std::string output;
    char piece[4096];
    for (std::size_t bytes = 0; (bytes = fread(piece, 1, sizeof piece, pPipe)) > 0;)
    {
        output.append(piece, bytes);
    }
    const int status = pclose(pPipe);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? output : "failed: " + command + "\n" + output;
}

std::string HexDump(const Bytes& packet)
{
    std::string text = "000000";
    char piece[4];
    for (const std::uint8_t byte : packet)
    {
        std::snprintf(piece, sizeof piece, " %02x", byte);
        text += piece;
    }
    return text + "\n";
}

class GvcpDissection : public ::testing::TestWithParam<SPacketKind>
{
};

/** What tshark says of a datagram. */
std::string Dissect(const Bytes& packet, const std::string& ports, const std::string& decodeAs)
{
    const std::string base = ::testing::TempDir() + "dissect-" + std::to_string(getpid());
    std::ofstream(base + ".txt") << HexDump(packet);
    const std::string converted =
        RunCommand("text2pcap -q -4 10.0.0.1,10.0.0.2 -u " + ports + " " + base + ".txt " + base + ".pcap 2>&1");
    const std::string dissected = RunCommand("tshark -r " + base + ".pcap -d " + decodeAs + " -V 2>/dev/null");
    std::remove((base + ".txt").c_str());
    std::remove((base + ".pcap").c_str());
    return converted + dissected;
}

Bytes WithData(const Velmo::Gvsp::SHeader& header, std::size_t dataBytes)
{
    const Velmo::Gvsp::SHeaderBytes begin = EncodeHeader(header);
    Bytes packet(begin.data.begin(), begin.data.begin() + static_cast<std::ptrdiff_t>(begin.bytes));
    packet.resize(packet.size() + dataBytes);
    return packet;
}

/** Those that are not sent with every block. */
std::vector<SPacketKind> SpecialPackets(Velmo::Gvsp::SHeader header)
{
    namespace Gvsp = Velmo::Gvsp;
    const bool isExtended = header.isExtended;
    const auto resent = static_cast<std::uint16_t>(EStatus::PacketResend);
    Gvsp::SHeader again = header;
    again.status = resent;
    again.flags = Gvsp::Flag::PacketResend;
    again.packetId = 5;
    Gvsp::SHeader missing = header;
    missing.status = static_cast<std::uint16_t>(EStatus::PacketUnavailable);
    header.blockId = 0;
    return {
        {isExtended ? "TestPacketExtended" : "TestPacket", WithData(header, 1000), "PAYLOAD"},
        {isExtended ? "ResentExtended" : "Resent", WithData(again, 100),
         isExtended ? "Flag Packet Resend: 0x1" : "GEV_STATUS_PACKET_RESEND (0x0100)"},
        {isExtended ? "ResentLeaderExtended" : "ResentLeader", EncodeLeader(again, {}), "GEV_STATUS_PACKET_RESEND"},
        {isExtended ? "ResentTrailerExtended" : "ResentTrailer", EncodeTrailer(again, {}), "GEV_STATUS_PACKET_RESEND"},
        {isExtended ? "UnavailableExtended" : "Unavailable", WithData(missing, 0), "GEV_STATUS_PACKET_UNAVAILABLE"},
    };
}

std::vector<SPacketKind> EveryStreamPacket()
{
    namespace Gvsp = Velmo::Gvsp;
    std::vector<SPacketKind> kinds;
    for (const bool isExtended : {false, true})
    {
        Gvsp::SHeader header;
        header.isExtended = isExtended;
        header.blockId = 7;
        Gvsp::SLeader leader;
        leader.pixelFormat = 0x01080001;
        leader.sizeX = 640;
        leader.sizeY = 480;
        Gvsp::STrailer trailer;
        trailer.sizeY = 480;
        kinds.push_back({isExtended ? "ImageLeaderExtended" : "ImageLeader", EncodeLeader(header, leader), "Mono8"});
        kinds.push_back({isExtended ? "ImageTrailerExtended" : "ImageTrailer", EncodeTrailer(header, trailer), "480"});
        kinds.push_back({isExtended ? "PayloadExtended" : "Payload", WithData(header, 100), "PAYLOAD"});
        for (SPacketKind& kind : SpecialPackets(header))
        {
            kinds.push_back(std::move(kind));
        }
        leader.payloadType = trailer.payloadType = 0x4001;
        trailer.chunkDataPayloadLength = 0x1234;
        kinds.push_back({isExtended ? "ChunkLeaderExtended" : "ChunkLeader", EncodeLeader(header, leader), "0x4001"});
        kinds.push_back(
            {isExtended ? "ChunkTrailerExtended" : "ChunkTrailer", EncodeTrailer(header, trailer), "0x00001234"});
        leader.payloadType = trailer.payloadType = static_cast<std::uint16_t>(Gvsp::EPayloadType::ChunkData);
        kinds.push_back(
            {isExtended ? "BareChunkLeaderExtended" : "BareChunkLeader", EncodeLeader(header, leader), "0x0004"});
        kinds.push_back(
            {isExtended ? "BareChunkTrailerExtended" : "BareChunkTrailer", EncodeTrailer(header, trailer), "0x0004"});
    }
    return kinds;
}

class GvspDissection : public ::testing::TestWithParam<SPacketKind>
{
};

} // namespace

TEST_P(GvspDissection, independentDissectorFindsNothingMalformed)
{
    const SPacketKind& kind = GetParam();
    const std::string dissected = Dissect(kind.packet, "20202,50000", "udp.port==20202,gvsp");
    EXPECT_NE(dissected.find("GigE Vision Streaming Protocol"), std::string::npos) << dissected;
    EXPECT_NE(dissected.find(kind.expected), std::string::npos) << dissected;
    EXPECT_EQ(dissected.find("alformed"), std::string::npos) << dissected;
}

INSTANTIATE_TEST_SUITE_P(EveryKind, GvspDissection, ::testing::ValuesIn(EveryStreamPacket()),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST_P(GvcpDissection, independentDissectorFindsNothingMalformed)
{
    const SPacketKind& kind = GetParam();
    const std::string ports = kind.packet[0] == Key ? "49152,3956" : "3956,49152";
    const std::string dissected = Dissect(kind.packet, ports, "udp.port==3956,gvcp");
    EXPECT_NE(dissected.find("GigE Vision Control Protocol"), std::string::npos) << dissected;
    EXPECT_NE(dissected.find(kind.expected), std::string::npos) << dissected;
    EXPECT_EQ(dissected.find("alformed"), std::string::npos) << dissected;
}

INSTANTIATE_TEST_SUITE_P(EveryKind, GvcpDissection, ::testing::ValuesIn(EveryKind()),
                         [](const auto& kind) { return std::string(kind.param.name); });
