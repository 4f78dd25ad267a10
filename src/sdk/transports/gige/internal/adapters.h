// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Velmo::GigE::Internal
{

/** One IPv4 address of a network adapter. Addresses in host byte order. */
struct SAdapter
{
    std::string id;   // "eth0"; "eth0/192.168.1.5" for an adapter's further addresses
    std::string name; // "eth0"
    unsigned int index = 0;
    std::uint32_t ip = 0;
    std::uint32_t mask = 0;
    std::array<std::uint8_t, 6> mac{};
    bool isLoopback = false;

    bool IsInSubnet(std::uint32_t address) const { return (address & mask) == (ip & mask); }
    std::uint32_t DirectedBroadcast() const { return ip | ~mask; }
    /** Whether a datagram to that address goes to everybody in this adapter's network. Those of one or two addresses
     *  have no broadcast (RFC 3021). */
    bool IsBroadcast(std::uint32_t address) const { return ~mask > 1 && address == DirectedBroadcast(); }
};

/** Whether the address (host byte order) may be that of one device: neither 0 nor multicast, reserved or broadcast. */
constexpr bool IsUnicast(std::uint32_t address)
{
    constexpr std::uint32_t firstMulticast = 0xE0000000;
    return address != 0 && address < firstMulticast;
}

/** Every adapter of the system that is up and has an IPv4 address, in the system's order. */
GIGE_TEST_EXPORT std::vector<SAdapter> ListSystemAdapters();

/**
 * Those of the system's adapters that are wanted, in the system's order: by name, identifier or address; "none" wants
 * none, an empty list all but loopback ones. An address of the loopback network that is not configured stands for the
 * loopback adapter with that address. Entries that match nothing are appended to unknown.
 */
GIGE_TEST_EXPORT std::vector<SAdapter> SelectAdapters(const std::vector<SAdapter>& system,
                                                      const std::vector<std::string>& wanted,
                                                      std::vector<std::string>& unknown);

/** Why an entry that SelectAdapters found unknown cannot be used, as the end of a sentence about the adapter. */
std::string WhyUnusable(const std::string& entry);
/** Names of all adapters, also of those that cannot be used: "lo, eth0". */
std::string AdapterNames();

/** "a, b,,c" into its entries without blanks and empty ones. */
GIGE_TEST_EXPORT std::vector<std::string> SplitList(const std::string& text);

/** The process-wide list of SetAdapters(), or else the environment's. Threads: any. */
GIGE_TEST_EXPORT std::vector<std::string> WantedAdapters();
void SetWantedAdapters(std::vector<std::string> adapters);

} // namespace Velmo::GigE::Internal
