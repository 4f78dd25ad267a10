// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugincore/iplugininitializer.h"
#include "servicecore/serviceregistry.h"

#include <QPointer>

namespace Core::Plugin
{

/** Writes the services of plugins into a service registry. */
class CRegistryInitializer : public IPluginInitializer
{
    Q_OBJECT
public:
    explicit CRegistryInitializer(Core::Service::CServiceRegistry& registry, QObject* parent = nullptr);
    ~CRegistryInitializer() override;
    void registerService(const QSharedPointer<Core::Service::IService>& service) override;
    void unregisterService(const QSharedPointer<Core::Service::IService>& service) override;
    QVector<QSharedPointer<Core::Service::IService>> services() const override;

private:
    QPointer<Core::Service::CServiceRegistry> m_registry;
};

} // namespace Core::Plugin
