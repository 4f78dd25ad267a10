// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/codec_export.h"

#include <cstddef>
#include <cstdint>

namespace Velmo::Codec
{

/** How the samples of a pixel format lie in memory, lines without padding. */
struct SPixelLayout
{
    std::uint32_t pixelType = 0;  // PFNC value
    std::uint32_t wordBytes = 0;  // of a sample: 1 or 2
    std::uint32_t components = 0; // samples of a pixel
    std::uint32_t distance = 0;   // samples back to the nearest one of the same colour on the line
    std::uint32_t maxSample = 0;  // largest value that the format has
    std::uint32_t PixelBytes() const { return wordBytes * components; }
};

/** Null for a format that the codec does not know (packed, planar, float ...). Threads: any. */
CODEC_EXPORT const SPixelLayout* FindPixelLayout(std::uint32_t pixelType);

constexpr std::uint32_t MaxDimension = 1U << 24U;
constexpr std::uint64_t MaxImageBytes = 0xFFFFFFFF;

/** Bytes of the image; 0 when the format is unknown or a size is 0 or beyond the limits above. */
CODEC_EXPORT std::uint64_t ImageBytes(std::uint32_t pixelType, std::uint32_t width, std::uint32_t height);

/** An image is coded in strips of whole lines, each for itself; this is how many the encoder makes of it. Strips are of
 *  about StripBytes: what is decoded first is then still in the cache when the filter is undone. */
constexpr std::uint32_t StripBytes = 256U * 1024U;
constexpr std::uint32_t MaxStrips = 1024;
CODEC_EXPORT std::uint32_t StripCountFor(std::uint64_t imageBytes, std::uint32_t height);

/** First line of a strip; that of strip `strips` is the height. */
constexpr std::uint32_t FirstLine(std::uint32_t strip, std::uint32_t strips, std::uint32_t height)
{
    return static_cast<std::uint32_t>(std::uint64_t{height} * strip / strips);
}

/** Lines of the longest strip. */
constexpr std::uint32_t MaxStripLines(std::uint32_t strips, std::uint32_t height)
{
    return (height + strips - 1) / strips;
}

} // namespace Velmo::Codec
