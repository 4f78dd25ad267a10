// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/poolfixture.h"

#include <thread>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::SScriptedImage;
using ::Test::waitUntil;

namespace
{

class CameraPoolRelay : public ::Test::PoolFixture
{
protected:
    void startGrab()
    {
        ASSERT_TRUE(m_pool->openDevice(m_info, false));
        m_pool->startGrabbing(m_info);
        ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 2));
        QCoreApplication::processEvents();
        m_order.clear();
    }
};

TEST_F(CameraPoolRelay, aGrabIsToldWithTheCamerasRecord)
{
    m_pool->openDevice(m_info, false);
    m_order.clear();
    const ::Test::CSignalRecord start(m_pool.get(), &CCameraPool::cameraGrabStart);
    const ::Test::CSignalRecord started(m_pool.get(), &CCameraPool::cameraGrabStarted);
    const ::Test::CSignalRecord stopped(m_pool.get(), &CCameraPool::cameraGrabStopped);
    m_pool->startGrabbing(m_info);
    m_pool->stopGrabbing(m_info);
    ASSERT_TRUE(waitUntil([&] { return stopped.count() == 1; }));
    EXPECT_EQ(order(), QStringLiteral("cameraGrabStart cameraGrabStarted cameraGrabStopped"));
    EXPECT_EQ(std::get<0>(start.at(0)), m_info);
    EXPECT_EQ(std::get<0>(started.at(0)), m_info);
    EXPECT_EQ(std::get<0>(stopped.at(0)), m_info);
}

TEST_F(CameraPoolRelay, anImageArrivesOnTheMainThreadBehindItsStatistic)
{
    startGrab();
    const ::Test::CSignalRecord images(m_pool.get(), &CCameraPool::cameraImageGrabbed);
    QThread* pThread = nullptr;
    QObject::connect(m_pool.get(), &CCameraPool::cameraImageGrabbed, [&] { pThread = QThread::currentThread(); });
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(waitUntil([&] { return images.count() == 1; }));
    EXPECT_EQ(order(), QStringLiteral("cameraStatisticUpdated cameraImageGrabbed"));
    EXPECT_EQ(std::get<0>(images.at(0)), m_info);
    EXPECT_EQ(std::get<1>(images.at(0))->GetImageNumber(), 1);
    EXPECT_EQ(pThread, QThread::currentThread());
}

TEST_F(CameraPoolRelay, aStatisticIsRelayedUnchanged)
{
    const ::Test::CSignalRecord statistics(m_pool.get(), &CCameraPool::cameraStatisticUpdated);
    CCompressionStatistic compression;
    compression.compressionEnabled = true;
    compression.lossyCount = 5;
    emit camera()->cameraStatisticChanged(3, 1, 29.5, 123456789012U, compression);
    ASSERT_EQ(statistics.count(), 1);
    EXPECT_EQ(std::get<0>(statistics.at(0)), m_info);
    EXPECT_EQ(std::get<1>(statistics.at(0)), 3);
    EXPECT_EQ(std::get<2>(statistics.at(0)), 1);
    EXPECT_EQ(std::get<3>(statistics.at(0)), 29.5);
    EXPECT_EQ(std::get<4>(statistics.at(0)), 123456789012U);
    EXPECT_EQ(std::get<5>(statistics.at(0)).lossyCount, 5U);
}

TEST_F(CameraPoolRelay, aFailedGrabIsToldAsAFailureWithItsDescription)
{
    startGrab();
    SScriptedImage failed;
    failed.status = Velmo::Transport::EResultStatus::Failed;
    failed.errorDescription = "zu sp\xC3\xA4t";
    ASSERT_TRUE(m_transport->DeliverImage(s_serial, failed));
    ASSERT_TRUE(waitUntil([&] { return m_order.count(QStringLiteral("cameraImageGrabFailed")) == 1; }));
    EXPECT_EQ(order(), QStringLiteral("cameraStatisticUpdated cameraImageGrabFailed"));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("zu sp\u00E4t"));
}

