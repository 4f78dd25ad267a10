// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/packetsizesearch.h"

#include <algorithm>

namespace Velmo::GigE::Internal
{

std::uint32_t LargestPacketSize(const SPacketSizes& sizes, std::uint32_t limitBytes)
{
    const std::uint32_t increment = std::max<std::uint32_t>(1, sizes.increment);
    const std::uint32_t most = std::min(sizes.max, limitBytes);
    return most <= sizes.min ? sizes.min : sizes.min + (most - sizes.min) / increment * increment;
}

std::uint32_t SearchPacketSize(const SPacketSizes& sizes, std::uint32_t limitBytes,
                               const std::function<bool(std::uint32_t bytes)>& passes)
{
    const std::uint32_t most = LargestPacketSize(sizes, limitBytes);
    if (passes(most))
    {
        return most;
    }
    // What stops the largest is most often a switch without jumbo frames.
    constexpr std::uint32_t usualMtu = 1500;
    const std::uint32_t increment = std::max<std::uint32_t>(1, sizes.increment);
    std::uint32_t tooLarge = (most - sizes.min) / increment; // counted in increments above the smallest
    std::uint32_t good = 0;
    const std::uint32_t usual = LargestPacketSize(sizes, usualMtu);
    if (usual < most && usual > sizes.min && passes(usual))
    {
        good = (usual - sizes.min) / increment;
    }
    else if (most == sizes.min || !passes(sizes.min))
    {
        return 0;
    }
    else if (usual < most && usual > sizes.min)
    {
        tooLarge = (usual - sizes.min) / increment;
    }
    while (tooLarge - good > 1)
    {
        const std::uint32_t middle = good + (tooLarge - good) / 2;
        (passes(sizes.min + middle * increment) ? good : tooLarge) = middle;
    }
    return sizes.min + good * increment;
}

} // namespace Velmo::GigE::Internal
