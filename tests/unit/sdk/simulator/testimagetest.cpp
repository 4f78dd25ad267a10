// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/testimage.h"
#include "fakes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using Simulator::Internal::CTestImage;
using Simulator::Internal::SImageKey;
using SimulatorTest::SRig;

namespace
{

SImageKey KeyOf(const char* format, std::uint32_t pattern = 0)
{
    SImageKey key;
    key.pfnc = Simulator::FindPixelFormat(std::string_view(format))->pfnc;
    key.width = 64;
    key.height = 48;
    key.sensorWidth = 64;
    key.pattern = pattern;
    return key;
}

std::uint32_t Sample16(const CTestImage& image, std::size_t index)
{
    const std::uint8_t* frame = image.GetFrame(0, 0);
    return frame[2 * index] | std::uint32_t{frame[2 * index + 1]} << 8U;
}

} // namespace

TEST(TestImage, sameKeyGivesTheSameBytes)
{
    const CTestImage first(KeyOf("Mono8"));
    const CTestImage second(KeyOf("Mono8"));
    EXPECT_TRUE(std::equal(first.GetFrame(3, 8), first.GetFrame(3, 8) + first.GetFrameBytes(), second.GetFrame(3, 8)));
}

TEST(TestImage, sceneIsADiagonalRamp)
{
    const CTestImage image(KeyOf("Mono8"));
    const std::uint8_t* frame = image.GetFrame(0, 0);
    EXPECT_EQ(frame[0], 0);
    EXPECT_EQ(frame[1], 1);
    EXPECT_EQ(frame[64], 1);
    EXPECT_EQ(frame[64 * 47 + 63], 47 + 63);
}

TEST(TestImage, sceneMovesFromFrameToFrame)
{
    const CTestImage image(KeyOf("Mono8"));
    EXPECT_EQ(image.GetFrame(1, 0)[0], 2);
    EXPECT_EQ(image.GetFrame(2, 0)[0], 4);
}

TEST(TestImage, sceneRepeatsWithoutReadingPastItsEnd)
{
    const CTestImage image(KeyOf("Mono8"));
    for (std::uint64_t frame = 0; frame < 2 * CTestImage::LinePeriod; ++frame)
    {
        const std::uint8_t* data = image.GetFrame(frame, 254);
        ASSERT_EQ(data[image.GetFrameBytes() - 1], (frame * 2 + 254 + 47 + 63) % 256) << frame;
    }
}

TEST(TestImage, phaseShiftsTheScene)
{
    const CTestImage image(KeyOf("Mono8"));
    EXPECT_EQ(image.GetFrame(0, 100)[0], 100);
}

class DeepFormats : public testing::TestWithParam<const char*>
{
};

TEST_P(DeepFormats, useTheirLowBitsAndNoneAbove)
{
    const std::uint32_t bits = Simulator::FindPixelFormat(std::string_view(GetParam()))->significant;
    const CTestImage image(KeyOf(GetParam()));
    std::set<std::uint32_t> low;
    std::uint32_t all = 0;
    for (std::size_t i = 0; i < 64 * 48; ++i)
    {
        low.insert(Sample16(image, i) & ((1U << (bits - 8)) - 1U));
        all |= Sample16(image, i);
    }
    EXPECT_GE(low.size(), std::min<std::size_t>(1U << (bits - 8), 64)) << "values that 8 bits cannot hold";
    EXPECT_LT(all, 1U << bits);
}

INSTANTIATE_TEST_SUITE_P(All, DeepFormats, testing::Values("Mono10", "Mono12", "Mono16", "BayerRG12"),
                         [](const auto& test) { return std::string(test.param); });

TEST(TestImage, whiteIsFullScaleInTwelveBits)
{
    const CTestImage image(KeyOf("Mono12", 2));
    EXPECT_EQ(Sample16(image, 0), 4095U);
    EXPECT_EQ(Sample16(image, 64 * 48 - 1), 4095U);
}

TEST(TestImage, bayerTilesAreRedGreenGreenBlue)
{
    const CTestImage image(KeyOf("BayerRG8", 9)); // colour bars: the second is yellow
    const std::uint8_t* frame = image.GetFrame(0, 0);
    const std::size_t yellow = 8;
    EXPECT_EQ(frame[yellow], 255);        // red
    EXPECT_EQ(frame[yellow + 1], 255);    // green
    EXPECT_EQ(frame[64 + yellow], 255);   // green
    EXPECT_EQ(frame[64 + yellow + 1], 0); // blue
}

TEST(TestImage, rgbHasThreeComponents)
{
    const CTestImage image(KeyOf("RGB8"));
    const std::uint8_t* frame = image.GetFrame(0, 0);
    EXPECT_EQ(image.GetFrameBytes(), 64U * 48U * 3U);
    EXPECT_EQ(frame[0], 0);
    EXPECT_EQ(frame[1], 85);
    EXPECT_EQ(frame[2], 170);
}

TEST(TestImage, reversedLineRunsBackwards)
{
    SImageKey key = KeyOf("Mono8", 3);
    key.isReversedX = true;
    const CTestImage image(key);
    EXPECT_EQ(image.GetFrame(0, 0)[0], 252);
    EXPECT_EQ(image.GetFrame(0, 0)[63], 0);
}

TEST(TestImage, offsetShowsThatPartOfTheSensor)
{
    SImageKey key = KeyOf("Mono8");
    key.width = 32;
    key.offsetX = 20;
    key.offsetY = 10;
    const CTestImage image(key);
    EXPECT_EQ(image.GetFrame(0, 0)[0], 30);
}

TEST(TestImage, gainBrightensAndClips)
{
    SRig rig;
    rig.camera.SetFeature("Gain", "24");
    rig.Start();
    rig.RunFrames(1);
    const auto& bytes = rig.sink.seen[0].bytes;
    EXPECT_GT(std::count(bytes.begin(), bytes.end(), 255), static_cast<std::ptrdiff_t>(bytes.size() / 2));
}

TEST(TestImage, shorterExposureDarkensWhileAcquiring)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(1);
    rig.camera.SetFeature("ExposureTime", "50");
    rig.RunFrames(1);
    const auto& bytes = rig.sink.seen[1].bytes;
    EXPECT_LT(*std::max_element(bytes.begin(), bytes.end()), 5);
}

TEST(TestImage, automaticExposureUndoesTheGain)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(1);
    rig.camera.SetFeature("Gain", "20");
    rig.camera.SetFeature("ExposureAuto", "Once");
    rig.RunFrames(1);
    EXPECT_EQ(rig.camera.GetFeature("ExposureTime"), "500.000000"); // a tenth
    EXPECT_EQ(rig.camera.GetFeature("ExposureAuto"), "Off");
}

TEST(TestImage, blackLevelLiftsBlack)
{
    SImageKey key = KeyOf("Mono8");
    key.blackLevel = 0.2;
    const CTestImage image(key);
    EXPECT_EQ(image.GetFrame(0, 0)[0], 51);
    EXPECT_EQ(image.GetFrame(0, 0)[10], 61);
}
