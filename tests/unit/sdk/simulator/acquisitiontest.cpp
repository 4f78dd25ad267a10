// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "fakes.h"
#include "genapi/exceptions.h"

#include <gtest/gtest.h>

using Simulator::SCameraConfig;
using Simulator::SFaults;
using SimulatorTest::SRig;

TEST(Acquisition, blockIdsCountFromOneAtTheFrameRate)
{
    SRig rig; // 100 Hz
    rig.Start();
    rig.RunFrames(10);
    ASSERT_EQ(rig.sink.seen.size(), 10U);
    for (std::size_t i = 0; i < 10; ++i)
    {
        EXPECT_EQ(rig.sink.seen[i].frame.blockId, i + 1);
    }
    EXPECT_EQ(rig.sink.seen[9].frame.timestamp - rig.sink.seen[0].frame.timestamp, 9U * 10'000'000U);
}

TEST(Acquisition, nothingIsProducedBeforeTheDeadline)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(1);
    rig.clock.Advance(9'999'999);
    rig.camera.Produce();
    EXPECT_EQ(rig.sink.seen.size(), 1U);
    rig.clock.Advance(1);
    rig.camera.Produce();
    EXPECT_EQ(rig.sink.seen.size(), 2U);
}

TEST(Acquisition, lateProducerSkipsDeadlinesWithoutUsingBlockIds)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(1);
    rig.clock.Advance(55'000'000); // five deadlines, the last 5 ms ago
    rig.camera.Produce();
    ASSERT_EQ(rig.sink.seen.size(), 2U);
    EXPECT_EQ(rig.sink.seen[1].frame.blockId, 2U);
    EXPECT_EQ(rig.sink.seen[1].frame.timestamp - rig.sink.seen[0].frame.timestamp, 50'000'000U);
    EXPECT_EQ(rig.camera.GetFramesSkipped(), 4U);
}

TEST(Acquisition, framesWithoutBufferUseUpTheirBlockIds)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(2);
    rig.sink.hasBuffers = false;
    rig.RunFrames(3);
    rig.sink.hasBuffers = true;
    rig.RunFrames(1);
    ASSERT_EQ(rig.sink.seen.size(), 3U);
    EXPECT_EQ(rig.sink.seen[2].frame.blockId, 6U);
    EXPECT_EQ(rig.camera.GetFeature("FramesLost"), "3");
}

TEST(Acquisition, eachStartCountsFromOneAgain)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(3);
    rig.Stop();
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.sink.seen.back().frame.blockId, 1U);
}

TEST(Acquisition, startWhileAcquiringChangesNothing)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(2);
    rig.Start();
    rig.RunFrames(1);
    EXPECT_EQ(rig.sink.seen.back().frame.blockId, 3U);
}

TEST(Acquisition, singleFrameStopsByItself)
{
    SRig rig;
    rig.camera.SetFeature("AcquisitionMode", "SingleFrame");
    rig.Start();
    rig.RunFrames(5);
    EXPECT_EQ(rig.sink.seen.size(), 1U);
    EXPECT_FALSE(rig.camera.IsAcquiring());
    EXPECT_EQ(rig.camera.GetFeature("TLParamsLocked"), "0");
}

TEST(Acquisition, multiFrameStopsAfterItsCount)
{
    SRig rig;
    rig.camera.SetFeature("AcquisitionMode", "MultiFrame");
    rig.camera.SetFeature("AcquisitionFrameCount", "4");
    rig.Start();
    rig.RunFrames(9);
    EXPECT_EQ(rig.sink.seen.size(), 4U);
}

TEST(Acquisition, changedRateHoldsFromTheNextFrame)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(2);
    rig.camera.SetFeature("AcquisitionFrameRate", "50");
    rig.RunFrames(2);
    ASSERT_EQ(rig.sink.seen.size(), 4U);
    EXPECT_EQ(rig.sink.seen[3].frame.timestamp - rig.sink.seen[2].frame.timestamp, 20'000'000U);
}

TEST(Acquisition, camerasOfDifferentSerialsHaveDifferentPhases)
{
    SCameraConfig other = SRig::Small();
    other.serialNumber = "T-2";
    SRig first;
    SRig second(other);
    first.Start();
    second.Start();
    EXPECT_NE(first.camera.Produce(), second.camera.Produce());
}

TEST(Trigger, softwareTriggerMakesOneFrame)
{
    SRig rig;
    rig.camera.SetFeature("TriggerMode", "On");
    rig.Start();
    rig.RunFrames(3);
    EXPECT_TRUE(rig.sink.seen.empty());
    rig.camera.SetFeature("TriggerSoftware", "1");
    rig.RunFrames(3);
    EXPECT_EQ(rig.sink.seen.size(), 1U);
}

TEST(Trigger, triggersFasterThanTheCameraAreServedAtItsRate)
{
    SRig rig;
    rig.camera.SetFeature("TriggerMode", "On");
    rig.Start();
    for (int i = 0; i < 3; ++i)
    {
        rig.camera.SetFeature("TriggerSoftware", "1");
    }
    rig.RunFrames(9);
    ASSERT_EQ(rig.sink.seen.size(), 3U);
    EXPECT_EQ(rig.sink.seen[1].frame.timestamp - rig.sink.seen[0].frame.timestamp, 10'000'000U);
}

