// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace Test
{

/**
 * The number that tests with random input start from. Without CAMERAPOOL_TEST_SEED always the same one, so that a
 * change is judged by the same inputs as the one before; with "random" another one each time, to look further.
 */
inline std::uint64_t randomSeed()
{
    const char* const wanted = std::getenv("CAMERAPOOL_TEST_SEED");
    if (wanted == nullptr)
    {
        return 20261122;
    }
    return wanted == std::string("random") ? std::random_device()() : std::strtoull(wanted, nullptr, 10);
}

} // namespace Test
