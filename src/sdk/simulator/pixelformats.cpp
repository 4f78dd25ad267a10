// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/pixelformats.h"

#include <algorithm>

namespace Simulator
{

const std::vector<SPixelFormat>& PixelFormats()
{
    // Values of the GenICam Pixel Format Naming Convention.
    static const std::vector<SPixelFormat> formats = {
        {"Mono8", 0x01080001, 8, 1, EPixelLayout::Mono},       {"Mono10", 0x01100003, 10, 2, EPixelLayout::Mono},
        {"Mono12", 0x01100005, 12, 2, EPixelLayout::Mono},     {"Mono16", 0x01100007, 16, 2, EPixelLayout::Mono},
        {"BayerRG8", 0x01080009, 8, 1, EPixelLayout::BayerRG}, {"BayerRG12", 0x01100011, 12, 2, EPixelLayout::BayerRG},
        {"RGB8", 0x02180014, 8, 3, EPixelLayout::Rgb},
    };
    return formats;
}

const SPixelFormat* FindPixelFormat(std::string_view name)
{
    const auto& all = PixelFormats();
    const auto found = std::find_if(all.begin(), all.end(), [&](const SPixelFormat& f) { return f.name == name; });
    return found == all.end() ? nullptr : &*found;
}

const SPixelFormat* FindPixelFormat(std::uint32_t pfnc)
{
    const auto& all = PixelFormats();
    const auto found = std::find_if(all.begin(), all.end(), [&](const SPixelFormat& f) { return f.pfnc == pfnc; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace Simulator
