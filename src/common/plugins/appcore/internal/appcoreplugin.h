// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/internal/context.h"
#include "plugincore/iplugin.h"

namespace Plugin::AppCore::Internal
{

/** Offers the application context to the other plugins. */
class CAppCorePlugin : public Core::Plugin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CORE_PLUGIN_IID FILE "appcore.json")
public:
    explicit CAppCorePlugin(QObject* parent = nullptr);
    ~CAppCorePlugin() override;
    /** False without an initializer. */
    bool initialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;
    bool postInitialize() override;
    bool unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;

private:
    QSharedPointer<CContext> m_context;
};

} // namespace Plugin::AppCore::Internal
