// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/statusservice.h"
#include "unit/common/plugins/camerapool/testing/servicesfixture.h"

#include <QMetaMethod>
#include <QThread>

#include <chrono>
#include <future>
#include <utility>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;

using StatusService = ::Test::ServicesFixture;

constexpr int patienceMs = 60000;

TEST_F(StatusService, repeatsTheDeviceSignalsOfBothPools)
{
    using Signal = void (ADevicePool::*)(BaseInfoPtr);
    using Repeated = void (IDeviceStatusService::*)(BaseInfoPtr);
    const QVector<QPair<Signal, Repeated>> signalPairs = {
        {&ADevicePool::deviceOpening, &IDeviceStatusService::deviceOpening},
        {&ADevicePool::deviceOpened, &IDeviceStatusService::deviceOpened},
        {&ADevicePool::deviceClosing, &IDeviceStatusService::deviceClosing},
        {&ADevicePool::deviceClosed, &IDeviceStatusService::deviceClosed}};
    for (const auto& pair : signalPairs)
    {
        QSignalSpy spy(&m_status, pair.second);
        emit(m_pool.get()->*pair.first)(m_info);
        emit(m_interfaces.get()->*pair.first)(m_port);
        ASSERT_EQ(spy.count(), 2);
        EXPECT_EQ(spy.at(0).at(0).value<BaseInfoPtr>(), m_info);
        EXPECT_EQ(spy.at(1).at(0).value<BaseInfoPtr>(), m_port);
    }
}

TEST_F(StatusService, repeatsThatDevicesComeAndGo)
{
    QSignalSpy connected(&m_status, &ICameraStatusService::deviceConnected);
    QSignalSpy disconnected(&m_status, &ICameraStatusService::deviceDisconnected);
    for (ADevicePool* pPool : {static_cast<ADevicePool*>(m_pool.get()), static_cast<ADevicePool*>(m_interfaces.get())})
    {
        emit pPool->deviceConnected(m_info);
        emit pPool->deviceDisconnected(m_info);
    }
    EXPECT_EQ(connected.count(), 2);
    EXPECT_EQ(disconnected.count(), 2);
}

