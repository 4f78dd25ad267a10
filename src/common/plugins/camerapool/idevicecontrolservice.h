// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "camerapool/idevice.h"
#include "servicecore/iservice.h"

namespace Plugin::CameraPool
{

/** Opens and closes devices. Main thread. */
class CAMERAPOOL_EXPORT IDeviceControlService : public Core::Service::IService
{
    Q_OBJECT
public:
    using Core::Service::IService::IService;
    ~IDeviceControlService() override;
    /** False when it cannot be opened; the record's errorString() says why. */
    virtual bool open(QSharedPointer<IBaseInfo> info, bool monitorMode) = 0;
    virtual void close(QSharedPointer<IDevice> device) = 0;
    virtual void close(QSharedPointer<IBaseInfo> info) = 0;
    /** The active device. */
    virtual bool open(bool monitorMode) = 0;
    virtual void close() = 0;
};

} // namespace Plugin::CameraPool
