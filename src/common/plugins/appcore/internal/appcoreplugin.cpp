// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "appcore/internal/appcoreplugin.h"

namespace Plugin::AppCore::Internal
{

CAppCorePlugin::CAppCorePlugin(QObject* parent) : IPlugin(parent) {}

CAppCorePlugin::~CAppCorePlugin() = default;

bool CAppCorePlugin::initialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    if (initializer.isNull())
    {
        return false;
    }
    m_context = QSharedPointer<CContext>::create(initializer);
    initializer->registerService(m_context);
    return true;
}

bool CAppCorePlugin::postInitialize()
{
    return true;
}

bool CAppCorePlugin::unInitialize(QPointer<Core::Plugin::IPluginInitializer> initializer)
{
    if (!initializer.isNull())
    {
        initializer->unregisterService(m_context);
    }
    return true;
}

} // namespace Plugin::AppCore::Internal
