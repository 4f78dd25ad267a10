// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/idevice.h"

namespace Plugin::CameraPool
{

/** An interface that can be opened to reach its parameters. Main thread. */
class CAMERAPOOL_EXPORT IInterface : public IDevice
{
    Q_OBJECT
public:
    explicit IInterface(QObject* parent = nullptr);
    ~IInterface() override;
};

} // namespace Plugin::CameraPool
