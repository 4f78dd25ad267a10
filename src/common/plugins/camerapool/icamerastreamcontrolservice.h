// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamerainfo.h"
#include "servicecore/iservice.h"

namespace Plugin::CameraPool
{

/** Service: starts and stops image acquisition. What cannot be done has no effect and is logged by the camera. Main
 *  thread. */
class CAMERAPOOL_EXPORT ICameraStreamControlService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit ICameraStreamControlService(QObject* parent = nullptr);
    ~ICameraStreamControlService() override;

    virtual void startGrabbing(QSharedPointer<ICameraInfo> info) = 0;
    virtual void stopGrabbing(QSharedPointer<ICameraInfo> info) = 0;
    /** Grabs one image; the timeout is in milliseconds. */
    virtual void singleShot(QSharedPointer<ICameraInfo> info, unsigned int timeout) = 0;

public slots:
    /** The active camera. */
    virtual void stopGrabbing() = 0;
    /** Every camera that grabs and is not in exclusive use. */
    virtual void stopGrabbingAll() = 0;
    /** The active camera. */
    virtual void startGrabbing() = 0;
    /** The active camera; the timeout is in milliseconds. */
    virtual void singleShot(unsigned int timeout) = 0;
};

} // namespace Plugin::CameraPool
