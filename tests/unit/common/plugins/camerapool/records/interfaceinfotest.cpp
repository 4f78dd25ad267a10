// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/interfaceinfolist.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <gtest/gtest.h>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

TEST(InterfaceInfo, readsEveryFieldOfTheSdkRecord)
{
    const auto record = ::Test::interfaceRecord("eth0");
    EXPECT_EQ(record->getFriendlyName(), QStringLiteral("Friendly eth0"));
    EXPECT_EQ(record->getFullName(), QStringLiteral("Full eth0"));
    EXPECT_EQ(record->getVendorName(), QStringLiteral("Vendor"));
    EXPECT_EQ(record->getInterfaceId(), QStringLiteral("eth0"));
    EXPECT_EQ(record->getTLType(), QStringLiteral("GEV"));
    EXPECT_EQ(record->errorString(), QString());
    EXPECT_TRUE(record->getVelmoInterfaceInfo() == ::Test::interfaceInfo("eth0"));
}

TEST(InterfaceInfo, isOfTypeTwo)
{
    EXPECT_EQ(::Test::interfaceRecord("eth0")->getType(), 2);
}

TEST(InterfaceInfo, isIdentifiedByItsInterfaceId)
{
    const auto ids = ::Test::interfaceRecord("eth0")->ids();
    ASSERT_EQ(ids.size(), 1);
    EXPECT_EQ(ids.first(), Core::CId("eth0"));
}

TEST(InterfaceInfo, friendlyNameOfAGenTlInterfaceIsNotFormatted)
{
    const auto record = CInterfaceInfo::fromInterfaceInfo(::Test::interfaceInfo("port0", "KorvelGTC/Korvel/CXP"));
    EXPECT_EQ(record->getFriendlyName(), QStringLiteral("Friendly port0"));
}

TEST(InterfaceInfo, clearErrorEmptiesTheError)
{
    const auto record = ::Test::interfaceRecord("eth0");
    record->setErrorString(QStringLiteral("broken"));
    EXPECT_EQ(record->errorString(), QStringLiteral("broken"));
    record->clearError();
    EXPECT_EQ(record->errorString(), QString());
}

TEST(InterfaceInfoList, keepsTheSdksOrder)
{
    const auto list =
        CInterfaceInfoList::fromInterfaceInfoList({::Test::interfaceInfo("order/2"), ::Test::interfaceInfo("order/1")});
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(0)->getInterfaceId(), QStringLiteral("order/2"));
    EXPECT_EQ(list.at(1)->getInterfaceId(), QStringLiteral("order/1"));
}

TEST(InterfaceInfoList, interfaceSeenAgainIsTheSameRecord)
{
    const auto first = CInterfaceInfoList::fromInterfaceInfoList({::Test::interfaceInfo("again")});
    const auto second = CInterfaceInfoList::fromInterfaceInfoList({::Test::interfaceInfo("again")});
    EXPECT_EQ(first.at(0), second.at(0));
}

TEST(InterfaceInfoList, interfaceOfTwoProducersIsOneRecord)
{
    const auto first = CInterfaceInfoList::fromInterfaceInfoList({::Test::interfaceInfo("shared", "KorvelGigE")});
    const auto second = CInterfaceInfoList::fromInterfaceInfoList({::Test::interfaceInfo("shared", "KorvelGTC/A/GEV")});
    EXPECT_EQ(first.at(0), second.at(0));
}

TEST(InterfaceInfoList, renamedInterfaceKeepsItsOldFriendlyName)
{
    CInterfaceInfoList::fromInterfaceInfoList({::Test::interfaceInfo("renamed")});
    auto renamed = ::Test::interfaceInfo("renamed");
    renamed.SetFriendlyName("Other");
    const auto list = CInterfaceInfoList::fromInterfaceInfoList({renamed});
    EXPECT_EQ(list.at(0)->getFriendlyName(), QStringLiteral("Friendly renamed"));
}

TEST(InterfaceInfoList, interfaceIdsAreCaseSensitive)
{
    const auto list =
        CInterfaceInfoList::fromInterfaceInfoList({::Test::interfaceInfo("case"), ::Test::interfaceInfo("CASE")});
    EXPECT_NE(list.at(0), list.at(1));
}

TEST(InterfaceInfoList, baseInfoVectorHoldsTheSameRecordsInOrder)
{
    const auto list = CInterfaceInfoList::fromInterfaceInfoList(
        {::Test::interfaceInfo("vector/1"), ::Test::interfaceInfo("vector/2")});
    const auto bases = list.toBaseInfoVector();
    ASSERT_EQ(bases.size(), 2);
    EXPECT_EQ(bases.at(0).data(), list.at(0).data());
    EXPECT_EQ(bases.at(1).data(), list.at(1).data());
}

} // namespace
