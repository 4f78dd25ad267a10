// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarecontrol.h"
#include "genapi/internal/firmwarelimits.h"

#include "genapi/genapi_testexport.h"

namespace GenApi
{
namespace Internal
{

/** Value of the root's xmlns attribute. */
constexpr char FirmwareNamespace[] = "urn:camerapool:firmwarepackage";
/** Value of the root's version attribute. */
constexpr char FirmwareVersion[] = "1.0";
constexpr char FirmwareControlName[] = "control.xml";
constexpr char FirmwareInnerName[] = "package.zip";

/**
 * Reads control.xml (docs/protocols/firmwarepackage.md) and checks all that can be checked without the files.
 *
 * name: of the document, for messages. Throws FormatException, naming line and element, or OutOfRangeException for what
 * is beyond the limits.
 */
GENAPI_TEST_EXPORT SFirmwareControl ReadFirmwareControl(const std::string& name, const std::string& xml,
                                                        const SFirmwareLimits& limits);

} // namespace Internal
} // namespace GenApi
