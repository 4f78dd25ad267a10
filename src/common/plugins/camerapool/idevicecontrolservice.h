// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "camerapool/idevice.h"
#include "servicecore/iservice.h"

namespace Plugin::CameraPool
{

/** Service: opens and closes devices. Main thread. */
class CAMERAPOOL_EXPORT IDeviceControlService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit IDeviceControlService(QObject* parent = nullptr);
    ~IDeviceControlService() override;

    /** False when the device could not be opened; the reason is the record's error string. */
    virtual bool open(QSharedPointer<IBaseInfo> info, bool monitorMode) = 0;
    virtual void close(QSharedPointer<IDevice> device) = 0;
    virtual void close(QSharedPointer<IBaseInfo> info) = 0;
    /** The active device; false when there is none. */
    virtual bool open(bool monitorMode) = 0;
    /** The active device. */
    virtual void close() = 0;
};

} // namespace Plugin::CameraPool
