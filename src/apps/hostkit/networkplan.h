// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"

#include <cstdint>
#include <vector>

namespace HostKit
{

/** What a camera wants of the link that it shares with others. */
struct SPlanCamera
{
    std::int64_t payloadBytes = 0; // of an image, with its chunks
    double framesPerSecond = 0.0;
    std::int64_t packetBytes = 1500;             // with the headers of IP, UDP and GVSP
    std::int64_t ticksPerSecond = 1'000'000'000; // of its clock, in which pauses are counted
    double linkBitsPerSecond = 0.0;              // of its own link; 0: not known
    std::int64_t mostDelayTicks = INT64_MAX;     // that it can be set to
};

/** A camera's part of the link. Bits are those on the wire: with all headers, preamble and gap. */
struct SPlannedCamera
{
    double bitsPerSecond = 0.0;       // that it needs
    double shareOfLink = 0.0;         // of the whole link, 0 to 1
    std::int64_t delayTicks = 0;      // pause after each packet (GevSCPD)
    double delaySeconds = 0.0;        // the same
    bool isFitting = false;           // its images get through at that frame rate
    double mostFramesPerSecond = 0.0; // at which all cameras of the link fit, each lowered by the same part
};

struct SNetworkPlan
{
    double neededBitsPerSecond = 0.0; // by all cameras
    double usableBitsPerSecond = 0.0; // the link without its reserve
    bool isFitting = false;
    std::vector<SPlannedCamera> cameras; // in the order given
};

/** Bits per second on the wire for that camera's images, leader and trailer of each included. */
HOSTKIT_EXPORT double neededBitsPerSecond(const SPlanCamera& camera);

/**
 * Divides a link among cameras in proportion to what they need, so that packets of several never come faster than the
 * link takes them: a camera's pause stretches its packets over its part of the link. There is no pause where the
 * cameras' own links together are no faster than this one, or there is one camera only.
 *
 * linkBitsPerSecond: of the adapter, above 0. reserve: part of the link that is kept for commands and packets that are
 * sent again, 0 to below 1. Cameras whose own link is not known are taken to have 1 Gbit/s, or the adapter's if that is
 * slower. Throws std::invalid_argument for numbers that make no sense. Threads: any.
 */
HOSTKIT_EXPORT SNetworkPlan planNetwork(double linkBitsPerSecond, double reserve,
                                        const std::vector<SPlanCamera>& cameras);

} // namespace HostKit
