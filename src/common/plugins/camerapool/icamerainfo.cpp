// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icamerainfo.h"

namespace Plugin::CameraPool
{

ICameraInfo::ICameraInfo(QObject* parent) : IBaseInfo(parent) {}

ICameraInfo::~ICameraInfo() = default;

} // namespace Plugin::CameraPool
