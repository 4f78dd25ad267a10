// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/camerapool.h"

#include <QMutexLocker>
#include <QScopedValueRollback>

namespace Plugin::CameraPool::Internal
{

// sender() searches all connections to this pool, nine for each of its cameras: with fifty cameras it was two thirds of
// what relaying an image cost. So each connection knows its camera.
template <class Slot, class... Arguments>
void CCameraPool::relay(const RelayPtr& relay, Slot slot, const Arguments&... arguments)
{
    if (!relay->camera.isNull() && !relay->isCut)
    {
        // Held here: a receiver may take the camera from the pool.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const RelayPtr current = relay;
        const QScopedValueRollback<const SRelay*> running(m_pCurrentRelay, current.data());
        (this->*slot)(arguments...);
    }
}

void CCameraPool::relayLoss(const RelayPtr& relay)
{
    // One that was reopened since is not told of as lost.
    const bool isLost = !relay->camera.isNull() && !relay->camera->isConnected();
    const QScopedValueRollback<bool> told(relay->isCut, relay->isCut && !isLost);
    this->relay(relay, &CCameraPool::onCameraConnectionLost);
}

void CCameraPool::connectRelays(ICamera* pCamera)
{
    const auto way = RelayPtr::create();
    way->camera = pCamera;
    way->info = qSharedPointerObjectCast<ICameraInfo>(pCamera->getInfo());
    m_relays.insert(pCamera, way);
    connect(pCamera, &QObject::destroyed, this, [this, pCamera] { m_relays.remove(pCamera); });
    const auto connectPlain = [&](auto signal, void (CCameraPool::*slot)())
    {
        connect(pCamera, signal, this, [this, way, slot] { relay(way, slot); });
    };
    connectPlain(&ICamera::cameraGrabStart, &CCameraPool::onCameraGrabStart);
    connectPlain(&ICamera::cameraGrabStarted, &CCameraPool::onCameraGrabStarted);
    connectPlain(&ICamera::cameraGrabStopped, &CCameraPool::onCameraGrabStopped);
    connect(pCamera, &ICamera::cameraConnectionLost, this, [this, way] { relayLoss(way); });
    connectOpenState(pCamera);
    connect(pCamera, &ICamera::cameraImageGrabbed, this,
            [this, way](const Velmo::CGrabResultPtr& result)
            { relay(way, &CCameraPool::onCameraImageGrabbed, result); });
    connectPlain(&ICamera::cameraImageGrabFailed, &CCameraPool::onCameraImageGrabFailed);
    connect(pCamera, &ICamera::cameraStatisticChanged, this,
            [this, way](int grabbed, int failed, double fps, uint64_t bps, const CCompressionStatistic& compression)
            { relay(way, &CCameraPool::onCameraStatisticUpdated, grabbed, failed, fps, bps, compression); });
}

void CCameraPool::disconnectRelays(ICamera* pCamera)
{
    disconnect(pCamera, nullptr, this, nullptr);
    if (const auto way = m_relays.take(pCamera))
    {
        way->isCut = true; // for what is under way in the event queue
    }
}

const ICamera* CCameraPool::relayedCamera() const
{
    return m_pCurrentRelay != nullptr ? m_pCurrentRelay->camera.data() : qobject_cast<const ICamera*>(sender());
}

bool CCameraPool::senderInfo(QSharedPointer<ICameraInfo>& info) const
{
    if (m_pCurrentRelay != nullptr)
    {
        info = m_pCurrentRelay->info;
        return true;
    }
    const auto* const pCamera = relayedCamera();
    if (pCamera == nullptr)
    {
        return false;
    }
    info = qSharedPointerObjectCast<ICameraInfo>(pCamera->getInfo());
    return true;
}

void CCameraPool::onCameraGrabStart()
{
    QSharedPointer<ICameraInfo> info;
    if (senderInfo(info))
    {
        emit cameraGrabStart(info);
    }
}

void CCameraPool::onCameraGrabStarted()
{
    QSharedPointer<ICameraInfo> info;
    if (senderInfo(info))
    {
        emit cameraGrabStarted(info);
    }
}

void CCameraPool::onCameraGrabStopped()
{
    QSharedPointer<ICameraInfo> info;
    if (senderInfo(info))
    {
        emit cameraGrabStopped(info);
    }
}

void CCameraPool::onCameraConnectionLost()
{
    QSharedPointer<ICameraInfo> info;
    if (!senderInfo(info))
    {
        return;
    }
    // Receivers drop a lost camera from the pool; it lives on until all of them have been told.
    const QObject* const pSender = relayedCamera();
    QSharedPointer<IDevice> lost;
    for (const auto& device : devices())
    {
        if (device.data() == pSender)
        {
            lost = device;
        }
    }
    emit cameraConnectionLost(info);
    emit deviceClosed(info);
    {
        const QMutexLocker lock(&m_mutex);
        const auto camera = qSharedPointerObjectCast<ICamera>(lost);
        if (m_lockedCameras.removeAll(camera) > 0)
        {
            connectRelays(camera.data());
        }
    }
    // The SDK may have told the loss on this very thread, in the midst of the camera: not destroyed below its call.
    QMetaObject::invokeMethod(
        this, [lost] {}, Qt::QueuedConnection);
}

void CCameraPool::onCameraImageGrabbed(const Velmo::CGrabResultPtr& grabResult)
{
    QSharedPointer<ICameraInfo> info;
    if (!senderInfo(info))
    {
        return;
    }
    if (grabResult.IsValid() && !grabResult->GrabSucceeded())
    {
        if (auto* pRecord = qobject_cast<CCameraInfo*>(info.data()))
        {
            pRecord->setErrorString(CCameraInfo::qString(grabResult->GetErrorDescription()));
        }
        emit cameraImageGrabFailed(info);
    }
    else
    {
        emit cameraImageGrabbed(info, grabResult);
    }
}

void CCameraPool::onCameraImageGrabFailed()
{
    QSharedPointer<ICameraInfo> info;
    if (senderInfo(info))
    {
        setErrorStringHelper(info, tr("The image grab failed.").toUtf8());
        emit cameraImageGrabFailed(info);
    }
}

void CCameraPool::onCameraStatisticUpdated(int imagesGrabbedCount, int imagesFailedCount, double fps, uint64_t bps,
                                           CCompressionStatistic compressionStatistic)
{
    QSharedPointer<ICameraInfo> info;
    if (senderInfo(info))
    {
        emit cameraStatisticUpdated(info, imagesGrabbedCount, imagesFailedCount, fps, bps, compressionStatistic);
    }
}

} // namespace Plugin::CameraPool::Internal
