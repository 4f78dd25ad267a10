// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "fakes.h"
#include "genapi/exceptions.h"

#include <gtest/gtest.h>

using SimulatorTest::CFakeClock;
using SimulatorTest::SRig;
using Velmo::Gvcp::EStatus;
using Velmo::Gvcp::SAction;

namespace
{

constexpr std::uint32_t DeviceKey = 0x11;
constexpr std::uint32_t GroupKey = 0x22;
constexpr std::int64_t SettlingNs = 200'000'000;
constexpr std::int64_t MillisecondNs = 1'000'000;
const std::optional<EStatus> Silence;

/** A camera that triggers on Action2 (mask 0x6) and acquires. */
struct SActionRig : SRig
{
    explicit SActionRig(const Simulator::SCameraConfig& config = Small()) : SRig(config)
    {
        Set("ActionDeviceKey", std::to_string(DeviceKey));
        Set("ActionSelector", "2");
        Set("ActionGroupKey", std::to_string(GroupKey));
        Set("ActionGroupMask", "6");
        Set("TriggerMode", "On");
        Set("TriggerSource", "Action2");
        Start();
    }
    void Set(const char* name, const std::string& value) { camera.SetFeature(name, value); }
    std::string Get(const char* name) const { return camera.GetFeature(name); }

    std::optional<EStatus> Now(std::uint32_t mask = 2, std::uint32_t group = GroupKey, std::uint32_t device = DeviceKey)
    {
        return camera.Action({device, group, mask, false, 0});
    }
    std::optional<EStatus> At(std::int64_t ns)
    {
        return camera.Action({DeviceKey, GroupKey, 2, true, std::uint64_t(ns)});
    }
    std::size_t Frames()
    {
        camera.Produce();
        return sink.seen.size();
    }
    void Synchronise()
    {
        Set("PtpEnable", "true");
        clock.Advance(SettlingNs);
    }
};

Simulator::SCameraConfig Skewed(const char* serial, std::int64_t offsetNs, double driftPpm)
{
    Simulator::SCameraConfig config = SRig::Small();
    config.serialNumber = serial;
    config.clockOffsetNs = offsetNs;
    config.clockDriftPpm = driftPpm;
    return config;
}

} // namespace

TEST(Action, matchingCommandTriggersAFrame)
{
    SActionRig rig;
    EXPECT_EQ(rig.Frames(), 0U);
    EXPECT_EQ(rig.Now(), EStatus::Success);
    EXPECT_EQ(rig.Frames(), 1U);
    EXPECT_EQ(rig.Frames(), 1U);
}

TEST(Action, oneBitOfTheMaskInCommonIsEnough)
{
    SActionRig rig;
    EXPECT_EQ(rig.Now(0xFFFFFFFF), EStatus::Success);
    EXPECT_EQ(rig.Now(0x4), EStatus::Success);
    EXPECT_EQ(rig.Now(0x9), Silence);
}

TEST(Action, otherKeysAreMetWithSilence)
{
    SActionRig rig;
    EXPECT_EQ(rig.Now(2, GroupKey + 1), Silence);
    EXPECT_EQ(rig.Now(2, GroupKey, DeviceKey + 1), Silence);
    EXPECT_EQ(rig.camera.Action({DeviceKey, GroupKey + 1, 2, true, 1}), Silence)
        << "scheduled, and no clock to refuse by";
    EXPECT_EQ(rig.Frames(), 0U);
}

TEST(Action, cameraAsItLeavesTheFactoryReactsToNothing)
{
    SRig rig;
    EXPECT_EQ(rig.camera.Action({0, 0, 0xFFFFFFFF, false, 0}), Silence);
}

TEST(Action, signalThatIsNotTheTriggersSourceIsTakenWithoutAFrame)
{
    SActionRig rig;
    rig.Set("TriggerSource", "Action1");
    EXPECT_EQ(rig.Now(), EStatus::Success);
    EXPECT_EQ(rig.Frames(), 0U);
    rig.Set("ActionSelector", "1");
    rig.Set("ActionGroupKey", std::to_string(GroupKey));
    rig.Set("ActionGroupMask", "1");
    EXPECT_EQ(rig.Now(1), EStatus::Success);
    EXPECT_EQ(rig.Frames(), 1U);
    rig.Set("TriggerSource", "Software");
    EXPECT_EQ(rig.Now(3), EStatus::Success);
    EXPECT_EQ(rig.Frames(), 1U);
}

