// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/statusservice.h"

#include <QMutexLocker>

#include <utility>

namespace Plugin::CameraPool::Internal
{

CStatusService::CStatusService(QPointer<CCameraPool> cameraPool, QPointer<CInterfacePool> interfacePool,
                               QObject* parent)
    : ICameraStatusService(parent), m_pools{std::move(cameraPool), std::move(interfacePool)}
{
    if (m_pools.interfaces)
    {
        connectDeviceSignals(m_pools.interfaces);
    }
    if (m_pools.cameras)
    {
        connectDeviceSignals(m_pools.cameras);
        // One of the pools is enough: the active device is common to both.
        connect(m_pools.cameras, &ADevicePool::activeDeviceChanged, this, &CStatusService::activeDeviceChanged);
        connectCameraSignals(m_pools.cameras);
    }
}

CStatusService::~CStatusService() = default;

void CStatusService::connectDeviceSignals(const ADevicePool* pPool)
{
    connect(pPool, &ADevicePool::deviceOpened, this, &CStatusService::deviceOpened);
    connect(pPool, &ADevicePool::deviceOpening, this, &CStatusService::deviceOpening);
    connect(pPool, &ADevicePool::deviceClosing, this, &CStatusService::deviceClosing);
    connect(pPool, &ADevicePool::deviceClosed, this, &CStatusService::deviceClosed);
    connect(pPool, &ADevicePool::deviceConnected, this, &CStatusService::deviceConnected);
    connect(pPool, &ADevicePool::deviceDisconnected, this, &CStatusService::deviceDisconnected);
}

void CStatusService::connectCameraSignals(const CCameraPool* pPool)
{
    connect(pPool, &CCameraPool::cameraConnectionLost, this, &CStatusService::cameraConnectionLost);
    connect(pPool, &CCameraPool::cameraGrabStart, this, &CStatusService::cameraGrabStart);
    connect(pPool, &CCameraPool::cameraGrabStarted, this, &CStatusService::cameraGrabStarted);
    connect(pPool, &CCameraPool::cameraGrabStopped, this, &CStatusService::cameraGrabStopped);
    connect(pPool, &CCameraPool::cameraImageGrabbed, this, &CStatusService::cameraImageGrabbed);
    connect(pPool, &CCameraPool::cameraImageGrabFailed, this, &CStatusService::cameraImageGrabFailed);
    connect(pPool, &CCameraPool::cameraStatisticUpdated, this, &CStatusService::cameraStatisticUpdated);
    connect(pPool, &CCameraPool::cameraAttached, this, &CStatusService::cameraAttached);
    connect(pPool, &CCameraPool::cameraDetached, this, &CStatusService::cameraDetached);
}

bool CStatusService::isDeviceOpen(QSharedPointer<IBaseInfo> info)
{
    const auto* const pPool = m_pools.of(info);
    return pPool != nullptr && pPool->isDeviceOpen(info);
}

void CStatusService::setActiveDevice(QSharedPointer<IBaseInfo> info)
{
    {
        const QMutexLocker locker(&m_mutex);
        if (ADevicePool::getActiveDeviceInfo() == info)
        {
            return;
        }
        ADevicePool::setActiveDevice(info);
    }
    emit activeDeviceChanged(info);
}

QSharedPointer<IBaseInfo> CStatusService::getActiveDevice()
{
    return ADevicePool::getActiveDeviceInfo();
}

bool CStatusService::isCameraOpenExclusive(QSharedPointer<ICameraInfo> info)
{
    return m_pools.cameras && m_pools.cameras->isCameraOpenExclusive(info);
}

bool CStatusService::isCameraGrabbing(QSharedPointer<ICameraInfo> info)
{
    return m_pools.cameras && m_pools.cameras->isCameraGrabbing(info);
}

int CStatusService::getCountGrabbing()
{
    return m_pools.cameras ? m_pools.cameras->getCountGrabbing() : 0;
}

} // namespace Plugin::CameraPool::Internal
