// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/internal/bytes.h"

#include <array>
#include <cstddef>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/** Running sums, modulo the word, of every `distance`-th sample: what undoes differences. */
namespace Velmo::Codec::Internal
{

constexpr std::size_t MaxDistance = 3;

/** The sums so far, of the samples that come `distance` before the next ones. */
template <class Word> using Sums = std::array<Word, MaxDistance>;

template <class Word, std::size_t Distance>
void AccumulatePlain(const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget, Sums<Word>& sums)
{
    std::size_t phase = 0;
    for (std::size_t i = 0; i < words; ++i)
    {
        Word& sum = sums[phase];
        sum = static_cast<Word>(sum + Load<Word>(pSource, i * sizeof(Word)));
        Store(pTarget, i * sizeof(Word), sum);
        phase = phase + 1 == Distance ? 0 : phase + 1;
    }
}

#ifdef __SSE2__

template <class Word> __m128i Add(__m128i a, __m128i b)
{
    return sizeof(Word) == 1 ? _mm_add_epi8(a, b) : _mm_add_epi16(a, b);
}

/** The last `Bytes` bytes in all places. */
template <std::size_t Bytes> __m128i BroadcastLast(__m128i value)
{
    static_assert(Bytes == 1 || Bytes == 2 || Bytes == 4);
    if constexpr (Bytes == 1)
    {
        value = _mm_unpackhi_epi8(value, value);
    }
    if constexpr (Bytes <= 2)
    {
        value = _mm_shufflehi_epi16(value, 0xFF);
    }
    return _mm_shuffle_epi32(value, 0xFF);
}

/** The sums of a vector by doubling reach; only the carry depends on the vector before, by one addition. */
template <class Word, std::size_t Distance>
std::size_t AccumulateVectors(const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget, Sums<Word>& sums)
{
    constexpr std::size_t Bytes = sizeof(Word) * Distance;
    constexpr std::size_t VectorWords = 16 / sizeof(Word);
    std::array<Word, VectorWords> start;
    for (std::size_t i = 0; i < VectorWords; ++i)
    {
        start[i] = sums[i % Distance];
    }
    __m128i carry = _mm_loadu_si128(reinterpret_cast<const __m128i*>(start.data()));
    const std::size_t vectors = words / VectorWords;
    for (std::size_t i = 0; i < vectors; ++i)
    {
        __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pSource) + i);
        x = Add<Word>(x, _mm_slli_si128(x, Bytes));
        if constexpr (Bytes <= 4)
        {
            x = Add<Word>(x, _mm_slli_si128(x, 2 * Bytes));
        }
        if constexpr (Bytes <= 2)
        {
            x = Add<Word>(x, _mm_slli_si128(x, 4 * Bytes));
        }
        if constexpr (Bytes == 1)
        {
            x = Add<Word>(x, _mm_slli_si128(x, 8));
        }
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pTarget) + i, Add<Word>(x, carry));
        carry = Add<Word>(carry, BroadcastLast<Bytes>(x));
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(start.data()), carry);
    for (std::size_t i = 0; i < Distance; ++i)
    {
        sums[i] = start[i];
    }
    return vectors * VectorWords;
}

/** Pixels of three samples, one addition each. Loads and stores 8 bytes where a pixel has 3 or 6, so the last pixels
 *  are left to the plain way. */
template <class Word>
std::size_t AccumulatePixels(const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget, Sums<Word>& sums)
{
    constexpr std::size_t PixelBytes = sizeof(Word) * MaxDistance;
    constexpr std::size_t AccessBytes = 8;
    const std::size_t bytes = words * sizeof(Word);
    const std::size_t pixels = bytes < AccessBytes ? 0 : (bytes - AccessBytes) / PixelBytes + 1;
    std::uint64_t start = 0;
    std::memcpy(&start, sums.data(), sizeof sums);
    __m128i sum = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&start));
    for (std::size_t i = 0; i < pixels; ++i)
    {
        sum = Add<Word>(sum, _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pSource + i * PixelBytes)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pTarget + i * PixelBytes), sum);
    }
    _mm_storel_epi64(reinterpret_cast<__m128i*>(&start), sum);
    std::memcpy(sums.data(), &start, sizeof sums);
    return pixels * MaxDistance;
}

#endif

/** pSource and pTarget must not overlap; sums carries from one piece to the next. Pieces but the last must be a
 *  multiple of Distance samples long. */
template <class Word, std::size_t Distance>
void Accumulate(const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget, Sums<Word>& sums)
{
    std::size_t done = 0;
#ifdef __SSE2__
    if constexpr (Distance == MaxDistance)
    {
        done = AccumulatePixels<Word>(pSource, words, pTarget, sums);
    }
    else
    {
        done = AccumulateVectors<Word, Distance>(pSource, words, pTarget, sums);
    }
#endif
    AccumulatePlain<Word, Distance>(pSource + done * sizeof(Word), words - done, pTarget + done * sizeof(Word), sums);
}

} // namespace Velmo::Codec::Internal
