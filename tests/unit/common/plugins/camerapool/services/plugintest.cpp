// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerapoolplugin.h"
#include "camerapool/genicamcachehelper.h"
#include "camerapool/icameraactioncommandsservice.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/idevicefirmwareupdateservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/iimagedecompressorservice.h"
#include "camerapool/internal/camerapool.h"
#include "camerapool/internal/interfacepool.h"
#include "dataprocessingcore/noderegistry.h"
#include "genapi/inodemap.h"
#include "servicecore/serviceregistry.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"
#include "unit/common/plugins/camerapool/testing/records.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QPointer>
#include <QSignalSpy>

#include <algorithm>
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
    QVector<ServicePtr> services() const override { return m_ofOthers + m_registered; }
    QVector<ServicePtr> m_ofOthers;
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
    ASSERT_EQ(all.size(), 8);
    EXPECT_TRUE(all.at(0).objectCast<ICameraEnumerationService>());
    EXPECT_TRUE(all.at(1).objectCast<ICameraStatusService>());
    EXPECT_TRUE(all.at(2).objectCast<ICameraControlService>());
    EXPECT_TRUE(all.at(3).objectCast<IDeviceParameterService>());
    EXPECT_TRUE(all.at(4).objectCast<ICameraStreamControlService>());
    EXPECT_TRUE(all.at(5).objectCast<ICameraActionCommandsService>());
    EXPECT_TRUE(all.at(6).objectCast<IDeviceFirmwareUpdateService>());
    EXPECT_TRUE(all.at(7).objectCast<IImageDecompressorService>());
    EXPECT_TRUE(plugin.unInitialize(&m_initializer));
    EXPECT_EQ(m_initializer.m_unregistered, m_initializer.m_registered);
}

TEST_F(CameraPoolPlugin, makesTheCameraPoolBeforeTheInterfacePool)
{
    CCameraPoolPlugin plugin;
    plugin.initialize(&m_initializer);
    const auto pools = plugin.findChildren<ADevicePool*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(pools.size(), 2);
    EXPECT_NE(qobject_cast<CCameraPool*>(pools.at(0)), nullptr);
    EXPECT_NE(qobject_cast<CInterfacePool*>(pools.at(1)), nullptr);
}

TEST_F(CameraPoolPlugin, servicesKnowBothPools)
{
    CCameraPoolPlugin plugin;
    plugin.initialize(&m_initializer);
    auto* const pCameras = plugin.findChild<CCameraPool*>();
    auto* const pInterfaces = plugin.findChild<CInterfacePool*>();
    ASSERT_TRUE(pCameras != nullptr && pInterfaces != nullptr);
    const BaseInfoPtr camera = ::Test::cameraRecord("plugin/camera");
    const BaseInfoPtr port = ::Test::interfaceRecord("plugin/port");
    pCameras->announceDevice(camera);
    pInterfaces->announceDevice(port);
    const auto parameters = m_initializer.m_registered.at(3).objectCast<IDeviceParameterService>();
    EXPECT_FALSE(parameters->getParameterCollection(camera).isNull());
    EXPECT_FALSE(parameters->getParameterCollection(port).isNull());
    const auto status = m_initializer.m_registered.at(1).objectCast<ICameraStatusService>();
    QSignalSpy opened(status.data(), &IDeviceStatusService::deviceOpened);
    emit pCameras->deviceOpened(camera);
    emit pInterfaces->deviceOpened(port);
    EXPECT_EQ(opened.count(), 2);
}

TEST_F(CameraPoolPlugin, clearedCacheOfDescriptionsIsEmpty)
{
    const std::string description = R"(<?xml version="1.0"?>
<RegisterDescription ModelName="m" VendorName="v" StandardNameSpace="None" SchemaMajorVersion="1"
  SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
  ProductGuid="p" VersionGuid="v" xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Category Name="Root"/>
</RegisterDescription>)";
    const auto factory = GenApi::CNodeMapFactory::FromData(description.data(), description.size());
    EXPECT_GT(GenApi::CNodeMapFactory::CacheSize(), 0U);
    CGenicamCacheHelper::clearGenicamCache();
    EXPECT_EQ(GenApi::CNodeMapFactory::CacheSize(), 0U);
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

