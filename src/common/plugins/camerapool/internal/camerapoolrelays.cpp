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
        // A receiver may take the camera from the pool. The relay lives on: it is held by the connection's functor,
        // which Qt holds while it calls it.
        const QScopedValueRollback<const SRelay*> running(m_pCurrentRelay, relay.data());
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

template <class Work> void CCameraPool::withRelayedRecord(Work work) const
{
    if (m_pCurrentRelay != nullptr)
    {
        work(m_pCurrentRelay->info);
    }
    else if (const auto* const pCamera = qobject_cast<const ICamera*>(sender()))
    {
        work(qSharedPointerObjectCast<ICameraInfo>(pCamera->getInfo()));
    }
}

void CCameraPool::onCameraGrabStart()
{
    withRelayedRecord([this](const CameraInfoPtr& info) { emit cameraGrabStart(info); });
}

void CCameraPool::onCameraGrabStarted()
{
    withRelayedRecord([this](const CameraInfoPtr& info) { emit cameraGrabStarted(info); });
}

void CCameraPool::onCameraGrabStopped()
{
    withRelayedRecord([this](const CameraInfoPtr& info) { emit cameraGrabStopped(info); });
}

void CCameraPool::onCameraConnectionLost()
{
    withRelayedRecord([this](const CameraInfoPtr& info) { relayConnectionLost(info); });
}

void CCameraPool::relayConnectionLost(const CameraInfoPtr& info)
{
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
    withRelayedRecord(
        [&](const CameraInfoPtr& info)
        {
            if (!grabResult.IsValid() || grabResult->GrabSucceeded())
            {
                emit cameraImageGrabbed(info, grabResult);
                return;
            }
            if (auto* pRecord = qobject_cast<CCameraInfo*>(info.data()))
            {
                pRecord->setErrorString(CCameraInfo::qString(grabResult->GetErrorDescription()));
            }
            emit cameraImageGrabFailed(info);
        });
}

void CCameraPool::onCameraImageGrabFailed()
{
    withRelayedRecord(
        [this](const CameraInfoPtr& info)
        {
            setErrorStringHelper(info, tr("The image grab failed.").toUtf8());
            emit cameraImageGrabFailed(info);
        });
}

void CCameraPool::onCameraStatisticUpdated(int imagesGrabbedCount, int imagesFailedCount, double fps, uint64_t bps,
                                           CCompressionStatistic compressionStatistic)
{
    withRelayedRecord(
        [&](const CameraInfoPtr& info)
        { emit cameraStatisticUpdated(info, imagesGrabbedCount, imagesFailedCount, fps, bps, compressionStatistic); });
}

} // namespace Plugin::CameraPool::Internal
