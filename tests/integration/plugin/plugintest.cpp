// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/iplugin.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QTranslator>
#include <QtPlugin>

#include <memory>

namespace
{

class LoadedPlugin : public ::testing::Test
{
protected:
    QPluginLoader m_loader{QStringLiteral(CAMERAPOOL_PLUGIN_FILE)};
};

TEST_F(LoadedPlugin, carriesItsMetadata)
{
    const auto all = m_loader.metaData();
    EXPECT_EQ(all.value(QStringLiteral("IID")).toString(), QStringLiteral(CORE_PLUGIN_IID));
    EXPECT_EQ(all.value(QStringLiteral("className")).toString(), QStringLiteral("CCameraPoolPlugin"));
    const auto own = all.value(QStringLiteral("MetaData")).toObject();
    EXPECT_EQ(own.value(QStringLiteral("Name")).toString(), QStringLiteral("CameraPool"));
    EXPECT_EQ(own.value(QStringLiteral("Version")).toString(), QStringLiteral("1.2.0"));
    EXPECT_EQ(own.value(QStringLiteral("CompatVersion")).toString(), QStringLiteral("1.2.0"));
    EXPECT_TRUE(own.value(QStringLiteral("Required")).toBool());
    EXPECT_EQ(own.value(QStringLiteral("Description")).toString(),
              QStringLiteral("The camera pool plugin for the velmo application framework."));
    const auto dependencies = own.value(QStringLiteral("Dependencies")).toArray();
    ASSERT_EQ(dependencies.size(), 2);
    EXPECT_EQ(dependencies.at(0).toObject().value(QStringLiteral("Name")).toString(),
              QStringLiteral("DataProcessingCore"));
    EXPECT_EQ(dependencies.at(1).toObject().value(QStringLiteral("Name")).toString(), QStringLiteral("AppCore"));
    for (const auto& dependency : dependencies)
    {
        EXPECT_EQ(dependency.toObject().value(QStringLiteral("Version")).toString(), QStringLiteral("1.2.0"));
        EXPECT_EQ(dependency.toObject().size(), 2);
    }
    for (const auto* key : {"Vendor", "Copyright", "License", "Url"})
    {
        EXPECT_TRUE(own.value(QLatin1String(key)).isString()) << key;
    }
}

TEST_F(LoadedPlugin, instanceIsOneUntilItIsDestroyed)
{
    // Not asked of the loader, which remembers the first answer itself.
    QLibrary library(QStringLiteral(CAMERAPOOL_PLUGIN_FILE));
    const auto instance = reinterpret_cast<QtPluginInstanceFunction>(library.resolve("qt_plugin_instance"));
    ASSERT_NE(instance, nullptr) << library.errorString().toStdString();
    QObject* const pFirst = instance();
    ASSERT_NE(pFirst, nullptr);
    EXPECT_EQ(instance(), pFirst);
    EXPECT_EQ(m_loader.instance(), pFirst);
    EXPECT_EQ(pFirst->parent(), nullptr);
    EXPECT_NE(qobject_cast<Core::Plugin::IPlugin*>(pFirst), nullptr);
    const QPointer<QObject> first(pFirst);
    delete pFirst;
    ASSERT_TRUE(first.isNull());
    const QPointer<QObject> second(instance());
    ASSERT_FALSE(second.isNull()) << "a new one";
    EXPECT_EQ(instance(), second.data());
    delete second.data();
}

TEST_F(LoadedPlugin, everyTextIsTranslated)
{
    ASSERT_TRUE(m_loader.load()) << m_loader.errorString().toStdString();
    const char* const pool = "Plugin::CameraPool::Internal::CCameraPool";
    const char* const camera = "Plugin::CameraPool::Internal::CCamera";
    const char* const interface = "Plugin::CameraPool::Internal::CInterface";
    const QVector<QPair<const char*, const char*>> texts = {
        {camera, "Camera object has been disposed."},
        {camera, "Action cannot be performed. The camera instance is in use."},
        {camera, "Action cannot be performed. The stream grabber is still in use."},
        {pool, "No camera found for the provided camera info."},
        {pool, "No active camera available at the moment."},
        {pool, "The camera with the provided info is not available because it has been opened in exclusive mode."},
        {pool, "No GigE transport layer found."},
        {pool, "Failed to find camera. Check the IP configuration."},
        {pool, "The image grab failed."},
        {interface, "The transport layer \"%1\" could not be created."},
        {interface, "There is no interface \"%1\"."}};
    for (const auto* language : {"ja", "zh", "en", "ko"})
    {
        QTranslator translator;
        ASSERT_TRUE(translator.load(QStringLiteral(":/translation/CameraPool_%1.qm").arg(QLatin1String(language))));
        for (const auto& text : texts)
        {
            const auto translation = translator.translate(text.first, text.second);
            EXPECT_FALSE(translation.isEmpty()) << language << ": " << text.second;
            EXPECT_EQ(translation == QLatin1String(text.second), QLatin1String(language) == QLatin1String("en"))
                << language << ": " << text.second;
        }
    }
}

} // namespace
