// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "dataprocessingcore/internal/dataprocessingcoreplugin.h"

namespace Plugin::DataProcessingCore::Internal
{

CDataProcessingCorePlugin::CDataProcessingCorePlugin(QObject* parent) : IPlugin(parent) {}

CDataProcessingCorePlugin::~CDataProcessingCorePlugin() = default;

bool CDataProcessingCorePlugin::initialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    if (initializer.isNull())
    {
        return false;
    }
    m_registry = QSharedPointer<CNodeRegistry>::create();
    initializer->registerService(m_registry);
    m_graphService = QSharedPointer<CGraphService>::create();
    initializer->registerService(m_graphService);
    return true;
}

bool CDataProcessingCorePlugin::postInitialize()
{
    return true;
}

bool CDataProcessingCorePlugin::unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    if (!initializer.isNull())
    {
        initializer->unregisterService(m_registry);
        initializer->unregisterService(m_graphService);
    }
    return true;
}

} // namespace Plugin::DataProcessingCore::Internal
