// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icamera.h"

namespace Plugin::CameraPool
{

ICamera::ICamera(QObject* parent) : IDevice(parent) {}

ICamera::~ICamera() = default;

} // namespace Plugin::CameraPool
