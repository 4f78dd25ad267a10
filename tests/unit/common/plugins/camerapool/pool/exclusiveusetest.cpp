// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/poolfixture.h"

#include <QDeadlineTimer>
#include <QThread>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

namespace
{

class CameraPoolExclusive : public ::Test::PoolFixture
{
};

TEST_F(CameraPoolExclusive, tryLockOfAClosedCameraReturnsNullAndEmitsNothing)
{
    EXPECT_TRUE(m_pool->tryLock(m_info).isNull());
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPoolExclusive, tryLockOfALockedCameraReturnsNullAndEmitsNothing)
{
    m_pool->openDevice(m_info, false);
    ASSERT_FALSE(m_pool->tryLock(m_info).isNull());
    m_order.clear();
    EXPECT_TRUE(m_pool->tryLock(m_info).isNull());
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPoolExclusive, tryLockOfAMonitoredCameraReturnsNullAndEmitsNothing)
{
    ASSERT_TRUE(m_pool->openDevice(m_info, true));
    m_order.clear();
    EXPECT_TRUE(m_pool->tryLock(m_info).isNull());
    EXPECT_EQ(order(), QString());
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
}

TEST_F(CameraPoolExclusive, tryLockOfNullOrAnUnknownCameraReturnsNull)
{
    EXPECT_TRUE(m_pool->tryLock(CameraInfoPtr()).isNull());
    Velmo::CDeviceInfo unknown;
    unknown.SetFullName("nowhere");
    EXPECT_TRUE(m_pool->tryLock(CCameraInfo::fromDeviceInfo(unknown)).isNull());
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPoolExclusive, tryLockHandsOutTheOpenCameraAndTellsThatItIsDetached)
{
    m_pool->openDevice(m_info, false);
    m_order.clear();
    const auto locked = m_pool->tryLock(m_info);
    EXPECT_EQ(locked, camera());
    EXPECT_EQ(order(), QStringLiteral("cameraDetached"));
    EXPECT_TRUE(m_pool->isCameraOpenExclusive(m_info));
    EXPECT_TRUE(m_pool->isDeviceOpenExclusive(m_info));
}

TEST_F(CameraPoolExclusive, aLockedCameraIsLeftOutOfTheOpenAndGrabbingOnes)
{
    m_pool->openDevice(m_info, false);
    const auto locked = m_pool->tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    locked->startGrabbing();
    EXPECT_TRUE(m_pool->isDeviceOpen(m_info));
    EXPECT_TRUE(m_pool->isCameraGrabbing(m_info));
    EXPECT_TRUE(m_pool->getOpenCameras().isEmpty());
    EXPECT_EQ(m_pool->getCountGrabbing(), 0);
    m_pool->stopGrabbingAll();
    EXPECT_TRUE(locked->isGrabbing());
}

TEST_F(CameraPoolExclusive, grabCommandsLeaveALockedCameraAlone)
{
    m_pool->openDevice(m_info, false);
    const auto locked = m_pool->tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    m_pool->startGrabbing(m_info);
    m_pool->singleShot(m_info, 1000);
    EXPECT_FALSE(locked->isGrabbing());
    locked->startGrabbing();
    m_pool->stopGrabbing(m_info);
    EXPECT_TRUE(locked->isGrabbing());
}

TEST_F(CameraPoolExclusive, theSignalsOfALockedCameraDoNotReachThePool)
{
    m_pool->openDevice(m_info, false);
    const auto locked = m_pool->tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    m_order.clear();
    const ::Test::CSignalRecord images(locked.data(), &ICamera::cameraImageGrabbed);
    locked->startGrabbing();
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(::Test::waitUntil([&] { return images.count() == 1; }));
    locked->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPoolExclusive, imagesUnderWayWhenTheCameraIsLockedAreNotRelayed)
{
    m_pool->openDevice(m_info, false);
    const auto shared = camera();
    shared->startGrabbing();
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    std::atomic<bool> emitted{false};
    QObject::connect(
        shared.data(), &ICamera::cameraImageGrabbed, shared.data(), [&] { emitted = true; }, Qt::DirectConnection);
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    const QDeadlineTimer deadline(10000);
    while (!emitted && !deadline.hasExpired())
    {
        QThread::yieldCurrentThread();
    }
    ASSERT_TRUE(emitted);
    ASSERT_FALSE(m_pool->tryLock(m_info).isNull());
    m_order.clear();
    shared->stopGrabbing();
    QCoreApplication::processEvents();
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPoolExclusive, openDeviceOnALockedCameraReturnsFalseWithoutDeviceOpening)
{
    m_pool->openDevice(m_info, false);
    m_pool->tryLock(m_info);
    m_order.clear();
    EXPECT_FALSE(m_pool->openDevice(m_info, false));
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPoolExclusive, closeDeviceOnALockedCameraUnlocksItAndThenClosesIt)
{
    m_pool->openDevice(m_info, false);
    m_pool->tryLock(m_info);
    m_order.clear();
    m_pool->closeDevice(m_info);
    EXPECT_EQ(order(), QStringLiteral("deviceClosing cameraAttached deviceClosed"));
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
}

TEST_F(CameraPoolExclusive, unlockGivesTheCameraBackToTheRelays)
{
    m_pool->openDevice(m_info, false);
    const auto locked = m_pool->tryLock(m_info);
    m_order.clear();
    EXPECT_TRUE(m_pool->unlock(locked));
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
    locked->close();
    EXPECT_EQ(order(), QStringLiteral("cameraAttached deviceClosed"));
}

TEST_F(CameraPoolExclusive, theCameraIsLockedWhenItsDetachingIsToldAndSharedWhenItsReturnIsTold)
{
    m_pool->openDevice(m_info, false);
    QStringList seen;
    const auto look = [&](const QString& when)
    {
        emit camera()->cameraGrabStarted(); // reaches the pool's receivers only while the camera is shared
        const auto state = m_pool->isCameraOpenExclusive(m_info) ? QStringLiteral("locked") : QStringLiteral("shared");
        seen.append(when + QLatin1Char(' ') + state);
    };
    QObject::connect(m_pool.get(), &CCameraPool::cameraDetached, m_pool.get(),
                     [&] { look(QStringLiteral("detached")); });
    QObject::connect(m_pool.get(), &CCameraPool::cameraAttached, m_pool.get(),
                     [&] { look(QStringLiteral("attached")); });
    m_order.clear();
    EXPECT_TRUE(m_pool->unlock(m_pool->tryLock(m_info)));
    EXPECT_EQ(seen, QStringList({QStringLiteral("detached locked"), QStringLiteral("attached shared")}));
    EXPECT_EQ(order(), QStringLiteral("cameraDetached cameraAttached cameraGrabStarted"));
}

TEST_F(CameraPoolExclusive, unlockOfACameraThatWasClosedMeanwhileTellsOnlyThatItIsBack)
{
    m_pool->openDevice(m_info, false);
    const auto locked = m_pool->tryLock(m_info);
    m_order.clear();
    locked->close();
    EXPECT_EQ(order(), QString()) << "it is locked";
    EXPECT_TRUE(m_pool->unlock(locked));
    EXPECT_EQ(order(), QStringLiteral("cameraAttached"));
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
}

TEST_F(CameraPoolExclusive, everySignalIsRelayedOnceAfterLockingAndUnlocking)
{
    m_pool->openDevice(m_info, false);
    m_pool->unlock(m_pool->tryLock(m_info));
    m_pool->unlock(m_pool->tryLock(m_info));
    m_order.clear();
    emit camera()->cameraGrabStarted();
    EXPECT_EQ(order(), QStringLiteral("cameraGrabStarted"));
}

TEST_F(CameraPoolExclusive, unlockOfNullOrAnUnlockedCameraReturnsFalseAndChangesNothing)
{
    m_pool->openDevice(m_info, false);
    m_order.clear();
    EXPECT_FALSE(m_pool->unlock(QSharedPointer<ICamera>()));
    EXPECT_FALSE(m_pool->unlock(camera()));
    emit camera()->cameraGrabStarted();
    EXPECT_EQ(order(), QStringLiteral("cameraGrabStarted"));
}

TEST_F(CameraPoolExclusive, unlockOfACameraThatLeftTheEnumerationLetsItGo)
{
    m_pool->openDevice(m_info, false);
    auto locked = m_pool->tryLock(m_info);
    m_pool->beginAnnounce();
    m_pool->endAnnounce();
    m_order.clear();
    EXPECT_FALSE(m_pool->unlock(locked));
    EXPECT_EQ(order(), QString());
    const QWeakPointer<ICamera> watch(locked);
    locked.reset();
    EXPECT_TRUE(::Test::waitUntil([&] { return watch.isNull(); }));
}

TEST_F(CameraPoolExclusive, openCameraExclusiveOpensAndLocks)
{
    const auto locked = m_pool->openCameraExclusive(m_info);
    ASSERT_FALSE(locked.isNull());
    EXPECT_TRUE(locked->isOpen());
    EXPECT_FALSE(locked->isMonitorModeActive());
    EXPECT_TRUE(m_pool->isCameraOpenExclusive(m_info));
    EXPECT_EQ(order(), QStringLiteral("deviceOpened cameraDetached"));
}

TEST_F(CameraPoolExclusive, openCameraExclusiveOfAnOpenCameraReturnsNull)
{
    m_pool->openDevice(m_info, false);
    m_order.clear();
    EXPECT_TRUE(m_pool->openCameraExclusive(m_info).isNull());
    EXPECT_EQ(order(), QString());
    EXPECT_TRUE(m_pool->isDeviceOpen(m_info));
}

TEST_F(CameraPoolExclusive, openCameraExclusiveCreatesACameraThatWasNotAnnounced)
{
    ::Test::SScriptedCamera second;
    second.serialNumber = "1002";
    m_transport->AddCamera(second);
    const auto info = record("1002");
    EXPECT_FALSE(m_pool->openCameraExclusive(info).isNull());
    EXPECT_FALSE(m_pool->findDevice(info).isNull());
}

TEST_F(CameraPoolExclusive, openCameraExclusiveOfACameraThatCannotBeOpenedReturnsNullAndLocksNothing)
{
    m_transport->SetInUseBy(s_serial, "10.0.0.7");
    EXPECT_TRUE(m_pool->openCameraExclusive(m_info).isNull());
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
    EXPECT_EQ(order(), QString());
    EXPECT_TRUE(m_info->errorString().contains(QStringLiteral("10.0.0.7")));
}

TEST_F(CameraPoolExclusive, openCameraExclusiveOfNullReturnsNull)
{
    EXPECT_TRUE(m_pool->openCameraExclusive(CameraInfoPtr()).isNull());
}

TEST_F(CameraPoolExclusive, aReceiverOfCameraDetachedMayUnlockAtOnce)
{
    m_pool->openDevice(m_info, false);
    QObject::connect(m_pool.get(), &CCameraPool::cameraDetached, m_pool.get(), [&] { m_pool->unlock(camera()); });
    m_order.clear();
    EXPECT_FALSE(m_pool->tryLock(m_info).isNull());
    EXPECT_EQ(order(), QStringLiteral("cameraDetached cameraAttached"));
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
}

} // namespace
