// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/idevice.h"

namespace Plugin::CameraPool
{

IDevice::IDevice(QObject* parent) : QObject(parent) {}

IDevice::~IDevice() = default;

} // namespace Plugin::CameraPool
