// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace Simulator
{

/** What a camera keeps without power: its user sets and its name. Survives resets when the next model gets it.
 *  Threads: guarded by its mutex. */
struct SIMULATOR_EXPORT SFlash
{
    using Settings = std::map<std::int64_t, std::vector<std::uint8_t>>; // register bytes by address
    std::mutex mutex;
    std::map<std::uint32_t, Settings> userSets;
    std::uint32_t defaultUserSet = 0;
    std::string userDefinedName;
    bool hasUserDefinedName = false;
};

} // namespace Simulator
