// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/controlservice.h"

#include <utility>

namespace Plugin::CameraPool::Internal
{

CControlService::CControlService(QPointer<CCameraPool> cameraPool, QPointer<CInterfacePool> interfacePool,
                                 QObject* parent)
    : ICameraControlService(parent), m_pools{std::move(cameraPool), std::move(interfacePool)}
{
}

CControlService::~CControlService() = default;

bool CControlService::open(QSharedPointer<IBaseInfo> info, bool monitorMode)
{
    auto* const pPool = m_pools.of(info);
    return pPool != nullptr && pPool->openDevice(info, monitorMode);
}

void CControlService::close(QSharedPointer<IDevice> device)
{
    if (auto* const pPool = m_pools.of(device))
    {
        pPool->closeDevice(device);
    }
}

void CControlService::close(QSharedPointer<IBaseInfo> info)
{
    if (auto* const pPool = m_pools.of(info))
    {
        pPool->closeDevice(info);
    }
}

bool CControlService::open(bool monitorMode)
{
    auto* const pPool = m_pools.ofActiveDevice();
    return pPool != nullptr && pPool->openDevice(monitorMode);
}

void CControlService::close()
{
    if (auto* const pPool = m_pools.ofActiveDevice())
    {
        pPool->closeDevice();
    }
}

QSharedPointer<ICamera> CControlService::openCameraExclusive(QSharedPointer<ICameraInfo> info)
{
    return m_pools.cameras ? m_pools.cameras->openCameraExclusive(info) : QSharedPointer<ICamera>();
}

QSharedPointer<ICamera> CControlService::tryLock(QSharedPointer<ICameraInfo> info)
{
    return m_pools.cameras ? m_pools.cameras->tryLock(info) : QSharedPointer<ICamera>();
}

bool CControlService::unlock(QSharedPointer<ICamera> camera)
{
    return m_pools.cameras && m_pools.cameras->unlock(camera);
}

void CControlService::addRemoteGigECamera(const QString& ipAddress)
{
    if (m_pools.cameras)
    {
        m_pools.cameras->addRemoteGigECamera(ipAddress);
    }
}

} // namespace Plugin::CameraPool::Internal
