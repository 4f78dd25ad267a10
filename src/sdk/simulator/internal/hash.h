// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

namespace Simulator::Internal
{

/** By which cameras differ where their data do not say how. */
inline std::uint32_t HashOf(const std::string& text)
{
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const char c : text)
    {
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619U;
    }
    return hash;
}

} // namespace Simulator::Internal
