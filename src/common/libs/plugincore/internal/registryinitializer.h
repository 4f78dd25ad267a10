// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/iplugininitializer.h"
#include "servicecore/serviceregistry.h"

#include <QPointer>
#include <QWeakPointer>

namespace Core::Plugin
{

/** Writes the services of one plugin into a service registry, and knows which of them are still there. */
class CRegistryInitializer : public IPluginInitializer
{
    Q_OBJECT
public:
    explicit CRegistryInitializer(QPointer<Core::Service::CServiceRegistry> registry);
    ~CRegistryInitializer() override;
    void registerService(const QSharedPointer<Core::Service::IService>& service) override;
    void unregisterService(const QSharedPointer<Core::Service::IService>& service) override;
    QVector<QSharedPointer<Core::Service::IService>> services() const override;

    /** Takes back what was registered through this one and not unregistered since, in the order of registration. */
    void unregisterAll();

private:
    QPointer<Core::Service::CServiceRegistry> m_registry;
    QVector<QWeakPointer<Core::Service::IService>>
        m_own; // weak: others may have unregistered them, and they may be gone
};

} // namespace Core::Plugin
