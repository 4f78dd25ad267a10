// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_export.h"
#include "simulator/cameraconfig.h"

#include <cstdint>
#include <string>
#include <vector>

namespace GigEServer
{

/** What goes wrong between a camera and its application on purpose; all off by default. */
struct SNetworkFaults
{
    std::uint32_t lostPerThousand = 0;       // stream packets that vanish, also when they are sent again
    std::uint32_t reorderedPerThousand = 0;  // stream packets that change places with the next
    std::uint32_t duplicatedPerThousand = 0; // stream packets that arrive twice
    std::uint32_t corruptedPerThousand = 0;  // stream packets with one wrong bit
    std::uint32_t delayMs = 0;               // each image leaves that much later
    std::uint32_t commandMs = 0;   // commands take that long; a pending acknowledge says so where it is enabled
    std::uint64_t dieInFrame = 0;  // falls silent for good in the middle of that image; 0: never
    std::uint32_t pathMtu = 0;     // larger datagrams vanish, as in a switch without jumbo frames; 0: none
    bool isSilent = false;         // hears commands, but neither answers nor obeys
    bool isStreamBlocked = false;  // no stream packet arrives, as behind a firewall
    bool hasNoTestPackets = false; // sends no test packets when it is asked for them
};

/** Where a camera is reached. Addresses in host byte order. */
struct SAddress
{
    std::uint32_t ip = 0;
    std::uint32_t subnetMask = 0;
    std::uint32_t broadcast = 0;   // of the subnet
    unsigned int adapterIndex = 0; // the kernel's
};

/** One camera on the network. */
struct SServedCamera
{
    Simulator::SCameraConfig config;
    SAddress address;
    std::uint64_t linkBitsPerSecond = 1'000'000'000; // packets do not leave faster; 0: as fast as the computer can
    SNetworkFaults faults;
};

/** The adapter's address of that IPv4 text; any address of 127.0.0.0/8 will do. Throws GenICam::RuntimeException when
 *  no adapter has it, GenICam::InvalidArgumentException when it is none. */
GIGESERVER_EXPORT SAddress FindAddress(const std::string& ip);
/** All IPv4 addresses of an adapter. Throws GenICam::RuntimeException when there is none. */
GIGESERVER_EXPORT std::vector<SAddress> FindAdapter(const std::string& name);

} // namespace GigEServer