TEST_F(CameraPoolRelay, anInvalidResultIsHandedOn)
{
    const ::Test::CSignalRecord images(m_pool.get(), &CCameraPool::cameraImageGrabbed);
    emit camera()->cameraImageGrabbed(Velmo::CGrabResultPtr());
    ASSERT_EQ(images.count(), 1);
    EXPECT_FALSE(std::get<1>(images.at(0)).IsValid());
    EXPECT_TRUE(m_info->errorString().isEmpty());
}

TEST_F(CameraPoolRelay, aGrabErrorIsToldAsAFailureWithAText)
{
    emit camera()->cameraImageGrabFailed();
    EXPECT_EQ(order(), QStringLiteral("cameraImageGrabFailed"));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("The image grab failed."));
}

TEST_F(CameraPoolRelay, aLossIsToldOnceThenTheClosing)
{
    m_pool->openDevice(m_info, false);
    m_order.clear();
    m_transport->RemoveCamera(s_serial, 3);
    ASSERT_TRUE(waitUntil([&] { return m_order.count(QStringLiteral("deviceClosed")) == 1; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(order(), QStringLiteral("cameraConnectionLost deviceClosed"));
}

TEST_F(CameraPoolRelay, aLostCameraLivesUntilItsLossHasBeenTold)
{
    m_pool->openDevice(m_info, false);
    const QWeakPointer<ICamera> watch(camera());
    bool aliveAfterRemoval = false;
    bool aliveAtClosing = false;
    QObject::connect(m_pool.get(), &CCameraPool::cameraConnectionLost, m_pool.get(),
                     [&]
                     {
                         m_pool->beginAnnounce();
                         m_pool->endAnnounce();
                         aliveAfterRemoval = !watch.isNull();
                     });
    const auto connection = QObject::connect(m_pool.get(), &CCameraPool::deviceClosed, m_pool.get(),
                                             [&] { aliveAtClosing |= !watch.isNull(); });
    m_order.clear();
    m_transport->RemoveCamera(s_serial);
    ASSERT_TRUE(waitUntil([&] { return watch.isNull(); }));
    QObject::disconnect(connection);
    EXPECT_TRUE(aliveAfterRemoval);
    EXPECT_TRUE(aliveAtClosing);
    EXPECT_TRUE(m_order.names().startsWith(QStringLiteral("cameraConnectionLost")));
    EXPECT_EQ(m_order.count(QStringLiteral("deviceDisconnected")), 1);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(CameraPoolRelay, aLossToldOnTheMainThreadItselfIsSafe)
{
    m_pool->openDevice(m_info, false);
    QObject::connect(m_pool.get(), &CCameraPool::cameraConnectionLost, m_pool.get(),
                     [&]
                     {
                         m_pool->beginAnnounce();
                         m_pool->endAnnounce();
                     });
    auto* pCamera = camera().data();
    emit pCamera->cameraConnectionLost();
    // Still there: it is being destroyed by the event loop, not below the call above.
    EXPECT_TRUE(pCamera->isOpen());
    EXPECT_TRUE(waitUntil([&] { return m_transport->GetLivingDevices() == 0; }));
}

TEST_F(CameraPoolRelay, theLossOfALockedCameraIsItsHoldersAffair)
{
    m_pool->openDevice(m_info, false);
    const auto locked = m_pool->tryLock(m_info);
    m_order.clear();
    const ::Test::CSignalRecord lost(locked.data(), &ICamera::cameraConnectionLost);
    m_transport->RemoveCamera(s_serial);
    ASSERT_TRUE(waitUntil([&] { return lost.count() == 1; }));
    EXPECT_EQ(order(), QString());
    EXPECT_TRUE(m_pool->unlock(locked));
}

TEST_F(CameraPoolRelay, aLossUnderWayWhenTheCameraIsLockedIsToldAndEndsTheLock)
{
    m_pool->openDevice(m_info, false);
    m_transport->RemoveCamera(s_serial);
    const auto locked = m_pool->tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    m_order.clear();
    bool isLockedAtClosing = false;
    const auto closing = QObject::connect(m_pool.get(), &CCameraPool::deviceClosed, m_pool.get(),
                                          [&] { isLockedAtClosing = m_pool->isCameraOpenExclusive(m_info); });
    QCoreApplication::processEvents();
    QObject::disconnect(closing);
    EXPECT_EQ(order(), QStringLiteral("cameraConnectionLost deviceClosed"));
    EXPECT_TRUE(isLockedAtClosing) << "it is given back once all have been told";
    EXPECT_FALSE(m_pool->isCameraOpenExclusive(m_info));
    EXPECT_FALSE(m_pool->unlock(locked));
    m_order.clear();
    m_pool->closeDevice(m_info);
    m_transport->AddCamera(::Test::SScriptedCamera());
    EXPECT_TRUE(m_pool->openDevice(m_info, false));
    EXPECT_EQ(order(), QStringLiteral("deviceClosing deviceClosed deviceOpening deviceOpened"));
}

TEST_F(CameraPoolRelay, aLossUnderWayOfACameraThatWasReopenedExclusivelyLeavesItLocked)
{
    m_pool->openDevice(m_info, false);
    m_transport->RemoveCamera(s_serial);
    m_pool->closeDevice(m_info);
    m_transport->AddCamera(::Test::SScriptedCamera());
    const auto locked = m_pool->openCameraExclusive(m_info);
    ASSERT_FALSE(locked.isNull());
    m_order.clear();
    QCoreApplication::processEvents();
    EXPECT_EQ(order(), QString());
    EXPECT_TRUE(m_pool->isCameraOpenExclusive(m_info));
}

TEST_F(CameraPoolRelay, whatIsInTheQueueWhenACameraIsLockedIsNotToldAnyMore)
{
    m_pool->openDevice(m_info, false);
    auto* const pCamera = camera().data();
    const auto emitOnAnotherThread = [pCamera]
    {
        std::thread([pCamera] { emit pCamera->cameraImageGrabbed(Velmo::CGrabResultPtr()); }).join();
    };
    emitOnAnotherThread();
    const auto locked = m_pool->tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    m_order.clear();
    QCoreApplication::processEvents();
    EXPECT_EQ(order(), QString());
    ASSERT_TRUE(m_pool->unlock(locked));
    m_order.clear();
    emitOnAnotherThread();
    QCoreApplication::processEvents();
    EXPECT_EQ(order(), QStringLiteral("cameraImageGrabbed"));
}

TEST_F(CameraPoolRelay, aReceiverMayLockTheCameraWhoseImageItIsTold)
{
    m_pool->openDevice(m_info, false);
    QSharedPointer<ICamera> locked;
    const auto connection = QObject::connect(m_pool.get(), &CCameraPool::cameraImageGrabbed, m_pool.get(),
                                             [&] { locked = m_pool->tryLock(m_info); });
    emit camera()->cameraImageGrabbed(Velmo::CGrabResultPtr());
    QObject::disconnect(connection);
    EXPECT_FALSE(locked.isNull());
    m_order.clear();
    emit locked->cameraImageGrabbed(Velmo::CGrabResultPtr());
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPoolRelay, afterALossTheCameraIsReopenedByItsRecord)
{
    m_pool->openDevice(m_info, false);
    m_transport->RemoveCamera(s_serial);
    ASSERT_TRUE(waitUntil([&] { return m_order.count(QStringLiteral("cameraConnectionLost")) == 1; }));
    m_pool->closeDevice(m_info);
    m_transport->AddCamera(::Test::SScriptedCamera());
    EXPECT_TRUE(m_pool->openDevice(m_info, false));
    EXPECT_TRUE(camera()->isConnected());
}

TEST_F(CameraPoolRelay, slotsCalledWithoutASenderEmitNothing)
{
    m_order.clear();
    EXPECT_TRUE(QMetaObject::invokeMethod(m_pool.get(), "onCameraGrabStart"));
    EXPECT_TRUE(QMetaObject::invokeMethod(m_pool.get(), "onCameraConnectionLost"));
    EXPECT_TRUE(QMetaObject::invokeMethod(m_pool.get(), "onCameraImageGrabFailed"));
    EXPECT_EQ(order(), QString());
}

} // namespace
