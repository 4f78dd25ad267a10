// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/internal/filter.h"

#include "codec/internal/bytes.h"

#include <algorithm>
#include <cstring>

namespace Velmo::Codec::Internal
{

namespace
{

// Samples are read and written by memcpy: images may begin at any address. Compilers make plain vector moves of it.
template <class Word> Word At(const std::uint8_t* pWords, std::size_t index)
{
    return Load<Word>(pWords, index * sizeof(Word));
}

template <class Word>
void Quantise(const SFilter& filter, const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget)
{
    // Exact: a quotient is at least half a step's part away from the next whole number, and single precision is finer
    // than that for dividends below two million.
    const float perStep = 1.0F / static_cast<float>(filter.Step());
    const float half = static_cast<float>(filter.maxError) + 0.5F;
    for (std::size_t i = 0; i < words; ++i)
    {
        const auto sample = static_cast<float>(At<Word>(pSource, i));
        Store(pTarget, i * sizeof(Word), static_cast<Word>(static_cast<std::int32_t>((sample + half) * perStep)));
    }
}

void Differences8(std::uint32_t distance, const std::uint8_t* pSource, std::size_t bytes, std::uint8_t* pTarget)
{
    const std::size_t first = std::min<std::size_t>(distance, bytes);
    std::memcpy(pTarget, pSource, first);
    for (std::size_t i = first; i < bytes; ++i)
    {
        pTarget[i] = static_cast<std::uint8_t>(pSource[i] - pSource[i - distance]);
    }
}

void Differences16(std::uint32_t distance, const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget)
{
    const auto put = [&](std::size_t i, std::uint32_t difference)
    {
        const std::uint32_t sign = 0U - (difference >> 15U & 1U);
        const std::uint32_t folded = (difference << 1U) ^ sign;
        pTarget[i] = static_cast<std::uint8_t>(folded);
        pTarget[words + i] = static_cast<std::uint8_t>(folded >> 8U);
    };
    const std::size_t first = std::min<std::size_t>(distance, words);
    for (std::size_t i = 0; i < first; ++i)
    {
        put(i, At<std::uint16_t>(pSource, i));
    }
    for (std::size_t i = first; i < words; ++i)
    {
        put(i, std::uint32_t{At<std::uint16_t>(pSource, i)} - At<std::uint16_t>(pSource, i - distance));
    }
}

} // namespace

void Filter(const SFilter& filter, const std::uint8_t* pSource, std::size_t bytes, std::uint8_t* pTarget,
            std::uint8_t* pScratch)
{
    const std::size_t words = bytes / filter.wordBytes;
    if (filter.wordBytes == 1)
    {
        if (filter.maxError != 0)
        {
            Quantise<std::uint8_t>(filter, pSource, words, pScratch);
            pSource = pScratch;
        }
        Differences8(filter.distance, pSource, bytes, pTarget);
        return;
    }
    if (filter.maxError != 0)
    {
        Quantise<std::uint16_t>(filter, pSource, words, pScratch);
        pSource = pScratch;
    }
    Differences16(filter.distance, pSource, words, pTarget);
}

} // namespace Velmo::Codec::Internal
