// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/iplugin.h"

#ifdef TEST_PLUGIN_WRONG_IID
#define TEST_PLUGIN_IID "org.camerapool.tests.SomethingElse/1.0"
#else
#define TEST_PLUGIN_IID CORE_PLUGIN_IID
#endif

/** Notes every call of its life in the property "testPluginCalls" of the application, a list of "<name>.<call>". */
class CTestPlugin : public Core::Plugin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TEST_PLUGIN_IID FILE "testplugin.json")
public:
    explicit CTestPlugin(QObject* parent = nullptr);
    ~CTestPlugin() override;
    bool initialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;
    bool postInitialize() override;
    void aboutToUninitialize() override;
    bool unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;
    void setLanguage(const QString& language) override;

private:
    void registerService(Core::Plugin::IPluginInitializer& initializer);

    QSharedPointer<Core::Service::IService> m_service;
};
