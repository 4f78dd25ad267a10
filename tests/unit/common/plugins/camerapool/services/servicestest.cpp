// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraparameterservice.h"
#include "unit/common/plugins/camerapool/testing/servicesfixture.h"
#include "utils/exceptions.h"

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EStep;

constexpr int WaitMs = 10000;

using ControlService = ::Test::ServicesFixture;

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

TEST_F(ControlService, busyCameraIsRefusedWithItsReasonAndOpensOnceItIsFree)
{
    m_transport->SetInUseBy(s_serial, "another host");
    EXPECT_FALSE(m_control.open(m_info, false));
    EXPECT_TRUE(m_control.openCameraExclusive(m_info).isNull());
    EXPECT_FALSE(m_info->errorString().isEmpty());
    m_transport->SetInUseBy(s_serial, "");
    EXPECT_TRUE(m_control.open(m_info, false));
}

TEST_F(ControlService, cameraThatHasVanishedIsRefusedWithItsReason)
{
    m_transport->RemoveCamera(s_serial);
    EXPECT_FALSE(m_control.open(m_info, false));
    EXPECT_TRUE(m_control.openCameraExclusive(m_info).isNull());
    EXPECT_TRUE(m_control.tryLock(m_info).isNull());
    EXPECT_FALSE(m_info->errorString().isEmpty());
}

TEST_F(ControlService, nullIsNeitherLockedNorUnlocked)
{
    EXPECT_TRUE(m_control.tryLock({}).isNull());
    EXPECT_TRUE(m_control.openCameraExclusive({}).isNull());
    EXPECT_FALSE(m_control.unlock({}));
    EXPECT_EQ(order(), QString());
}

TEST_F(ControlService, onceTheCameraPoolIsDestroyedNothingIsLockedAndInterfacesStillOpen)
{
    const auto device = camera();
    m_pool.reset();
    EXPECT_TRUE(m_control.tryLock(m_info).isNull());
    EXPECT_TRUE(m_control.openCameraExclusive(m_info).isNull());
    EXPECT_FALSE(m_control.unlock(device));
    EXPECT_TRUE(m_control.open(m_port, false));
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

using StreamControlService = ::Test::ServicesFixture;

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

using ParameterService = ::Test::ServicesFixture;

/** A camera pool that counts how often it is asked for a device. */
class CAskedPool : public CCameraPool
{
public:
    CAskedPool() : CCameraPool(nullptr) {}
    QSharedPointer<IDevice> findDevice(QSharedPointer<IBaseInfo> info) const override
    {
        ++asked;
        return CCameraPool::findDevice(info);
    }
    mutable int asked = 0;
};

TEST_F(ParameterService, withoutPoolsThereAreNoParameters)
{
    CCameraParameterService parameters;
    EXPECT_TRUE(parameters.getParameterCollection(m_info).isNull());
    EXPECT_TRUE(parameters.getParameterCollection(m_port).isNull());
    EXPECT_TRUE(parameters.getParameterCollection({}).isNull());
}

TEST_F(ParameterService, theFirstPoolThatKnowsTheDeviceEndsTheWalk)
{
    CAskedPool last;
    last.announceDevice(m_info);
    CCameraParameterService parameters;
    parameters.addPool(m_interfaces.get());
    parameters.addPool(m_pool.get());
    parameters.addPool(&last);
    last.asked = 0;
    EXPECT_EQ(parameters.getParameterCollection(m_info), m_pool->findDevice(m_info)->getParameterCollection());
    EXPECT_EQ(last.asked, 0);
}

TEST_F(ParameterService, aDestroyedPoolIsSkippedAndTheNextOneAsked)
{
    CAskedPool next;
    next.announceDevice(m_info);
    CCameraParameterService parameters;
    parameters.addPool(m_pool.get());
    parameters.addPool(&next);
    const auto ofNext = next.findDevice(m_info)->getParameterCollection();
    ASSERT_NE(parameters.getParameterCollection(m_info), ofNext);
    m_pool.reset();
    EXPECT_EQ(parameters.getParameterCollection(m_info), ofNext);
}

TEST_F(ParameterService, aPoolThatWasAddedTwiceIsAskedOnce)
{
    CAskedPool pool;
    CCameraParameterService parameters;
    parameters.addPool(&pool);
    parameters.addPool(m_interfaces.get());
    parameters.addPool(&pool);
    EXPECT_TRUE(parameters.getParameterCollection(m_info).isNull());
    EXPECT_EQ(pool.asked, 1);
}

TEST_F(ParameterService, parametersOfEitherKindOfDeviceAreFound)
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
