// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/fpsstatistic.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <memory>
#include <thread>

namespace
{

constexpr std::int64_t Second = 1'000'000'000;

/** A statistic on a clock that the test moves. */
class FpsStatisticTest : public ::testing::Test
{
protected:
    void pass(std::int64_t nanoseconds) { m_now += nanoseconds; }
    void addStream(double fps, double seconds, unsigned int bytes)
    {
        const auto count = static_cast<std::int64_t>(fps * seconds);
        for (std::int64_t i = 0; i < count; ++i)
        {
            pass(static_cast<std::int64_t>(static_cast<double>(Second) / fps));
            m_statistic.addSample(bytes);
        }
    }
    double fps()
    {
        m_statistic.computeResult(m_fps, m_bps);
        return m_fps;
    }
    unsigned int bps()
    {
        m_statistic.computeResult(m_fps, m_bps);
        return m_bps;
    }

    std::int64_t m_now = 1000 * Second;
    FpsStatistic m_statistic{[this]
                             {
                                 return m_now;
                             }};
    double m_fps = -1;
    unsigned int m_bps = 1;
};

class FpsStatisticAtRate : public FpsStatisticTest, public ::testing::WithParamInterface<double>
{
};

TEST_P(FpsStatisticAtRate, aSteadyStreamHasItsRates)
{
    addStream(GetParam(), 6.0, 1000);
    EXPECT_NEAR(fps(), GetParam(), GetParam() * 0.001);
    EXPECT_NEAR(bps(), GetParam() * 1000, GetParam() * 1.0 + 1);
}

INSTANTIATE_TEST_SUITE_P(Rates, FpsStatisticAtRate, ::testing::Values(0.5, 1.0, 2.0, 3.0, 25.0, 60.0, 333.0, 5000.0));

TEST_F(FpsStatisticTest, withoutSamplesBothAreZero)
{
    EXPECT_EQ(fps(), 0.0);
    EXPECT_EQ(bps(), 0U);
}

TEST_F(FpsStatisticTest, oneSampleIsNoRate)
{
    m_statistic.addSample(1000);
    pass(Second / 10);
    EXPECT_EQ(fps(), 0.0);
    EXPECT_EQ(bps(), 0U);
}

TEST_F(FpsStatisticTest, twoSamplesAtTheSameInstantAreNoRate)
{
    m_statistic.addSample(1000);
    m_statistic.addSample(1000);
    EXPECT_EQ(fps(), 0.0);
}

TEST_F(FpsStatisticTest, aChangeOfRateShowsAfterASecond)
{
    addStream(100.0, 3.0, 10);
    addStream(10.0, 1.2, 10);
    EXPECT_NEAR(fps(), 10.0, 0.1);
}

TEST_F(FpsStatisticTest, aStalledStreamFallsInStepsToZero)
{
    addStream(30.0, 3.0, 10);
    double last = fps();
    for (int i = 0; i < 10; ++i)
    {
        pass(Second / 2);
        m_statistic.addNoSample();
        const double now = fps();
        EXPECT_TRUE(now < last || now == 0.0) << "step " << i << ": " << now << " after " << last;
        last = now;
    }
    EXPECT_EQ(last, 0.0);
    EXPECT_EQ(bps(), 0U);
}

TEST_F(FpsStatisticTest, aSlowStreamDoesNotFallBetweenItsImages)
{
    addStream(1.0, 5.0, 10);
    pass(Second / 2);
    m_statistic.addNoSample();
    EXPECT_NEAR(fps(), 1.0, 0.001);
}

TEST_F(FpsStatisticTest, aStreamThatComesBackAfterAPauseHasItsRateAgain)
{
    addStream(30.0, 2.0, 10);
    pass(100 * Second);
    addStream(50.0, 2.0, 10);
    EXPECT_NEAR(fps(), 50.0, 0.1);
}

TEST_F(FpsStatisticTest, resetForgetsAllSamples)
{
    addStream(30.0, 2.0, 10);
    m_statistic.reset();
    EXPECT_EQ(fps(), 0.0);
    m_statistic.addSample(10);
    EXPECT_EQ(fps(), 0.0) << "a sample from before the reset was counted";
}

TEST_F(FpsStatisticTest, byteRateSaturates)
{
    addStream(1000.0, 2.0, 1U << 31);
    EXPECT_EQ(bps(), std::numeric_limits<unsigned int>::max());
}

TEST_F(FpsStatisticTest, aClockThatStepsBackDoesNotMakeTheRateNegative)
{
    addStream(10.0, 2.0, 10);
    m_now -= Second;
    m_statistic.addSample(10);
    EXPECT_GE(fps(), 0.0);
}

TEST(FpsStatisticThreads, samplesResultsAndResetsOverlap)
{
    FpsStatistic statistic;
    std::atomic<bool> stop{false};
    std::atomic<std::uint64_t> added{0};
    std::thread producer(
        [&]
        {
            while (!stop)
            {
                statistic.addSample(100);
                ++added;
            }
        });
    std::thread resetter(
        [&]
        {
            while (!stop)
            {
                statistic.reset();
                std::this_thread::yield();
            }
        });
    for (int i = 0; i < 2000 || added < 2000; ++i)
    {
        double fps = -1;
        unsigned int bps = 0;
        statistic.addNoSample();
        statistic.computeResult(fps, bps);
        EXPECT_GE(fps, 0.0);
        EXPECT_LT(fps, 1e9);
    }
    stop = true;
    producer.join();
    resetter.join();
}

} // namespace
