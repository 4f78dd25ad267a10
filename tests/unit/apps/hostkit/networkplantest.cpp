// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "hostkit/networkplan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

namespace
{

using HostKit::neededBitsPerSecond;
using HostKit::planNetwork;
using HostKit::SNetworkPlan;
using HostKit::SPlanCamera;

constexpr double gigabit = 1e9;

SPlanCamera camera(std::int64_t payloadBytes, double framesPerSecond, std::int64_t packetBytes = 1500)
{
    SPlanCamera result;
    result.payloadBytes = payloadBytes;
    result.framesPerSecond = framesPerSecond;
    result.packetBytes = packetBytes;
    result.linkBitsPerSecond = gigabit;
    return result;
}

/** Seconds that an image takes on the way with the planned pause after each packet. */
double imageSeconds(const SPlanCamera& camera, double delaySeconds)
{
    const double packets =
        std::ceil(static_cast<double>(camera.payloadBytes) / static_cast<double>(camera.packetBytes - 36));
    return packets * (delaySeconds + 8.0 * static_cast<double>(camera.packetBytes + 38) / camera.linkBitsPerSecond);
}

TEST(NetworkPlan, needIsWhatIsOnTheWire)
{
    // Ten packets with 1464 bytes of data each, a leader of 72 bytes and a trailer of 44, which is padded to 46.
    const double bits = 8.0 * (10 * 1538 + (72 + 38) + 84);
    EXPECT_DOUBLE_EQ(neededBitsPerSecond(camera(14640, 1.0)), bits);
    EXPECT_DOUBLE_EQ(neededBitsPerSecond(camera(14640, 25.0)), 25.0 * bits);
    EXPECT_DOUBLE_EQ(neededBitsPerSecond(camera(14641, 1.0)), bits + 8.0 * 84) << "a packet more, as small as can be";
}

TEST(NetworkPlan, largerPacketsNeedLess)
{
    EXPECT_LT(neededBitsPerSecond(camera(1'000'000, 30.0, 9000)), neededBitsPerSecond(camera(1'000'000, 30.0)));
}

TEST(NetworkPlan, oneCameraNeedsNoPause)
{
    const SNetworkPlan plan = planNetwork(gigabit, 0.1, {camera(1'000'000, 30.0)});
    ASSERT_EQ(plan.cameras.size(), 1U);
    EXPECT_TRUE(plan.isFitting);
    EXPECT_EQ(plan.cameras.front().delayTicks, 0);
    EXPECT_NEAR(plan.cameras.front().shareOfLink, 0.252, 0.002);
}

TEST(NetworkPlan, camerasWhoseLinksTogetherAreNoFasterNeedNoPause)
{
    const SNetworkPlan plan = planNetwork(10 * gigabit, 0.1, std::vector<SPlanCamera>(10, camera(1'000'000, 100.0)));
    EXPECT_TRUE(plan.isFitting);
    for (const auto& planned : plan.cameras)
    {
        EXPECT_EQ(planned.delayTicks, 0);
    }
}

TEST(NetworkPlan, fourCamerasTogetherStayBelowTheLinkAndReachTheirRates)
{
    const std::vector<SPlanCamera> cameras{camera(1'310'720, 20.0, 9000), camera(1'310'720, 10.0, 9000),
                                           camera(300'000, 60.0, 1500), camera(2'000'000, 5.0, 8000)};
    const SNetworkPlan plan = planNetwork(gigabit, 0.1, cameras);
    ASSERT_TRUE(plan.isFitting);
    double peak = 0.0;
    for (std::size_t i = 0; i < cameras.size(); ++i)
    {
        const auto& planned = plan.cameras[i];
        EXPECT_GT(planned.delayTicks, 0);
        EXPECT_TRUE(planned.isFitting);
        EXPECT_LE(imageSeconds(cameras[i], planned.delaySeconds), 1.0 / cameras[i].framesPerSecond) << i;
        const double packetBits = 8.0 * static_cast<double>(cameras[i].packetBytes + 38);
        peak += packetBits / (packetBits / gigabit + planned.delaySeconds);
    }
    EXPECT_LE(peak, plan.usableBitsPerSecond * 1.001) << "while all send at the same time";
    EXPECT_GT(peak, plan.usableBitsPerSecond * 0.99) << "and the link is used";
}

TEST(NetworkPlan, pauseIsCountedInTheTicksOfEachClock)
{
    SPlanCamera slow = camera(1'000'000, 30.0);
    slow.ticksPerSecond = 1'000'000;
    const SNetworkPlan plan = planNetwork(gigabit, 0.1, {camera(1'000'000, 30.0), slow});
    EXPECT_NEAR(plan.cameras[0].delaySeconds, plan.cameras[1].delaySeconds, 1e-6);
    EXPECT_EQ(plan.cameras[1].delayTicks, plan.cameras[0].delayTicks / 1000);
}

TEST(NetworkPlan, tooManyCamerasGetARateAtWhichTheyFit)
{
    std::vector<SPlanCamera> cameras(4, camera(1'310'720, 30.0, 9000));
    const SNetworkPlan plan = planNetwork(gigabit, 0.1, cameras);
    EXPECT_FALSE(plan.isFitting);
    EXPECT_FALSE(plan.cameras.front().isFitting);
    EXPECT_GT(plan.neededBitsPerSecond, plan.usableBitsPerSecond);
    EXPECT_LT(plan.cameras.front().mostFramesPerSecond, 30.0);
    for (std::size_t i = 0; i < cameras.size(); ++i)
    {
        cameras[i].framesPerSecond = plan.cameras[i].mostFramesPerSecond;
    }
    const SNetworkPlan lowered = planNetwork(gigabit, 0.1, cameras);
    EXPECT_NEAR(lowered.neededBitsPerSecond, lowered.usableBitsPerSecond, 1.0);
}

TEST(NetworkPlan, cameraWhoseOwnLinkIsTooSlowDoesNotFitThoughTheAdapterWouldDo)
{
    SPlanCamera slow = camera(1'310'720, 30.0);
    slow.linkBitsPerSecond = 1e8;
    const SNetworkPlan plan = planNetwork(10 * gigabit, 0.1, {slow, camera(1'000'000, 30.0)});
    EXPECT_FALSE(plan.isFitting);
    EXPECT_FALSE(plan.cameras[0].isFitting);
    EXPECT_TRUE(plan.cameras[1].isFitting);
    EXPECT_LT(plan.cameras[0].mostFramesPerSecond, 10.0);
}

TEST(NetworkPlan, unknownLinkOfACameraIsAGigabitOrTheAdaptersIfSlower)
{
    SPlanCamera unknown = camera(1'000'000, 10.0);
    unknown.linkBitsPerSecond = 0.0;
    EXPECT_EQ(planNetwork(10 * gigabit, 0.1, {unknown, unknown}).cameras[0].delayTicks, 0);
    EXPECT_GT(planNetwork(1e8, 0.0, {camera(10'000, 10.0), camera(10'000, 10.0)}).cameras[0].delayTicks, 0);
    unknown.payloadBytes = 10'000;
    EXPECT_GT(planNetwork(1e8, 0.0, {unknown, unknown}).cameras[0].delayTicks, 0);
}

TEST(NetworkPlan, pauseIsNoLongerThanTheCameraCan)
{
    SPlanCamera limited = camera(1'000'000, 1.0);
    limited.mostDelayTicks = 100;
    const SNetworkPlan plan = planNetwork(gigabit, 0.1, {limited, camera(1'000'000, 100.0)});
    EXPECT_EQ(plan.cameras[0].delayTicks, 100);
}

TEST(NetworkPlan, thirtyTwoCamerasFit)
{
    const SNetworkPlan plan =
        planNetwork(10 * gigabit, 0.1, std::vector<SPlanCamera>(32, camera(1'310'720, 25.0, 9000)));
    EXPECT_TRUE(plan.isFitting);
    EXPECT_GT(plan.cameras.back().delayTicks, 0);
}

TEST(NetworkPlan, noCamerasIsAPlanToo)
{
    EXPECT_TRUE(planNetwork(gigabit, 0.1, {}).isFitting);
}

TEST(NetworkPlan, numbersThatMakeNoSenseAreRefused)
{
    EXPECT_THROW(planNetwork(0.0, 0.1, {}), std::invalid_argument);
    EXPECT_THROW(planNetwork(gigabit, 1.0, {}), std::invalid_argument);
    EXPECT_THROW(planNetwork(gigabit, 0.1, {camera(0, 30.0)}), std::invalid_argument);
    EXPECT_THROW(planNetwork(gigabit, 0.1, {camera(1000, 0.0)}), std::invalid_argument);
    EXPECT_THROW(planNetwork(gigabit, 0.1, {camera(1000, 1.0, 36)}), std::invalid_argument);
    SPlanCamera stopped = camera(1000, 1.0);
    stopped.ticksPerSecond = 0;
    EXPECT_THROW(planNetwork(gigabit, 0.1, {stopped}), std::invalid_argument);
}

} // namespace
