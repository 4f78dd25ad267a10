// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamera.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/idevicecontrolservice.h"

namespace Plugin::CameraPool
{

/** Takes cameras for exclusive use and makes remote ones known. Main thread. */
class CAMERAPOOL_EXPORT ICameraControlService : public IDeviceControlService
{
    Q_OBJECT
public:
    using IDeviceControlService::IDeviceControlService;
    ~ICameraControlService() override;
    /** Opens a closed camera and locks it; null when it is open already or cannot be opened. */
    virtual QSharedPointer<ICamera> openCameraExclusive(QSharedPointer<ICameraInfo> info) = 0;
    /** Locks an open camera: from now on its signals reach only the caller. Null when that cannot be. */
    virtual QSharedPointer<ICamera> tryLock(QSharedPointer<ICameraInfo> info) = 0;
    /** False when the camera is not locked. */
    virtual bool unlock(QSharedPointer<ICamera> camera) = 0;
    /** Throws Core::Exception::BaseException when no camera answers there. */
    virtual void addRemoteGigECamera(const QString& ipAddress) = 0;
};

} // namespace Plugin::CameraPool
