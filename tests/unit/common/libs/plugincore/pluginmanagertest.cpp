// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/pluginmanager.h"

#include "appcore/icontext.h"
#include "dataprocessingcore/igraphservice.h"
#include "dataprocessingcore/inoderegistry.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QVariant>

namespace
{

using namespace Core::Plugin;
using Core::Service::CServiceRegistry;

class PluginManagerTest : public ::testing::Test
{
protected:
    PluginManagerTest() { forgetCalls(); }
    void add(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
        {
            m_manager.addFile(QStringLiteral(TEST_PLUGIN_DIR "/%1/%1.so").arg(QLatin1String(name)));
        }
    }
    static QStringList calls() { return qApp->property("testPluginCalls").toStringList(); }
    static void forgetCalls() { qApp->setProperty("testPluginCalls", QStringList()); }
    std::string errorsOf(const char* name) const
    {
        const auto spec = m_manager.plugin(QLatin1String(name));
        return spec.isNull() ? "no such plugin" : spec->errors().join(QLatin1Char('\n')).toStdString();
    }
    static bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

    CServiceRegistry m_registry;
    CPluginManager m_manager{m_registry};
};

TEST_F(PluginManagerTest, startsInTheOrderOfDependencies)
{
    add({"top", "middle", "base"});
    EXPECT_TRUE(m_manager.start()) << m_manager.errors().join("\n").toStdString();
    EXPECT_EQ(calls(), (QStringList{"base.initialize", "middle.initialize", "top.initialize", "base.postInitialize",
                                    "middle.postInitialize", "top.postInitialize"}));
    EXPECT_EQ(m_manager.plugin("top")->state(), EPluginState::Running);
    EXPECT_TRUE(m_manager.errors().isEmpty());
}

TEST_F(PluginManagerTest, stopsInTheReverseOrderAndDeletesTheInstances)
{
    add({"base", "middle"});
    ASSERT_TRUE(m_manager.start());
    forgetCalls();
    m_manager.stop();
    EXPECT_EQ(calls(), (QStringList{"middle.aboutToUninitialize", "base.aboutToUninitialize", "middle.unInitialize",
                                    "base.unInitialize", "middle.destroyed", "base.destroyed"}));
    EXPECT_EQ(m_manager.plugin("base")->state(), EPluginState::Deleted);
    EXPECT_EQ(m_manager.plugin("base")->plugin(), nullptr);
}

TEST_F(PluginManagerTest, destructionStops)
{
    {
        CPluginManager manager(m_registry);
        manager.addFile(QStringLiteral(TEST_PLUGIN_DIR "/base/base.so"));
        ASSERT_TRUE(manager.start());
    }
    EXPECT_EQ(calls().last(), QStringLiteral("base.destroyed"));
}

TEST_F(PluginManagerTest, servicesReachTheRegistryAndLeaveIt)
{
    add({"base"});
    ASSERT_TRUE(m_manager.start());
    ASSERT_EQ(m_registry.services().size(), 1);
    EXPECT_EQ(m_registry.services().first()->objectName(), QStringLiteral("base"));
    m_manager.stop();
    EXPECT_TRUE(m_registry.services().isEmpty());
}

TEST_F(PluginManagerTest, canBeStartedAgainAfterStopping)
{
    add({"base"});
    ASSERT_TRUE(m_manager.start());
    EXPECT_FALSE(m_manager.start()) << "started already";
    EXPECT_TRUE(m_manager.isStarted());
    m_manager.stop();
    forgetCalls();
    EXPECT_TRUE(m_manager.start());
    EXPECT_EQ(calls().first(), QStringLiteral("base.initialize"));
}

TEST_F(PluginManagerTest, aCircularPairIsNotLoaded)
{
    add({"circularone", "circulartwo", "base"});
    EXPECT_TRUE(m_manager.start());
    EXPECT_TRUE(contains(errorsOf("circularone"), "circularone -> circulartwo -> circularone"))
        << errorsOf("circularone");
    EXPECT_TRUE(contains(errorsOf("circulartwo"), "depends on itself"));
    EXPECT_EQ(calls(), (QStringList{"base.initialize", "base.postInitialize"}));
}

TEST_F(PluginManagerTest, aMissingDependencyIsNamed)
{
    add({"missingdependency"});
    EXPECT_TRUE(m_manager.start());
    EXPECT_EQ(errorsOf("missingdependency"),
              "The plugin \"missingdependency\" needs the plugin \"nowhere\" in version 1.0.0, which is missing.");
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(PluginManagerTest, aDependencyOfTheWrongVersionIsNamedWithBothVersions)
{
    add({"wrongversion", "base"});
    EXPECT_TRUE(m_manager.start());
    const std::string error = errorsOf("wrongversion");
    EXPECT_TRUE(contains(error, "\"base\" in version 2.0.0") && contains(error, "version 1.4.0")) << error;
}

TEST_F(PluginManagerTest, aForeignInterfaceIdentifierIsRefused)
{
    add({"wrongiid"});
    EXPECT_TRUE(m_manager.start());
    const std::string errors = m_manager.errors().join("\n").toStdString();
    EXPECT_TRUE(contains(errors, "wrongiid.so") && contains(errors, "SomethingElse")) << errors;
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(PluginManagerTest, aNumberWhereTheVersionBelongsIsRefused)
{
    add({"wrongmetadata"});
    EXPECT_TRUE(m_manager.start());
    EXPECT_TRUE(contains(errorsOf("wrongmetadata"), "\"Version\" of its metadata is not a text"))
        << errorsOf("wrongmetadata");
}

TEST_F(PluginManagerTest, aPluginWhoseInitializeReturnsFalseIsDeletedAndItsDependentsAreNotStarted)
{
    add({"dependsonfailing", "initializefalse", "base"});
    EXPECT_TRUE(m_manager.start());
    EXPECT_EQ(calls(), (QStringList{"initializefalse.initialize", "initializefalse.destroyed", "base.initialize",
                                    "base.postInitialize"}));
    EXPECT_TRUE(contains(errorsOf("initializefalse"), "could not be initialized"));
    EXPECT_TRUE(contains(errorsOf("dependsonfailing"), "\"initializefalse\" that it needs failed"))
        << errorsOf("dependsonfailing");
    EXPECT_EQ(m_manager.startedPlugins().size(), 1);
}

TEST_F(PluginManagerTest, aPluginWhoseInitializeThrowsIsReportedWithTheReason)
{
    add({"initializethrows"});
    EXPECT_TRUE(m_manager.start());
    EXPECT_TRUE(contains(errorsOf("initializethrows"), "the test plugin throws")) << errorsOf("initializethrows");
    EXPECT_EQ(m_manager.plugin("initializethrows")->state(), EPluginState::Deleted);
}

TEST_F(PluginManagerTest, whatAPluginRegisteredBeforeItsInitializeFailedIsTakenBack)
{
    for (const char* name : {"registersthenfalse", "registersthenthrows"})
    {
        CPluginManager manager(m_registry);
        manager.addFile(QStringLiteral(TEST_PLUGIN_DIR "/base/base.so"));
        manager.addFile(QStringLiteral(TEST_PLUGIN_DIR "/%1/%1.so").arg(QLatin1String(name)));
        QWeakPointer<Core::Service::IService> service;
        const auto note = [&](const auto& registered)
        {
            if (registered->objectName() == QLatin1String(name))
            {
                service = registered;
            }
        };
        const auto noting = QObject::connect(&m_registry, &CServiceRegistry::serviceRegistered, note);
        QStringList left;
        const auto noteLeft = [&](const auto& unregistered)
        {
            left.append(unregistered->objectName());
            EXPECT_FALSE(calls().contains(QLatin1String(name) + QLatin1String(".destroyed")));
        };
        const auto leaving = QObject::connect(&m_registry, &CServiceRegistry::serviceUnregistered, noteLeft);
        EXPECT_TRUE(manager.start());
        EXPECT_EQ(left, QStringList{QLatin1String(name)});
        ASSERT_EQ(m_registry.services().size(), 1) << name;
        EXPECT_EQ(m_registry.find<Core::Service::IService>()->objectName(), QStringLiteral("base"));
        EXPECT_TRUE(service.isNull()) << name;
        QObject::disconnect(noting);
        QObject::disconnect(leaving);
    }
}

TEST_F(PluginManagerTest, aStartAfterOneThatFailedFindsNoServiceOfTheFirst)
{
    add({"registersthenthrows", "requiredthrows", "base"});
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_FALSE(m_manager.start());
        EXPECT_TRUE(m_registry.services().isEmpty());
    }
    EXPECT_EQ(calls().count(QStringLiteral("registersthenthrows.initialize")), 2);
}

TEST_F(PluginManagerTest, whatAPluginDidNotUnregisterIsTakenBackBeforeItIsDeleted)
{
    add({"uninitializethrows"});
    ASSERT_TRUE(m_manager.start());
    ASSERT_EQ(m_registry.services().size(), 1);
    m_manager.stop();
    EXPECT_TRUE(contains(errorsOf("uninitializethrows"), "before it has unregistered"));
    EXPECT_TRUE(m_registry.services().isEmpty());
}

TEST_F(PluginManagerTest, aRequiredPluginThatFailsStopsAllThatWasStarted)
{
    add({"base", "requiredthrows"});
    EXPECT_FALSE(m_manager.start());
    EXPECT_FALSE(m_manager.isStarted());
    EXPECT_EQ(calls().last(), QStringLiteral("base.destroyed"));
    EXPECT_TRUE(m_registry.services().isEmpty());
}

TEST_F(PluginManagerTest, aPluginWhosePostInitializeFailsIsReported)
{
    add({"postinitializefalse"});
    EXPECT_TRUE(m_manager.start());
    EXPECT_TRUE(contains(errorsOf("postinitializefalse"), "could not finish its start"));
    EXPECT_EQ(m_manager.plugin("postinitializefalse")->state(), EPluginState::Initialized);
}

TEST_F(PluginManagerTest, aPluginThatThrowsWhileStoppingDoesNotKeepTheOthersFromStopping)
{
    add({"stopthrows", "base"});
    ASSERT_TRUE(m_manager.start());
    m_manager.stop();
    EXPECT_TRUE(contains(errorsOf("stopthrows"), "throws while stopping"));
    EXPECT_EQ(calls().last(), QStringLiteral("base.destroyed"));
    EXPECT_TRUE(calls().contains("stopthrows.unInitialize"));
}

TEST_F(PluginManagerTest, theLanguageReachesPluginsBeforeTheyAreInitializedAndWhenItChanges)
{
    add({"base"});
    m_manager.setLanguage(QStringLiteral("ja"));
    ASSERT_TRUE(m_manager.start());
    EXPECT_EQ(calls().mid(0, 2), (QStringList{"base.setLanguage ja", "base.initialize"}));
    m_manager.setLanguage(QStringLiteral("ko"));
    EXPECT_EQ(calls().last(), QStringLiteral("base.setLanguage ko"));
}

TEST_F(PluginManagerTest, aFolderThatIsNotThereIsAnError)
{
    m_manager.addFolder(QStringLiteral(TEST_PLUGIN_DIR "/nowhere"));
    ASSERT_EQ(m_manager.errors().size(), 1);
    EXPECT_TRUE(contains(m_manager.errors().first().toStdString(), "cannot be read"));
}

TEST_F(PluginManagerTest, theFrameworksOwnPluginsOfferContextRegistryAndGraph)
{
    for (const char* file : {"libdataprocessingcoreplugin.so", "libappcoreplugin.so"})
    {
        m_manager.addFile(QStringLiteral(APPLICATION_PLUGIN_DIR "/") + QLatin1String(file));
    }
    ASSERT_TRUE(m_manager.start()) << m_manager.errors().join("\n").toStdString();
    EXPECT_EQ(m_manager.startedPlugins().first()->name(), QStringLiteral("AppCore"));
    const auto context = m_registry.find<Plugin::AppCore::IContext>();
    ASSERT_FALSE(context.isNull());
    EXPECT_FALSE(context->service<Plugin::DataProcessingCore::INodeRegistry>().isNull());
    const auto graph = context->service<Plugin::DataProcessingCore::IGraphService>();
    ASSERT_FALSE(graph.isNull());
    EXPECT_FALSE(graph->graph().isNull());
    m_manager.stop();
    EXPECT_TRUE(m_registry.services().isEmpty());
}

} // namespace
