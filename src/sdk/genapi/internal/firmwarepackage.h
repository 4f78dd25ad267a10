// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarecontrol.h"
#include "genapi/internal/firmwarelimits.h"

#include "genapi/genapi_testexport.h"

#include <string_view>

namespace GenApi
{
namespace Internal
{

/** A package that was read and found good. */
struct SFirmwarePackage
{
    std::string sha256; // of the whole package file
    SFirmwareControl control;
    std::map<std::string, std::string> payload; // bytes by file name
};

/**
 * Reads a package from memory and checks all of it, the payload included.
 *
 * fileName: for messages. Throws FormatException or, beyond the limits, OutOfRangeException; what and where is in the
 * text. The bytes are needed during the call only.
 */
GENAPI_TEST_EXPORT SFirmwarePackage ReadFirmwarePackage(const std::string& fileName, std::string_view bytes,
                                                        const SFirmwareLimits& limits);

/** The bytes of a package file, UTF-8 name. Throws InvalidArgumentException (no name), FileNotFoundException,
 *  FileIOException, OutOfRangeException (too large). */
GENAPI_TEST_EXPORT std::string LoadFirmwareFile(const std::string& fileName, const SFirmwareLimits& limits);

/** The package's updates, in its order, as they are handed out. */
GENAPI_TEST_EXPORT std::vector<std::shared_ptr<const SFirmwareUpdate>>
MakeFirmwareUpdates(const std::string& fileName, const SFirmwarePackage& package);

} // namespace Internal
} // namespace GenApi
