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
};

/** False when the program is to end with that exit code: help, version, or an error that was printed. */
bool ParseCommandLine(int argc, char** argv, SOptions& options, int& exitCode);

/** The cameras that the options ask for. Throws GenICam exceptions whose texts say what is wrong. */
std::vector<GigEServer::SServedCamera> MakeCameras(const SOptions& options);

} // namespace GigECamera
