// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/pixelformat.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace HostKit
{
namespace
{

struct SRow
{
    std::uint32_t value;
    const char* name;
    EPixelLayout layout;
    EPacking packing;
    unsigned int bits;
    unsigned int samples;
};

using L = EPixelLayout;
using P = EPacking;

constexpr std::array rows{
    SRow{0x01080001, "Mono8", L::Mono, P::Whole, 8, 1},
    SRow{0x01100003, "Mono10", L::Mono, P::Whole, 10, 1},
    SRow{0x01100005, "Mono12", L::Mono, P::Whole, 12, 1},
    SRow{0x01100025, "Mono14", L::Mono, P::Whole, 14, 1},
    SRow{0x01100007, "Mono16", L::Mono, P::Whole, 16, 1},
    SRow{0x010A0046, "Mono10p", L::Mono, P::LsbPacked, 10, 1},
    SRow{0x010C0047, "Mono12p", L::Mono, P::LsbPacked, 12, 1},
    SRow{0x010C0006, "Mono12Packed", L::Mono, P::GigE12Packed, 12, 1},
    SRow{0x01080008, "BayerGR8", L::BayerGR, P::Whole, 8, 1},
    SRow{0x01080009, "BayerRG8", L::BayerRG, P::Whole, 8, 1},
    SRow{0x0108000A, "BayerGB8", L::BayerGB, P::Whole, 8, 1},
    SRow{0x0108000B, "BayerBG8", L::BayerBG, P::Whole, 8, 1},
    SRow{0x0110000C, "BayerGR10", L::BayerGR, P::Whole, 10, 1},
    SRow{0x0110000D, "BayerRG10", L::BayerRG, P::Whole, 10, 1},
    SRow{0x0110000E, "BayerGB10", L::BayerGB, P::Whole, 10, 1},
    SRow{0x0110000F, "BayerBG10", L::BayerBG, P::Whole, 10, 1},
    SRow{0x01100010, "BayerGR12", L::BayerGR, P::Whole, 12, 1},
    SRow{0x01100011, "BayerRG12", L::BayerRG, P::Whole, 12, 1},
    SRow{0x01100012, "BayerGB12", L::BayerGB, P::Whole, 12, 1},
    SRow{0x01100013, "BayerBG12", L::BayerBG, P::Whole, 12, 1},
    SRow{0x0110002E, "BayerGR16", L::BayerGR, P::Whole, 16, 1},
    SRow{0x0110002F, "BayerRG16", L::BayerRG, P::Whole, 16, 1},
    SRow{0x01100030, "BayerGB16", L::BayerGB, P::Whole, 16, 1},
    SRow{0x01100031, "BayerBG16", L::BayerBG, P::Whole, 16, 1},
    SRow{0x02180014, "RGB8", L::RGB, P::Whole, 8, 3},
    SRow{0x02180015, "BGR8", L::BGR, P::Whole, 8, 3},
    SRow{0x02300018, "RGB10", L::RGB, P::Whole, 10, 3},
    SRow{0x0230001A, "RGB12", L::RGB, P::Whole, 12, 3},
    SRow{0x02300033, "RGB16", L::RGB, P::Whole, 16, 3},
};

} // namespace

std::size_t SPixelFormat::lineBytes(std::uint32_t width) const
{
    const std::size_t samples = std::size_t{width} * samplesPerPixel;
    switch (packing)
    {
    case EPacking::Whole:
        return samples * (significantBits > 8 ? 2 : 1);
    case EPacking::LsbPacked:
        return (samples * significantBits + 7) / 8;
    case EPacking::GigE12Packed:
        return (samples * 3 + 1) / 2;
    }
    return 0;
}

bool describePixelFormat(std::uint32_t pfncValue, SPixelFormat& format)
{
    const auto* row = std::find_if(std::begin(rows), std::end(rows),
                                   [pfncValue](const SRow& candidate) { return candidate.value == pfncValue; });
    if (row == std::end(rows))
    {
        return false;
    }
    format = {QString::fromLatin1(row->name), row->layout, row->packing, row->bits, row->samples};
    return true;
}

} // namespace HostKit
