// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/fpsstatistic.h"

#include "support/seed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

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

/** The same rates, added up from all samples each time. */
class CAllSamples
{
public:
    void addSample(std::int64_t now, unsigned int bytes) { m_samples.push_back({now, bytes}); }
    void reset() { m_samples.clear(); }
    double fps(std::int64_t now, double& bps) const
    {
        bps = 0.0;
        const std::size_t first = firstOfWindow(now);
        const std::size_t count = m_samples.size() - first;
        if (count < 2 || m_samples.back().ns == m_samples[first].ns)
        {
            return 0.0;
        }
        const auto covered = static_cast<double>(m_samples.back().ns - m_samples[first].ns);
        const double usual = covered / static_cast<double>(count - 1);
        const double silence = static_cast<double>(now - m_samples.back().ns);
        const double seconds = (covered + std::max(0.0, silence - usual)) / static_cast<double>(Second);
        for (std::size_t i = first + 1; i < m_samples.size(); ++i)
        {
            bps += m_samples[i].bytes / seconds;
        }
        bps = std::min(bps, static_cast<double>(std::numeric_limits<unsigned int>::max()));
        return static_cast<double>(count - 1) / seconds;
    }

private:
    struct SSample
    {
        std::int64_t ns;
        unsigned int bytes;
    };
    /** In steps of 20 ms: one second, or back to the third sample's step, or five seconds. */
    std::size_t firstOfWindow(std::int64_t now) const
    {
        constexpr std::int64_t step = Second / 50;
        std::size_t first = m_samples.size();
        std::int64_t reached = -1;
        while (first > 0)
        {
            const std::int64_t index = m_samples[first - 1].ns / step;
            const std::int64_t age = now / step - index;
            const bool isEnough = age >= 50 && m_samples.size() - first >= 3 && index != reached;
            if (age >= 250 || isEnough)
            {
                break;
            }
            reached = index;
            --first;
        }
        return first;
    }

    std::vector<SSample> m_samples;
};

TEST_F(FpsStatisticTest, ratesAreThoseOfAllSamplesOfTheWindow)
{
    const auto seed = static_cast<std::mt19937::result_type>(::Test::randomSeed());
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::int64_t usualIntervals[] = {Second / 5000, Second / 200, Second / 30, Second / 3, Second};
    CAllSamples all;
    std::int64_t interval = usualIntervals[0];
    for (int i = 0; i < 20000; ++i)
    {
        if (random() % 400 == 0)
        {
            interval = usualIntervals[random() % std::size(usualIntervals)];
        }
        pass(1 + static_cast<std::int64_t>(random()) % (2 * interval));
        if (random() % 1000 == 0)
        {
            m_statistic.reset();
            all.reset();
        }
        if (random() % 8 != 0)
        {
            const auto bytes = static_cast<unsigned int>(random() % 1000);
            m_statistic.addSample(bytes);
            all.addSample(m_now, bytes);
        }
        double expectedBps = 0;
        const double expectedFps = all.fps(m_now, expectedBps);
        ASSERT_NEAR(fps(), expectedFps, expectedFps * 1e-9) << "step " << i;
        ASSERT_NEAR(m_bps, expectedBps, 0.51) << "step " << i;
    }
}

TEST(FpsStatistic, theSystemsClockMeasuresImagesAndSilence)
{
    using Clock = std::chrono::steady_clock;
    const auto since = [](Clock::time_point start)
    {
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    FpsStatistic statistic;
    double fps = 0;
    unsigned int bps = 0;
    const auto beforeFirst = Clock::now();
    statistic.addSample(1000);
    const auto afterFirst = Clock::now();
    while (since(afterFirst) < 0.02)
    {
    }
    const double atLeast = since(afterFirst);
    statistic.addSample(1000);
    const auto afterSecond = Clock::now();
    statistic.computeResult(fps, bps);
    const double atMost = since(beforeFirst);
    EXPECT_LE(fps, 1.0 / atLeast);
    EXPECT_GE(fps, 1.0 / atMost);
    while (since(afterSecond) < 2 * atMost + 0.02) // the clock of results may be late by 10 ms
    {
    }
    double fallen = 0;
    statistic.computeResult(fallen, bps);
    EXPECT_GT(fallen, 0.0);
    EXPECT_LT(fallen, fps);
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
