// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/transportlayerinfo.h"
#include "camerapool/tltypes.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

QSharedPointer<CTransportLayerInfo> transportLayer()
{
    Velmo::CTlInfo info;
    info.SetDeviceClass("KorvelGigE");
    info.SetTLType("GEV");
    info.SetFriendlyName("GigE");
    info.SetFullName("KorvelGigE/full");
    return CTransportLayerInfo::fromVelmoTransportLayer(info);
}

CCameraInfoList cameras(int count)
{
    CCameraInfoList list;
    for (int i = 0; i < count; ++i)
    {
        list.append(::Test::cameraRecord("tl/" + std::to_string(i)));
    }
    return list;
}

TEST(TransportLayerInfo, readsEveryFieldOfTheSdkRecord)
{
    const auto record = transportLayer();
    EXPECT_EQ(record->getClass(), QStringLiteral("KorvelGigE"));
    EXPECT_EQ(record->getTlType(), TLTypeGigE);
    EXPECT_EQ(record->getFriendlyName(), QStringLiteral("GigE"));
    EXPECT_EQ(record->getFullName(), QStringLiteral("KorvelGigE/full"));
    EXPECT_EQ(record->parent(), nullptr);
}

TEST(TransportLayerInfo, startsUnchangedAndEmpty)
{
    const auto record = transportLayer();
    EXPECT_FALSE(record->haveContainedCamerasChanged());
    EXPECT_TRUE(record->getCameraInfoList().isEmpty());
    EXPECT_TRUE(record->getInterfaceInfoList().isEmpty());
}

TEST(TransportLayerInfo, namesThatAreNotUtf8StillGiveARecord)
{
    Velmo::CTlInfo info;
    info.SetFriendlyName("x\xFF");
    info.SetFullName("y\xFE");
    const auto record = CTransportLayerInfo::fromVelmoTransportLayer(info);
    EXPECT_EQ(record->getFriendlyName(), QStringLiteral("x\uFFFD"));
    EXPECT_EQ(record->getFullName(), QStringLiteral("y\uFFFD"));
}

TEST(TransportLayerInfo, isNoDeviceRecord)
{
    const auto record = transportLayer();
    EXPECT_EQ(qobject_cast<IBaseInfo*>(static_cast<QObject*>(record.data())), nullptr);
}

TEST(TransportLayerInfo, settersSetPlainly)
{
    const auto record = transportLayer();
    const auto list = cameras(2);
    CInterfaceInfoList interfaces;
    interfaces.append(::Test::interfaceRecord("tl/eth0"));
    record->setCameraInfoList(list);
    record->setInterfaceInfoList(interfaces);
    EXPECT_TRUE(record->getCameraInfoList().isSharedWith(list));
    EXPECT_TRUE(record->getInterfaceInfoList().isSharedWith(interfaces));
    EXPECT_FALSE(record->haveContainedCamerasChanged());
    record->setHaveContainedCamerasChanged(true);
    EXPECT_TRUE(record->haveContainedCamerasChanged());
}

TEST(TransportLayerInfo, replacingByTheSameRecordsIsNoChange)
{
    const auto record = transportLayer();
    const auto list = cameras(2);
    record->setCameraInfoList(list);
    CCameraInfoList copy;
    copy.append(list.at(0));
    copy.append(list.at(1));
    record->replaceCameraInfoList(copy, false);
    EXPECT_FALSE(record->haveContainedCamerasChanged());
}

TEST(TransportLayerInfo, replacingByAnotherNumberOfRecordsIsAChange)
{
    const auto record = transportLayer();
    record->setCameraInfoList(cameras(2));
    record->replaceCameraInfoList({}, false);
    EXPECT_TRUE(record->haveContainedCamerasChanged());
    EXPECT_TRUE(record->getCameraInfoList().isEmpty());
}

TEST(TransportLayerInfo, replacingByOtherRecordsOfEqualNamesIsAChange)
{
    const auto record = transportLayer();
    record->setCameraInfoList(cameras(2));
    record->replaceCameraInfoList(cameras(2), false);
    EXPECT_TRUE(record->haveContainedCamerasChanged());
}

TEST(TransportLayerInfo, updatedRecordsAreAChange)
{
    const auto record = transportLayer();
    const auto list = cameras(1);
    record->setCameraInfoList(list);
    record->replaceCameraInfoList(list, true);
    EXPECT_TRUE(record->haveContainedCamerasChanged());
}

TEST(TransportLayerInfo, removingACameraShortensTheListAndSetsTheFlag)
{
    const auto record = transportLayer();
    const auto list = cameras(3);
    record->setCameraInfoList(list);
    EXPECT_TRUE(record->removeCamera(list.at(1)));
    EXPECT_TRUE(record->haveContainedCamerasChanged());
    ASSERT_EQ(record->getCameraInfoList().size(), 2);
    EXPECT_EQ(record->getCameraInfoList().at(1), list.at(2));
    EXPECT_EQ(list.size(), 3);
}

TEST(TransportLayerInfo, removingAStrangeCameraChangesNothing)
{
    const auto record = transportLayer();
    record->setCameraInfoList(cameras(1));
    EXPECT_FALSE(record->removeCamera(::Test::cameraRecord("tl/strange")));
    EXPECT_FALSE(record->haveContainedCamerasChanged());
}

TEST(TransportLayerInfo, changesAreCountedAlsoWhenTheFlagIsCleared)
{
    const auto record = transportLayer();
    const auto before = record->changeCount();
    record->setHaveContainedCamerasChanged(true);
    record->setHaveContainedCamerasChanged(false);
    EXPECT_NE(record->changeCount(), before);
}

TEST(TransportLayerInfo, listCanBeReadWhileAnotherThreadWritesIt)
{
    const auto record = transportLayer();
    const auto one = cameras(1);
    const auto three = cameras(3);
    std::atomic<bool> isDone{false};
    std::thread writer(
        [&]
        {
            for (int i = 0; i < 2000; ++i)
            {
                record->replaceCameraInfoList(i % 2 == 0 ? one : three, false);
            }
            isDone = true;
        });
    int strange = 0;
    while (!isDone)
    {
        const auto& list = record->getCameraInfoList();
        const int count = list.size();
        int walked = 0;
        for (const auto& camera : list)
        {
            walked += camera ? 1 : 0;
        }
        strange += walked == count && (count == 0 || count == 1 || count == 3) ? 0 : 1;
    }
    writer.join();
    EXPECT_EQ(strange, 0);
}

TEST(TLTypes, haveTheirValues)
{
    EXPECT_EQ(TLTypeGigE, QStringLiteral("GEV"));
    EXPECT_EQ(TLTypeUSB, QStringLiteral("U3V"));
    EXPECT_EQ(TLType1394, QStringLiteral("IIDC"));
    EXPECT_EQ(TLTypeQLNK, QStringLiteral("QLNK"));
    EXPECT_EQ(TLTypeCL, QStringLiteral("CL"));
    EXPECT_EQ(TLTypeCamEmu, QStringLiteral("CamEmu"));
    EXPECT_EQ(TLTypeIPCam, QStringLiteral("IPCam"));
    EXPECT_EQ(TLTypeCXP, QStringLiteral("CXP"));
    EXPECT_EQ(TLTypeCustom, QStringLiteral("Custom"));
}

} // namespace
