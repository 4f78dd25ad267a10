// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace Velmo::Gvcp;

namespace
{

SAcknowledge Acknowledge(const Bytes& packet)
{
    SAcknowledge ack;
    EXPECT_EQ(ParseAcknowledge(packet.data(), packet.size(), ack), EParseResult::Ok);
    return ack;
}

SCommand Command(const Bytes& packet)
{
    SCommand command;
    EXPECT_EQ(ParseCommand(packet.data(), packet.size(), command), EParseResult::Ok);
    return command;
}

/** A discovery acknowledge as a camera would send it, laid out by hand. */
Bytes RawDiscoveryAck()
{
    Bytes packet(HeaderBytes + DiscoveryAckBytes, 0);
    const auto put = [&packet](std::size_t offset, std::initializer_list<std::uint8_t> bytes)
    {
        std::copy(bytes.begin(), bytes.end(), packet.begin() + static_cast<std::ptrdiff_t>(HeaderBytes + offset));
    };
    const auto text = [&packet](std::size_t offset, const char* value)
    {
        std::memcpy(packet.data() + HeaderBytes + offset, value, std::strlen(value));
    };
    packet[3] = 0x03;
    packet[5] = 0xF8;
    packet[7] = 0x21;
    put(0x00, {0x00, 0x02, 0x00, 0x01, 0x80, 0x00, 0x00, 0x01});
    put(0x0A, {0x00, 0x30, 0x53, 0x01, 0x02, 0x03, 0x80, 0x00, 0x00, 0x07, 0x00, 0x00, 0x00, 0x05});
    put(0x24, {10, 1, 2, 3});
    put(0x34, {255, 255, 0, 0});
    put(0x44, {10, 1, 0, 1});
    text(0x48, "Maker");
    text(0x68, "Model");
    text(0x88, "1.2.3");
    text(0xA8, "Information");
    text(0xD8, "S-1");
    text(0xE8, "0123456789abcdef");
    return packet;
}

} // namespace

TEST(GvcpParse, discoveryAcknowledgeGivesEveryField)
{
    const Bytes packet = RawDiscoveryAck();
    const SAcknowledge ack = Acknowledge(packet);
    EXPECT_EQ(ack.status, 0);
    EXPECT_EQ(ack.command, 0x0003);
    EXPECT_EQ(ack.ackId, 0x0021);
    SDiscoveryAck discovery;
    ASSERT_EQ(ParseDiscoveryAck(ack, discovery), EParseResult::Ok);
    EXPECT_EQ(discovery.versionMajor, 2);
    EXPECT_EQ(discovery.versionMinor, 1);
    EXPECT_EQ(discovery.deviceMode, 0x80000001);
    EXPECT_EQ(MacText(discovery.mac), "00:30:53:01:02:03");
    EXPECT_EQ(discovery.supportedIpConfiguration, 0x80000007);
    EXPECT_EQ(discovery.currentIpConfiguration, 5u);
    EXPECT_EQ(IpText(discovery.currentIp), "10.1.2.3");
    EXPECT_EQ(IpText(discovery.currentSubnetMask), "255.255.0.0");
    EXPECT_EQ(IpText(discovery.defaultGateway), "10.1.0.1");
    EXPECT_EQ(discovery.manufacturerName, "Maker");
    EXPECT_EQ(discovery.modelName, "Model");
    EXPECT_EQ(discovery.deviceVersion, "1.2.3");
    EXPECT_EQ(discovery.manufacturerInfo, "Information");
    EXPECT_EQ(discovery.serialNumber, "S-1");
}

TEST(GvcpParse, textThatFillsItsFieldNeedsNoTerminator)
{
    const Bytes packet = RawDiscoveryAck();
    SDiscoveryAck discovery;
    ASSERT_EQ(ParseDiscoveryAck(Acknowledge(packet), discovery), EParseResult::Ok);
    EXPECT_EQ(discovery.userDefinedName, "0123456789abcdef");
}

TEST(GvcpParse, encodedDiscoveryAcknowledgeIsTheHandMadeOne)
{
    SDiscoveryAck discovery;
    Bytes packet = RawDiscoveryAck();
    packet.back() = 0; // our encoder always terminates
    ASSERT_EQ(ParseDiscoveryAck(Acknowledge(packet), discovery), EParseResult::Ok);
    EXPECT_EQ(EncodeDiscoveryAck(0x21, discovery), packet);
}

TEST(GvcpParse, everyTruncationOfADatagramIsTooShort)
{
    const Bytes packet = RawDiscoveryAck();
    for (std::size_t bytes = 0; bytes < packet.size(); ++bytes)
    {
        const Bytes cut(packet.begin(), packet.begin() + static_cast<std::ptrdiff_t>(bytes));
        SAcknowledge ack;
        EXPECT_EQ(ParseAcknowledge(cut.data(), cut.size(), ack), EParseResult::TooShort) << bytes;
    }
}

