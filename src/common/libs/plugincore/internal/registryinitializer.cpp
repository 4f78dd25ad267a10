// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "plugincore/internal/registryinitializer.h"

#include <QDebug>

#include <utility>

namespace Core::Plugin
{

CRegistryInitializer::CRegistryInitializer(QPointer<Core::Service::CServiceRegistry> registry)
    : m_registry(std::move(registry))
{
}

CRegistryInitializer::~CRegistryInitializer() = default;

void CRegistryInitializer::registerService(const QSharedPointer<Core::Service::IService>& service)
{
    if (m_registry.isNull())
    {
        return;
    }
    if (!m_registry->registerService(service))
    {
        qWarning("A plugin registered a service that is null or registered already.");
        return;
    }
    m_own.append(service);
}

void CRegistryInitializer::unregisterService(const QSharedPointer<Core::Service::IService>& service)
{
    m_own.removeOne(service);
    if (!m_registry.isNull() && !m_registry->unregisterService(service))
    {
        qWarning("A plugin unregistered a service that is not registered.");
    }
}

QVector<QSharedPointer<Core::Service::IService>> CRegistryInitializer::services() const
{
    return m_registry.isNull() ? QVector<QSharedPointer<Core::Service::IService>>() : m_registry->services();
}

void CRegistryInitializer::unregisterAll()
{
    const auto own = std::exchange(m_own, {});
    for (const auto& service : own)
    {
        if (!m_registry.isNull())
        {
            m_registry->unregisterService(service.toStrongRef());
        }
    }
}

} // namespace Core::Plugin
