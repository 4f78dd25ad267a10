// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/internal/filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

using Velmo::Codec::Internal::Filter;
using Velmo::Codec::Internal::SFilter;
using Velmo::Codec::Internal::Unfilter;

namespace
{

using Bytes = std::vector<std::uint8_t>;

/** Exactly as long as is asked for, at an odd address, so that a sanitizer sees every step outside. */
struct SOdd
{
    explicit SOdd(std::size_t bytes) : memory(bytes + 1) {}
    std::uint8_t* Data() { return memory.data() + 1; }
    Bytes memory;
};

Bytes RoundTrip(const SFilter& filter, const Bytes& image)
{
    SOdd source(image.size());
    std::copy(image.begin(), image.end(), source.Data());
    SOdd filtered(image.size());
    SOdd scratch(image.size());
    SOdd restored(image.size());
    Filter(filter, source.Data(), image.size(), filtered.Data(), scratch.Data());
    Unfilter(filter, filtered.Data(), image.size(), restored.Data());
    return {restored.Data(), restored.Data() + image.size()};
}

Bytes RandomBytes(std::size_t bytes, std::mt19937& random)
{
    Bytes image(bytes);
    std::generate(image.begin(), image.end(), [&] { return static_cast<std::uint8_t>(random()); });
    return image;
}

std::vector<std::size_t> Lengths(const SFilter& filter)
{
    // Around the vectors' ends and around the pieces in which the filter is undone.
    std::vector<std::size_t> words;
    for (std::size_t pixels = 1; pixels <= 70; ++pixels)
    {
        words.push_back(pixels);
    }
    for (const std::size_t near : {3071U, 3072U, 3073U, 6144U, 9999U})
    {
        words.push_back(near);
    }
    if (filter.distance == 3)
    {
        std::for_each(words.begin(), words.end(), [](std::size_t& count) { count *= 3; });
    }
    return words;
}

TEST(CodecFilter, withoutAnErrorAnyBytesComeBack)
{
    std::mt19937 random(7);
    for (const std::uint32_t wordBytes : {1U, 2U})
    {
        for (const std::uint32_t distance : {1U, 2U, 3U})
        {
            const SFilter filter{wordBytes, distance, 0, wordBytes == 1 ? 0xFFU : 0xFFFFU};
            for (const std::size_t words : Lengths(filter))
            {
                const Bytes image = RandomBytes(words * wordBytes, random);
                ASSERT_EQ(RoundTrip(filter, image), image) << wordBytes << ' ' << distance << ' ' << words;
            }
        }
    }
}

TEST(CodecFilter, withAnErrorEverySampleIsWithinIt)
{
    std::mt19937 random(11);
    for (const std::uint32_t maxSample : {255U, 1023U, 4095U, 65535U})
    {
        for (const std::uint32_t maxError : {1U, 2U, 7U, 31U, (maxSample + 1) / 8, maxSample})
        {
            const std::uint32_t wordBytes = maxSample > 255 ? 2 : 1;
            const SFilter filter{wordBytes, 1U + static_cast<std::uint32_t>(random() % 3), maxError, maxSample};
            // Every value there is, in random order.
            std::vector<std::uint32_t> samples((maxSample + 1) / 3 * 3 + 3);
            for (std::size_t i = 0; i < samples.size(); ++i)
            {
                samples[i] = static_cast<std::uint32_t>(i) % (maxSample + 1);
            }
            std::shuffle(samples.begin(), samples.end(), random);
            Bytes image;
            for (const std::uint32_t sample : samples)
            {
                image.push_back(static_cast<std::uint8_t>(sample));
                if (wordBytes == 2)
                {
                    image.push_back(static_cast<std::uint8_t>(sample >> 8U));
                }
            }
            const Bytes restored = RoundTrip(filter, image);
            for (std::size_t i = 0; i < samples.size(); ++i)
            {
                const int value = wordBytes == 1 ? restored[i] : restored[2 * i] | restored[2 * i + 1] << 8;
                ASSERT_LE(std::abs(value - static_cast<int>(samples[i])), static_cast<int>(maxError))
                    << "sample " << samples[i] << ", largest " << maxSample;
                ASSERT_LE(value, static_cast<int>(maxSample));
            }
        }
    }
}

} // namespace