TEST(Action, eachSignalHasItsOwnKeyAndMask)
{
    SActionRig rig;
    rig.Set("ActionSelector", "4");
    EXPECT_EQ(rig.Get("ActionGroupMask"), "0");
    rig.Set("ActionGroupKey", "77");
    rig.Set("ActionGroupMask", "1");
    rig.Set("ActionSelector", "2");
    EXPECT_EQ(rig.Get("ActionGroupKey"), std::to_string(GroupKey));
    EXPECT_EQ(rig.Get("ActionGroupMask"), "6");
    EXPECT_EQ(rig.Now(1, 77), EStatus::Success);
    for (const char* outside : {"0", "5"})
    {
        EXPECT_THROW(rig.Set("ActionSelector", outside), GenICam::OutOfRangeException);
    }
}

TEST(Action, signalsAreConfiguredByTheirNumbers)
{
    Simulator::SCameraConfig config = SRig::Small();
    config.features = {{"ActionDeviceKey", "1"}, {"ActionGroupKey[3]", "5"}, {"ActionGroupMask[3]", "8"}};
    SRig rig(config);
    EXPECT_EQ(rig.camera.Action({1, 5, 8, false, 0}), EStatus::Success);
    EXPECT_EQ(rig.camera.GetFeature("ActionGroupKey"), "0") << "of the first signal";
    config.features = {{"ActionGroupKey[5]", "5"}};
    EXPECT_THROW(SRig{config}, GenICam::InvalidArgumentException);
}

TEST(Action, withoutAnAcquisitionItIsTakenWithoutAFrame)
{
    SActionRig rig;
    rig.Stop();
    EXPECT_EQ(rig.Now(), EStatus::Success);
    rig.Start();
    EXPECT_EQ(rig.Frames(), 0U);
}

TEST(Action, commandWakesWhoRunsTheCamera)
{
    SActionRig rig;
    int wakes = 0;
    rig.camera.SetWakeHandler([&wakes] { ++wakes; });
    rig.Now();
    EXPECT_EQ(wakes, 1);
    rig.Now(2, GroupKey + 1);
    EXPECT_EQ(wakes, 1);
}

TEST(Action, removedCameraIsSilent)
{
    SActionRig rig;
    rig.camera.Remove();
    EXPECT_EQ(rig.Now(), Silence);
}

TEST(ScheduledAction, isRefusedUntilTheClockFollows)
{
    SActionRig rig;
    const std::int64_t later = rig.clock.NowNs() + 3600'000 * MillisecondNs;
    EXPECT_EQ(rig.At(later), EStatus::NoReferenceTime);
    rig.Set("PtpEnable", "true");
    rig.clock.Advance(SettlingNs - 1);
    EXPECT_EQ(rig.At(later), EStatus::NoReferenceTime);
    rig.clock.Advance(1);
    EXPECT_EQ(rig.At(later), EStatus::Success);
}

TEST(ScheduledAction, triggersAtItsTimeAndNotBefore)
{
    SActionRig rig;
    rig.Synchronise();
    const std::int64_t due = rig.clock.NowNs() + 50 * MillisecondNs;
    ASSERT_EQ(rig.At(due), EStatus::Success);
    EXPECT_EQ(rig.camera.Produce(), due) << "when to call again";
    rig.clock.Set(due - 1);
    EXPECT_EQ(rig.Frames(), 0U);
    rig.clock.Set(due + 3 * MillisecondNs); // who runs the camera comes late
    ASSERT_EQ(rig.Frames(), 1U);
    EXPECT_EQ(rig.sink.seen[0].frame.timestamp, static_cast<std::uint64_t>(due));
}

