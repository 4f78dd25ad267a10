// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "hostkit/hostkit_export.h"

#include <QString>

#include <cstddef>
#include <cstdint>

namespace HostKit
{

enum class EPixelLayout
{
    Mono,
    BayerRG,
    BayerGB,
    BayerGR,
    BayerBG,
    RGB,
    BGR
};
enum class EPacking
{
    Whole,       // one or two bytes a sample, little-endian
    LsbPacked,   // PFNC ...p: a continuous stream of bits, least significant first
    GigE12Packed // GigE Vision Mono12Packed: two samples in three bytes
};

/** What a PFNC value says of an image's bytes. */
struct SPixelFormat
{
    QString name;
    EPixelLayout layout = EPixelLayout::Mono;
    EPacking packing = EPacking::Whole;
    unsigned int significantBits = 8; // of one sample
    unsigned int samplesPerPixel = 1;

    /** Bytes of one line of that many pixels, without padding. */
    HOSTKIT_EXPORT std::size_t lineBytes(std::uint32_t width) const;
};

/** False when the value is not one of those that can be shown. Source: PFNC, the value table. Threads: any. */
HOSTKIT_EXPORT bool describePixelFormat(std::uint32_t pfncValue, SPixelFormat& format);

} // namespace HostKit
