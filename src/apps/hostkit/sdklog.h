// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"

namespace HostKit
{

/** Hands the camera SDK's log to Qt's, under the SDK's categories ("velmo.gige"), for the rest of the process. */
HOSTKIT_EXPORT void forwardSdkLog();

} // namespace HostKit
