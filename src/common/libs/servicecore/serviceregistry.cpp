// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "servicecore/serviceregistry.h"

namespace Core::Service
{

CServiceRegistry::CServiceRegistry(QObject* parent) : QObject(parent) {}

CServiceRegistry::~CServiceRegistry() = default;

bool CServiceRegistry::registerService(const QSharedPointer<IService>& service)
{
    if (service.isNull() || m_services.contains(service))
    {
        return false;
    }
    m_services.append(service);
    emit serviceRegistered(service);
    return true;
}

bool CServiceRegistry::unregisterService(const QSharedPointer<IService>& service)
{
    if (!m_services.removeOne(service))
    {
        return false;
    }
    emit serviceUnregistered(service);
    return true;
}

QVector<QSharedPointer<IService>> CServiceRegistry::services() const
{
    return m_services;
}

} // namespace Core::Service
