// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "servicecore/iservice.h"

namespace Plugin::CameraPool
{

/** Service: tells what happens to devices, and keeps the active one. Main thread. */
class CAMERAPOOL_EXPORT IDeviceStatusService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit IDeviceStatusService(QObject* parent = nullptr);
    ~IDeviceStatusService() override;

    virtual bool isDeviceOpen(QSharedPointer<IBaseInfo> info) = 0;
    /** Null: no device is active. */
    virtual void setActiveDevice(QSharedPointer<IBaseInfo> info) = 0;
    virtual QSharedPointer<IBaseInfo> getActiveDevice() = 0;

signals:
    void deviceOpening(BaseInfoPtr info);
    void deviceOpened(BaseInfoPtr info);
    void deviceClosing(BaseInfoPtr info);
    void deviceClosed(BaseInfoPtr info);
    void activeDeviceChanged(BaseInfoPtr info);
};

} // namespace Plugin::CameraPool
