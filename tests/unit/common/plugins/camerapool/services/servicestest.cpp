// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraparameterservice.h"
#include "camerapool/internal/camerastreamcontrolservice.h"
#include "camerapool/internal/controlservice.h"
#include "camerapool/internal/statusservice.h"
#include "parametercollection/parameters.h"
#include "unit/common/plugins/camerapool/testing/poolfixture.h"
#include "unit/common/plugins/camerapool/testing/records.h"
#include "utils/exceptions.h"

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EStep;

constexpr int WaitMs = 10000;

/** A record of a kind that no pool has. */
class COtherRecord : public IBaseInfo
{
public:
    QString getFriendlyName() const override { return {}; }
    QString getFullName() const override { return QStringLiteral("other"); }
    QString getVendorName() const override { return {}; }
    QString getTLType() const override { return {}; }
    int getType() const override { return 1; }
    QString errorString() const override { return {}; }
    void clearError() override {}
};

/** The services on a camera pool with the camera "1001" and an interface pool with the interface "port0". */
class Services : public ::Test::PoolFixture
{
protected:
    Services()
    {
        m_transport->AddInterface("port0");
        m_interfaces->announceDevice(m_port);
    }
    BaseInfoPtr other() const { return BaseInfoPtr(new COtherRecord); }
    std::int64_t grabLoopTimeout() const
    {
        return ParameterCollection::CIntegerParameter(camera()->getParameterCollection(),
                                                      QStringLiteral("@CameraInstance/GrabLoopThreadTimeout"))
            .value();
    }
    void destroyPools()
    {
        m_pool.reset();
        m_interfaces.reset();
    }

    std::unique_ptr<CInterfacePool> m_interfaces = std::make_unique<CInterfacePool>(nullptr);
    BaseInfoPtr m_port = Internal::CInterfaceInfo::fromInterfaceInfo(::Test::interfaceInfo("port0"));
    CControlService m_control{m_pool.get(), m_interfaces.get(), nullptr};
    CStatusService m_status{m_pool.get(), m_interfaces.get(), nullptr};
    CCameraStreamControlService m_stream{m_pool.get(), nullptr};
};

using ControlService = Services;

TEST_F(ControlService, opensAndClosesACameraByItsRecord)
{
    EXPECT_TRUE(m_control.open(m_info, false));
    EXPECT_TRUE(m_pool->isDeviceOpen(m_info));
    m_control.close(BaseInfoPtr(m_info));
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
}

TEST_F(ControlService, passesTheMonitorModeOn)
{
    EXPECT_TRUE(m_control.open(m_info, true));
    EXPECT_TRUE(camera()->isMonitorModeActive());
}

TEST_F(ControlService, opensAndClosesAnInterfaceByItsRecord)
{
    EXPECT_TRUE(m_control.open(m_port, false));
    EXPECT_TRUE(m_interfaces->isDeviceOpen(m_port));
    m_control.close(m_port);
    EXPECT_FALSE(m_interfaces->isDeviceOpen(m_port));
}

TEST_F(ControlService, closesEitherKindOfDevice)
{
    ASSERT_TRUE(m_control.open(m_info, false));
    ASSERT_TRUE(m_control.open(m_port, false));
    m_control.close(m_pool->findDevice(m_info));
    m_control.close(m_interfaces->findDevice(m_port));
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    EXPECT_FALSE(m_interfaces->isDeviceOpen(m_port));
}

TEST_F(ControlService, withoutAnActiveDeviceOpensNothing)
{
    EXPECT_FALSE(m_control.open(false));
    m_control.close();
    EXPECT_EQ(order(), QString());
}

TEST_F(ControlService, opensAndClosesTheActiveDeviceOfEitherKind)
{
    ADevicePool::setActiveDevice(m_info);
    EXPECT_TRUE(m_control.open(false));
    EXPECT_TRUE(m_pool->isDeviceOpen(m_info));
    m_control.close();
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    ADevicePool::setActiveDevice(m_port);
    EXPECT_TRUE(m_control.open(false));
    EXPECT_TRUE(m_interfaces->isDeviceOpen(m_port));
    m_control.close();
    EXPECT_FALSE(m_interfaces->isDeviceOpen(m_port));
}

