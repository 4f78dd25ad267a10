// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace GenApi
{
namespace Internal
{

/**
 * What a firmware package may hold at most; more is refused before memory is taken for it.
 *
 * The sizes bound what is unpacked, so that a small file cannot fill the memory.
 */
struct SFirmwareLimits
{
    std::size_t packageBytes = std::size_t{256} << 20; // of the package file
    std::size_t innerBytes = std::size_t{256} << 20;   // of package.zip, unpacked
    std::size_t payloadBytes = std::size_t{512} << 20; // of all payload files together, unpacked
    std::size_t controlBytes = std::size_t{1} << 20;   // of control.xml, unpacked
    std::size_t files = 256;
    std::size_t fileNameBytes = 200;
    std::size_t updates = 256;
    std::size_t procedures = 256;
    std::size_t conditions = 64; // of one update; also the preconditions of one procedure
    std::size_t steps = 1000;    // of one procedure
    std::size_t infos = 64;      // of one update
    std::size_t languages = 200; // of one text
    std::size_t textBytes = std::size_t{64} << 10;
    std::size_t nameBytes = 200; // of ids, features, keys and languages
    std::size_t patternBytes = 1000;
    std::uint32_t stepTimeMs = 24 * 60 * 60 * 1000; // of any time that a step states
};

} // namespace Internal
} // namespace GenApi
