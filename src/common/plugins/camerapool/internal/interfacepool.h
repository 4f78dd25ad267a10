// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/devicepool.h"

namespace Plugin::CameraPool::Internal
{

/** The interfaces of the process as devices. Main thread. */
class CAMERAPOOL_TEST_EXPORT CInterfacePool : public ADevicePool
{
    Q_OBJECT
public:
    explicit CInterfacePool(QObject* parent);
    ~CInterfacePool() override;

    using ADevicePool::closeDevice;
    using ADevicePool::openDevice;

    bool openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode) override;
    void closeDevice(QSharedPointer<IDevice> device) override;
    QSharedPointer<IDevice> createDevice(QSharedPointer<IBaseInfo> info) override;
};

} // namespace Plugin::CameraPool::Internal
