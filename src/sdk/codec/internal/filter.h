// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/codec_testexport.h"

#include <cstddef>
#include <cstdint>

namespace Velmo::Codec::Internal
{

/**
 * What is done to the samples of a strip before they go to zstd, and undone after.
 *
 * A strip counts as one row of samples. Each is replaced by its difference, modulo the word, from the one `distance`
 * before; the first `distance` ones have 0 before them. With maxError e the samples are first divided by the step
 * 2e + 1 and rounded, so that sample and restored sample differ by e at most and nothing accumulates. Differences of 16
 * bits are made small positive numbers (0, -1, 1, -2 ... become 0, 1, 2, 3 ...) and stored as all low bytes, then all
 * high bytes.
 */
struct SFilter
{
    std::uint32_t wordBytes = 1; // 1 or 2
    std::uint32_t distance = 1;  // in samples; 1, 2 or 3
    std::uint32_t maxError = 0;
    std::uint32_t maxSample = 255; // restored samples are never larger when maxError is not 0

    std::uint32_t Step() const { return 2 * maxError + 1; }
};

/** bytes must be whole samples; pTarget and pScratch hold as many. pScratch is used when maxError is not 0. No two may
 *  overlap. */
CODEC_TEST_EXPORT void Filter(const SFilter& filter, const std::uint8_t* pSource, std::size_t bytes,
                              std::uint8_t* pTarget, std::uint8_t* pScratch);

/** Undoes Filter; the memory must not overlap. Never fails: any bytes give some samples. */
CODEC_TEST_EXPORT void Unfilter(const SFilter& filter, const std::uint8_t* pSource, std::size_t bytes,
                                std::uint8_t* pTarget);

} // namespace Velmo::Codec::Internal
