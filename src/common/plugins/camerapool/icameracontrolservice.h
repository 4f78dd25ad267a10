// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamera.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/idevicecontrolservice.h"

namespace Plugin::CameraPool
{

/** Service: opens and closes devices, and takes cameras for exclusive use. Main thread. */
class CAMERAPOOL_EXPORT ICameraControlService : public IDeviceControlService
{
    Q_OBJECT
public:
    explicit ICameraControlService(QObject* parent = nullptr);
    ~ICameraControlService() override;

    /** Opens a closed camera for the caller alone until unlock(); null when that is not possible. */
    virtual QSharedPointer<ICamera> openCameraExclusive(QSharedPointer<ICameraInfo> info) = 0;
    /** Takes an open camera for the caller alone until unlock(); null when that is not possible. */
    virtual QSharedPointer<ICamera> tryLock(QSharedPointer<ICameraInfo> info) = 0;
    /** False when the camera was not locked. */
    virtual bool unlock(QSharedPointer<ICamera> camera) = 0;
    /** Makes a GigE camera of another subnet known to later enumerations. Throws Core::Exception::BaseException when
     *  it is not found. */
    virtual void addRemoteGigECamera(const QString& ipAddress) = 0;
};

} // namespace Plugin::CameraPool
