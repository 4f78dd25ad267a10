// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"

#include <QObject>

namespace Plugin::CameraPool
{
Q_NAMESPACE_EXPORT(CAMERAPOOL_EXPORT)

/** What an update would do to the firmware that a camera has. */
enum class EFirmwareUpdateDirection
{
    Upgrade = 0,
    Downgrade = 1,
    Sidegrade = 2, // the same version again
    Unknown = 3    // the versions cannot be compared
};
Q_ENUM_NS(EFirmwareUpdateDirection)

/** What an update does at the moment; the values are the firmware-update module's. */
enum class EFirmwareUpdateStep
{
    CheckPreconditions = 0,
    AcquireUpdateData = 1,
    FeatureWrite = 2,
    FeatureExecute = 3,
    FeatureAssert = 4,
    FileUpload = 5,
    DeviceReset = 6,
    Invalid = 7
};
Q_ENUM_NS(EFirmwareUpdateStep)

} // namespace Plugin::CameraPool
