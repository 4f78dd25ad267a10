// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/pixellayout.h"

#include <algorithm>
#include <array>

namespace Velmo::Codec
{

namespace
{

constexpr SPixelLayout Mono(std::uint32_t pixelType, std::uint32_t bits)
{
    return {pixelType, bits > 8 ? 2U : 1U, 1, 1, (1U << bits) - 1U};
}

constexpr SPixelLayout Bayer(std::uint32_t pixelType, std::uint32_t bits)
{
    return {pixelType, bits > 8 ? 2U : 1U, 1, 2, (1U << bits) - 1U};
}

constexpr SPixelLayout Rgb(std::uint32_t pixelType, std::uint32_t bits)
{
    return {pixelType, bits > 8 ? 2U : 1U, 3, 3, (1U << bits) - 1U};
}

// Values of the GenICam Pixel Format Naming Convention; the four Bayer patterns of a depth follow each other.
constexpr std::array<SPixelLayout, 28> Layouts{{
    Mono(0x01080001, 8),   Mono(0x01100003, 10),  Mono(0x01100005, 12),  Mono(0x01100025, 14),  Mono(0x01100007, 16),
    Bayer(0x01080008, 8),  Bayer(0x01080009, 8),  Bayer(0x0108000A, 8),  Bayer(0x0108000B, 8),  Bayer(0x0110000C, 10),
    Bayer(0x0110000D, 10), Bayer(0x0110000E, 10), Bayer(0x0110000F, 10), Bayer(0x01100010, 12), Bayer(0x01100011, 12),
    Bayer(0x01100012, 12), Bayer(0x01100013, 12), Bayer(0x0110002E, 16), Bayer(0x0110002F, 16), Bayer(0x01100030, 16),
    Bayer(0x01100031, 16), Rgb(0x02180014, 8),    Rgb(0x02180015, 8),    Rgb(0x02300018, 10),   Rgb(0x02300019, 10),
    Rgb(0x0230001A, 12),   Rgb(0x0230001B, 12),   Rgb(0x02300033, 16),
}};

} // namespace

const SPixelLayout* FindPixelLayout(std::uint32_t pixelType)
{
    const auto* const found = std::find_if(Layouts.begin(), Layouts.end(),
                                           [&](const SPixelLayout& layout) { return layout.pixelType == pixelType; });
    return found == Layouts.end() ? nullptr : found;
}

std::uint64_t ImageBytes(std::uint32_t pixelType, std::uint32_t width, std::uint32_t height)
{
    const SPixelLayout* const layout = FindPixelLayout(pixelType);
    if (layout == nullptr || width == 0 || height == 0 || width > MaxDimension || height > MaxDimension)
    {
        return 0;
    }
    const std::uint64_t bytes = std::uint64_t{width} * height * layout->PixelBytes();
    return bytes > MaxImageBytes ? 0 : bytes;
}

std::uint32_t StripCountFor(std::uint64_t imageBytes, std::uint32_t height)
{
    const std::uint64_t wanted = (imageBytes + StripBytes - 1) / StripBytes;
    const std::uint64_t most = std::min<std::uint64_t>(height, MaxStrips);
    return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(wanted, 1, std::max<std::uint64_t>(most, 1)));
}

} // namespace Velmo::Codec
