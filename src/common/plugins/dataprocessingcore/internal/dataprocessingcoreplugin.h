// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dataprocessingcore/internal/graphservice.h"
#include "dataprocessingcore/noderegistry.h"
#include "plugincore/iplugin.h"

namespace Plugin::DataProcessingCore::Internal
{

/** Offers the node registry and the graph to the other plugins. */
class CDataProcessingCorePlugin : public Core::Plugin::IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID CORE_PLUGIN_IID FILE "dataprocessingcore.json")
public:
    explicit CDataProcessingCorePlugin(QObject* parent = nullptr);
    ~CDataProcessingCorePlugin() override;
    /** False without an initializer. */
    bool initialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;
    bool postInitialize() override;
    bool unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer) override;

private:
    QSharedPointer<CNodeRegistry> m_registry;
    QSharedPointer<CGraphService> m_graphService;
};

} // namespace Plugin::DataProcessingCore::Internal
