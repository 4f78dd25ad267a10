// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace Simulator
{

enum class EPixelLayout
{
    Mono,
    BayerRG,
    Rgb
};

/** A pixel format that the cameras know. */
struct SPixelFormat
{
    std::string_view name;       // SFNC symbol
    std::uint32_t pfnc;          // PFNC value: bits 16..23 are the bits per pixel
    std::uint32_t significant;   // bits of a sample that carry data
    std::uint32_t bytesPerPixel; // in memory
    EPixelLayout layout;
};

/** All known formats. Threads: any. */
SIMULATOR_EXPORT const std::vector<SPixelFormat>& PixelFormats();
/** Null when unknown. */
SIMULATOR_EXPORT const SPixelFormat* FindPixelFormat(std::string_view name);
SIMULATOR_EXPORT const SPixelFormat* FindPixelFormat(std::uint32_t pfnc);

} // namespace Simulator
