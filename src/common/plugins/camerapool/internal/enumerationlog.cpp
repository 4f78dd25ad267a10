// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/enumerationlog.h"

namespace Plugin::CameraPool::Internal
{

Q_LOGGING_CATEGORY(enumerationLog, "Camera Enumeration Thread")

} // namespace Plugin::CameraPool::Internal
