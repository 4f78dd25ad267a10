// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/networkplan.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace HostKit
{
namespace
{

constexpr double BitsPerByte = 8.0;
constexpr std::int64_t WireBytes = 38;        // Ethernet: preamble 8, header 14, checksum 4, gap between frames 12
constexpr std::int64_t SmallestFrame = 84;    // the same with the least that a frame carries
constexpr std::int64_t IpUdpGvspBytes = 36;   // 20 + 8 + 8
constexpr std::int64_t LeaderBytes = 36 + 36; // of an image
constexpr std::int64_t TrailerBytes = 36 + 8;
constexpr double UsualCameraLink = 1e9;

void check(bool isSensible, const char* what)
{
    if (!isSensible)
    {
        throw std::invalid_argument(what);
    }
}

void check(const SPlanCamera& camera)
{
    check(camera.payloadBytes > 0, "The images of a camera have no bytes.");
    check(std::isfinite(camera.framesPerSecond) && camera.framesPerSecond > 0.0, "A camera has no frame rate.");
    check(camera.packetBytes > IpUdpGvspBytes, "The packets of a camera hold no data.");
    check(camera.ticksPerSecond > 0, "The clock of a camera does not tick.");
}

double wireBits(std::int64_t packetBytes)
{
    return BitsPerByte * static_cast<double>(std::max(packetBytes + WireBytes, SmallestFrame));
}

double ownLink(const SPlanCamera& camera, double linkBitsPerSecond)
{
    return camera.linkBitsPerSecond > 0.0 ? camera.linkBitsPerSecond : std::min(UsualCameraLink, linkBitsPerSecond);
}

/** The pause that stretches packets of a camera over its part of the link. */
void setDelay(SPlannedCamera& planned, const SPlanCamera& camera, double partBitsPerSecond, double ownBitsPerSecond)
{
    const double bits = wireBits(camera.packetBytes);
    const double seconds = std::max(0.0, bits / partBitsPerSecond - bits / ownBitsPerSecond);
    // Rounded down: a little more than the reserve is no harm, a rate that is not reached is.
    const double ticks = std::floor(seconds * static_cast<double>(camera.ticksPerSecond));
    planned.delayTicks = std::min(camera.mostDelayTicks, static_cast<std::int64_t>(ticks));
    planned.delaySeconds = static_cast<double>(planned.delayTicks) / static_cast<double>(camera.ticksPerSecond);
}

} // namespace

double neededBitsPerSecond(const SPlanCamera& camera)
{
    check(camera);
    const std::int64_t data = camera.packetBytes - IpUdpGvspBytes;
    const std::int64_t whole = camera.payloadBytes / data;
    const std::int64_t rest = camera.payloadBytes % data;
    const double bits = static_cast<double>(whole) * wireBits(camera.packetBytes) +
                        (rest > 0 ? wireBits(rest + IpUdpGvspBytes) : 0.0) + wireBits(LeaderBytes) +
                        wireBits(TrailerBytes);
    return bits * camera.framesPerSecond;
}

SNetworkPlan planNetwork(double linkBitsPerSecond, double reserve, const std::vector<SPlanCamera>& cameras)
{
    check(std::isfinite(linkBitsPerSecond) && linkBitsPerSecond > 0.0, "The link has no speed.");
    check(reserve >= 0.0 && reserve < 1.0, "The reserve leaves nothing of the link.");
    SNetworkPlan plan;
    plan.usableBitsPerSecond = linkBitsPerSecond * (1.0 - reserve);
    double ownLinks = 0.0;
    for (const SPlanCamera& camera : cameras)
    {
        SPlannedCamera planned;
        planned.bitsPerSecond = neededBitsPerSecond(camera);
        planned.shareOfLink = planned.bitsPerSecond / linkBitsPerSecond;
        plan.neededBitsPerSecond += planned.bitsPerSecond;
        plan.cameras.push_back(planned);
        ownLinks += ownLink(camera, linkBitsPerSecond);
    }
    const bool isShared = cameras.size() > 1 && ownLinks > linkBitsPerSecond;
    const double scale = plan.neededBitsPerSecond > 0.0 ? plan.usableBitsPerSecond / plan.neededBitsPerSecond : 1.0;
    plan.isFitting = scale >= 1.0;
    for (std::size_t i = 0; i < cameras.size(); ++i)
    {
        SPlannedCamera& planned = plan.cameras[i];
        const double own = ownLink(cameras[i], linkBitsPerSecond);
        const double part = std::min(planned.bitsPerSecond * scale, own);
        if (isShared)
        {
            setDelay(planned, cameras[i], part, own);
        }
        planned.isFitting = planned.bitsPerSecond <= part * (1.0 + 1e-9);
        plan.isFitting = plan.isFitting && planned.isFitting;
        planned.mostFramesPerSecond = cameras[i].framesPerSecond * part / planned.bitsPerSecond;
    }
    return plan;
}

} // namespace HostKit
