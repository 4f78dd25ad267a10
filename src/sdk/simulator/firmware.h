// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Simulator
{

/** A firmware image of the camera model, and of nothing else; docs/protocols/simulatorfirmware.md is the format. */
struct SFirmwareImage
{
    static constexpr std::size_t HeaderBytes = 144; // before the payload

    std::string version;   // what DeviceFirmwareVersion says when it runs; 1 to 63 bytes, UTF-8
    std::string modelName; // the model that it is for; 1 to 63 bytes, UTF-8
    std::vector<std::uint8_t> payload;
    bool failsToBoot = false; // the camera falls back to the firmware that it had
};

/** The image's bytes. Throws GenICam::InvalidArgumentException on a text that is empty or too long. Threads: any. */
SIMULATOR_EXPORT std::vector<std::uint8_t> EncodeFirmware(const SFirmwareImage& image);

/** Throws GenICam::InvalidArgumentException that says what is wrong: too short, no such image, another format, damaged.
 *  Threads: any. */
SIMULATOR_EXPORT SFirmwareImage DecodeFirmware(const std::uint8_t* data, std::size_t bytes);

/** An image with that many bytes of payload that differ from version to version. Throws as EncodeFirmware does. */
SIMULATOR_EXPORT std::vector<std::uint8_t> MakeFirmware(const std::string& version, const std::string& modelName,
                                                        std::size_t payloadBytes, bool failsToBoot = false);

} // namespace Simulator
