// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace Simulator
{

/** What goes wrong with a camera on purpose; all off by default. */
struct SFaults
{
    std::uint32_t dropFrames = 0;       // that many next frames vanish (their numbers are used up)
    std::uint32_t failEveryNth = 0;     // every n-th frame arrives as failed; 0: none
    bool stall = false;                 // acquires, but delivers nothing
    std::string refuseOpenOwner;        // not empty: control is held by that application
    std::string readError;              // not empty: every register read fails with this text
    std::string writeError;             // not empty: every register write fails with this text
    bool brokenDescription = false;     // the description is not well-formed
    std::uint32_t discoveryDelayMs = 0; // the camera answers discoveries that late
    bool chunkLies = false;             // the last chunk claims more bytes than there are
    bool chunkMissing = false;          // the last chunk behind the image is not sent
    std::uint32_t removalReports = 1;   // how often its loss is reported
};

/** One camera as data. Texts are UTF-8. */
struct SCameraConfig
{
    std::string vendorName = "Korvel";
    std::string modelName = "EmuMono1280";
    std::string serialNumber = "EMU-0001";
    std::string userDefinedName;
    std::string deviceVersion = "1.0";
    std::string firmwareVersion = "1.0.0";
    std::string interfaceId = "DefaultInterface";
    std::uint32_t sensorWidth = 1280;                                                // pixels, a multiple of 4
    std::uint32_t sensorHeight = 1024;                                               // pixels, a multiple of 2
    std::vector<std::string> pixelFormats = {"Mono8", "Mono10", "Mono12", "Mono16"}; // the first is the default
    double frameRate = 30.0;                                                         // Hz, initial
    double maxBytesPerSecond = 1.0e9;                                                // of the read-out; limits the rate
    std::int64_t clockOffsetNs = 0;
    double clockDriftPpm = 0.0;
    std::uint32_t bootTimeMs = 500;              // how long a reset takes
    std::map<std::string, std::string> features; // initial values by feature name, as text
    SFaults faults;
};

SIMULATOR_EXPORT bool operator==(const SFaults& left, const SFaults& right);
SIMULATOR_EXPORT bool operator==(const SCameraConfig& left, const SCameraConfig& right);

} // namespace Simulator
