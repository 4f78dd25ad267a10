// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameraenumerationservice.h"
#include "dataprocessingcore/inoderegistry.h"
#include "plugincore/pluginmanager.h"
#include "servicecore/serviceregistry.h"
#include "velmo/velmo.h"

#include <gtest/gtest.h>

#include <QThread>

#include <stdexcept>

namespace
{

using Core::Plugin::CPluginManager;
using Core::Service::CServiceRegistry;
using namespace Plugin::DataProcessingCore;

/** Refuses every node with an exception, as a full or broken application might. */
class CThrowingRegistry : public INodeRegistry
{
public:
    bool registerNode(const QString&, const NodeCreator&) override { throw std::runtime_error("no room for nodes"); }
    bool unregisterNode(const QString&) override { return false; }
    QStringList nodeNames() const override { return {}; }
    ANodeDataModelPtr createNode(const QString&, const QSharedPointer<Plugin::AppCore::IInfo>&) const override
    {
        return {};
    }
};

TEST(FailedStart, cameraPoolThatFailsAfterItsServicesWereRegisteredLeavesNoneAndNoThread)
{
    CServiceRegistry registry;
    const auto nodes = QSharedPointer<CThrowingRegistry>::create();
    registry.registerService(nodes); // found before the one of the application's own plugin
    QWeakPointer<Core::Service::IService> enumeration;
    bool isEnumerationThreadSeen = false;
    QObject::connect(&registry, &CServiceRegistry::serviceRegistered, &registry,
                     [&](const auto& service)
                     {
                         if (service.template objectCast<Plugin::CameraPool::ICameraEnumerationService>())
                         {
                             enumeration = service;
                             const auto* const pThread = service->template findChild<QThread*>();
                             isEnumerationThreadSeen = pThread != nullptr && pThread->isRunning();
                         }
                     });
    CPluginManager manager(registry);
    manager.addFolder(QStringLiteral(PLUGIN_FOLDER));
    EXPECT_FALSE(manager.start());
    EXPECT_TRUE(manager.errors().join('\n').contains(QLatin1String("no room for nodes")));
    EXPECT_TRUE(isEnumerationThreadSeen);
    EXPECT_TRUE(enumeration.isNull());
    EXPECT_EQ(registry.services(), QVector<QSharedPointer<Core::Service::IService>>{nodes});
    EXPECT_EQ(Velmo::VelmoInitializationCount(), 0U);
}

} // namespace
