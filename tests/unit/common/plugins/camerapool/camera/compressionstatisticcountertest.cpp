// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/compressionstatisticcounter.h"
#include "velmo/imagedecompressor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

using Plugin::CameraPool::Internal::CCompressionStatisticCounter;

namespace
{

Velmo::SCompressionInfo compressed(std::size_t decompressedPayloadBytes, bool lossy = false)
{
    Velmo::SCompressionInfo info;
    info.hasCompressedImage = true;
    info.lossy = lossy;
    info.decompressedPayloadBytes = decompressedPayloadBytes;
    return info;
}

void expectStartValues(const CCompressionStatistic& s)
{
    EXPECT_FALSE(s.compressionEnabled);
    EXPECT_EQ(s.compressionRatio, 0.0);
    EXPECT_EQ(s.minCompressionRatio, 100.0);
    EXPECT_EQ(s.maxCompressionRatio, 0.0);
    EXPECT_EQ(s.losslessCount, 0U);
    EXPECT_EQ(s.lossyCount, 0U);
    EXPECT_EQ(s.failedCount, 0U);
}

} // namespace

TEST(CompressionStatisticCounter, aNewCounterHasTheValuesOfAGrabStart)
{
    const CCompressionStatisticCounter counter;
    expectStartValues(counter.snapshot());
}

TEST(CompressionStatisticCounter, aResetPutsTheValuesOfAGrabStartBack)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(1000), 400);
    counter.countCompressed(compressed(1000, true), 500);
    Velmo::SCompressionInfo bad = compressed(1000);
    bad.compressionStatus = Velmo::CompressionStatus_Corrupt;
    counter.countCompressed(bad, 400);
    counter.reset();
    expectStartValues(counter.statistic());
    expectStartValues(counter.snapshot());
}

TEST(CompressionStatisticCounter, theFirstCompressedImageSetsMinimumAndMaximum)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(1000), 400);
    const CCompressionStatistic& s = counter.statistic();
    EXPECT_TRUE(s.compressionEnabled);
    EXPECT_DOUBLE_EQ(s.compressionRatio, 40.0);
    EXPECT_DOUBLE_EQ(s.minCompressionRatio, 40.0);
    EXPECT_DOUBLE_EQ(s.maxCompressionRatio, 40.0);
    EXPECT_EQ(s.losslessCount, 1U);
}

TEST(CompressionStatisticCounter, aRatioOfMoreThanAHundredLeavesTheMinimum)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(1000), 1100);
    EXPECT_DOUBLE_EQ(counter.statistic().minCompressionRatio, 100.0);
    EXPECT_DOUBLE_EQ(counter.statistic().maxCompressionRatio, 110.0);
}

TEST(CompressionStatisticCounter, extremesAreKeptWhileTheRatioFollowsTheLatestImage)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(1000), 500);
    counter.countCompressed(compressed(1000), 200);
    counter.countCompressed(compressed(1000), 300);
    EXPECT_DOUBLE_EQ(counter.statistic().compressionRatio, 30.0);
    EXPECT_DOUBLE_EQ(counter.statistic().minCompressionRatio, 20.0);
    EXPECT_DOUBLE_EQ(counter.statistic().maxCompressionRatio, 50.0);
}

TEST(CompressionStatisticCounter, lossyAndLosslessImagesAreCountedApart)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(1000, true), 500);
    counter.countCompressed(compressed(1000, true), 500);
    counter.countCompressed(compressed(1000, false), 500);
    EXPECT_EQ(counter.statistic().lossyCount, 2U);
    EXPECT_EQ(counter.statistic().losslessCount, 1U);
}

TEST(CompressionStatisticCounter, aBadStatusCountsAsFailedAndLeavesTheRatios)
{
    CCompressionStatisticCounter counter;
    Velmo::SCompressionInfo info = compressed(1000);
    info.compressionStatus = Velmo::CompressionStatus_Error;
    counter.countCompressed(info, 400);
    EXPECT_TRUE(counter.statistic().compressionEnabled);
    EXPECT_EQ(counter.statistic().failedCount, 1U);
    EXPECT_EQ(counter.statistic().losslessCount, 0U);
    EXPECT_EQ(counter.statistic().minCompressionRatio, 100.0);
}

TEST(CompressionStatisticCounter, aResultWithoutACompressedImageOnlyEnables)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(Velmo::SCompressionInfo(), 400);
    EXPECT_TRUE(counter.statistic().compressionEnabled);
    EXPECT_EQ(counter.statistic().losslessCount + counter.statistic().lossyCount + counter.statistic().failedCount, 0U);
    EXPECT_EQ(counter.statistic().compressionRatio, 0.0);
}

TEST(CompressionStatisticCounter, anUncompressedResultDisablesAndKeepsTheCounts)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(1000), 400);
    counter.countUncompressed();
    EXPECT_FALSE(counter.snapshot().compressionEnabled);
    EXPECT_EQ(counter.snapshot().losslessCount, 1U);
    EXPECT_DOUBLE_EQ(counter.snapshot().compressionRatio, 40.0);
}

TEST(CompressionStatisticCounter, aPayloadBeyondThirtyTwoBitsKeepsItsRatio)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(20'000'000'000U), 5'000'000'000U);
    EXPECT_DOUBLE_EQ(counter.statistic().compressionRatio, 25.0);
}

TEST(CompressionStatisticCounter, aDecompressedSizeOfZeroGivesNoFiniteRatioAndNoCrash)
{
    CCompressionStatisticCounter counter;
    counter.countCompressed(compressed(0), 400);
    EXPECT_TRUE(std::isinf(counter.statistic().compressionRatio));
    EXPECT_EQ(counter.statistic().minCompressionRatio, 100.0);
}

TEST(CompressionStatisticCounter, aSnapshotOfAnotherThreadIsNeverTorn)
{
    CCompressionStatisticCounter counter;
    constexpr std::uint32_t images = 20000;
    std::thread writer(
        [&counter]
        {
            for (std::uint32_t i = 1; i <= images; ++i)
            {
                counter.countCompressed(compressed(100, i % 2 == 0), i % 100 + 1);
            }
        });
    std::uint32_t seen = 0;
    while (seen < images)
    {
        const CCompressionStatistic s = counter.snapshot();
        const std::uint32_t counted = s.losslessCount + s.lossyCount;
        // One image adds to one of the counts and sets the ratio that belongs to its number.
        EXPECT_GE(counted, seen);
        EXPECT_TRUE(s.losslessCount == s.lossyCount || s.losslessCount == s.lossyCount + 1);
        if (counted > 0)
        {
            EXPECT_DOUBLE_EQ(s.compressionRatio, static_cast<double>(counted % 100 + 1));
        }
        seen = counted;
    }
    writer.join();
}