TEST_F(StatusService, repeatsThePoolsActiveDeviceOnce)
{
    QSignalSpy changed(&m_status, &IDeviceStatusService::activeDeviceChanged);
    emit m_pool->activeDeviceChanged(m_info);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(StatusService, repeatsThePlainCameraSignals)
{
    using Signal = void (CCameraPool::*)(CameraInfoPtr);
    using Repeated = void (ICameraStatusService::*)(CameraInfoPtr);
    const QVector<QPair<Signal, Repeated>> signalPairs = {
        {&CCameraPool::cameraGrabStart, &ICameraStatusService::cameraGrabStart},
        {&CCameraPool::cameraGrabStarted, &ICameraStatusService::cameraGrabStarted},
        {&CCameraPool::cameraGrabStopped, &ICameraStatusService::cameraGrabStopped},
        {&CCameraPool::cameraImageGrabFailed, &ICameraStatusService::cameraImageGrabFailed},
        {&CCameraPool::cameraDetached, &ICameraStatusService::cameraDetached},
        {&CCameraPool::cameraAttached, &ICameraStatusService::cameraAttached},
        {&CCameraPool::cameraConnectionLost, &ICameraStatusService::cameraConnectionLost}};
    for (const auto& pair : signalPairs)
    {
        QSignalSpy spy(&m_status, pair.second);
        emit(m_pool.get()->*pair.first)(m_info);
        ASSERT_EQ(spy.count(), 1);
        EXPECT_EQ(spy.at(0).at(0).value<CameraInfoPtr>(), m_info);
    }
}

TEST_F(StatusService, repeatsImagesAndStatisticsWithTheirArguments)
{
    ::Test::CSignalRecord images(static_cast<const ICameraStatusService*>(&m_status),
                                 &ICameraStatusService::cameraImageGrabbed);
    ::Test::CSignalRecord statistics(static_cast<const ICameraStatusService*>(&m_status),
                                     &ICameraStatusService::cameraStatisticUpdated);
    emit m_pool->cameraImageGrabbed(m_info, Velmo::CGrabResultPtr());
    emit m_pool->cameraStatisticUpdated(m_info, 3, 2, 1.5, 7U, CCompressionStatistic());
    ASSERT_EQ(images.count(), 1);
    EXPECT_EQ(std::get<0>(images.last()), m_info);
    ASSERT_EQ(statistics.count(), 1);
    EXPECT_EQ(std::get<0>(statistics.last()), m_info);
    EXPECT_EQ(std::get<1>(statistics.last()), 3);
    EXPECT_EQ(std::get<2>(statistics.last()), 2);
    EXPECT_EQ(std::get<3>(statistics.last()), 1.5);
    EXPECT_EQ(std::get<4>(statistics.last()), 7U);
}

TEST_F(StatusService, knowsWhetherADeviceOfEitherKindIsOpen)
{
    EXPECT_FALSE(m_status.isDeviceOpen(m_info));
    EXPECT_FALSE(m_status.isDeviceOpen(m_port));
    ASSERT_TRUE(m_control.open(m_info, false));
    ASSERT_TRUE(m_control.open(m_port, false));
    EXPECT_TRUE(m_status.isDeviceOpen(m_info));
    EXPECT_TRUE(m_status.isDeviceOpen(m_port));
    EXPECT_FALSE(m_status.isDeviceOpen(other()));
    EXPECT_FALSE(m_status.isDeviceOpen({}));
}

TEST_F(StatusService, knowsNothingOnceThePoolsAreDestroyed)
{
    ASSERT_TRUE(m_control.open(m_info, false));
    destroyPools();
    EXPECT_FALSE(m_status.isDeviceOpen(m_info));
    EXPECT_FALSE(m_status.isDeviceOpen(m_port));
    EXPECT_FALSE(m_status.isCameraOpenExclusive(m_info));
    EXPECT_FALSE(m_status.isCameraGrabbing(m_info));
    EXPECT_EQ(m_status.getCountGrabbing(), 0);
}

/** Tells how many connections a pool's signals have. */
template <class Pool> class CCounted : public Pool
{
public:
    CCounted() : Pool(nullptr) {}
    int connections() const
    {
        int count = 0;
        for (int i = ADevicePool::staticMetaObject.methodOffset(); i < this->metaObject()->methodCount(); ++i)
        {
            const auto method = this->metaObject()->method(i);
            if (method.methodType() == QMetaMethod::Signal)
            {
                count += this->receivers(QByteArray::number(QSIGNAL_CODE) + method.methodSignature());
            }
        }
        return count;
    }
};

TEST_F(StatusService, makesTwentyTwoConnectionsToThePools)
{
    CCounted<CCameraPool> cameras;
    CCounted<CInterfacePool> interfaces;
    const CStatusService status(&cameras, &interfaces, nullptr);
    EXPECT_EQ(cameras.connections(), 16);
    EXPECT_EQ(interfaces.connections(), 6);
}

TEST_F(StatusService, everyArgumentOfItsSignalsCanBeQueued)
{
    const auto& meta = ICameraStatusService::staticMetaObject;
    int signalCount = 0;
    for (int i = QObject::staticMetaObject.methodCount(); i < meta.methodCount(); ++i)
    {
        const auto method = meta.method(i);
        signalCount += method.methodType() == QMetaMethod::Signal ? 1 : 0;
        for (int argument = 0; argument < method.parameterCount(); ++argument)
        {
            EXPECT_NE(method.parameterType(argument), QMetaType::UnknownType)
                << method.methodSignature().toStdString() << ", argument " << argument;
        }
    }
    EXPECT_EQ(signalCount, 16);
}

TEST_F(StatusService, receiverInAnotherThreadHearsThereWhatIsToldHere)
{
    QThread thread;
    QObject receiver; // destroyed here, once its thread has ended
    receiver.moveToThread(&thread);
    std::promise<std::pair<QThread*, CameraInfoPtr>> heard;
    QObject::connect(&m_status, &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const CameraInfoPtr& info, const Velmo::CGrabResultPtr&) {
                         heard.set_value({QThread::currentThread(), info});
                     });
    auto future = heard.get_future();
    emit m_pool->cameraImageGrabbed(m_info, Velmo::CGrabResultPtr());
    EXPECT_EQ(future.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    thread.start();
    const bool isHeard = future.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
    thread.quit();
    ASSERT_TRUE(thread.wait(10000));
    ASSERT_TRUE(isHeard);
    const auto [pThread, info] = future.get();
    EXPECT_EQ(pThread, &thread);
    EXPECT_EQ(info, m_info);
}

TEST_F(StatusService, settingTheSameActiveRecordTwiceIsAnnouncedOnce)
{
    QSignalSpy changed(&m_status, &IDeviceStatusService::activeDeviceChanged);
    m_status.setActiveDevice(m_info);
    m_status.setActiveDevice(m_info);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(StatusService, announcesTheActiveDeviceOnceAndItsClearing)
{
    QSignalSpy changed(&m_status, &IDeviceStatusService::activeDeviceChanged);
    m_status.setActiveDevice({});
    EXPECT_EQ(changed.count(), 0);
    m_status.setActiveDevice(m_info);
    m_status.setActiveDevice(m_info);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).value<BaseInfoPtr>(), m_info);
    EXPECT_EQ(m_status.getActiveDevice(), m_info);
    m_status.setActiveDevice({});
    ASSERT_EQ(changed.count(), 2);
    EXPECT_TRUE(changed.at(1).at(0).value<BaseInfoPtr>().isNull());
    EXPECT_TRUE(m_status.getActiveDevice().isNull());
}