TEST(GvcpParse, discoveryAcknowledgeWithAShortPayloadIsRefusedAndChangesNothing)
{
    Bytes packet = RawDiscoveryAck();
    packet[5] = 0xF7;
    SDiscoveryAck discovery;
    discovery.modelName = "before";
    EXPECT_EQ(ParseDiscoveryAck(Acknowledge(packet), discovery), EParseResult::LengthMismatch);
    EXPECT_EQ(discovery.modelName, "before");
}

TEST(GvcpParse, commandWithoutTheKeyIsRefused)
{
    Bytes packet = EncodeDiscoveryCmd(1, false);
    packet[0] = 0x43;
    SCommand command;
    EXPECT_EQ(ParseCommand(packet.data(), packet.size(), command), EParseResult::BadKey);
}

TEST(GvcpParse, commandShorterThanItAnnouncesIsRefused)
{
    Bytes packet = EncodeReadRegCmd(1, {0x0A00});
    packet.pop_back();
    SCommand command;
    EXPECT_EQ(ParseCommand(packet.data(), packet.size(), command), EParseResult::TooShort);
}

TEST(GvcpParse, forceIpRoundTrip)
{
    SForceIp sent;
    sent.mac = {1, 2, 3, 4, 5, 6};
    sent.ip = 0x0A000002;
    sent.subnetMask = 0xFF000000;
    sent.gateway = 0x0A000001;
    const Bytes packet = EncodeForceIpCmd(1, sent, true);
    SForceIp received;
    const SCommand command = Command(packet);
    EXPECT_EQ(command.flags, Flag::AckRequired | Flag::AllowBroadcastAck);
    ASSERT_EQ(ParseForceIpCmd(command, received), EParseResult::Ok);
    EXPECT_EQ(received.mac, sent.mac);
    EXPECT_EQ(received.ip, sent.ip);
    EXPECT_EQ(received.subnetMask, sent.subnetMask);
    EXPECT_EQ(received.gateway, sent.gateway);
}

TEST(GvcpParse, readRegisterRoundTrip)
{
    const Bytes packet = EncodeReadRegCmd(1, {0x0A00, 0x0938});
    std::vector<std::uint32_t> addresses;
    ASSERT_EQ(ParseReadRegCmd(Command(packet), addresses), EParseResult::Ok);
    EXPECT_EQ(addresses, (std::vector<std::uint32_t>{0x0A00, 0x0938}));
    const Bytes answer = EncodeReadRegAck(1, EStatus::Success, {1, 0xFFFFFFFF});
    std::vector<std::uint32_t> values;
    ASSERT_EQ(ParseReadRegAck(Acknowledge(answer), values), EParseResult::Ok);
    EXPECT_EQ(values, (std::vector<std::uint32_t>{1, 0xFFFFFFFF}));
}

TEST(GvcpParse, readRegisterOffTheGridIsRefused)
{
    Bytes packet = EncodeReadRegCmd(1, {0x0A00});
    packet.back() = 0x02;
    std::vector<std::uint32_t> addresses;
    EXPECT_EQ(ParseReadRegCmd(Command(packet), addresses), EParseResult::BadAlignment);
}

TEST(GvcpParse, readRegisterWithoutAddressOrWithAPieceOfOneIsRefused)
{
    Bytes packet = EncodeReadRegCmd(1, {0x0A00, 0x0A04});
    std::vector<std::uint32_t> addresses;
    packet[5] = 6;
    EXPECT_EQ(ParseReadRegCmd(Command(packet), addresses), EParseResult::LengthMismatch);
    packet[5] = 0;
    EXPECT_EQ(ParseReadRegCmd(Command(packet), addresses), EParseResult::LengthMismatch);
}

TEST(GvcpParse, writeRegisterRoundTrip)
{
    const Bytes packet = EncodeWriteRegCmd(1, {{0x0A00, 2}, {0x0938, 3000}});
    RegisterValues values;
    ASSERT_EQ(ParseWriteRegCmd(Command(packet), values), EParseResult::Ok);
    EXPECT_EQ(values, (RegisterValues{{0x0A00, 2}, {0x0938, 3000}}));
    const Bytes answer = EncodeWriteRegAck(1, EStatus::Success, 2);
    std::uint16_t index = 0;
    ASSERT_EQ(ParseWriteAck(Acknowledge(answer), index), EParseResult::Ok);
    EXPECT_EQ(index, 2);
}

TEST(GvcpParse, writeRegisterWithAnAddressButNoValueIsRefused)
{
    Bytes packet = EncodeWriteRegCmd(1, {{0x0A00, 2}});
    packet[5] = 4;
    RegisterValues values;
    EXPECT_EQ(ParseWriteRegCmd(Command(packet), values), EParseResult::LengthMismatch);
}

