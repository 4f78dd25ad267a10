// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/cameraconfig.h"

#include <tuple>

namespace Simulator
{

namespace
{

auto Tie(const SFaults& f)
{
    return std::tie(f.dropFrames, f.failEveryNth, f.stall, f.refuseOpenOwner, f.readError, f.writeError,
                    f.brokenDescription, f.discoveryDelayMs, f.chunkLies, f.chunkMissing, f.removalReports);
}

auto Tie(const SCameraConfig& c)
{
    return std::tie(c.vendorName, c.modelName, c.serialNumber, c.userDefinedName, c.deviceVersion, c.firmwareVersion,
                    c.interfaceId, c.sensorWidth, c.sensorHeight, c.pixelFormats, c.frameRate, c.maxBytesPerSecond,
                    c.clockOffsetNs, c.clockDriftPpm, c.bootTimeMs, c.features, c.faults);
}

} // namespace

bool operator==(const SFaults& left, const SFaults& right)
{
    return Tie(left) == Tie(right);
}

bool operator==(const SCameraConfig& left, const SCameraConfig& right)
{
    return Tie(left) == Tie(right);
}

} // namespace Simulator
