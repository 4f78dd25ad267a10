// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_testexport.h"

#include <string>
#include <utility>
#include <vector>

namespace GenApi
{
namespace Internal
{

/** Names and bytes, in the order in which the archive is to hold them. */
using FirmwareArchiveFiles = std::vector<std::pair<std::string, std::string>>;

/** A ZIP archive in which nothing depends on time, place or user. Throws RuntimeException. */
GENAPI_TEST_EXPORT std::string WriteFirmwareArchive(const FirmwareArchiveFiles& files, bool isDeflated);

} // namespace Internal
} // namespace GenApi
