// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerapoolplugin.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/internal/cameraenumerationservice.h"
#include "camerapool/internal/controlservice.h"
#include "camerapool/internal/statusservice.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>

#include <memory>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ServicePtr = QSharedPointer<Core::Service::IService>;

class CFakeInitializer : public Core::Plugin::IPluginInitializer
{
public:
    void registerService(const ServicePtr& service) override { m_registered.append(service); }
    void unregisterService(const ServicePtr& service) override { m_unregistered.append(service); }
    QVector<ServicePtr> m_registered;
    QVector<ServicePtr> m_unregistered;
};

class CameraPoolPlugin : public ::testing::Test
{
protected:
    std::shared_ptr<::Test::CScriptedTransport> m_transport = std::make_shared<::Test::CScriptedTransport>();
    ::Test::CScriptedSdk m_sdk{{m_transport}};
    CFakeInitializer m_initializer;
};

TEST_F(CameraPoolPlugin, registersItsServicesInOrderAndTakesThemBackInOrder)
{
    CCameraPoolPlugin plugin;
    EXPECT_TRUE(plugin.initialize(&m_initializer));
    EXPECT_TRUE(plugin.postInitialize());
    const auto& all = m_initializer.m_registered;
    ASSERT_EQ(all.size(), 5);
    EXPECT_TRUE(all.at(0).objectCast<ICameraEnumerationService>());
    EXPECT_TRUE(all.at(1).objectCast<ICameraStatusService>());
    EXPECT_TRUE(all.at(2).objectCast<ICameraControlService>());
    EXPECT_TRUE(all.at(3).objectCast<IDeviceParameterService>());
    EXPECT_TRUE(all.at(4).objectCast<ICameraStreamControlService>());
    EXPECT_TRUE(plugin.unInitialize(&m_initializer));
    EXPECT_EQ(m_initializer.m_unregistered, m_initializer.m_registered);
}

TEST_F(CameraPoolPlugin, servicesAreReleasedWithThePlugin)
{
    QWeakPointer<Core::Service::IService> service;
    {
        CCameraPoolPlugin plugin;
        plugin.initialize(&m_initializer);
        service = m_initializer.m_registered.at(0);
        m_initializer.m_registered.clear();
        EXPECT_FALSE(service.isNull());
    }
    EXPECT_TRUE(service.isNull());
}

TEST_F(CameraPoolPlugin, withoutAnInitializerNothingIsRegistered)
{
    CCameraPoolPlugin plugin;
    EXPECT_TRUE(plugin.initialize(nullptr));
}

TEST_F(CameraPoolPlugin, carriesItsTranslations)
{
    for (const auto* language : {"ja", "zh", "en", "ko"})
    {
        EXPECT_TRUE(QFile::exists(QStringLiteral(":/translation/CameraPool_%1.qm").arg(QLatin1String(language))));
    }
}

class EnumerationService : public CameraPoolPlugin
{
protected:
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

TEST_F(CameraPoolPlugin, statusServiceAnnouncesTheActiveDeviceOnceAndItsClearing)
{
    CCameraPool cameras(nullptr);
    CStatusService service(&cameras, nullptr, nullptr);
    QSignalSpy changed(&service, &IDeviceStatusService::activeDeviceChanged);
    const BaseInfoPtr info = ::Test::cameraRecord("status/1");
    service.setActiveDevice(info);
    service.setActiveDevice(info);
    EXPECT_EQ(changed.count(), 1);
    service.setActiveDevice({});
    EXPECT_EQ(changed.count(), 2);
    EXPECT_TRUE(service.getActiveDevice().isNull());
}

TEST_F(CameraPoolPlugin, controlServiceWithoutPoolsRefuses)
{
    CControlService service(nullptr, nullptr, nullptr);
    EXPECT_FALSE(service.open(false));
    EXPECT_FALSE(service.open(::Test::cameraRecord("control/1"), false));
    EXPECT_TRUE(service.tryLock(::Test::cameraRecord("control/1")).isNull());
    EXPECT_TRUE(service.openCameraExclusive(::Test::cameraRecord("control/1")).isNull());
    EXPECT_FALSE(service.unlock({}));
}

} // namespace
