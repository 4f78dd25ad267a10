// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/ibaseinfo.h"

namespace Plugin::CameraPool
{

IBaseInfo::IBaseInfo(QObject* parent) : Plugin::AppCore::IInfo(parent) {}

IBaseInfo::~IBaseInfo() = default;

} // namespace Plugin::CameraPool
