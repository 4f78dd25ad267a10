// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamera.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/idevicestatusservice.h"

namespace Plugin::CameraPool
{

/** Service: tells what happens to devices and cameras. A camera in exclusive use is silent between cameraDetached and
 *  cameraAttached. Main thread. */
class CAMERAPOOL_EXPORT ICameraStatusService : public IDeviceStatusService
{
    Q_OBJECT
public:
    explicit ICameraStatusService(QObject* parent = nullptr);
    ~ICameraStatusService() override;

    virtual bool isCameraOpenExclusive(QSharedPointer<ICameraInfo> info) = 0;
    virtual bool isCameraGrabbing(QSharedPointer<ICameraInfo> info) = 0;
    /** Without those in exclusive use. */
    virtual int getCountGrabbing() = 0;

signals:
    void cameraGrabStart(CameraInfoPtr info);
    void cameraGrabStarted(CameraInfoPtr info);
    void cameraGrabStopped(CameraInfoPtr info);
    void cameraImageGrabbed(CameraInfoPtr info, const Velmo::CGrabResultPtr& grabResult);
    void cameraImageGrabFailed(CameraInfoPtr info);
    /** fps: frames per second; bps: bytes per second. */
    void cameraStatisticUpdated(CameraInfoPtr info, int imagesGrabbedCount, int imagesFailedCount, double fps,
                                uint64_t bps, CCompressionStatistic compressionStatistic);
    void cameraDetached(CameraInfoPtr info);
    void cameraAttached(CameraInfoPtr info);
    void cameraConnectionLost(CameraInfoPtr info);
    void deviceConnected(BaseInfoPtr info);
    void deviceDisconnected(BaseInfoPtr info);
};

} // namespace Plugin::CameraPool
