// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

/** Limits of the settings, as the description and the registers both hold them. */
namespace Simulator::Internal::Limits
{

constexpr std::uint32_t MinWidth = 16;
constexpr std::uint32_t MinHeight = 2;
constexpr std::uint32_t WidthInc = 4;
constexpr std::uint32_t HeightInc = 2; // keeps the colour phase of Bayer images
constexpr double MinFrameRate = 0.01;
constexpr double MaxFrameRate = 10000.0;
constexpr double MinExposureUs = 10.0;
constexpr double MaxExposureUs = 10.0e6;
constexpr double MaxGainDb = 24.0;
constexpr double MaxBlackLevelPercent = 50.0;
constexpr double MaxFrameCount = 65535.0;

} // namespace Simulator::Internal::Limits
