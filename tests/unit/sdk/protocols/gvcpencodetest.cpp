// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"

#include <gtest/gtest.h>

using namespace Velmo::Gvcp;

TEST(GvcpEncode, discoveryCommandIsABareHeader)
{
    EXPECT_EQ(EncodeDiscoveryCmd(0x1234, false), (Bytes{0x42, 0x01, 0x00, 0x02, 0x00, 0x00, 0x12, 0x34}));
}

TEST(GvcpEncode, discoveryCommandMayAllowABroadcastAcknowledge)
{
    EXPECT_EQ(EncodeDiscoveryCmd(0xffff, true), (Bytes{0x42, 0x11, 0x00, 0x02, 0x00, 0x00, 0xff, 0xff}));
}

TEST(GvcpEncode, forceIpCommandHasItsFieldsAtTheStandardsOffsets)
{
    SForceIp forceIp;
    forceIp.mac = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    forceIp.ip = 0xC0A80102;
    forceIp.subnetMask = 0xFFFFFF00;
    forceIp.gateway = 0xC0A80101;
    Bytes expected{0x42, 0x01, 0x00, 0x04, 0x00, 0x38, 0x00, 0x07, 0x00, 0x00, 0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    const auto add = [&expected](std::initializer_list<std::uint8_t> address)
    {
        expected.insert(expected.end(), 12, 0);
        expected.insert(expected.end(), address);
    };
    add({0xC0, 0xA8, 0x01, 0x02});
    add({0xFF, 0xFF, 0xFF, 0x00});
    add({0xC0, 0xA8, 0x01, 0x01});
    EXPECT_EQ(EncodeForceIpCmd(7, forceIp, false), expected);
}

TEST(GvcpEncode, readRegisterCommandListsTheAddresses)
{
    EXPECT_EQ(EncodeReadRegCmd(2, {0x0A00, 0xF0F1F2F4}),
              (Bytes{0x42, 0x01, 0x00, 0x80, 0x00, 0x08, 0x00, 0x02, 0x00, 0x00, 0x0A, 0x00, 0xF0, 0xF1, 0xF2, 0xF4}));
}

TEST(GvcpEncode, writeRegisterCommandListsPairs)
{
    EXPECT_EQ(EncodeWriteRegCmd(3, {{0x0A00, 2}}),
              (Bytes{0x42, 0x01, 0x00, 0x82, 0x00, 0x08, 0x00, 0x03, 0x00, 0x00, 0x0A, 0x00, 0x00, 0x00, 0x00, 0x02}));
}

TEST(GvcpEncode, readMemoryCommandHasAddressAndCount)
{
    EXPECT_EQ(EncodeReadMemCmd(4, 0x200, 512),
              (Bytes{0x42, 0x01, 0x00, 0x84, 0x00, 0x08, 0x00, 0x04, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x00}));
}

TEST(GvcpEncode, writeMemoryCommandHasAddressAndData)
{
    EXPECT_EQ(EncodeWriteMemCmd(5, 0xE8, {'c', 'a', 'm', 0}),
              (Bytes{0x42, 0x01, 0x00, 0x86, 0x00, 0x08, 0x00, 0x05, 0x00, 0x00, 0x00, 0xE8, 'c', 'a', 'm', 0}));
}

TEST(GvcpEncode, pendingAcknowledgeHasTheTimeInMilliseconds)
{
    EXPECT_EQ(EncodePendingAck(6, 1000),
              (Bytes{0x00, 0x00, 0x00, 0x89, 0x00, 0x04, 0x00, 0x06, 0x00, 0x00, 0x03, 0xE8}));
}

TEST(GvcpEncode, refusalOfAReadIsAHeaderWithTheStatus)
{
    EXPECT_EQ(EncodeErrorAck(9, ECommand::ReadRegAck, EStatus::AccessDenied),
              (Bytes{0x80, 0x06, 0x00, 0x81, 0x00, 0x00, 0x00, 0x09}));
}

TEST(GvcpEncode, refusalOfAWriteSaysThatTheFirstFailed)
{
    EXPECT_EQ(EncodeErrorAck(9, ECommand::WriteRegAck, EStatus::AccessDenied),
              (Bytes{0x80, 0x06, 0x00, 0x83, 0x00, 0x04, 0x00, 0x09, 0x00, 0x00, 0x00, 0x00}));
}

TEST(GvcpEncode, memoryOffTheFourByteGridIsRefused)
{
    EXPECT_TRUE(EncodeReadMemCmd(1, 0x201, 4).empty());
    EXPECT_TRUE(EncodeReadMemCmd(1, 0x200, 6).empty());
    EXPECT_TRUE(EncodeWriteMemCmd(1, 0x202, {1, 2, 3, 4}).empty());
    EXPECT_TRUE(EncodeWriteMemCmd(1, 0x200, {1, 2, 3}).empty());
}

TEST(GvcpEncode, whatDoesNotFitOnePacketIsRefused)
{
    EXPECT_FALSE(EncodeReadMemCmd(1, 0, MaxMemoryBytes).empty());
    EXPECT_TRUE(EncodeReadMemCmd(1, 0, MaxMemoryBytes + 4).empty());
    EXPECT_TRUE(EncodeReadMemCmd(1, 0, 0).empty());
    EXPECT_FALSE(EncodeReadRegCmd(1, std::vector<std::uint32_t>(MaxReadRegisters)).empty());
    EXPECT_TRUE(EncodeReadRegCmd(1, std::vector<std::uint32_t>(MaxReadRegisters + 1)).empty());
    EXPECT_TRUE(EncodeReadRegCmd(1, {}).empty());
    EXPECT_FALSE(EncodeWriteRegCmd(1, RegisterValues(MaxWriteRegisters)).empty());
    EXPECT_TRUE(EncodeWriteRegCmd(1, RegisterValues(MaxWriteRegisters + 1)).empty());
    EXPECT_TRUE(EncodeWriteMemCmd(1, 0, Bytes(MaxMemoryBytes + 4)).empty());
}

TEST(GvcpEncode, textLongerThanItsFieldIsCutAndEndsWithNul)
{
    SDiscoveryAck discovery;
    discovery.serialNumber = std::string(40, 's');
    const Bytes packet = EncodeDiscoveryAck(1, discovery);
    ASSERT_EQ(packet.size(), HeaderBytes + DiscoveryAckBytes);
    EXPECT_EQ(packet[HeaderBytes + 0xD8 + 14], 's');
    EXPECT_EQ(packet[HeaderBytes + 0xD8 + 15], 0);
}
