// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamerainfo.h"
#include "servicecore/iservice.h"

namespace Plugin::CameraPool
{

/** Starts and stops image acquisition. Main thread. */
class CAMERAPOOL_EXPORT ICameraStreamControlService : public Core::Service::IService
{
    Q_OBJECT
public:
    using Core::Service::IService::IService;
    ~ICameraStreamControlService() override;
    virtual void startGrabbing(QSharedPointer<ICameraInfo> info) = 0;
    virtual void stopGrabbing(QSharedPointer<ICameraInfo> info) = 0;
    /** One image; timeout in milliseconds. */
    virtual void singleShot(QSharedPointer<ICameraInfo> info, unsigned int timeout) = 0;

public slots:
    /** The active camera. */
    virtual void stopGrabbing() = 0;
    virtual void stopGrabbingAll() = 0;
    virtual void startGrabbing() = 0;
    virtual void singleShot(unsigned int timeout) = 0;
};

} // namespace Plugin::CameraPool
