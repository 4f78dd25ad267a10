// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codecimages.h"

#include <gtest/gtest.h>

#include <thread>

namespace Velmo::Codec::Test
{

namespace
{

void ExpectLossless(std::uint32_t pixelType, std::uint32_t width, std::uint32_t height, const Bytes& image)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::Lossless, pixelType, width, height);
    const Bytes frame = EncodeOnce(descriptor, image);
    EXPECT_LE(frame.size(), MaxFrameBytes(descriptor));
    Bytes decoded(image.size(), 0xAA);
    ASSERT_EQ(Decode(descriptor, frame, decoded), EResult::Ok) << std::hex << pixelType;
    EXPECT_TRUE(decoded == image) << std::hex << pixelType << ' ' << std::dec << width << 'x' << height;
}

int LargestDifference(std::uint32_t pixelType, const Bytes& a, const Bytes& b)
{
    const SPixelLayout& layout = *FindPixelLayout(pixelType);
    int largest = 0;
    for (std::size_t i = 0; i < a.size() / layout.wordBytes; ++i)
    {
        largest = std::max(
            largest, std::abs(static_cast<int>(SampleAt(layout, a, i)) - static_cast<int>(SampleAt(layout, b, i))));
    }
    return largest;
}

} // namespace

class CodecFormats : public ::testing::TestWithParam<std::uint32_t>
{
};

INSTANTIATE_TEST_SUITE_P(All, CodecFormats,
                         ::testing::Values(Mono8, Mono10, Mono12, Mono16, BayerRG8, BayerRG12, RGB8, RGB16));

TEST_P(CodecFormats, scenesOfEverySizeComeBackExactly)
{
    for (const auto& [width, height] :
         {std::pair(1U, 1U), {1U, 37U}, {37U, 1U}, {3U, 3U}, {17U, 5U}, {641U, 479U}, {65535U, 3U}, {700U, 500U}})
    {
        ExpectLossless(GetParam(), width, height, MakeScene(GetParam(), width, height, 0.01));
    }
}

TEST_P(CodecFormats, noiseIsStoredAsItIsAndComesBackExactly)
{
    const Bytes noise = MakeRandom(ImageBytes(GetParam(), 641, 311));
    ExpectLossless(GetParam(), 641, 311, noise);
    const SDescriptor descriptor = MakeDescriptor(EMode::Lossless, GetParam(), 641, 311);
    EXPECT_EQ(EncodeOnce(descriptor, noise).size(), MaxFrameBytes(descriptor));
}

TEST_P(CodecFormats, aSceneIsMadeSmaller)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::Lossless, GetParam(), 512, 512);
    const Bytes image = MakeScene(GetParam(), 512, 512, 0.005);
    EXPECT_LT(EncodeOnce(descriptor, image).size(), image.size() * 85 / 100);
}

TEST_P(CodecFormats, fixedRatioKeepsRatioAndBound)
{
    constexpr std::uint32_t Width = 401;
    constexpr std::uint32_t Height = 300;
    for (const double percent : {60.0, 45.0, 33.3})
    {
        const SDescriptor descriptor = MakeDescriptor(EMode::FixedRatio, GetParam(), Width, Height, percent);
        CEncoder encoder(descriptor);
        for (unsigned int seed = 1; seed <= 4; ++seed)
        {
            const Bytes image = MakeScene(GetParam(), Width, Height, 0.01 * seed, seed);
            const SEncodedFrame frame = encoder.Encode(image.data());
            ASSERT_FALSE(frame.isOverflow) << percent << " per cent, seed " << seed;
            EXPECT_LE(static_cast<double>(frame.bytes), static_cast<double>(image.size()) * percent / 100.0);
            SFrameHeader header;
            ASSERT_EQ(ParseFrameHeader(frame.pData, frame.bytes, header), EResult::Ok);
            EXPECT_EQ(header.maxError, frame.maxError);
            EXPECT_LE(header.maxError, CEncoder::LargestError(GetParam()));
            Bytes decoded(image.size());
            ASSERT_EQ(Decode(descriptor, {frame.pData, frame.pData + frame.bytes}, decoded), EResult::Ok);
            EXPECT_LE(LargestDifference(GetParam(), image, decoded), static_cast<int>(header.maxError));
        }
    }
}

