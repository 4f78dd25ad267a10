// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"

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

} // namespace

TEST_P(GvcpDissection, independentDissectorFindsNothingMalformed)
{
    const SPacketKind& kind = GetParam();
    const std::string base = ::testing::TempDir() + "gvcp-" + std::to_string(getpid());
    std::ofstream(base + ".txt") << HexDump(kind.packet);
    const bool isCommand = kind.packet[0] == Key;
    const std::string ports = isCommand ? "49152,3956" : "3956,49152";
    const std::string converted =
        RunCommand("text2pcap -q -4 10.0.0.1,10.0.0.2 -u " + ports + " " + base + ".txt " + base + ".pcap 2>&1");
    const std::string dissected = RunCommand("tshark -r " + base + ".pcap -d udp.port==3956,gvcp -V 2>/dev/null");
    std::remove((base + ".txt").c_str());
    std::remove((base + ".pcap").c_str());
    EXPECT_NE(dissected.find("GigE Vision Control Protocol"), std::string::npos) << converted << dissected;
    EXPECT_NE(dissected.find(kind.expected), std::string::npos) << dissected;
    EXPECT_EQ(dissected.find("Malformed"), std::string::npos) << dissected;
}

INSTANTIATE_TEST_SUITE_P(EveryKind, GvcpDissection, ::testing::ValuesIn(EveryKind()),
                         [](const auto& kind) { return std::string(kind.param.name); });
