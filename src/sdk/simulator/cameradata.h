// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameraconfig.h"
#include "simulator/simulator_export.h"

#include <string>
#include <string_view>
#include <vector>

namespace Simulator
{

struct SInterfaceData
{
    std::string id;
    std::string name;
};

/** What the data describe: interfaces (at least one) and the cameras on them. */
struct SRackData
{
    std::vector<SInterfaceData> interfaces;
    std::vector<Simulator::SCameraConfig> cameras;
};

/** Cameras of alternating kinds: 1280x1024 grey, 1920x1200 colour; serial numbers EMU-0001 ... */
SIMULATOR_EXPORT SRackData MakeDefaultData(std::size_t cameras);

/** Throws GenICam::InvalidArgumentException naming the camera and what is wrong with it. */
SIMULATOR_EXPORT void CheckData(const SRackData& data);

} // namespace Simulator
