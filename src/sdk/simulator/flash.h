// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace Simulator
{

/** What became of the image in the slot that does not run; the values of FirmwareStatus. */
enum class EFirmwareStatus : std::uint32_t
{
    Idle,             // nothing was uploaded since the running firmware was started for the first time
    Receiving,        // the file is open for writing
    Verified,         // complete, undamaged, for this model
    Invalid,          // not that, or it did not boot
    ActivationPending // verified, and the next reset boots it
};

/** One place for firmware. */
struct SFirmwareSlot
{
    std::string version; // "": the one of the camera's data
    std::vector<std::uint8_t> image;
};

/** The two places for firmware. */
struct SFirmwareFlash
{
    std::array<SFirmwareSlot, 2> slots;
    std::uint32_t activeSlot = 0; // never written to
    EFirmwareStatus status = EFirmwareStatus::Idle;
    SFirmwareSlot& Active() { return slots.at(activeSlot); }
    SFirmwareSlot& Inactive() { return slots.at(1 - activeSlot); }
};

/** What a camera keeps without power: its user sets, its name, its firmware and a file. Survives resets when the next
 *  model gets it. Threads: guarded by its mutex. */
struct SIMULATOR_EXPORT SFlash
{
    using Settings = std::map<std::int64_t, std::vector<std::uint8_t>>; // register bytes by address
    std::mutex mutex;
    std::map<std::uint32_t, Settings> userSets;
    std::uint32_t defaultUserSet = 0;
    std::string userDefinedName;
    bool hasUserDefinedName = false;
    SFirmwareFlash firmware;
    std::vector<std::uint8_t> userFile;
};

} // namespace Simulator
