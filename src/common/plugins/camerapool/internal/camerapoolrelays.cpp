// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"
#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/camerapool.h"

namespace Plugin::CameraPool::Internal
{

bool CCameraPool::senderInfo(QSharedPointer<ICameraInfo>& info) const
{
    QObject* const pSender = sender();
    // Once per image: the pool's own cameras are told at the first comparison and hand out their record as it is.
    if (const auto* pOwn = qobject_cast<CCamera*>(pSender))
    {
        info = pOwn->cameraInfo();
        return true;
    }
    if (const auto* pCamera = qobject_cast<ICamera*>(pSender))
    {
        info = qSharedPointerObjectCast<ICameraInfo>(pCamera->getInfo());
        return true;
    }
    return false;
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
    const QObject* const pSender = sender();
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
        m_lockedCameras.removeAll(qSharedPointerObjectCast<ICamera>(lost));
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
        setErrorStringHelper(info, "The image grab failed.");
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
