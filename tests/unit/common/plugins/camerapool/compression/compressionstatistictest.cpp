// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/compressionfixture.h"

#include "support/seed.h"

#include <random>

namespace
{

/** What the pool tells of the images that its camera sends. */
class CompressionStatistic : public ::Test::CompressionFixture
{
protected:
    CompressionStatistic()
    {
        QObject::connect(m_pool.get(), &CCameraPool::cameraStatisticUpdated, m_pool.get(),
                         [this](const CameraInfoPtr&, int, int, double, uint64_t,
                                const CCompressionStatistic& statistic) { m_latest = statistic; });
        QObject::connect(m_pool.get(), &CCameraPool::cameraImageGrabbed, m_pool.get(),
                         [this] { m_withImages.append(m_latest); });
    }

    void start()
    {
        m_pool->startGrabbing(m_info);
        ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1)) << m_info->errorString().toStdString();
    }
    /** What was told last when that image arrived: its statistic, or what a stalled stream repeats of it. */
    CCompressionStatistic after(const ::Test::SScriptedImage& image)
    {
        const int before = m_withImages.size();
        EXPECT_TRUE(m_transport->DeliverImage(s_serial, image));
        if (!::Test::waitUntil([&] { return m_withImages.size() > before; }, s_patienceMs))
        {
            ADD_FAILURE() << "no image came";
            return {};
        }
        return m_withImages.last();
    }
    /** Payload in percent of what it is with the decoded picture in place of the compressed one. */
    static double ratioOf(const ::Test::SScriptedImage& image)
    {
        Velmo::SCompressionInfo info;
        EXPECT_TRUE(Velmo::CImageDecompressor::GetCompressionInfo(info, image.data.data(), image.data.size()));
        return static_cast<double>(image.data.size()) / static_cast<double>(info.decompressedPayloadBytes) * 100.0;
    }
    static Bytes noise()
    {
        std::mt19937 random(::Test::randomSeed());
        Bytes pixels(std::size_t{64} * 48);
        for (auto& pixel : pixels)
        {
            pixel = static_cast<std::uint8_t>(random());
        }
        return pixels;
    }
    static ::Test::SScriptedImage lossy()
    {
        constexpr double ratioPercent = 75.0; // less than noise takes when it is exact
        return compressed(Velmo::Codec::MakeDescriptor(EMode::FixedRatio, 0x01080001, 64, 48, ratioPercent), noise());
    }

    static constexpr int s_patienceMs = 60000;
    CCompressionStatistic m_latest;
    QVector<CCompressionStatistic> m_withImages;
};

TEST_F(CompressionStatistic, comesWithEachImageAndTellsItsRatio)
{
    start();
    const auto exact = compressed(64, 48);
    const double exactRatio = ratioOf(exact);
    const auto first = after(exact);
    EXPECT_TRUE(first.compressionEnabled);
    EXPECT_DOUBLE_EQ(first.compressionRatio, exactRatio);
    EXPECT_DOUBLE_EQ(first.minCompressionRatio, exactRatio);
    EXPECT_DOUBLE_EQ(first.maxCompressionRatio, exactRatio);
    EXPECT_EQ(first.losslessCount, 1U);
    EXPECT_EQ(first.lossyCount, 0U);

    const auto inexact = lossy();
    const double inexactRatio = ratioOf(inexact);
    ASSERT_GT(inexactRatio, exactRatio);
    const auto second = after(inexact);
    EXPECT_DOUBLE_EQ(second.compressionRatio, inexactRatio);
    EXPECT_DOUBLE_EQ(second.minCompressionRatio, exactRatio);
    EXPECT_DOUBLE_EQ(second.maxCompressionRatio, inexactRatio);
    EXPECT_EQ(second.losslessCount, 1U);
    EXPECT_EQ(second.lossyCount, 1U);
    EXPECT_EQ(second.failedCount, 0U);
}

TEST_F(CompressionStatistic, countsWhatCannotBeDecodedAsFailedAndLeavesTheRatios)
{
    start();
    const auto good = after(compressed(64, 48));
    auto broken = compressed(64, 48);
    broken.data[8] ^= 0xff; // in the head, behind the number that tells what it is
    const auto bad = after(broken);
    EXPECT_TRUE(bad.compressionEnabled);
    EXPECT_EQ(bad.failedCount, 1U);
    EXPECT_EQ(bad.losslessCount, 1U);
    EXPECT_DOUBLE_EQ(bad.compressionRatio, good.compressionRatio);
    EXPECT_DOUBLE_EQ(bad.minCompressionRatio, good.minCompressionRatio);
    EXPECT_DOUBLE_EQ(bad.maxCompressionRatio, good.maxCompressionRatio);
}

TEST_F(CompressionStatistic, saysThatCompressionIsOffForAnImageThatIsNotCompressed)
{
    start();
    EXPECT_TRUE(after(compressed(64, 48)).compressionEnabled);
    const auto plain = after(::Test::SScriptedImage());
    EXPECT_FALSE(plain.compressionEnabled);
    EXPECT_EQ(plain.losslessCount, 1U);
    EXPECT_EQ(plain.failedCount, 0U);
}

TEST_F(CompressionStatistic, beginsAnewWithEachGrab)
{
    start();
    EXPECT_EQ(after(compressed(64, 48)).losslessCount, 1U);
    m_pool->stopGrabbing(m_info);
    start();
    const auto fresh = after(::Test::SScriptedImage());
    EXPECT_FALSE(fresh.compressionEnabled);
    EXPECT_EQ(fresh.losslessCount, 0U);
    EXPECT_EQ(fresh.compressionRatio, 0.0);
    EXPECT_EQ(fresh.minCompressionRatio, 100.0);
    EXPECT_EQ(fresh.maxCompressionRatio, 0.0);
}

} // namespace
