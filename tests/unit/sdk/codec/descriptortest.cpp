// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/descriptor.h"
#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"
#include "codecimages.h"

#include <gtest/gtest.h>

namespace Velmo::Codec::Test
{

namespace
{

/** The descriptor with one field changed and a checksum that fits again. */
template <class T> std::string ErrorOfField(std::size_t offset, T value)
{
    Bytes bytes = EncodeDescriptor(MakeDescriptor(EMode::Lossless, Mono12, 640, 480));
    Internal::Store(bytes.data(), offset, value);
    Internal::Store(bytes.data(), 40, Internal::Checksum(bytes.data(), 40));
    SDescriptor parsed;
    return ParseDescriptor(bytes.data(), bytes.size(), parsed);
}

} // namespace

TEST(CodecDescriptor, comesBackAsItWas)
{
    const SDescriptor made = MakeDescriptor(EMode::FixedRatio, RGB8, 2048, 1536, 37.5);
    const Bytes bytes = EncodeDescriptor(made);
    EXPECT_EQ(bytes.size(), DescriptorBytes);
    SDescriptor parsed;
    EXPECT_EQ(ParseDescriptor(bytes.data(), bytes.size(), parsed), "");
    EXPECT_EQ(parsed.mode, EMode::FixedRatio);
    EXPECT_EQ(parsed.pixelType, RGB8);
    EXPECT_EQ(parsed.width, 2048U);
    EXPECT_EQ(parsed.height, 1536U);
    EXPECT_EQ(parsed.ratio, 37500U);
    EXPECT_EQ(parsed.imageBytes, 2048U * 1536U * 3U);
    EXPECT_EQ(parsed.strips, 36U);
}

TEST(CodecDescriptor, truncationsAndBitFlipsAreRefused)
{
    const Bytes good = EncodeDescriptor(MakeDescriptor(EMode::Lossless, Mono8, 100, 100));
    SDescriptor parsed;
    parsed.width = 77;
    for (std::size_t bytes = 0; bytes < good.size(); ++bytes)
    {
        EXPECT_NE(ParseDescriptor(good.data(), bytes, parsed), "") << bytes;
    }
    for (std::size_t bit = 0; bit < good.size() * 8; ++bit)
    {
        Bytes flipped = good;
        flipped[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        EXPECT_NE(ParseDescriptor(flipped.data(), flipped.size(), parsed), "") << bit;
    }
    Bytes longer = good;
    longer.push_back(0);
    EXPECT_NE(ParseDescriptor(longer.data(), longer.size(), parsed), "");
    EXPECT_NE(ParseDescriptor(nullptr, 48, parsed), "");
    EXPECT_EQ(parsed.width, 77U);
}

TEST(CodecDescriptor, impossibleFieldsAreRefusedAndNamed)
{
    EXPECT_EQ(ErrorOfField<std::uint16_t>(8, 1), "");
    EXPECT_EQ(ErrorOfField<std::uint16_t>(8, 9), "its codec at byte 8 cannot be 9");
    EXPECT_EQ(ErrorOfField<std::uint16_t>(10, 3), "its mode at byte 10 cannot be 3");
    EXPECT_EQ(ErrorOfField<std::uint16_t>(10, 2), "its ratio at byte 24 cannot be 0");
    EXPECT_EQ(ErrorOfField<std::uint32_t>(12, 1), "its pixel type at byte 12 cannot be 1");
    EXPECT_EQ(ErrorOfField<std::uint32_t>(16, 0), "its width at byte 16 cannot be 0");
    EXPECT_EQ(ErrorOfField<std::uint32_t>(16, 0xFFFFFFFF), "its width at byte 16 cannot be 4294967295");
    EXPECT_EQ(ErrorOfField<std::uint32_t>(20, 0), "its height at byte 20 cannot be 0");
    EXPECT_EQ(ErrorOfField<std::uint32_t>(28, 0), "its number of strips at byte 28 cannot be 0");
    EXPECT_EQ(ErrorOfField<std::uint32_t>(28, 481), "its number of strips at byte 28 cannot be 481");
    EXPECT_EQ(ErrorOfField<std::uint64_t>(32, 1), "its image size at byte 32 cannot be 1");
    EXPECT_NE(ErrorOfField<std::uint32_t>(16, MaxDimension), ""); // the image size does not match any more
    EXPECT_EQ(ErrorOfField<std::uint32_t>(0, 5), "its identifying number at byte 0 cannot be 5");
    EXPECT_EQ(ErrorOfField<std::uint16_t>(4, 2), "its version at byte 4 cannot be 2");
}

TEST(CodecDescriptor, hashTellsDescriptorsApart)
{
    const SDescriptor one = MakeDescriptor(EMode::Lossless, Mono8, 640, 480);
    EXPECT_EQ(HashOf(one), HashOf(one));
    EXPECT_NE(HashOf(one), HashOf(MakeDescriptor(EMode::Lossless, Mono8, 480, 640)));
    EXPECT_NE(HashOf(one), HashOf(MakeDescriptor(EMode::FixedRatio, Mono8, 640, 480, 50.0)));
    EXPECT_NE(HashOf(one), HashOf(MakeDescriptor(EMode::Lossless, BayerRG8, 640, 480)));
}

TEST(CodecDescriptor, sizesBeyondTheLimitsAreNoImage)
{
    EXPECT_EQ(ImageBytes(Mono8, MaxDimension, 255), std::uint64_t{MaxDimension} * 255);
    EXPECT_EQ(ImageBytes(Mono8, MaxDimension, 256), 0U);
    EXPECT_EQ(ImageBytes(Mono8, MaxDimension + 1, 1), 0U);
    EXPECT_EQ(ImageBytes(0x010C0006, 8, 8), 0U); // packed
    EXPECT_THROW(CEncoder(MakeDescriptor(EMode::Lossless, 0x010C0006, 8, 8)), std::invalid_argument);
}

} // namespace Velmo::Codec::Test