TEST_F(StatusService, listenerMayChooseAnotherActiveDevice)
{
    QObject::connect(&m_status, &IDeviceStatusService::activeDeviceChanged, &m_status,
                     [this] { m_status.setActiveDevice(m_port); });
    QSignalSpy changed(&m_status, &IDeviceStatusService::activeDeviceChanged);
    m_status.setActiveDevice(m_info);
    EXPECT_EQ(m_status.getActiveDevice(), m_port);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(StatusService, listenerMayCloseWhatHasJustBeenOpened)
{
    QObject::connect(&m_status, &IDeviceStatusService::deviceOpened, &m_status,
                     [this](const BaseInfoPtr& info) { m_control.close(info); });
    m_control.open(m_info, false);
    EXPECT_FALSE(m_status.isDeviceOpen(m_info));
    m_control.open(m_port, false);
    EXPECT_FALSE(m_status.isDeviceOpen(m_port));
}

TEST_F(StatusService, listenerMayReopenWhatHasJustBeenClosed)
{
    int reopened = 0;
    QObject::connect(&m_status, &IDeviceStatusService::deviceClosed, &m_status,
                     [&](const BaseInfoPtr& info)
                     {
                         if (reopened++ == 0)
                         {
                             m_control.open(info, false);
                         }
                     });
    ASSERT_TRUE(m_control.open(m_port, false));
    m_control.close(m_port);
    EXPECT_TRUE(m_status.isDeviceOpen(m_port));
}

TEST_F(StatusService, lockedCameraIsSilentUntilItIsUnlocked)
{
    ::Test::CSignalOrder told;
    const ICameraStatusService* const pStatus = &m_status;
    told.watch(pStatus, &ICameraStatusService::cameraDetached, QStringLiteral("detached"));
    told.watch(pStatus, &ICameraStatusService::cameraAttached, QStringLiteral("attached"));
    told.watch(pStatus, &ICameraStatusService::cameraGrabStart, QStringLiteral("start"));
    told.watch(pStatus, &ICameraStatusService::cameraGrabStarted, QStringLiteral("started"));
    told.watch(pStatus, &ICameraStatusService::cameraGrabStopped, QStringLiteral("stopped"));
    told.watch(pStatus, &ICameraStatusService::cameraImageGrabbed, QStringLiteral("image"));
    told.watch(pStatus, &ICameraStatusService::cameraImageGrabFailed, QStringLiteral("failure"));
    told.watch(pStatus, &ICameraStatusService::cameraStatisticUpdated, QStringLiteral("statistic"));
    ASSERT_TRUE(m_control.open(m_info, false));
    const auto locked = m_control.tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    const ::Test::CSignalRecord images(locked.data(), &ICamera::cameraImageGrabbed);
    locked->startGrabbing();
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(::Test::waitUntil([&] { return images.count() == 1; }, patienceMs));
    locked->stopGrabbing();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_control.unlock(locked));
    EXPECT_EQ(told.names(), (QStringList{"detached", "attached"}));
    told.clear();
    m_stream.startGrabbing(m_info);
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    EXPECT_TRUE(::Test::waitUntil([&] { return told.count(QStringLiteral("image")) > 0; }, patienceMs));
    EXPECT_EQ(told.names().mid(0, 2), (QStringList{"start", "started"}));
}

} // namespace
