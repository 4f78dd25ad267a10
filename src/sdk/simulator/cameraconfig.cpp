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
                    f.brokenDescription, f.discoveryDelayMs, f.chunkLies, f.chunkMissing, f.removalReports,
                    f.powerLossAtFileOperation, f.powerLossAtWrite, f.fileFailure, f.fileShortWrite, f.fileDelayMs,
                    f.afterReset);
}

auto Tie(const SCameraConfig& c)
{
    return std::tie(c.vendorName, c.modelName, c.serialNumber, c.userDefinedName, c.deviceVersion, c.firmwareVersion,
                    c.interfaceId, c.sensorWidth, c.sensorHeight, c.pixelFormats, c.frameRate, c.maxBytesPerSecond,
                    c.clockOffsetNs, c.clockDriftPpm, c.bootTimeMs, c.firmwareBootTimeMs, c.features, c.faults);
}

} // namespace

std::optional<EAfterReset> FindAfterReset(std::string_view name)
{
    for (const auto& [known, value] : {std::pair<std::string_view, EAfterReset>("same", EAfterReset::Same),
                                       {"never", EAfterReset::Never},
                                       {"twice", EAfterReset::Twice},
                                       {"otherSerial", EAfterReset::OtherSerial}})
    {
        if (name == known)
        {
            return value;
        }
    }
    return std::nullopt;
}

bool operator==(const SFaults& left, const SFaults& right)
{
    return Tie(left) == Tie(right);
}

bool operator==(const SCameraConfig& left, const SCameraConfig& right)
{
    return Tie(left) == Tie(right);
}

} // namespace Simulator
