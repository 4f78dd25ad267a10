// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/grabbedimages.h"
#include "unit/common/plugins/camerapool/testing/grabbingfixture.h"

#include <QElapsedTimer>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::CSignalRecord;
using ::Test::SScriptedImage;
using ::Test::waitUntil;

namespace
{

constexpr int s_patienceMs = 60000;

class CameraStatistic : public ::Test::GrabbingFixture
{
};

using Statistics = CSignalRecord<int, int, double, uint64_t, CCompressionStatistic>;

/** The statistic that came with the image of that number; what a stalled stream tells of it comes later. */
std::tuple<int, int, double, uint64_t, CCompressionStatistic> statisticOf(const Statistics& statistics, int imageNumber)
{
    for (int i = 0; i < statistics.count(); ++i)
    {
        if (std::get<0>(statistics.at(i)) == imageNumber)
        {
            return statistics.at(i);
        }
    }
    ADD_FAILURE() << "no statistic of image " << imageNumber;
    return {};
}

SScriptedImage failedImage(const std::string& why)
{
    SScriptedImage image;
    image.status = Velmo::Transport::EResultStatus::Failed;
    image.errorCode = 7;
    image.errorDescription = why;
    return image;
}

TEST_F(CameraStatistic, everyImageComesWithItsNumberAndStatistic)
{
    const auto camera = openCamera();
    const CSignalRecord statistics(camera.data(), &ICamera::cameraStatisticChanged);
    const CSignalRecord images(camera.data(), &ICamera::cameraImageGrabbed);
    camera->startGrabbing();
    ASSERT_TRUE(waitForStart(3));
    EXPECT_EQ(m_transport->DeliverImages(s_serial, 3), 3U);
    ASSERT_TRUE(waitUntil([&] { return images.count() == 3; }));
    for (int i = 0; i < 3; ++i)
    {
        const auto statistic = statisticOf(statistics, i + 1);
        EXPECT_EQ(std::get<1>(statistic), 0);
        EXPECT_FALSE(std::get<4>(statistic).compressionEnabled);
        EXPECT_EQ(std::get<4>(statistic).minCompressionRatio, 100.0);
        EXPECT_TRUE(std::get<0>(images.at(i))->GrabSucceeded());
    }
}

TEST_F(CameraStatistic, aFailedResultIsCountedAndStillHandedOn)
{
    const auto camera = openCamera();
    const CSignalRecord statistics(camera.data(), &ICamera::cameraStatisticChanged);
    const CSignalRecord images(camera.data(), &ICamera::cameraImageGrabbed);
    camera->startGrabbing();
    ASSERT_TRUE(waitForStart(2));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial, failedImage("packets missing")));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(waitUntil([&] { return images.count() == 2; }));
    EXPECT_FALSE(std::get<0>(images.at(0))->GrabSucceeded());
    EXPECT_EQ(std::get<1>(statisticOf(statistics, 1)), 1);
    EXPECT_EQ(std::get<1>(statisticOf(statistics, 2)), 1);
}

TEST_F(CameraStatistic, aNewGrabCountsFromTheBeginning)
{
    const auto camera = openCamera();
    const CSignalRecord statistics(camera.data(), &ICamera::cameraStatisticChanged);
    const CSignalRecord images(camera.data(), &ICamera::cameraImageGrabbed);
    camera->startGrabbing();
    ASSERT_TRUE(waitForStart());
    ASSERT_TRUE(m_transport->DeliverImage(s_serial, failedImage("packets missing")));
    ASSERT_TRUE(waitUntil([&] { return images.count() == 1; }));
    EXPECT_EQ(std::get<1>(statistics.last()), 1);
    camera->stopGrabbing();
    camera->startGrabbing();
    ASSERT_TRUE(waitForStart());
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(waitUntil([&] { return images.count() == 2; }));
    EXPECT_EQ(std::get<0>(statistics.last()), 1);
    EXPECT_EQ(std::get<1>(statistics.last()), 0);
}

TEST_F(CameraStatistic, aStalledStreamTellsItsLastNumberEveryHalfSecond)
{
    const auto camera = openCamera();
    const CSignalRecord statistics(camera.data(), &ICamera::cameraStatisticChanged);
    camera->startGrabbing();
    ASSERT_TRUE(waitForStart());
    QElapsedTimer clock;
    clock.start(); // before the image, so that a busy processor can only make the time longer
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(waitUntil([&] { return statistics.count() >= 3; }, s_patienceMs));
    EXPECT_GE(clock.elapsed(), 900);
    EXPECT_EQ(std::get<0>(statistics.at(1)), 1);
    EXPECT_EQ(std::get<0>(statistics.at(2)), 1);
}

TEST_F(CameraStatistic, theStalledStatisticsEndWithTheGrab)
{
    const auto camera = openCamera();
    const CSignalRecord statistics(camera.data(), &ICamera::cameraStatisticChanged);
    camera->startGrabbing();
    ASSERT_TRUE(waitForStart());
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(waitUntil([&] { return statistics.count() >= 1; }, s_patienceMs));
    camera->stopGrabbing();
    const int toldBefore = statistics.count();
    ASSERT_TRUE(waitUntil([&] { return statistics.count() > toldBefore; }, s_patienceMs));
    EXPECT_FALSE(waitUntil([&] { return statistics.count() > toldBefore + 1; }, 700));
}

TEST_F(CameraStatistic, imageNumbersThatNoIntHoldsAreCutOff)
{
    const auto camera = makeCamera();
    const CSignalRecord statistics(camera.data(), &ICamera::cameraStatisticChanged);
    const CSignalRecord timeouts(camera.data(), &CCamera::invokeTimeout);
    ::Test::CGrabCalls calls(*camera);
    calls.grabStart();
    calls.imageGrabbed(::Test::CImage::make(0x100000005, 1000));
    EXPECT_EQ(std::get<0>(timeouts.at(0)), 0x100000005);
    ASSERT_TRUE(waitUntil([&] { return statistics.count() == 2; }, s_patienceMs));
    EXPECT_EQ(std::get<0>(statistics.at(0)), 5) << "with the image";
    EXPECT_EQ(std::get<0>(statistics.at(1)), 5) << "half a second after it";
}

TEST_F(CameraStatistic, aStartWithoutAnyImageTellsNoStatistic)
{
    const auto camera = openCamera();
    const CSignalRecord statistics(camera.data(), &ICamera::cameraStatisticChanged);
    camera->startGrabbing();
    EXPECT_FALSE(waitUntil([&] { return statistics.count() > 0; }, 700));
}

} // namespace