TEST_F(ControlService, recordOfAnotherKindTouchesNoPool)
{
    QSignalSpy opening(m_interfaces.get(), &ADevicePool::deviceOpening);
    EXPECT_FALSE(m_control.open(other(), false));
    EXPECT_FALSE(m_control.open(BaseInfoPtr(), false));
    m_control.close(other());
    m_control.close(QSharedPointer<IDevice>());
    EXPECT_EQ(order(), QString());
    EXPECT_EQ(opening.count(), 0);
}

TEST_F(ControlService, locksAndUnlocksAnOpenCamera)
{
    ASSERT_TRUE(m_control.open(m_info, false));
    const auto locked = m_control.tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    EXPECT_TRUE(m_status.isCameraOpenExclusive(m_info));
    EXPECT_TRUE(m_control.unlock(locked));
    EXPECT_FALSE(m_control.unlock(locked));
    EXPECT_FALSE(m_status.isCameraOpenExclusive(m_info));
}

TEST_F(ControlService, opensACameraExclusive)
{
    const auto locked = m_control.openCameraExclusive(m_info);
    ASSERT_FALSE(locked.isNull());
    EXPECT_TRUE(locked->isOpen());
    EXPECT_TRUE(m_control.unlock(locked));
}

TEST_F(ControlService, makesARemoteCameraKnownOrThrows)
{
    ::Test::SScriptedCamera remote;
    remote.serialNumber = "2001";
    m_transport->SetRemoteCamera("10.1.2.3", remote);
    m_control.addRemoteGigECamera(QStringLiteral("10.1.2.3"));
    EXPECT_NO_THROW(m_transport->GetDeviceInfo("2001"));
    EXPECT_THROW(m_control.addRemoteGigECamera(QStringLiteral("10.9.9.9")), Core::Exception::BaseException);
}

TEST_F(ControlService, refusesEverythingOnceThePoolsAreDestroyed)
{
    ADevicePool::setActiveDevice(m_info);
    const auto device = m_pool->findDevice(m_info);
    destroyPools();
    EXPECT_FALSE(m_control.open(m_info, false));
    EXPECT_FALSE(m_control.open(m_port, false));
    EXPECT_FALSE(m_control.open(false));
    m_control.close();
    m_control.close(BaseInfoPtr(m_info));
    m_control.close(device);
    EXPECT_TRUE(m_control.tryLock(m_info).isNull());
    EXPECT_TRUE(m_control.openCameraExclusive(m_info).isNull());
    EXPECT_FALSE(m_control.unlock(device.objectCast<ICamera>()));
    EXPECT_NO_THROW(m_control.addRemoteGigECamera(QStringLiteral("10.9.9.9")));
    EXPECT_EQ(m_transport->GetCount(EStep::OpenControl), 0U);
}

using StreamControlService = Services;

TEST_F(StreamControlService, startsAndStopsTheNamedCamera)
{
    ASSERT_TRUE(m_control.open(m_info, false));
    m_stream.startGrabbing(m_info);
    EXPECT_TRUE(m_status.isCameraGrabbing(m_info));
    m_stream.stopGrabbing(m_info);
    EXPECT_FALSE(m_status.isCameraGrabbing(m_info));
}

TEST_F(StreamControlService, startsAndStopsTheActiveCamera)
{
    m_status.setActiveDevice(m_info);
    ASSERT_TRUE(m_control.open(false));
    m_stream.startGrabbing();
    EXPECT_TRUE(m_status.isCameraGrabbing(m_info));
    m_stream.stopGrabbing();
    EXPECT_FALSE(m_status.isCameraGrabbing(m_info));
}

