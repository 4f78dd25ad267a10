// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/camerapool.h"
#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"

namespace Test
{

/** A pool with the camera "1001" announced, and the order of the pool's signals. */
class PoolFixture : public CameraPoolFixture
{
protected:
    using CCameraPool = Plugin::CameraPool::Internal::CCameraPool;
    using ICamera = Plugin::CameraPool::ICamera;
    using IDevice = Plugin::CameraPool::IDevice;
    using BaseInfoPtr = Plugin::CameraPool::BaseInfoPtr;

    PoolFixture() : m_pool(std::make_unique<CCameraPool>(nullptr)), m_info(record())
    {
        watchAll();
        m_pool->beginAnnounce();
        m_pool->announceDevice(m_info);
        m_pool->endAnnounce();
        m_order.clear();
    }
    ~PoolFixture() override { CCameraPool::setActiveDevice(BaseInfoPtr()); }

    void watchAll()
    {
        const CCameraPool* pPool = m_pool.get();
        m_order.watch(pPool, &CCameraPool::deviceOpening, QStringLiteral("deviceOpening"));
        m_order.watch(pPool, &CCameraPool::deviceOpened, QStringLiteral("deviceOpened"));
        m_order.watch(pPool, &CCameraPool::deviceClosing, QStringLiteral("deviceClosing"));
        m_order.watch(pPool, &CCameraPool::deviceClosed, QStringLiteral("deviceClosed"));
        m_order.watch(pPool, &CCameraPool::deviceConnected, QStringLiteral("deviceConnected"));
        m_order.watch(pPool, &CCameraPool::deviceDisconnected, QStringLiteral("deviceDisconnected"));
        m_order.watch(pPool, &CCameraPool::cameraGrabStart, QStringLiteral("cameraGrabStart"));
        m_order.watch(pPool, &CCameraPool::cameraGrabStarted, QStringLiteral("cameraGrabStarted"));
        m_order.watch(pPool, &CCameraPool::cameraGrabStopped, QStringLiteral("cameraGrabStopped"));
        m_order.watch(pPool, &CCameraPool::cameraConnectionLost, QStringLiteral("cameraConnectionLost"));
        m_order.watch(pPool, &CCameraPool::cameraImageGrabbed, QStringLiteral("cameraImageGrabbed"));
        m_order.watch(pPool, &CCameraPool::cameraImageGrabFailed, QStringLiteral("cameraImageGrabFailed"));
        m_order.watch(pPool, &CCameraPool::cameraStatisticUpdated, QStringLiteral("cameraStatisticUpdated"));
        m_order.watch(pPool, &CCameraPool::cameraDetached, QStringLiteral("cameraDetached"));
        m_order.watch(pPool, &CCameraPool::cameraAttached, QStringLiteral("cameraAttached"));
    }

    QSharedPointer<ICamera> camera() const { return qSharedPointerObjectCast<ICamera>(m_pool->findDevice(m_info)); }
    QString order() const { return m_order.names().join(QLatin1Char(' ')); }
    /** A second camera "1002", announced beside the first. */
    QSharedPointer<CCameraInfo> addSecondCamera()
    {
        SScriptedCamera second;
        second.serialNumber = "1002";
        m_transport->AddCamera(second);
        const auto info = record("1002");
        m_pool->announceDevice(info);
        return info;
    }

    CSignalOrder m_order;
    std::unique_ptr<CCameraPool> m_pool;
    QSharedPointer<CCameraInfo> m_info;
};

} // namespace Test
