// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/internal/registryinitializer.h"

#include <QDebug>

namespace Core::Plugin
{

CRegistryInitializer::CRegistryInitializer(Core::Service::CServiceRegistry& registry, QObject* parent)
    : IPluginInitializer(parent), m_registry(&registry)
{
}

CRegistryInitializer::~CRegistryInitializer() = default;

void CRegistryInitializer::registerService(const QSharedPointer<Core::Service::IService>& service)
{
    if (!m_registry.isNull() && !m_registry->registerService(service))
    {
        qWarning("A plugin registered a service that is null or registered already.");
    }
}

void CRegistryInitializer::unregisterService(const QSharedPointer<Core::Service::IService>& service)
{
    if (!m_registry.isNull() && !m_registry->unregisterService(service))
    {
        qWarning("A plugin unregistered a service that is not registered.");
    }
}

QVector<QSharedPointer<Core::Service::IService>> CRegistryInitializer::services() const
{
    return m_registry.isNull() ? QVector<QSharedPointer<Core::Service::IService>>() : m_registry->services();
}

} // namespace Core::Plugin
