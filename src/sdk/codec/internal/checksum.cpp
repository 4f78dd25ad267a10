// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/internal/checksum.h"

#include "codec/internal/bytes.h"

#include <array>

namespace Velmo::Codec::Internal
{

namespace
{

// xxHash specification, "XXH64 algorithm description"
constexpr std::uint64_t Prime1 = 0x9E3779B185EBCA87;
constexpr std::uint64_t Prime2 = 0xC2B2AE3D27D4EB4F;
constexpr std::uint64_t Prime3 = 0x165667B19E3779F9;
constexpr std::uint64_t Prime4 = 0x85EBCA77C2B2AE63;
constexpr std::uint64_t Prime5 = 0x27D4EB2F165667C5;
constexpr std::size_t StripeBytes = 32;

constexpr std::uint64_t Rotate(std::uint64_t value, unsigned int bits)
{
    return value << bits | value >> (64U - bits);
}

std::uint64_t Round(std::uint64_t accumulator, std::uint64_t lane)
{
    return Rotate(accumulator + lane * Prime2, 31) * Prime1;
}

std::uint64_t Merge(std::uint64_t hash, std::uint64_t accumulator)
{
    return (hash ^ Round(0, accumulator)) * Prime1 + Prime4;
}

std::uint64_t Avalanche(std::uint64_t hash)
{
    hash = (hash ^ hash >> 33U) * Prime2;
    hash = (hash ^ hash >> 29U) * Prime3;
    return hash ^ hash >> 32U;
}

} // namespace

std::uint64_t Checksum(const void* pData, std::size_t bytes, std::uint64_t seed)
{
    const auto* p = static_cast<const std::uint8_t*>(pData);
    std::size_t left = bytes;
    std::uint64_t hash = seed + Prime5;
    if (left >= StripeBytes)
    {
        std::array<std::uint64_t, 4> lanes{seed + Prime1 + Prime2, seed + Prime2, seed, seed - Prime1};
        for (; left >= StripeBytes; left -= StripeBytes, p += StripeBytes)
        {
            for (std::size_t i = 0; i < lanes.size(); ++i)
            {
                lanes[i] = Round(lanes[i], Load<std::uint64_t>(p, i * 8));
            }
        }
        hash = Rotate(lanes[0], 1) + Rotate(lanes[1], 7) + Rotate(lanes[2], 12) + Rotate(lanes[3], 18);
        for (const std::uint64_t lane : lanes)
        {
            hash = Merge(hash, lane);
        }
    }
    hash += bytes;
    for (; left >= 8; left -= 8, p += 8)
    {
        hash = Rotate(hash ^ Round(0, Load<std::uint64_t>(p)), 27) * Prime1 + Prime4;
    }
    if (left >= 4)
    {
        hash = Rotate(hash ^ Load<std::uint32_t>(p) * Prime1, 23) * Prime2 + Prime3;
        left -= 4;
        p += 4;
    }
    for (; left > 0; --left, ++p)
    {
        hash = Rotate(hash ^ *p * Prime5, 11) * Prime1;
    }
    return Avalanche(hash);
}

} // namespace Velmo::Codec::Internal