TEST(ScheduledAction, exposesCamerasWithDifferentClocksAtOneTime)
{
    SActionRig first(Skewed("T-1", 5'000'000'000, 40.0));
    SActionRig second(Skewed("T-2", -900'000'000, -25.0));
    first.Synchronise();
    second.Synchronise();
    const std::int64_t due = first.clock.NowNs() + 20 * MillisecondNs;
    for (SActionRig* pRig : {&first, &second})
    {
        EXPECT_EQ(pRig->At(due), EStatus::Success);
        pRig->clock.Set(due);
        ASSERT_EQ(pRig->Frames(), 1U);
        EXPECT_EQ(pRig->sink.seen[0].frame.timestamp, static_cast<std::uint64_t>(due));
    }
}

TEST(ScheduledAction, whoseTimeHasPassedComesAtOnceAndSaysSo)
{
    SActionRig rig;
    rig.Synchronise();
    EXPECT_EQ(rig.At(rig.clock.NowNs()), EStatus::ActionLate);
    EXPECT_EQ(rig.Frames(), 1U);
    EXPECT_EQ(rig.At(0), EStatus::ActionLate);
}

TEST(ScheduledAction, beyondTheQueueIsRefusedUntilThereIsRoom)
{
    SActionRig rig;
    rig.Synchronise();
    const std::int64_t start = rig.clock.NowNs() + 1000 * MillisecondNs;
    for (int i = 8; i > 0; --i) // the last one first
    {
        EXPECT_EQ(rig.At(start + i * 100 * MillisecondNs), EStatus::Success);
    }
    EXPECT_EQ(rig.At(start), EStatus::Overflow);
    EXPECT_EQ(rig.Now(), EStatus::Success) << "one that comes at once needs no room";
    EXPECT_EQ(rig.Frames(), 1U);
    rig.RunFrames(1);
    EXPECT_EQ(rig.At(start + 5000 * MillisecondNs), EStatus::Success);
    rig.RunFrames(7);
    ASSERT_EQ(rig.sink.seen.size(), 9U);
    for (std::size_t i = 1; i <= 8; ++i)
    {
        EXPECT_EQ(rig.sink.seen[i].frame.timestamp, static_cast<std::uint64_t>(start) + i * 100'000'000);
    }
}

TEST(ScheduledAction, isForgottenWithTheSynchronisation)
{
    SActionRig rig;
    rig.Synchronise();
    ASSERT_EQ(rig.At(rig.clock.NowNs() + MillisecondNs), EStatus::Success);
    rig.Set("PtpEnable", "false");
    rig.clock.Advance(2 * MillisecondNs);
    EXPECT_EQ(rig.Frames(), 0U);
}

TEST(ScheduledAction, atATimeThatNeverComesWaitsForever)
{
    SActionRig rig;
    rig.Synchronise();
    EXPECT_EQ(rig.camera.Action({DeviceKey, GroupKey, 2, true, 0xFFFFFFFFFFFFFFFF}), EStatus::Success);
    EXPECT_EQ(rig.camera.Produce(), INT64_MAX);
}

TEST(Synchronisation, showsItsStateWhenItIsLatched)
{
    SActionRig rig(Skewed("T-1", -700, 0.0));
    EXPECT_EQ(rig.Get("PtpStatus"), "Disabled");
    rig.Set("PtpEnable", "true");
    EXPECT_EQ(rig.Get("PtpStatus"), "Disabled") << "not latched yet";
    rig.Set("PtpDataSetLatch", "1");
    EXPECT_EQ(rig.Get("PtpStatus"), "Uncalibrated");
    // The camera's clock began with its own life, 700 ns late, and the shared one a second before that.
    EXPECT_EQ(rig.Get("PtpOffsetFromMaster"), "-1000000700");
    rig.clock.Advance(SettlingNs);
    rig.Set("PtpDataSetLatch", "1");
    EXPECT_EQ(rig.Get("PtpStatus"), "Slave");
    EXPECT_EQ(rig.Get("PtpOffsetFromMaster"), "0");
    rig.Set("PtpEnable", "false");
    rig.Set("PtpDataSetLatch", "1");
    EXPECT_EQ(rig.Get("PtpStatus"), "Disabled");
}

TEST(Synchronisation, beginsWithTheCameraWhenItsDataSaySo)
{
    Simulator::SCameraConfig config = Skewed("T-1", -700, 0.0);
    config.features = {{"PtpEnable", "true"}};
    SActionRig rig(config);
    EXPECT_EQ(rig.At(INT64_MAX), EStatus::NoReferenceTime);
    rig.clock.Advance(SettlingNs);
    EXPECT_EQ(rig.At(INT64_MAX), EStatus::Success);
}

TEST(Synchronisation, clockRunsOnFromWhereItIsWhenItEnds)
{
    SActionRig rig(Skewed("T-1", 5'000'000'000, 100.0));
    rig.Synchronise();
    const auto ticks = [&rig]
    {
        rig.Set("TimestampLatch", "1");
        return std::stoll(rig.Get("TimestampLatchValue"));
    };
    EXPECT_EQ(ticks(), rig.clock.NowNs());
    rig.Set("TimestampReset", "1");
    EXPECT_EQ(ticks(), rig.clock.NowNs()) << "a clock that follows cannot be set";
    rig.Set("PtpEnable", "false");
    EXPECT_EQ(ticks(), rig.clock.NowNs());
    rig.clock.Advance(1'000'000'000);
    EXPECT_EQ(ticks(), rig.clock.NowNs() + 100'000) << "its own drift again";
}
