// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaType>

#include <cstdint>

/** How well the images of one grab were compressed; ratios in percent of the decompressed payload. */
struct CCompressionStatistic
{
    bool compressionEnabled = false;    // the latest result carried compression information
    double compressionRatio = 0.0;      // of the latest compressed image
    double minCompressionRatio = 100.0; // since the grab started
    double maxCompressionRatio = 0.0;   // since the grab started
    std::uint32_t losslessCount = 0;
    std::uint32_t lossyCount = 0;
    std::uint32_t failedCount = 0; // results whose compression status was not OK
};

Q_DECLARE_METATYPE(CCompressionStatistic)
