// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "servicecore/iservice.h"

namespace Plugin::CameraPool
{

/** Tells of all devices, and keeps the active one. Main thread. */
class CAMERAPOOL_EXPORT IDeviceStatusService : public Core::Service::IService
{
    Q_OBJECT
public:
    using Core::Service::IService::IService;
    ~IDeviceStatusService() override;
    virtual bool isDeviceOpen(QSharedPointer<IBaseInfo> info) = 0;
    /** Null: no device is active. */
    virtual void setActiveDevice(QSharedPointer<IBaseInfo> info) = 0;
    virtual QSharedPointer<IBaseInfo> getActiveDevice() = 0;

signals:
    void deviceOpening(QSharedPointer<IBaseInfo> info);
    void deviceOpened(QSharedPointer<IBaseInfo> info);
    void deviceClosing(QSharedPointer<IBaseInfo> info);
    void deviceClosed(QSharedPointer<IBaseInfo> info);
    void activeDeviceChanged(QSharedPointer<IBaseInfo> info);
};

} // namespace Plugin::CameraPool
