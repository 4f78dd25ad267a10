// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwareclock.h"
#include "genapi/internal/firmwarelimits.h"

#include "genapi/firmwareupdate.h"

namespace GenApi
{
namespace Internal
{

/** CFirmwareUpdater::ApplyUpdate() with the clock and the limits to use. */
GENAPI_TEST_EXPORT void RunFirmwareUpdate(const CFirmwareUpdateInfo& updateInfo, IFirmwareUpdatableDevice& device,
                                          IFirmwareUpdateProgressObserver* observer, IFirmwareClock& clock,
                                          const SFirmwareLimits& limits);

} // namespace Internal
} // namespace GenApi
