// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"

namespace Plugin::CameraPool
{

class CAMERAPOOL_EXPORT CGenicamCacheHelper
{
public:
    /** Empties the process's cache of device descriptions; open devices keep theirs. Threads: any. */
    static void clearGenicamCache();
};

} // namespace Plugin::CameraPool
