// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/compressionstatistic.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/idevicestatusservice.h"
#include "velmo/grabresult.h"

#include <cstdint>

namespace Plugin::CameraPool
{

/** Tells of all cameras but those in exclusive use. Main thread. */
class CAMERAPOOL_EXPORT ICameraStatusService : public IDeviceStatusService
{
    Q_OBJECT
public:
    using IDeviceStatusService::IDeviceStatusService;
    ~ICameraStatusService() override;
    virtual bool isCameraOpenExclusive(QSharedPointer<ICameraInfo> info) = 0;
    virtual bool isCameraGrabbing(QSharedPointer<ICameraInfo> info) = 0;
    virtual int getCountGrabbing() = 0;

signals:
    void cameraGrabStart(QSharedPointer<ICameraInfo> info);
    void cameraGrabStarted(QSharedPointer<ICameraInfo> info);
    void cameraGrabStopped(QSharedPointer<ICameraInfo> info);
    /** The pixels are shared, never copied; hold the result only as long as they are needed. */
    void cameraImageGrabbed(QSharedPointer<ICameraInfo> info, const Velmo::CGrabResultPtr& grabResult);
    void cameraImageGrabFailed(QSharedPointer<ICameraInfo> info);
    void cameraStatisticUpdated(QSharedPointer<ICameraInfo> info, int imagesGrabbedCount, int imagesFailedCount,
                                double fps, uint64_t bps, CCompressionStatistic compressionStatistic);
    void cameraDetached(QSharedPointer<ICameraInfo> info);
    void cameraAttached(QSharedPointer<ICameraInfo> info);
    void cameraConnectionLost(QSharedPointer<ICameraInfo> info);
    void deviceConnected(QSharedPointer<IBaseInfo> info);
    void deviceDisconnected(QSharedPointer<IBaseInfo> info);
};

} // namespace Plugin::CameraPool