TEST(Codec, fixedRatioTakesTheSmallestErrorThatDoes)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::FixedRatio, Mono8, 512, 512, 50.0);
    const Bytes image = MakeScene(Mono8, 512, 512, 0.02);
    CEncoder encoder(descriptor);
    const SEncodedFrame frame = encoder.Encode(image.data());
    EXPECT_GT(frame.maxError, 0U);
    // Near what is allowed: not simply the largest error.
    EXPECT_GT(static_cast<double>(frame.bytes), static_cast<double>(image.size()) * 0.40);
    EXPECT_LT(frame.maxError, CEncoder::LargestError(Mono8) / 2);
}

TEST(Codec, fixedRatioIsLosslessWhereThatFits)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::FixedRatio, Mono8, 512, 512, 50.0);
    const Bytes flat(512U * 512U, 99);
    CEncoder encoder(descriptor);
    EXPECT_EQ(encoder.Encode(flat.data()).maxError, 0U);
    // Also after an image that needed an error, within a few images.
    const Bytes noisy = MakeScene(Mono8, 512, 512, 0.02);
    EXPECT_GT(encoder.Encode(noisy.data()).maxError, 0U);
    std::uint32_t maxError = 1;
    for (int i = 0; i < 80 && maxError != 0; ++i)
    {
        maxError = encoder.Encode(flat.data()).maxError;
    }
    EXPECT_EQ(maxError, 0U);
}

TEST(Codec, anImageThatCannotBecomeSmallEnoughIsAFrameOfOverflow)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::FixedRatio, Mono8, 256, 256, 10.0);
    CEncoder encoder(descriptor);
    const Bytes noise = MakeRandom(256U * 256U);
    const SEncodedFrame frame = encoder.Encode(noise.data());
    EXPECT_TRUE(frame.isOverflow);
    EXPECT_EQ(frame.bytes, FrameHeaderBytes);
    Bytes decoded(noise.size());
    EXPECT_EQ(Decode(descriptor, {frame.pData, frame.pData + frame.bytes}, decoded), EResult::Overflow);
    // The next image that does fit is coded.
    const Bytes flat(noise.size(), 7);
    const SEncodedFrame good = encoder.Encode(flat.data());
    ASSERT_FALSE(good.isOverflow);
    EXPECT_EQ(Decode(descriptor, {good.pData, good.pData + good.bytes}, decoded), EResult::Ok);
}

TEST(Codec, aRatioBelowTheHeaderIsAFrameOfOverflowWithinThePayload)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::FixedRatio, Mono8, 4, 4, 50.0);
    EXPECT_EQ(MaxFrameBytes(descriptor), FrameHeaderBytes);
    EXPECT_EQ(EncodeOnce(descriptor, Bytes(16, 1)).size(), FrameHeaderBytes);
}

TEST(Codec, everyStripIsDecodedForItselfAndTouchesNoOther)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::Lossless, Mono16, 1001, 999);
    ASSERT_EQ(descriptor.strips, 8U);
    const Bytes image = MakeScene(Mono16, 1001, 999, 0.01);
    const Bytes frame = EncodeOnce(descriptor, image);
    for (std::uint32_t strip = 0; strip < descriptor.strips; ++strip)
    {
        Bytes decoded(image.size(), 0xAA);
        ASSERT_EQ(DecodeFrame(frame.data(), frame.size(), descriptor, HashOf(descriptor),
                              {decoded.data(), decoded.size(), strip, 1}),
                  EResult::Ok);
        const std::size_t begin = FirstLine(strip, 8, 999) * 2002U;
        const std::size_t end = FirstLine(strip + 1, 8, 999) * 2002U;
        for (std::size_t i = 0; i < image.size(); ++i)
        {
            ASSERT_EQ(decoded[i], i >= begin && i < end ? image[i] : 0xAA) << "strip " << strip << ", byte " << i;
        }
    }
}

TEST(Codec, twoThreadsDecodeOneImage)
{
    const SDescriptor descriptor = MakeDescriptor(EMode::FixedRatio, Mono8, 1024, 1024, 50.0);
    const Bytes image = MakeScene(Mono8, 1024, 1024, 0.02);
    const Bytes frame = EncodeOnce(descriptor, image);
    Bytes whole(image.size());
    ASSERT_EQ(Decode(descriptor, frame, whole), EResult::Ok);
    Bytes shared(image.size());
    const auto half = [&](std::uint32_t first, std::uint32_t strips)
    {
        EXPECT_EQ(DecodeFrame(frame.data(), frame.size(), descriptor, HashOf(descriptor),
                              {shared.data(), shared.size(), first, strips}),
                  EResult::Ok);
    };
    std::thread other(half, descriptor.strips / 2, AllStrips);
    half(0, descriptor.strips / 2);
    other.join();
    EXPECT_TRUE(shared == whole);
}

} // namespace Velmo::Codec::Test
