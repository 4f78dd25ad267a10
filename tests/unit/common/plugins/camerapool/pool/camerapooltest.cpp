// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/poolfixture.h"

#include "utils/exceptions.h"
#include "velmo/velmo.h"

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EFault;
using ::Test::EStep;
using ::Test::SScriptedCamera;

namespace
{

class CameraPool : public ::Test::PoolFixture
{
protected:
    QString addingRemoteCameraThrows(const QString& address)
    {
        try
        {
            m_pool->addRemoteGigECamera(address);
        }
        catch (const Core::Exception::BaseException& e)
        {
            return e.message();
        }
        return {};
    }
};

TEST_F(CameraPool, holdsOneInitialisationOfTheSdk)
{
    const unsigned int with = Velmo::VelmoInitializationCount();
    m_pool.reset();
    EXPECT_EQ(Velmo::VelmoInitializationCount() + 1, with);
}

TEST_F(CameraPool, registersTheMetatypesOfItsSignals)
{
    for (const char* name : {"Plugin::CameraPool::CameraInfoPtr", "CameraInfoPtr", "BaseInfoPtr",
                             "Velmo::CGrabResultPtr", "CCompressionStatistic", "uint64_t"})
    {
        EXPECT_NE(QMetaType::type(name), static_cast<int>(QMetaType::UnknownType)) << name;
    }
}

TEST_F(CameraPool, createDeviceMakesACameraOnce)
{
    const auto device = m_pool->createDevice(m_info);
    EXPECT_FALSE(device.isNull());
    EXPECT_EQ(m_pool->createDevice(m_info), device);
    EXPECT_EQ(device->parent(), m_pool.get());
    EXPECT_EQ(device->getInfo(), m_info);
}

TEST_F(CameraPool, createDeviceOfNullMakesNone)
{
    EXPECT_TRUE(m_pool->createDevice(BaseInfoPtr()).isNull());
    EXPECT_FALSE(m_pool->openDevice(BaseInfoPtr(), false));
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPool, openDeviceTellsThatItOpensAndThatItIsOpen)
{
    EXPECT_TRUE(m_pool->openDevice(m_info, false));
    EXPECT_EQ(order(), QStringLiteral("deviceOpening deviceOpened"));
    EXPECT_TRUE(m_pool->isDeviceOpen(m_info));
}

TEST_F(CameraPool, openDeviceThatFailsTellsTheAttemptAlone)
{
    m_transport->SetInUseBy(s_serial, "10.0.0.7");
    EXPECT_FALSE(m_pool->openDevice(m_info, false));
    EXPECT_EQ(order(), QStringLiteral("deviceOpening"));
}

TEST_F(CameraPool, aReceiverOfDeviceOpeningMayCallBackIntoThePool)
{
    bool exclusive = true;
    QObject::connect(m_pool.get(), &CCameraPool::deviceOpening, m_pool.get(),
                     [&]
                     {
                         exclusive = m_pool->isCameraOpenExclusive(m_info);
                         m_pool->openDevice(false);
                     });
    EXPECT_TRUE(m_pool->openDevice(m_info, false));
    EXPECT_FALSE(exclusive);
}

TEST_F(CameraPool, aReceiverOfDeviceOpenedMayCloseAtOnce)
{
    QObject::connect(m_pool.get(), &CCameraPool::deviceOpened, m_pool.get(), [&] { m_pool->closeDevice(m_info); });
    m_pool->openDevice(m_info, false);
    EXPECT_EQ(order(), QStringLiteral("deviceOpening deviceOpened deviceClosing deviceClosed"));
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
}

TEST_F(CameraPool, closeDeviceByRecordAndByDeviceTellTheSame)
{
    m_pool->openDevice(m_info, false);
    m_order.clear();
    m_pool->closeDevice(BaseInfoPtr(m_info));
    EXPECT_EQ(order(), QStringLiteral("deviceClosing deviceClosed"));
    m_pool->openDevice(m_info, false);
    m_order.clear();
    m_pool->closeDevice(QSharedPointer<IDevice>(camera()));
    EXPECT_EQ(order(), QStringLiteral("deviceClosing deviceClosed"));
}

TEST_F(CameraPool, closeDeviceOfNullDoesNothing)
{
    m_pool->closeDevice(QSharedPointer<IDevice>());
    m_pool->closeDevice(BaseInfoPtr());
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPool, openCamerasComeInTheOrderOfTheirDevices)
{
    const auto second = addSecondCamera();
    m_pool->openDevice(second, false);
    m_pool->openDevice(m_info, false);
    EXPECT_EQ(m_pool->getOpenCameras(), QVector<QSharedPointer<ICameraInfo>>({m_info, second}));
}

TEST_F(CameraPool, grabCommandsReachTheCameraOfTheRecord)
{
    const auto second = addSecondCamera();
    m_pool->openDevice(m_info, false);
    m_pool->openDevice(second, false);
    m_pool->startGrabbing(second);
    EXPECT_FALSE(m_pool->isCameraGrabbing(m_info));
    EXPECT_TRUE(m_pool->isCameraGrabbing(second));
    EXPECT_EQ(m_pool->getCountGrabbing(), 1);
    m_pool->singleShot(m_info, 5000);
    EXPECT_EQ(m_pool->getCountGrabbing(), 2);
    m_pool->stopGrabbing(second);
    EXPECT_EQ(m_pool->getCountGrabbing(), 1);
    m_pool->stopGrabbingAll();
    EXPECT_EQ(m_pool->getCountGrabbing(), 0);
}

TEST_F(CameraPool, allGrabsAreStoppedInTheOrderOfTheDevices)
{
    const auto second = addSecondCamera();
    m_pool->openDevice(second, false);
    m_pool->openDevice(m_info, false);
    m_pool->startGrabbing(second);
    m_pool->startGrabbing(m_info);
    QVector<CameraInfoPtr> stopped;
    QObject::connect(m_pool.get(), &CCameraPool::cameraGrabStopped, m_pool.get(),
                     [&](const CameraInfoPtr& info) { stopped.append(info); });
    m_pool->stopGrabbingAll();
    EXPECT_EQ(stopped, QVector<CameraInfoPtr>({m_info, second}));
}

TEST_F(CameraPool, grabCommandsWithoutARecordReachTheActiveCamera)
{
    m_pool->openDevice(m_info, false);
    m_pool->startGrabbing();
    EXPECT_EQ(m_pool->getCountGrabbing(), 0);
    CCameraPool::setActiveDevice(m_info);
    m_pool->startGrabbing();
    EXPECT_TRUE(m_pool->isCameraGrabbing(m_info));
    m_pool->stopGrabbing();
    EXPECT_FALSE(m_pool->isCameraGrabbing(m_info));
    m_pool->singleShot(5000U);
    EXPECT_TRUE(m_pool->isCameraGrabbing(m_info));
}

TEST_F(CameraPool, grabCommandsOnNullOrAnUnknownCameraDoNothing)
{
    Velmo::CDeviceInfo nowhere;
    nowhere.SetFullName("nowhere");
    for (const CameraInfoPtr& info : {CameraInfoPtr(), CameraInfoPtr(CCameraInfo::fromDeviceInfo(nowhere))})
    {
        m_pool->startGrabbing(info);
        m_pool->stopGrabbing(info);
        m_pool->singleShot(info, 10);
        EXPECT_FALSE(m_pool->isCameraGrabbing(info));
        EXPECT_FALSE(m_pool->isCameraOpenExclusive(info));
    }
    EXPECT_EQ(order(), QString());
}

TEST_F(CameraPool, destroyingThePoolClosesItsCamerasAndTheDevicesGo)
{
    m_pool->openDevice(m_info, false);
    m_pool->startGrabbing(m_info);
    m_pool.reset();
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(CameraPool, aCameraThatAClientHoldsOutlivesThePoolClosed)
{
    m_pool->openDevice(m_info, false);
    auto held = camera();
    m_pool.reset();
    EXPECT_FALSE(held->isOpen());
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    EXPECT_EQ(held->parent(), nullptr);
    held.reset();
}

TEST_F(CameraPool, destroyingThePoolWithALossStillToBeToldIsSafe)
{
    m_pool->openDevice(m_info, false);
    m_transport->RemoveCamera(s_serial);
    m_pool.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

// Remote cameras

TEST_F(CameraPool, aRemoteCameraIsAnnouncedAndTheTransportLayerReleased)
{
    SScriptedCamera remote;
    remote.serialNumber = "2001";
    m_transport->SetRemoteCamera("10.1.2.3", remote);
    EXPECT_NO_THROW(m_pool->addRemoteGigECamera(QStringLiteral("10.1.2.3")));
    EXPECT_EQ(m_transport->GetCount(EStep::AnnounceRemoteDevice), 1U);
    EXPECT_NO_THROW(m_transport->GetDeviceInfo("2001"));
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("KorvelGigE"), 0U);
}

TEST_F(CameraPool, aRemoteCameraThatDoesNotAnswerIsAnErrorForAPerson)
{
    EXPECT_EQ(addingRemoteCameraThrows(QStringLiteral("10.9.9.9")),
              QStringLiteral("Failed to find camera. Check the IP configuration."));
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("KorvelGigE"), 0U);
}

TEST_F(CameraPool, withoutAGigETransportLayerARemoteCameraIsAnError)
{
    m_transport->SetFault(EStep::CreateTl, EFault::Runtime);
    EXPECT_EQ(addingRemoteCameraThrows(QStringLiteral("10.1.2.3")), QStringLiteral("No GigE transport layer found."));
}

TEST_F(CameraPool, aTransportLayerOfThatNameWithoutTheGigEInterfaceIsReleasedAndAnError)
{
    m_sdk.Remove(m_transport);
    ::Test::SScriptedTransportConfig other;
    other.deviceClass = "KorvelGigE";
    m_sdk.Add(std::make_shared<::Test::CScriptedTransport>(other));
    EXPECT_EQ(addingRemoteCameraThrows(QStringLiteral("10.1.2.3")), QStringLiteral("No GigE transport layer found."));
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("KorvelGigE"), 0U);
}

TEST_F(CameraPool, aFaultOfTheSdkWhileAnnouncingBecomesAHostException)
{
    m_transport->SetFault(EStep::AnnounceRemoteDevice, EFault::Timeout, "no answer f\xC3\xBCr 10.1.2.3");
    EXPECT_EQ(addingRemoteCameraThrows(QStringLiteral("10.1.2.3")), QStringLiteral("no answer f\u00FCr 10.1.2.3"));
    EXPECT_EQ(m_sdk.GetHeldTransportLayers("KorvelGigE"), 0U);
}

} // namespace
