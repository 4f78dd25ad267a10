// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Simulator
{

/** What comes back after a reset; the values of FaultAfterReset. */
enum class EAfterReset : std::uint32_t
{
    Same,       // the camera
    Never,      // nothing
    Twice,      // the camera and another one of its serial number
    OtherSerial // the camera under another serial number
};

/** By its name in the data: "same", "never", "twice", "otherSerial"; nothing for another text. */
SIMULATOR_EXPORT std::optional<EAfterReset> FindAfterReset(std::string_view name);

/** What goes wrong with a camera on purpose; all off by default. */
struct SFaults
{
    std::uint32_t dropFrames = 0;               // that many next frames vanish (their numbers are used up)
    std::uint32_t failEveryNth = 0;             // every n-th frame arrives as failed; 0: none
    bool stall = false;                         // acquires, but delivers nothing
    std::string refuseOpenOwner;                // not empty: control is held by that application
    std::string readError;                      // not empty: every register read fails with this text
    std::string writeError;                     // not empty: every register write fails with this text
    bool brokenDescription = false;             // the description is not well-formed
    std::uint32_t discoveryDelayMs = 0;         // the camera answers discoveries that late
    bool chunkLies = false;                     // the last chunk claims more bytes than there are
    bool chunkMissing = false;                  // the last chunk behind the image is not sent
    std::uint32_t removalReports = 1;           // how often its loss is reported
    std::uint32_t powerLossAtFileOperation = 0; // power goes in the middle of the n-th from now; 0: never
    std::uint32_t powerLossAtWrite = 0;         // power goes before the n-th register write from now; 0: never
    std::uint32_t fileFailure = 0;              // the n-th file operation from now fails; 0: none
    std::uint32_t fileShortWrite = 0;           // the n-th write to a file from now takes half; 0: none
    std::uint32_t fileDelayMs = 0;              // each file operation takes so much longer
    EAfterReset afterReset = EAfterReset::Same; // at every reset, also after a loss of power
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
    std::uint32_t bootTimeMs = 500;                  // how long a reset takes
    std::optional<std::uint32_t> firmwareBootTimeMs; // of one that starts other firmware; as bootTimeMs without it
    std::map<std::string, std::string> features;     // initial values by feature name, as text
    SFaults faults;
};

SIMULATOR_EXPORT bool operator==(const SFaults& left, const SFaults& right);
SIMULATOR_EXPORT bool operator==(const SCameraConfig& left, const SCameraConfig& right);

} // namespace Simulator
