// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <gtest/gtest.h>

namespace
{

using namespace Plugin::CameraPool;

CCameraInfoList refresh(const Velmo::DeviceInfoList& devices)
{
    bool changed = false;
    return CCameraInfoList::fromDeviceInfoList(devices, changed);
}

Velmo::CDeviceInfo named(const std::string& fullName, const std::string& userDefinedName)
{
    auto info = ::Test::deviceInfo(fullName);
    info.SetUserDefinedName(userDefinedName);
    return info;
}

TEST(CameraInfoList, keepsTheSdksOrder)
{
    const auto list = refresh({::Test::deviceInfo("list/order2"), ::Test::deviceInfo("list/order1")});
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(0)->getFullName(), QStringLiteral("list/order2"));
    EXPECT_EQ(list.at(1)->getFullName(), QStringLiteral("list/order1"));
}

TEST(CameraInfoList, newCamerasReportNoChange)
{
    bool changed = true;
    CCameraInfoList::fromDeviceInfoList({::Test::deviceInfo("list/new")}, changed);
    EXPECT_FALSE(changed);
}

TEST(CameraInfoList, cameraSeenAgainIsTheSameRecordAndReportsNothing)
{
    const auto first = refresh({::Test::deviceInfo("list/again")});
    bool changed = true;
    const auto second = CCameraInfoList::fromDeviceInfoList({::Test::deviceInfo("list/again")}, changed);
    EXPECT_EQ(first.at(0), second.at(0));
    EXPECT_FALSE(changed);
}

TEST(CameraInfoList, camerasThatChangePlacesKeepTheirRecords)
{
    const auto first = refresh({::Test::deviceInfo("list/place1"), ::Test::deviceInfo("list/place2")});
    const auto second = refresh({::Test::deviceInfo("list/place2"), ::Test::deviceInfo("list/place1")});
    EXPECT_EQ(first.at(0), second.at(1));
    EXPECT_EQ(first.at(1), second.at(0));
}

TEST(CameraInfoList, newUserDefinedNameRefreshesTheRecordAndReportsAChange)
{
    const auto first = refresh({named("list/renamed", "old")});
    bool changed = false;
    const auto second = CCameraInfoList::fromDeviceInfoList({named("list/renamed", "new")}, changed);
    EXPECT_EQ(first.at(0), second.at(0));
    EXPECT_EQ(first.at(0)->getUserDefinedName(), QStringLiteral("new"));
    EXPECT_TRUE(changed);
}

TEST(CameraInfoList, recordUpdatedElsewhereIsComparedAsItIsNow)
{
    const auto first = refresh({named("list/elsewhere", "old")});
    first.at(0)->updateFromDeviceInfo(named("list/elsewhere", "other"));
    bool changed = false;
    CCameraInfoList::fromDeviceInfoList({named("list/elsewhere", "old")}, changed);
    EXPECT_TRUE(changed);
    EXPECT_EQ(first.at(0)->getUserDefinedName(), QStringLiteral("old"));
}

TEST(CameraInfoList, newFriendlyNameRefreshesTheRecordAndReportsAChange)
{
    const auto first = refresh({::Test::deviceInfo("list/friendly")});
    auto renamed = ::Test::deviceInfo("list/friendly");
    renamed.SetFriendlyName("Other");
    bool changed = false;
    CCameraInfoList::fromDeviceInfoList({renamed}, changed);
    EXPECT_EQ(first.at(0)->getFriendlyName(), QStringLiteral("Other"));
    EXPECT_TRUE(changed);
}

TEST(CameraInfoList, otherPropertiesAloneRefreshNothing)
{
    const auto first = refresh({::Test::deviceInfo("list/address")});
    auto moved = ::Test::deviceInfo("list/address");
    moved.SetIpAddress("10.0.0.1");
    bool changed = true;
    const auto second = CCameraInfoList::fromDeviceInfoList({moved}, changed);
    EXPECT_EQ(first.at(0), second.at(0));
    EXPECT_FALSE(changed);
    EXPECT_EQ(first.at(0)->getVelmoDeviceInfo().GetIpAddress(), GenICam::gcstring());
}

TEST(CameraInfoList, changeOfOneOfManyIsReported)
{
    refresh({named("list/many1", "a"), named("list/many2", "b")});
    bool changed = false;
    CCameraInfoList::fromDeviceInfoList({named("list/many1", "c"), named("list/many2", "b")}, changed);
    EXPECT_TRUE(changed);
}

TEST(CameraInfoList, vanishedCameraGetsItsRecordAndErrorBackWhenItReturns)
{
    const auto first = refresh({::Test::deviceInfo("list/returns")});
    first.at(0)->setErrorString(QStringLiteral("lost"));
    EXPECT_TRUE(refresh({}).isEmpty());
    const auto second = refresh({::Test::deviceInfo("list/returns")});
    EXPECT_EQ(first.at(0), second.at(0));
    EXPECT_EQ(second.at(0)->errorString(), QStringLiteral("lost"));
}

TEST(CameraInfoList, camerasOfEqualFullNamesAreOneRecord)
{
    auto other = ::Test::deviceInfo("list/equal");
    other.SetSerialNumber("4712");
    const auto list = refresh({::Test::deviceInfo("list/equal"), other});
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(0), list.at(1));
    EXPECT_EQ(list.at(0)->getSerialNumber(), QStringLiteral("4711"));
}

TEST(CameraInfoList, baseInfoVectorHoldsTheSameRecordsInOrder)
{
    const auto list = refresh({::Test::deviceInfo("list/base1"), ::Test::deviceInfo("list/base2")});
    const auto bases = list.toBaseInfoVector();
    ASSERT_EQ(bases.size(), 2);
    EXPECT_EQ(bases.at(0).data(), list.at(0).data());
    EXPECT_EQ(bases.at(1).data(), list.at(1).data());
}

} // namespace
