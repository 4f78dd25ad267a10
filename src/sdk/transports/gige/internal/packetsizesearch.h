// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <cstdint>
#include <functional>

namespace Velmo::GigE::Internal
{

/** Packet sizes that may be set, in bytes with the headers of IP, UDP and GVSP: min, min + increment ... up to max. */
struct SPacketSizes
{
    std::uint32_t min = 576; // every IPv4 network carries that
    std::uint32_t max = 0xFFFC;
    std::uint32_t increment = 4;
};

/** The largest of the sizes that is not above the limit; the smallest of all when none is below. */
GIGE_TEST_EXPORT std::uint32_t LargestPacketSize(const SPacketSizes& sizes, std::uint32_t limitBytes);

/**
 * The largest size not above the limit that passes, by as few tests as possible: what fails costs a time-out. 0 when
 * not even the smallest one passes, which says nothing of the path: no test packets are sent, or none is let through.
 */
GIGE_TEST_EXPORT std::uint32_t SearchPacketSize(const SPacketSizes& sizes, std::uint32_t limitBytes,
                                                const std::function<bool(std::uint32_t bytes)>& passes);

} // namespace Velmo::GigE::Internal
