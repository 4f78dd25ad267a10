// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/** Numbers as GVCP and GVSP send them. */
namespace Velmo::Internal
{

inline std::uint16_t U16(const std::uint8_t* p)
{
    return static_cast<std::uint16_t>(p[0] << 8 | p[1]);
}

inline std::uint32_t U32(const std::uint8_t* p)
{
    return static_cast<std::uint32_t>(U16(p)) << 16 | U16(p + 2);
}

inline std::uint64_t U64(const std::uint8_t* p)
{
    return static_cast<std::uint64_t>(U32(p)) << 32 | U32(p + 4);
}

} // namespace Velmo::Internal
