// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/adapters.h"
#include "transports/gige/internal/discoveryanswers.h"

#include <set>
#include <string>
#include <vector>

namespace Velmo::GigE::Internal
{

/** An adapter that could not be used. */
struct SAdapterFailure
{
    std::string adapterId;
    std::string reason;
};

struct SDiscoveryResult
{
    std::vector<SFoundDevice> devices; // each once, by adapter and order of answers
    std::vector<SAdapterFailure> failures;
};

/**
 * Looks for cameras on all adapters at once by directed and limited broadcast, on loopback adapters by asking their
 * addresses, and at the known addresses (host byte order); then asks those that can be reached whether they are free.
 * It ends less than 50 ms after the last answer, later where cameras answer slowly, unless one of the expected
 * addresses has not answered yet: it waits for those, so that a late answer does not make a camera come and go. Takes
 * at most half a second. Threads: any; each call has sockets of its own.
 */
GIGE_TEST_EXPORT SDiscoveryResult Discover(const std::vector<SAdapter>& adapters,
                                           const std::vector<std::uint32_t>& knownAddresses,
                                           std::set<std::uint32_t> expectedAddresses = {});

/** Asks that one address through each adapter; the result is empty when nothing answers there. */
GIGE_TEST_EXPORT SDiscoveryResult DiscoverAddress(const std::vector<SAdapter>& adapters, std::uint32_t address);

} // namespace Velmo::GigE::Internal