TEST(Trigger, softwareTriggerIsIgnoredWhenAnotherSourceIsChosen)
{
    SRig rig;
    rig.camera.SetFeature("TriggerMode", "On");
    rig.camera.SetFeature("TriggerSource", "Line1");
    rig.Start();
    rig.camera.SetFeature("TriggerSoftware", "1");
    rig.RunFrames(3);
    EXPECT_TRUE(rig.sink.seen.empty());
}

TEST(Trigger, triggerBeforeStartIsForgotten)
{
    SRig rig;
    rig.camera.SetFeature("TriggerMode", "On");
    rig.camera.SetFeature("TriggerSoftware", "1");
    rig.Start();
    rig.RunFrames(3);
    EXPECT_TRUE(rig.sink.seen.empty());
}

TEST(Trigger, triggerModeOffWhileAcquiringFreesTheCamera)
{
    SRig rig;
    rig.camera.SetFeature("TriggerMode", "On");
    rig.Start();
    rig.camera.SetFeature("TriggerMode", "Off");
    rig.RunFrames(2);
    EXPECT_GE(rig.sink.seen.size(), 2U);
}

TEST(Faults, droppedFramesLeaveAGapInTheBlockIds)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(1);
    rig.camera.SetFeature("FaultDropFrames", "2");
    rig.RunFrames(3);
    ASSERT_EQ(rig.sink.seen.size(), 2U);
    EXPECT_EQ(rig.sink.seen[1].frame.blockId, 4U);
    EXPECT_EQ(rig.camera.GetFaults().dropFrames, 0U);
}

TEST(Faults, everyNthFrameFails)
{
    SRig rig;
    rig.camera.SetFeature("FaultFailEveryNth", "3");
    rig.Start();
    rig.RunFrames(6);
    ASSERT_EQ(rig.sink.seen.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i)
    {
        EXPECT_EQ(rig.sink.seen[i].frame.isFailed, i == 2 || i == 5) << i;
    }
    EXPECT_LT(rig.sink.seen[2].bytes.size(), rig.camera.GetPayloadBytes());
}

TEST(Faults, stalledCameraAcquiresButSendsNothing)
{
    SRig rig;
    rig.Start();
    rig.RunFrames(1);
    rig.camera.SetFeature("FaultStall", "true");
    rig.RunFrames(5);
    EXPECT_EQ(rig.sink.seen.size(), 1U);
    EXPECT_TRUE(rig.camera.IsAcquiring());
    rig.camera.SetFeature("FaultStall", "false");
    rig.RunFrames(1);
    EXPECT_EQ(rig.sink.seen.size(), 2U);
}

TEST(Faults, readErrorFailsReadsWithItsText)
{
    SRig rig;
    SFaults faults;
    faults.readError = "no answer";
    rig.camera.SetFaults(faults);
    std::uint32_t value = 0;
    try
    {
        rig.camera.Read(&value, 0x20300, 4);
        FAIL() << "no exception";
    }
    catch (const GenICam::RuntimeException& error)
    {
        EXPECT_STREQ(error.GetDescription(), "no answer");
    }
}

TEST(Faults, writeErrorFailsWritesAndChangesNothing)
{
    SRig rig;
    SFaults faults;
    faults.writeError = "no answer";
    rig.camera.SetFaults(faults);
    const std::uint32_t value = 0x20000000; // 32, big-endian
    EXPECT_THROW(rig.camera.Write(&value, 0x20310, 4), GenICam::RuntimeException);
    EXPECT_EQ(rig.camera.GetFeature("Width"), "64");
}

TEST(Faults, removedCameraRefusesEveryAccessAndTellsOnce)
{
    SRig rig;
    int removed = 0;
    rig.camera.SetEventHandler([&](Simulator::CCameraModel::EEvent event)
                               { removed += event == Simulator::CCameraModel::EEvent::Removed ? 1 : 0; });
    rig.Start();
    rig.RunFrames(1);
    rig.camera.SetFeature("FaultRemove", "1");
    rig.camera.Remove();
    EXPECT_EQ(removed, 1);
    EXPECT_TRUE(rig.camera.IsRemoved());
    std::uint32_t value = 0;
    EXPECT_THROW(rig.camera.Read(&value, 0x20300, 4), GenICam::RuntimeException);
    rig.RunFrames(3);
    EXPECT_EQ(rig.sink.seen.size(), 1U);
}

TEST(Faults, resetIsToldToTheOwner)
{
    SRig rig;
    int resets = 0;
    rig.camera.SetEventHandler([&](Simulator::CCameraModel::EEvent event)
                               { resets += event == Simulator::CCameraModel::EEvent::Reset ? 1 : 0; });
    rig.camera.SetFeature("DeviceReset", "1");
    EXPECT_EQ(resets, 1);
}

TEST(Faults, brokenDescriptionIsCutOff)
{
    SCameraConfig config = SRig::Small();
    config.faults.brokenDescription = true;
    SRig broken(config);
    EXPECT_EQ(broken.camera.GetDescription().find("</RegisterDescription>"), std::string::npos);
}
