// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "poolcli/session.h"

#include "camerapool/idevicefirmwareupdate.h"

namespace PoolCli
{

/**
 * Applies the update on a thread of its own, so that signals are shown and Ctrl-C is heard meanwhile: it ends the
 * update before its next step, and however often it comes, never within one.
 *
 * Throws CRefusal with the reason, and with what the camera has now, when the update was not done, or when the camera
 * cannot be reached after it. A reader of the output that has gone is no reason to leave a camera half updated.
 */
void applyUpdate(CSession& session, Plugin::CameraPool::IDeviceFirmwareUpdate& job, bool isShown);

} // namespace PoolCli
