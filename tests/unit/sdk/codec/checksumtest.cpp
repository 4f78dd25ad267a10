// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/internal/checksum.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

using Velmo::Codec::Internal::Checksum;

// Test vectors that are published with the xxHash algorithm.
TEST(CodecChecksum, isXxh64)
{
    EXPECT_EQ(Checksum("", 0), 0xEF46DB3751D8E999U);
    EXPECT_EQ(Checksum("a", 1), 0xD24EC4F1A98C6E5BU);
    EXPECT_EQ(Checksum("abc", 3), 0x44BC2CF5AD770999U);
    const std::string text = "Nobody inspects the spammish repetition";
    EXPECT_EQ(Checksum(text.data(), text.size()), 0xFBCEA83C8A378BF1U);
}

TEST(CodecChecksum, everyBitOfEveryLengthCounts)
{
    std::array<std::uint8_t, 80> data{};
    for (std::size_t bytes = 1; bytes <= data.size(); ++bytes)
    {
        const std::uint64_t before = Checksum(data.data(), bytes);
        EXPECT_NE(before, Checksum(data.data(), bytes, 1));
        for (std::size_t bit = 0; bit < bytes * 8; ++bit)
        {
            data[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
            EXPECT_NE(before, Checksum(data.data(), bytes)) << bytes << " bytes, bit " << bit;
            data[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        }
    }
}
