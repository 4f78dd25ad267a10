// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/internal/accumulate.h"
#include "codec/internal/bytes.h"
#include "codec/internal/filter.h"

#include <algorithm>
#include <array>

namespace Velmo::Codec::Internal
{

namespace
{

// A piece and what becomes of it stay in the first-level cache; a multiple of every distance and of the vectors.
constexpr std::size_t PieceWords = 3072;
template <class Word> using Piece = std::array<std::uint8_t, PieceWords * sizeof(Word)>;

/** Joins the low and high bytes and unfolds the signs. */
void Unfold(const std::uint8_t* pLow, const std::uint8_t* pHigh, std::size_t words, std::uint8_t* pTarget)
{
    for (std::size_t i = 0; i < words; ++i)
    {
        const auto folded = static_cast<std::uint16_t>(pLow[i] | pHigh[i] << 8U);
        const auto sign = static_cast<std::uint16_t>(0U - (folded & 1U));
        Store(pTarget, i * 2, static_cast<std::uint16_t>((folded >> 1U) ^ sign));
    }
}

template <class Word>
void Restore(const SFilter& filter, const std::uint8_t* pQuotients, std::size_t words, std::uint8_t* pTarget)
{
    const std::uint32_t step = filter.Step();
    const std::uint32_t maxSample = filter.maxSample;
    for (std::size_t i = 0; i < words; ++i)
    {
        const std::uint32_t sample = Load<Word>(pQuotients, i * sizeof(Word)) * step;
        Store(pTarget, i * sizeof(Word), static_cast<Word>(std::min(sample, maxSample)));
    }
}

template <class Word, std::size_t Distance>
void Undo(const SFilter& filter, const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget)
{
    Sums<Word> sums{};
    Piece<Word> unfolded;
    Piece<Word> quotients;
    for (std::size_t begin = 0; begin < words; begin += PieceWords)
    {
        const std::size_t count = std::min(PieceWords, words - begin);
        const std::uint8_t* pDifferences = pSource + begin;
        std::uint8_t* const pOut = pTarget + begin * sizeof(Word);
        if constexpr (sizeof(Word) == 2)
        {
            Unfold(pSource + begin, pSource + words + begin, count, unfolded.data());
            pDifferences = unfolded.data();
        }
        if (filter.maxError == 0)
        {
            Accumulate<Word, Distance>(pDifferences, count, pOut, sums);
            continue;
        }
        Accumulate<Word, Distance>(pDifferences, count, quotients.data(), sums);
        Restore<Word>(filter, quotients.data(), count, pOut);
    }
}

template <class Word>
void UndoBy(const SFilter& filter, const std::uint8_t* pSource, std::size_t words, std::uint8_t* pTarget)
{
    switch (filter.distance)
    {
    case 1:
        return Undo<Word, 1>(filter, pSource, words, pTarget);
    case 2:
        return Undo<Word, 2>(filter, pSource, words, pTarget);
    default:
        return Undo<Word, MaxDistance>(filter, pSource, words, pTarget);
    }
}

} // namespace

void Unfilter(const SFilter& filter, const std::uint8_t* pSource, std::size_t bytes, std::uint8_t* pTarget)
{
    if (filter.wordBytes == 1)
    {
        UndoBy<std::uint8_t>(filter, pSource, bytes, pTarget);
    }
    else
    {
        UndoBy<std::uint16_t>(filter, pSource, bytes / 2, pTarget);
    }
}

} // namespace Velmo::Codec::Internal