TEST_F(StreamControlService, stopsAllCameras)
{
    const auto second = addSecondCamera();
    ASSERT_TRUE(m_control.open(m_info, false));
    ASSERT_TRUE(m_control.open(second, false));
    m_stream.startGrabbing(m_info);
    m_stream.startGrabbing(second);
    EXPECT_EQ(m_status.getCountGrabbing(), 2);
    m_stream.stopGrabbingAll();
    EXPECT_EQ(m_status.getCountGrabbing(), 0);
}

TEST_F(StreamControlService, singleShotOfTheNamedAndOfTheActiveCameraGivesOneImageEach)
{
    m_status.setActiveDevice(m_info);
    ASSERT_TRUE(m_control.open(false));
    QSignalSpy grabbed(&m_status, &ICameraStatusService::cameraImageGrabbed);
    for (int shots = 1; shots <= 2; ++shots)
    {
        shots == 1 ? m_stream.singleShot(m_info, WaitMs) : m_stream.singleShot(WaitMs);
        ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
        ASSERT_TRUE(m_transport->DeliverImage(s_serial));
        ASSERT_TRUE(::Test::waitUntil([&] { return grabbed.count() == shots && m_status.getCountGrabbing() == 0; }));
    }
}

TEST_F(StreamControlService, zeroTimeoutIsPassedOnUnchanged)
{
    ASSERT_TRUE(m_control.open(m_info, false));
    m_stream.singleShot(m_info, WaitMs);
    EXPECT_EQ(grabLoopTimeout(), WaitMs);
    m_stream.stopGrabbing(m_info);
    m_stream.singleShot(m_info, 0);
    EXPECT_EQ(grabLoopTimeout(), 0);
    m_stream.stopGrabbing(m_info);
}

TEST_F(StreamControlService, allSevenOperationsReturnQuietlyOnceThePoolIsDestroyed)
{
    ADevicePool::setActiveDevice(m_info);
    destroyPools();
    m_log.clear();
    m_stream.startGrabbing(m_info);
    m_stream.stopGrabbing(m_info);
    m_stream.singleShot(m_info, 0);
    m_stream.startGrabbing();
    m_stream.stopGrabbing();
    m_stream.stopGrabbingAll();
    m_stream.singleShot(0);
    EXPECT_EQ(m_log.lines(), QStringList());
    EXPECT_EQ(m_transport->GetCount(EStep::StartStream), 0U);
}

using StatusService = Services;

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
    QSignalSpy detached(&m_status, &ICameraStatusService::cameraDetached);
    QSignalSpy attached(&m_status, &ICameraStatusService::cameraAttached);
    QSignalSpy started(&m_status, &ICameraStatusService::cameraGrabStarted);
    ASSERT_TRUE(m_control.open(m_info, false));
    const auto locked = m_control.tryLock(m_info);
    ASSERT_FALSE(locked.isNull());
    EXPECT_EQ(detached.count(), 1);
    locked->startGrabbing();
    locked->stopGrabbing();
    EXPECT_EQ(started.count(), 0);
    EXPECT_TRUE(m_control.unlock(locked));
    EXPECT_EQ(attached.count(), 1);
    m_stream.startGrabbing(m_info);
    EXPECT_TRUE(::Test::waitUntil([&] { return started.count() == 1; }));
}

TEST_F(Services, parametersOfEitherKindOfDeviceAreFound)
{
    CCameraParameterService parameters;
    parameters.addPool(m_pool.get());
    parameters.addPool(m_interfaces.get());
    EXPECT_EQ(parameters.getParameterCollection(m_info), m_pool->findDevice(m_info)->getParameterCollection());
    EXPECT_EQ(parameters.getParameterCollection(m_port), m_interfaces->findDevice(m_port)->getParameterCollection());
    EXPECT_TRUE(parameters.getParameterCollection(other()).isNull());
    destroyPools();
    EXPECT_TRUE(parameters.getParameterCollection(m_info).isNull());
}

} // namespace
