// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/servedcamera.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace GigECamera
{

/** The command line. */
struct SOptions
{
    std::vector<std::string> addresses;
    std::string adapter;
    std::optional<std::size_t> count;
    std::string configFile;
    std::vector<std::string> faults;
    double linkMegabits = 1000.0;
    std::optional<std::uint32_t> bootTimeMs;
    std::optional<std::uint32_t> firmwareBootTimeMs;
    std::vector<std::string> firmware; // empty, or version, model and file of an image to make
    std::size_t firmwareBytes = 65536; // of its payload
    bool firmwareFails = false;        // to boot
};

/** False when the program is to end with that exit code: help, version, or an error that was printed. */
bool ParseCommandLine(int argc, char** argv, SOptions& options, int& exitCode);

/** The cameras that the options ask for. Throws GenICam exceptions whose texts say what is wrong. */
std::vector<GigEServer::SServedCamera> MakeCameras(const SOptions& options);

/** Writes the firmware image that the options ask for. Throws GenICam exceptions whose texts say what is wrong. */
void WriteFirmware(const SOptions& options);

} // namespace GigECamera