TEST_F(CameraPoolPlugin, withoutAnInitializerOnlyTheFirstServiceIsMade)
{
    CCameraPoolPlugin plugin;
    EXPECT_TRUE(plugin.initialize(nullptr));
    plugin.unInitialize(&m_initializer);
    const auto& all = m_initializer.m_unregistered;
    EXPECT_EQ(all.size() - all.count(ServicePtr()), 1);
    EXPECT_TRUE(all.at(0).objectCast<ICameraEnumerationService>());
}

/** Destroys itself when it has registered so many services. */
class CDyingInitializer : public CFakeInitializer
{
public:
    CDyingInitializer(int lifetime, QVector<ServicePtr>& registered) : m_lifetime(lifetime), m_all(registered) {}
    void registerService(const ServicePtr& service) override
    {
        m_all.append(service);
        if (m_all.size() == m_lifetime)
        {
            delete this;
        }
    }

private:
    int m_lifetime;
    QVector<ServicePtr>& m_all;
};

TEST_F(CameraPoolPlugin, initializerThatDiesBetweenTwoRegistrationsEndsThemAndInitializeSucceeds)
{
    for (int lifetime = 1; lifetime <= 8; ++lifetime)
    {
        QVector<ServicePtr> registered;
        CCameraPoolPlugin plugin;
        EXPECT_TRUE(plugin.initialize(new CDyingInitializer(lifetime, registered)));
        EXPECT_EQ(registered.size(), lifetime);
        EXPECT_TRUE(plugin.unInitialize(&m_initializer));
        const auto made = m_initializer.m_unregistered.size() - m_initializer.m_unregistered.count(ServicePtr());
        EXPECT_EQ(made, lifetime);
        m_initializer.m_unregistered.clear();
    }
}

TEST_F(CameraPoolPlugin, servicesNeverMadeDoNoHarmWhenTheyAreUnregistered)
{
    Core::Service::CServiceRegistry registry;
    QSignalSpy unregistered(&registry, &Core::Service::CServiceRegistry::serviceUnregistered);
    CCameraPoolPlugin plugin;
    plugin.initialize(nullptr);
    ::Test::CMessageLog log;
    class CRegistering : public Core::Plugin::IPluginInitializer
    {
    public:
        explicit CRegistering(Core::Service::CServiceRegistry& registry) : m_registry(registry) {}
        void registerService(const ServicePtr& service) override { m_registry.registerService(service); }
        void unregisterService(const ServicePtr& service) override { m_registry.unregisterService(service); }

    private:
        Core::Service::CServiceRegistry& m_registry;
    } initializer(registry);
    EXPECT_TRUE(plugin.unInitialize(&initializer));
    EXPECT_EQ(unregistered.count(), 0);
}

TEST_F(CameraPoolPlugin, servicesAndPoolsLiveOnBetweenUnInitializeAndTheEndOfThePlugin)
{
    QVector<QPointer<QObject>> objects;
    const auto alive = [&]
    {
        return std::count_if(objects.cbegin(), objects.cend(), [](const auto& object) { return !object.isNull(); });
    };
    {
        CCameraPoolPlugin plugin;
        plugin.initialize(&m_initializer);
        plugin.unInitialize(&m_initializer);
        for (const auto& service : qAsConst(m_initializer.m_registered))
        {
            objects.append(service.data());
        }
        for (auto* pPool : plugin.findChildren<ADevicePool*>())
        {
            objects.append(pPool);
        }
        m_initializer.m_registered.clear();
        m_initializer.m_unregistered.clear();
        EXPECT_EQ(alive(), 10);
    }
    EXPECT_EQ(alive(), 0);
}

TEST_F(CameraPoolPlugin, servicesAreReleasedInTheReverseOrderOfTheirRegistration)
{
    QVector<int> order;
    {
        CCameraPoolPlugin plugin;
        plugin.initialize(&m_initializer);
        for (int i = 0; i < m_initializer.m_registered.size(); ++i)
        {
            QObject::connect(m_initializer.m_registered.at(i).data(), &QObject::destroyed, &m_initializer,
                             [&order, i] { order.append(i); });
        }
        m_initializer.m_registered.clear();
    }
    EXPECT_EQ(order, (QVector<int>{7, 6, 5, 4, 3, 2, 1, 0}));
}

