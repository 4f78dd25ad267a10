// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraenumerationservice.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/statusservice.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"

#include <gtest/gtest.h>

#include <QSemaphore>
#include <QSignalSpy>
#include <QTimer>

#include <memory>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EStep;

class EnumerationService : public ::testing::Test
{
protected:
    /** Has the camera found; passes run on request alone from then on. */
    CameraInfoPtr findCamera(const std::string& serialNumber)
    {
        ::Test::SScriptedCamera camera;
        camera.serialNumber = serialNumber;
        m_transport->AddCamera(camera);
        CameraInfoPtr found;
        EXPECT_TRUE(::Test::waitUntil(
            [&]
            {
                m_service.triggerEnumeration();
                for (const auto& layer : m_service.enumerate())
                {
                    for (const auto& info : layer->getCameraInfoList())
                    {
                        found = info->getSerialNumber() == QString::fromStdString(serialNumber) ? info : found;
                    }
                }
                return !found.isNull();
            }));
        return found;
    }
    int cameraCount() { return m_service.enumerate().at(0)->getCameraInfoList().size(); }
    /** Ends the passes and hears what they found. */
    void settle()
    {
        m_service.setEnumerationEnabled(false);
        QCoreApplication::processEvents();
    }

    std::shared_ptr<::Test::CScriptedTransport> m_transport = std::make_shared<::Test::CScriptedTransport>();
    ::Test::CScriptedSdk m_sdk{{m_transport}};
    CCameraPool m_cameras{nullptr};
    CInterfacePool m_interfaces{nullptr};
    CCameraEnumerationService m_service{&m_cameras, &m_interfaces};
};

