// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarefeatures.h"

#include <string_view>

namespace GenApi
{
namespace Internal
{

struct SFirmwareUploadResult
{
    std::uint64_t writtenBytes = 0; // without what was there already
    std::int64_t writingMs = 0;
};

/**
 * Writes a payload into the device's file and verifies it as the step says. The device's file is closed in every case.
 *
 * What an interrupted upload left behind is kept when it can be read and is the beginning of these bytes. A block whose
 * access fails is written again, up to MaxBlockTries times.
 */
SFirmwareUploadResult UploadFirmwareFile(const SFirmwareStep& step, std::string_view bytes, INodeMap& nodeMap,
                                         IFirmwareClock& clock, const FirmwareProgress& progress);

/** How often one block is tried. */
constexpr int MaxBlockTries = 3;

} // namespace Internal
} // namespace GenApi
