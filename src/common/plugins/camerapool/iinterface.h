// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/idevice.h"
#include "camerapool/iinterfaceinfo.h"

namespace Plugin::CameraPool
{

/** One interface as a device: opened to show and change its own parameters. Main thread. */
class CAMERAPOOL_EXPORT IInterface : public IDevice
{
    Q_OBJECT
public:
    explicit IInterface(QObject* parent = nullptr);
    ~IInterface() override;
};

} // namespace Plugin::CameraPool
