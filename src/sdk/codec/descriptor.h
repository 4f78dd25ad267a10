// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/codec_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Velmo::Codec
{

enum class EMode : std::uint16_t
{
    Lossless = 1,
    FixedRatio = 2
};

constexpr std::uint16_t CodecDeltaZstd = 1; // the only codec there is; docs/protocols/compressedimage.md
constexpr std::size_t DescriptorBytes = 48;
constexpr std::size_t DescriptorHashBytes = 16;
constexpr std::uint32_t RatioUnitsPerPercent = 1000;

using DescriptorHash = std::array<std::uint8_t, DescriptorHashBytes>;

/** What a camera says of the images that it compresses; its bytes are the feature ImageCompressionDescriptor. */
struct SDescriptor
{
    EMode mode = EMode::Lossless;
    std::uint32_t pixelType = 0; // PFNC value
    std::uint32_t width = 0;     // pixels
    std::uint32_t height = 0;    // pixels
    std::uint32_t ratio = 0;     // FixedRatio: coded size at most, in 1/RatioUnitsPerPercent per cent; else 0
    std::uint32_t strips = 0;
    std::uint64_t imageBytes = 0; // decoded
};

/** Of geometry and mode; strips and imageBytes are worked out. ratioPercent counts in EMode::FixedRatio only. */
CODEC_EXPORT SDescriptor MakeDescriptor(EMode mode, std::uint32_t pixelType, std::uint32_t width, std::uint32_t height,
                                        double ratioPercent = 100.0);

CODEC_EXPORT std::vector<std::uint8_t> EncodeDescriptor(const SDescriptor& descriptor);

/** "" and the descriptor when the bytes are one, else what is wrong and where; the descriptor is then left alone. */
CODEC_EXPORT std::string ParseDescriptor(const void* pData, std::size_t bytes, SDescriptor& descriptor);

/** Tells descriptors apart; every frame carries that of its descriptor. Not a cryptographic hash. */
CODEC_EXPORT DescriptorHash HashDescriptor(const void* pData, std::size_t bytes);

} // namespace Velmo::Codec