TEST_F(CameraPoolPlugin, poolsGoAfterTheServices)
{
    QStringList order;
    {
        CCameraPoolPlugin plugin;
        plugin.initialize(&m_initializer);
        const auto note = [&](QObject* pObject, const QString& name)
        {
            QObject::connect(pObject, &QObject::destroyed, &m_initializer, [&order, name] { order.append(name); });
        };
        note(m_initializer.m_registered.first().data(), QStringLiteral("service"));
        note(plugin.findChild<CCameraPool*>(), QStringLiteral("pool"));
        note(plugin.findChild<CInterfacePool*>(), QStringLiteral("pool"));
        m_initializer.m_registered.clear();
    }
    EXPECT_EQ(order.join(QLatin1Char(' ')), QStringLiteral("service pool pool"));
}

using Plugin::DataProcessingCore::CNodeRegistry;

TEST_F(CameraPoolPlugin, offersItsSourceNodeWhileItIsInitialized)
{
    const auto registry = QSharedPointer<CNodeRegistry>::create();
    m_initializer.m_ofOthers = {registry};
    CCameraPoolPlugin plugin;
    plugin.initialize(&m_initializer);
    EXPECT_EQ(registry->nodeNames(), QStringList{QStringLiteral("KorvelCameraSource")});
    const auto node = registry->createNode(QStringLiteral("KorvelCameraSource"));
    ASSERT_FALSE(node.isNull());
    EXPECT_EQ(node->name(), QStringLiteral("KorvelCameraSource"));
    auto* const pPool = plugin.findChild<CCameraPool*>();
    emit pPool->cameraImageGrabbed({}, Velmo::CGrabResultPtr());
    EXPECT_FALSE(node->outData(0).isNull()) << "the node is not connected to the camera pool";
    plugin.unInitialize(&m_initializer);
    EXPECT_TRUE(registry->nodeNames().isEmpty());
}

TEST_F(CameraPoolPlugin, takesItsSourceNodeBackWhenItIsDestroyedWithoutUnInitialize)
{
    const auto registry = QSharedPointer<CNodeRegistry>::create();
    m_initializer.m_ofOthers = {registry};
    {
        CCameraPoolPlugin plugin;
        plugin.initialize(&m_initializer);
        m_initializer.m_registered.clear();
    }
    EXPECT_TRUE(registry->nodeNames().isEmpty());
}

TEST_F(CameraPoolPlugin, leavesAnothersNodeOfTheSameNameAlone)
{
    const auto registry = QSharedPointer<CNodeRegistry>::create();
    const Plugin::DataProcessingCore::NodeCreator creator = [](const auto&)
    {
        return Plugin::DataProcessingCore::ANodeDataModelPtr();
    };
    registry->registerNode(QStringLiteral("KorvelCameraSource"), creator);
    m_initializer.m_ofOthers = {registry};
    CCameraPoolPlugin plugin;
    EXPECT_TRUE(plugin.initialize(&m_initializer));
    plugin.unInitialize(&m_initializer);
    EXPECT_EQ(registry->nodeNames().size(), 1);
}

TEST_F(CameraPoolPlugin, outlivesTheRegistryOfNodes)
{
    m_initializer.m_ofOthers = {QSharedPointer<CNodeRegistry>::create()};
    CCameraPoolPlugin plugin;
    plugin.initialize(&m_initializer);
    m_initializer.m_ofOthers.clear();
    EXPECT_TRUE(plugin.unInitialize(&m_initializer));
}

TEST(CameraPoolPluginDeathTest, unInitializeWithoutAnInitializerIsFatal)
{
    EXPECT_DEATH(
        {
            CCameraPoolPlugin plugin;
            plugin.unInitialize(nullptr);
        },
        "does not exist any more");
}

TEST_F(CameraPoolPlugin, carriesItsTranslations)
{
    for (const auto* language : {"ja", "zh", "en", "ko"})
    {
        EXPECT_TRUE(QFile::exists(QStringLiteral(":/translation/CameraPool_%1.qm").arg(QLatin1String(language))));
    }
}

} // namespace