TEST_F(EnumerationService, announcesACameraOnceAndAnEqualPassNothing)
{
    ::Test::SScriptedCamera camera;
    camera.serialNumber = "service1";
    m_transport->AddCamera(camera);
    QSignalSpy changed(&m_service, &ICameraEnumerationService::enumerationChanged);
    QSignalSpy connected(&m_cameras, &ADevicePool::deviceConnected);
    ASSERT_TRUE(::Test::waitUntil([&] { return changed.count() == 1; }));
    EXPECT_EQ(connected.count(), 1);
    m_service.triggerEnumeration();
    ASSERT_TRUE(::Test::waitUntil([&] { return m_transport->GetCount(::Test::EStep::EnumerateDevices) >= 2; }));
    m_service.setEnumerationEnabled(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(m_service.enumerate(QStringLiteral("anything")).isEmpty());
    EXPECT_EQ(m_service.enumerate().size(), 1);
}

TEST_F(EnumerationService, enumerateWithATextGivesNothing)
{
    findCamera("text1");
    EXPECT_FALSE(m_service.enumerate().isEmpty());
    for (const auto* text : {"", "TestScripted", "text1", "*"})
    {
        EXPECT_TRUE(m_service.enumerate(QLatin1String(text)).isEmpty()) << text;
    }
}

TEST_F(EnumerationService, passThatFindsTheSameDevicesIsNotAnnounced)
{
    findCamera("same1");
    settle();
    QSignalSpy changed(&m_service, &ICameraEnumerationService::enumerationChanged);
    QSignalSpy connected(&m_cameras, &ADevicePool::deviceConnected);
    m_transport->ResetCounts();
    m_service.setEnumerationEnabled(true);
    m_service.triggerEnumeration();
    ASSERT_TRUE(m_transport->WaitForCount(EStep::EnumerateDevices, 1));
    settle();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(connected.count(), 0);
}

TEST_F(EnumerationService, passesComeEveryTenSecondsByItself)
{
    const auto timers = m_service.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(timers.size(), 1);
    EXPECT_EQ(timers.first()->interval(), 10000);
    EXPECT_TRUE(timers.first()->isActive());
    EXPECT_FALSE(timers.first()->isSingleShot());
}

TEST_F(EnumerationService, interfacesAreAnnouncedBeforeTheCamerasOfTheirTransportLayer)
{
    QStringList order;
    QObject::connect(&m_interfaces, &ADevicePool::deviceConnected, &m_service,
                     [&] { order.append(QStringLiteral("interface")); });
    QObject::connect(&m_cameras, &ADevicePool::deviceConnected, &m_service,
                     [&] { order.append(QStringLiteral("camera")); });
    QObject::connect(&m_service, &ICameraEnumerationService::enumerationChanged, &m_service,
                     [&] { order.append(QStringLiteral("changed")); });
    m_transport->AddInterface("order1/port");
    findCamera("order1");
    EXPECT_EQ(order.mid(0, 3).join(QLatin1Char(' ')), QStringLiteral("interface camera changed"));
}

TEST_F(EnumerationService, withoutProducersNothingIsAnnounced)
{
    m_service.setEnumerationEnabled(false);
    m_sdk.Remove(m_transport);
    CCameraEnumerationService service(&m_cameras, &m_interfaces);
    QSignalSpy changed(&service, &ICameraEnumerationService::enumerationChanged);
    int passes = 0;
    QObject::connect(service.findChild<CCameraEnumerationThread*>(), &CCameraEnumerationThread::enumerationFinished,
                     &service, [&] { ++passes; });
    ASSERT_TRUE(::Test::waitUntil([&] { return passes > 0; }));
    EXPECT_TRUE(service.enumerate().isEmpty());
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(EnumerationService, lostCameraIsRemovedOnceAtOnce)
{
    ::Test::SScriptedCamera camera;
    camera.serialNumber = "service2";
    m_transport->AddCamera(camera);
    ASSERT_TRUE(::Test::waitUntil([&] { return !m_service.enumerate().isEmpty(); }));
    m_service.setEnumerationEnabled(false);
    const CameraInfoPtr info = m_service.enumerate().at(0)->getCameraInfoList().at(0);
    QSignalSpy disconnected(&m_cameras, &ADevicePool::deviceDisconnected);
    QSignalSpy changed(&m_service, &ICameraEnumerationService::enumerationChanged);
    m_service.removeDevice(info);
    m_service.removeDevice(info);
    EXPECT_EQ(disconnected.count(), 1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(EnumerationService, forcedUpdateWhileDisabledEnumeratesOnceAndStaysDisabled)
{
    m_service.setEnumerationEnabled(false);
    m_transport->ResetCounts();
    m_service.forceUpdate();
    ASSERT_TRUE(::Test::waitUntil(
        [&]
        { return m_transport->GetCount(::Test::EStep::EnumerateDevices) == 1 && !m_service.isEnumerationEnabled(); }));
    EXPECT_EQ(m_transport->GetCount(::Test::EStep::EnumerateDevices), 1U);
}

TEST_F(EnumerationService, listenersMayCallBack)
{
    int calls = 0;
    QObject::connect(&m_service, &ICameraEnumerationService::enumerationChanged, &m_service,
                     [&]
                     {
                         m_service.enumerate();
                         m_service.triggerEnumeration();
                         m_service.setEnumerationEnabled(true);
                         ++calls;
                     });
    EXPECT_TRUE(::Test::waitUntil([&] { return calls == 1; }));
}

TEST_F(EnumerationService, cameraLostDuringAPassIsAnnouncedAtOnceAndOnlyOnce)
{
    const auto info = findCamera("loss1");
    settle();
    QSemaphore inPass;
    QSemaphore mayGoOn;
    m_transport->SetHook(EStep::EnumerateDevices,
                         [&](const std::string&)
                         {
                             inPass.release();
                             mayGoOn.acquire();
                         });
    QSignalSpy disconnected(&m_cameras, &ADevicePool::deviceDisconnected);
    QSignalSpy connected(&m_cameras, &ADevicePool::deviceConnected);
    m_service.setEnumerationEnabled(true);
    m_service.triggerEnumeration();
    ASSERT_TRUE(inPass.tryAcquire(1, 10000));
    m_transport->RemoveCamera("loss1");
    m_service.removeDevice(info);
    EXPECT_EQ(disconnected.count(), 1);
    mayGoOn.release(100);
    settle();
    m_transport->SetHook(EStep::EnumerateDevices, nullptr);
    EXPECT_EQ(disconnected.count(), 1);
    EXPECT_EQ(connected.count(), 0);
    EXPECT_EQ(cameraCount(), 0);
}

TEST_F(EnumerationService, lossOfAStrangeCameraIsNotAnnounced)
{
    findCamera("loss2");
    settle();
    QSignalSpy changed(&m_service, &ICameraEnumerationService::enumerationChanged);
    m_service.removeDevice({});
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(cameraCount(), 1);
}

TEST_F(EnumerationService, lossReportedWhileAnotherIsAnnouncedIsAnnouncedToo)
{
    const auto first = findCamera("loss3");
    const auto second = findCamera("loss4");
    settle();
    QVector<BaseInfoPtr> lost;
    QObject::connect(&m_cameras, &ADevicePool::deviceDisconnected, &m_service,
                     [&](const BaseInfoPtr& info)
                     {
                         lost.append(info);
                         m_service.removeDevice(second);
                     });
    QSignalSpy changed(&m_service, &ICameraEnumerationService::enumerationChanged);
    m_service.removeDevice(first);
    EXPECT_EQ(lost, (QVector<BaseInfoPtr>{first, second}));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(cameraCount(), 0);
}

TEST_F(EnumerationService, lossThatTheCameraReportsSeveralTimesIsHandledOnce)
{
    const auto info = findCamera("loss5");
    settle();
    ASSERT_TRUE(m_cameras.openDevice(info, false));
    QSignalSpy disconnected(&m_cameras, &ADevicePool::deviceDisconnected);
    m_transport->RemoveCamera("loss5", 3);
    ASSERT_TRUE(::Test::waitUntil([&] { return disconnected.count() > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(disconnected.count(), 1);
}

TEST_F(EnumerationService, lostCameraLivesUntilAllWhoHearOfItsLossHaveReturned)
{
    const auto info = findCamera("loss6");
    settle();
    ASSERT_TRUE(m_cameras.openDevice(info, false));
    const auto device = m_cameras.findDevice(info).toWeakRef();
    bool wasAlive = false;
    // Connected after the service, so called after it has removed the camera.
    QObject::connect(&m_cameras, &CCameraPool::cameraConnectionLost, &m_service,
                     [&] { wasAlive = m_cameras.findDevice(info).isNull() && !device.isNull(); });
    m_transport->RemoveCamera("loss6");
    EXPECT_TRUE(::Test::waitUntil([&] { return device.isNull(); }));
    EXPECT_TRUE(wasAlive);
}

TEST_F(EnumerationService, listenersOfThePoolsSignalsMayCallBack)
{
    CStatusService status(&m_cameras, &m_interfaces, nullptr);
    int connected = 0;
    int disconnected = 0;
    QObject::connect(&status, &ICameraStatusService::deviceConnected, &m_service,
                     [&](const BaseInfoPtr& info)
                     {
                         if (info.objectCast<ICameraInfo>().isNull())
                         {
                             return; // the transport layer's record lives on, with the interfaces of earlier tests
                         }
                         ++connected;
                         EXPECT_TRUE(m_cameras.openDevice(info, false));
                         m_service.triggerEnumeration();
                         m_service.forceUpdate();
                     });
    QObject::connect(&status, &ICameraStatusService::deviceDisconnected, &m_service,
                     [&](const BaseInfoPtr& info)
                     {
                         ++disconnected;
                         m_service.removeDevice(info.objectCast<ICameraInfo>());
                         m_service.setEnumerationEnabled(false);
                     });
    const auto info = findCamera("reentry1");
    EXPECT_EQ(connected, 1);
    EXPECT_EQ(m_service.getOpenCameras(), QVector<CameraInfoPtr>{info});
    m_transport->RemoveCamera("reentry1");
    ASSERT_TRUE(::Test::waitUntil([&] { return disconnected > 0; }));
    EXPECT_EQ(disconnected, 1);
    EXPECT_FALSE(m_service.isEnumerationEnabled());
}

TEST_F(EnumerationService, interfacesAloneThatComeOrGoAreNotAnnounced)
{
    findCamera("interfaces1");
    settle();
    QSignalSpy changed(&m_service, &ICameraEnumerationService::enumerationChanged);
    m_transport->AddInterface("interfaces1/port");
    m_transport->ResetCounts();
    m_service.setEnumerationEnabled(true);
    m_service.triggerEnumeration();
    ASSERT_TRUE(m_transport->WaitForCount(EStep::EnumerateDevices, 1));
    settle();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(m_service.enumerate().at(0)->getInterfaceInfoList().size(), 1);
}

TEST_F(EnumerationService, worksOnWithoutItsPools)
{
    // The registries of records belong to one enumeration thread at a time.
    m_service.setEnumerationEnabled(false);
    auto cameras = std::make_unique<CCameraPool>(nullptr);
    auto interfaces = std::make_unique<CInterfacePool>(nullptr);
    CCameraEnumerationService service(cameras.get(), interfaces.get());
    cameras.reset();
    interfaces.reset();
    EXPECT_TRUE(::Test::waitUntil([&] { return !service.enumerate().isEmpty(); }));
    EXPECT_TRUE(service.getOpenCameras().isEmpty());
}

TEST_F(EnumerationService, enablingAfterAForcedUpdateKeepsEnumerationEnabled)
{
    m_service.setEnumerationEnabled(false);
    m_transport->ResetCounts();
    m_service.forceUpdate();
    m_service.setEnumerationEnabled(true);
    ASSERT_TRUE(::Test::waitUntil([&] { return m_transport->GetCount(EStep::EnumerateDevices) >= 1; }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_service.isEnumerationEnabled());
}

} // namespace
