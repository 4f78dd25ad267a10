// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/genicamcachehelper.h"

#include "genapi/inodemap.h"

namespace Plugin::CameraPool
{

void CGenicamCacheHelper::clearGenicamCache()
{
    GenApi::CNodeMapFactory::ClearCache();
}

} // namespace Plugin::CameraPool
