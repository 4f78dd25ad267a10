// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraparameterservice.h"

namespace Plugin::CameraPool::Internal
{

CCameraParameterService::CCameraParameterService(QObject* parent) : IDeviceParameterService(parent) {}

CCameraParameterService::~CCameraParameterService() = default;

void CCameraParameterService::addPool(QPointer<ADevicePool> pool)
{
    if (!m_pools.contains(pool))
    {
        m_pools.append(pool);
    }
}

QSharedPointer<ParameterCollection::IParameterCollection>
CCameraParameterService::getParameterCollection(QSharedPointer<IBaseInfo> deviceInfo)
{
    for (const auto& pool : qAsConst(m_pools))
    {
        if (!pool)
        {
            continue;
        }
        if (const auto device = pool->findDevice(deviceInfo))
        {
            return device->getParameterCollection();
        }
    }
    return {};
}

} // namespace Plugin::CameraPool::Internal