TEST(GvcpParse, memoryRoundTrip)
{
    const Bytes readCommand = EncodeReadMemCmd(1, 0x48, 32);
    std::uint32_t address = 0;
    std::size_t bytes = 0;
    ASSERT_EQ(ParseReadMemCmd(Command(readCommand), address, bytes), EParseResult::Ok);
    EXPECT_EQ(address, 0x48u);
    EXPECT_EQ(bytes, 32u);
    const Bytes answer = EncodeReadMemAck(1, EStatus::Success, 0x48, {1, 2, 3, 4});
    SMemory memory;
    const SAcknowledge ack = Acknowledge(answer);
    ASSERT_EQ(ParseReadMemAck(ack, memory), EParseResult::Ok);
    EXPECT_EQ(memory.address, 0x48u);
    EXPECT_EQ(Bytes(memory.pData, memory.pData + memory.bytes), (Bytes{1, 2, 3, 4}));
    const Bytes writeCommand = EncodeWriteMemCmd(1, 0xE8, {5, 6, 7, 8});
    ASSERT_EQ(ParseWriteMemCmd(Command(writeCommand), memory), EParseResult::Ok);
    EXPECT_EQ(memory.address, 0xE8u);
    EXPECT_EQ(Bytes(memory.pData, memory.pData + memory.bytes), (Bytes{5, 6, 7, 8}));
}

TEST(GvcpParse, memoryBeyondTheAddressSpaceIsRefused)
{
    Bytes packet = EncodeReadMemCmd(1, 0xFFFFFFF0, 16);
    std::uint32_t address = 0;
    std::size_t bytes = 0;
    EXPECT_EQ(ParseReadMemCmd(Command(packet), address, bytes), EParseResult::Ok);
    packet.back() = 20;
    EXPECT_EQ(ParseReadMemCmd(Command(packet), address, bytes), EParseResult::BadAddress);
}

TEST(GvcpParse, readMemoryOfNothingOrOfMoreThanAPacketIsRefused)
{
    Bytes packet = EncodeReadMemCmd(1, 0, 16);
    std::uint32_t address = 0;
    std::size_t bytes = 0;
    packet.back() = 0;
    EXPECT_EQ(ParseReadMemCmd(Command(packet), address, bytes), EParseResult::LengthMismatch);
    packet[packet.size() - 2] = 0x10;
    EXPECT_EQ(ParseReadMemCmd(Command(packet), address, bytes), EParseResult::LengthMismatch);
}

TEST(GvcpParse, memoryWithAnAddressButNoDataIsRefused)
{
    Bytes packet = EncodeWriteMemCmd(1, 0, {1, 2, 3, 4});
    packet[5] = 4;
    SMemory memory;
    EXPECT_EQ(ParseWriteMemCmd(Command(packet), memory), EParseResult::LengthMismatch);
    packet[5] = 6;
    EXPECT_EQ(ParseWriteMemCmd(Command(packet), memory), EParseResult::BadAlignment);
}

TEST(GvcpParse, pendingAcknowledgeGivesItsTime)
{
    const Bytes packet = EncodePendingAck(1, 5000);
    std::uint16_t timeMs = 0;
    ASSERT_EQ(ParsePendingAck(Acknowledge(packet), timeMs), EParseResult::Ok);
    EXPECT_EQ(timeMs, 5000);
}

TEST(GvcpParse, pendingAcknowledgeWithoutTimeIsRefused)
{
    const Bytes packet = EncodeErrorAck(1, ECommand::PendingAck, EStatus::Success);
    std::uint16_t timeMs = 7;
    EXPECT_EQ(ParsePendingAck(Acknowledge(packet), timeMs), EParseResult::LengthMismatch);
    EXPECT_EQ(timeMs, 7);
}

TEST(GvcpParse, bytesBehindTheAnnouncedPayloadAreIgnored)
{
    Bytes packet = EncodePendingAck(1, 5);
    packet.push_back(0xEE);
    EXPECT_EQ(Acknowledge(packet).payloadBytes, 4u);
}

TEST(GvcpText, statusesHaveWordsAndUnknownOnesTheirNumber)
{
    EXPECT_EQ(StatusText(0x8006), "access denied");
    EXPECT_EQ(StatusText(0x8007), "busy");
    EXPECT_EQ(StatusText(0x8013), "no reference time");
    EXPECT_EQ(StatusText(0x9abc), "status 0x9abc");
}

TEST(GvcpText, addressesRoundTripAndBadTextsAreRefused)
{
    std::uint32_t ip = 42;
    EXPECT_TRUE(ParseIp("192.168.7.200", ip));
    EXPECT_EQ(ip, 0xC0A807C8);
    EXPECT_EQ(IpText(ip), "192.168.7.200");
    for (const char* bad : {"", "1.2.3", "1.2.3.256", "camera", "1.2.3.4 ", "::1"})
    {
        EXPECT_FALSE(ParseIp(bad, ip)) << bad;
    }
    EXPECT_EQ(ip, 0xC0A807C8);
}
