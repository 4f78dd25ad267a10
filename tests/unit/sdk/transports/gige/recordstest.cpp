// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/records.h"
#include "transports/gige/internal/blockcounter.h"

#include <gtest/gtest.h>

using namespace Velmo;
using namespace Velmo::GigE::Internal;

namespace
{

SFoundDevice Device()
{
    SFoundDevice device;
    device.ack.manufacturerName = "Maker";
    device.ack.modelName = "Model";
    device.ack.serialNumber = "S1";
    device.ack.deviceVersion = "1.2";
    device.ack.mac = {0, 0x11, 0x22, 0x33, 0x44, 0x55};
    device.ack.currentSubnetMask = 0xFFFFFF00;
    device.ip = 0xC0A80107;
    device.access = EAccessStatus::Free;
    return device;
}

} // namespace

TEST(GigERecords, fullNameDoesNotDependOnTheAddress)
{
    SFoundDevice moved = Device();
    moved.ip = 0x0A000001;
    moved.adapter.id = "eth1";
    EXPECT_EQ(MakeDeviceInfo(Device()).GetFullName(), MakeDeviceInfo(moved).GetFullName());
}

TEST(GigERecords, fullNamesOfTwoMacAddressesDiffer)
{
    SFoundDevice other = Device();
    other.ack.mac[5] = 0x56;
    EXPECT_NE(MakeDeviceInfo(Device()).GetFullName(), MakeDeviceInfo(other).GetFullName());
}

TEST(GigERecords, friendlyNameIsOfVendorAndModel)
{
    EXPECT_EQ(MakeDeviceInfo(Device()).GetFriendlyName(), "Maker Model (S1)");
    EXPECT_FALSE(MakeDeviceInfo(Device()).IsUserDefinedNameAvailable());
}

TEST(GigERecords, friendlyNameIsTheUsersWhereThereIsOne)
{
    SFoundDevice named = Device();
    named.ack.userDefinedName = "left";
    EXPECT_EQ(MakeDeviceInfo(named).GetFriendlyName(), "left (S1)");
    EXPECT_EQ(MakeDeviceInfo(named).GetUserDefinedName(), "left");
}

TEST(GigERecords, cameraWithoutSerialNumberIsKnownByItsMacAddress)
{
    SFoundDevice device = Device();
    device.ack.serialNumber.clear();
    EXPECT_EQ(MakeDeviceInfo(device).GetFriendlyName(), "Maker Model (00:11:22:33:44:55)");
}

TEST(GigERecords, addressesAndStatusAreProperties)
{
    const CDeviceInfo info = MakeDeviceInfo(Device());
    EXPECT_EQ(info.GetIpAddress(), "192.168.1.7");
    EXPECT_EQ(info.Get(Key::SubnetMask), "255.255.255.0");
    EXPECT_EQ(info.Get(Key::MacAddress), "00:11:22:33:44:55");
    EXPECT_EQ(info.Get(Key::AccessStatus), "ReadWrite");
}

TEST(GigEBlockCounter, sixteenBitIdsContinueOverTheirWrap)
{
    CBlockCounter counter;
    EXPECT_EQ(counter.Extend(65534), 65534u);
    EXPECT_EQ(counter.Extend(65535), 65535u);
    EXPECT_EQ(counter.Extend(1), 65536u);
    EXPECT_EQ(counter.Extend(2), 65537u);
    EXPECT_EQ(counter.Extend(30000), 65535u + 30000u);
    EXPECT_EQ(counter.Extend(60000), 65535u + 60000u);
    EXPECT_EQ(counter.Extend(65535), 65535u + 65535u);
    EXPECT_EQ(counter.Extend(1), 2u * 65535u + 1u);
}

TEST(GigEBlockCounter, lateIdIsNoWrap)
{
    CBlockCounter counter;
    EXPECT_EQ(counter.Extend(10), 10u);
    EXPECT_EQ(counter.Extend(8), 8u);
    EXPECT_EQ(counter.Extend(11), 11u);
}

TEST(GigEBlockCounter, lateIdFromBeforeTheWrapIsNoFurtherWrap)
{
    CBlockCounter counter;
    counter.Extend(65533);
    counter.Extend(65534);
    EXPECT_EQ(counter.Extend(2), 65537u);
    EXPECT_EQ(counter.CountSkipped(), 2u);
    EXPECT_EQ(counter.Extend(65535), 65535u);
    EXPECT_EQ(counter.CountSkipped(), 1u);
    EXPECT_EQ(counter.Extend(3), 65538u);
    EXPECT_EQ(counter.CountSkipped(), 1u);
}

TEST(GigEBlockCounter, resultWithoutAnImageIsNoWrap)
{
    CBlockCounter counter;
    counter.Extend(65400);
    EXPECT_EQ(counter.Extend(0), 0u);
    EXPECT_EQ(counter.Extend(65401), 65401u);
    EXPECT_EQ(counter.CountSkipped(), 0u);
}

TEST(GigEBlockCounter, idsLeftOutAreCountedAlsoOverTheWrap)
{
    CBlockCounter counter;
    counter.Extend(65530);
    EXPECT_EQ(counter.CountSkipped(), 0u);
    counter.Extend(65533);
    EXPECT_EQ(counter.CountSkipped(), 2u);
    counter.Extend(2);
    EXPECT_EQ(counter.CountSkipped(), 5u);
}

TEST(GigEBlockCounter, lateIdIsNotLeftOutAndOneWithoutImageSaysNothing)
{
    CBlockCounter counter;
    counter.Extend(10);
    counter.Extend(12);
    EXPECT_EQ(counter.CountSkipped(), 1u);
    counter.Extend(11);
    EXPECT_EQ(counter.CountSkipped(), 0u);
    counter.Extend(0);
    counter.Extend(13);
    EXPECT_EQ(counter.CountSkipped(), 0u);
}

TEST(GigEBlockCounter, extendedIdsPassUnchanged)
{
    CBlockCounter counter;
    EXPECT_EQ(counter.Extend(65535), 65535u);
    EXPECT_EQ(counter.Extend(65536), 65536u);
    EXPECT_EQ(counter.Extend(0x123456789ABCu), 0x123456789ABCu);
}
