// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "rig.h"

#include "genapi/exceptions.h"

#include <atomic>
#include <thread>

using namespace EmulationTest;
using Velmo::Transport::EResultStatus;
using Velmo::Transport::SStreamResult;

TEST(EmulationStream, imagesComeInOrderWithTheirGeometry)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device);
    grab.Start();
    std::uint64_t before = 0;
    for (int i = 0; i < 20; ++i)
    {
        const SStreamResult result = grab.Next();
        ASSERT_EQ(result.status, EResultStatus::Ok);
        EXPECT_GT(result.blockId, before);
        before = result.blockId;
        EXPECT_EQ(result.payloadType, Velmo::EPayloadType::Image);
        EXPECT_EQ(result.pixelType, 0x01080001U);
        EXPECT_EQ(result.width, 64U);
        EXPECT_EQ(result.height, 48U);
        EXPECT_EQ(result.payloadBytes, 64U * 48U);
    }
}

TEST(EmulationStream, firstBlockIsOne)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device);
    grab.Start();
    EXPECT_EQ(grab.Next().blockId, 1U);
}

TEST(EmulationStream, imageHoldsTheMovingScene)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device);
    grab.Start();
    const SStreamResult first = grab.Next();
    const std::vector<std::uint8_t> bytes = grab.last;
    EXPECT_EQ(static_cast<std::uint8_t>(bytes[1] - bytes[0]), 1) << "the scene is a ramp";
    const SStreamResult second = grab.Next();
    EXPECT_EQ(static_cast<std::uint8_t>(grab.last[0] - bytes[0]), 2 * (second.blockId - first.blockId));
}

TEST(EmulationStream, singleFrameGivesOneImage)
{
    const SRig rig;
    const auto device = rig.Open();
    GenApi::CEnumerationPtr(device->GetNodeMap()->GetNode("AcquisitionMode"))->FromString("SingleFrame");
    CGrab grab(*device);
    grab.Start();
    EXPECT_EQ(grab.Next().status, EResultStatus::Ok);
    SStreamResult result;
    EXPECT_FALSE(grab.stream.RetrieveResult(result, 100)) << "twenty frame times later there is no other";
}

TEST(EmulationStream, softwareTriggerGivesAnImageEach)
{
    const SRig rig;
    const auto device = rig.Open();
    GenApi::CEnumerationPtr(device->GetNodeMap()->GetNode("TriggerMode"))->FromString("On");
    CGrab grab(*device);
    grab.Start();
    for (std::uint64_t i = 1; i <= 3; ++i)
    {
        grab.Execute("TriggerSoftware");
        EXPECT_EQ(grab.Next().blockId, i);
    }
}

TEST(EmulationStream, stopCancelsEveryQueuedBuffer)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device, 5);
    grab.QueueAll();
    grab.stream.Start();
    grab.stream.Stop();
    for (int i = 0; i < 5; ++i)
    {
        SStreamResult result;
        ASSERT_TRUE(grab.stream.RetrieveResult(result, 0)) << i;
        EXPECT_EQ(result.status, EResultStatus::Canceled);
        EXPECT_EQ(result.pContext, grab.Context(static_cast<std::size_t>(i)));
    }
    SStreamResult result;
    EXPECT_FALSE(grab.stream.RetrieveResult(result, 0));
}

TEST(EmulationStream, restartsAfterStop)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device, 2);
    for (int round = 0; round < 3; ++round)
    {
        grab.Start();
        EXPECT_EQ(grab.Next().blockId, 1U);
        grab.Execute("AcquisitionStop");
        grab.stream.Stop();
        SStreamResult result;
        while (grab.stream.RetrieveResult(result, 0))
        {
        }
    }
}

TEST(EmulationStream, retrieveWithoutWaitingLooksOnly)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device);
    grab.stream.Start();
    SStreamResult result;
    EXPECT_FALSE(grab.stream.RetrieveResult(result, 0));
}

TEST(EmulationStream, wakeUpEndsAWait)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device);
    grab.stream.Start();
    bool hasResult = true;
    std::thread waiting(
        [&]
        {
            SStreamResult result;
            hasResult = grab.stream.RetrieveResult(result, DeadlineMs);
        });
    const auto begin = std::chrono::steady_clock::now();
    grab.stream.WakeUp();
    waiting.join();
    EXPECT_FALSE(hasResult);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(DeadlineMs));
}

TEST(EmulationStream, wakeUpHoldsForOneWait)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device);
    grab.stream.Start();
    grab.stream.WakeUp();
    SStreamResult result;
    EXPECT_FALSE(grab.stream.RetrieveResult(result, DeadlineMs));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(grab.stream.RetrieveResult(result, 30));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(30));
}

TEST(EmulationStream, imagesWithoutBufferAreLostAndCounted)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device, 1);
    grab.Start();
    SStreamResult first;
    ASSERT_TRUE(grab.stream.RetrieveResult(first, DeadlineMs));
    GenApi::CIntegerPtr underruns(grab.stream.GetNodeMap()->GetNode("StatisticBufferUnderrunCount"));
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(DeadlineMs);
    while (underruns->GetValue(false, true) < 3 && std::chrono::steady_clock::now() < deadline)
    {
    }
    const std::int64_t lost = underruns->GetValue(false, true);
    ASSERT_GE(lost, 3);
    grab.stream.QueueBuffer(first.pContext);
    EXPECT_GE(grab.Next().blockId, static_cast<std::uint64_t>(2 + lost));
}

TEST(EmulationStream, failedImageHasItsStatusAndText)
{
    const SRig rig;
    const auto device = rig.Open();
    rig.control->FindCamera("E-1")->SetFeature("FaultFailEveryNth", "2");
    CGrab grab(*device);
    grab.Start();
    EXPECT_EQ(grab.Next().status, EResultStatus::Ok);
    const SStreamResult failed = grab.Next();
    EXPECT_EQ(failed.status, EResultStatus::Failed);
    EXPECT_NE(failed.errorCode, 0U);
    EXPECT_FALSE(failed.errorDescription.empty());
    GenApi::CIntegerPtr count(grab.stream.GetNodeMap()->GetNode("StatisticFailedBufferCount"));
    EXPECT_GE(count->GetValue(false, true), 1);
}

TEST(EmulationStream, smallBufferFailsWithoutBeingOverrun)
{
    const SRig rig;
    const auto device = rig.Open();
    Velmo::Transport::IStream& stream = *device->GetStream(0);
    stream.Open();
    std::vector<std::uint8_t> memory(200, 0xEE);
    stream.AnnounceBuffer(memory.data(), 100, &memory);
    stream.QueueBuffer(&memory);
    stream.Start();
    GenApi::CCommandPtr(device->GetNodeMap()->GetNode("AcquisitionStart"))->Execute();
    SStreamResult result;
    ASSERT_TRUE(stream.RetrieveResult(result, DeadlineMs));
    EXPECT_EQ(result.status, EResultStatus::Failed);
    EXPECT_EQ(result.payloadBytes, 100U);
    EXPECT_EQ(memory[100], 0xEE);
    stream.Close();
}

TEST(EmulationStream, payloadSizeFollowsTheCamera)
{
    const SRig rig;
    const auto device = rig.Open();
    Velmo::Transport::IStream& stream = *device->GetStream(0);
    stream.Open();
    GenApi::CIntegerPtr(device->GetNodeMap()->GetNode("Height"))->SetValue(20);
    EXPECT_EQ(stream.GetPayloadBytes(), 64U * 20U);
    EXPECT_EQ(GenApi::CIntegerPtr(stream.GetNodeMap()->GetNode("PayloadSize"))->GetValue(), 64 * 20);
    stream.Close();
    EXPECT_EQ(stream.GetNodeMap(), nullptr);
}

TEST(EmulationStream, misuseIsRefused)
{
    const SRig rig;
    const auto device = rig.Open();
    Velmo::Transport::IStream& stream = *device->GetStream(0);
    std::vector<std::uint8_t> memory(64 * 48);
    EXPECT_THROW(stream.Start(), GenICam::LogicalErrorException);
    EXPECT_THROW(stream.AnnounceBuffer(memory.data(), memory.size(), &memory), GenICam::LogicalErrorException);
    stream.Open();
    EXPECT_THROW(stream.AnnounceBuffer(nullptr, 5, &memory), GenICam::InvalidArgumentException);
    EXPECT_THROW(stream.QueueBuffer(&memory), GenICam::InvalidArgumentException);
    stream.AnnounceBuffer(memory.data(), memory.size(), &memory);
    EXPECT_THROW(stream.AnnounceBuffer(memory.data(), memory.size(), &memory), GenICam::InvalidArgumentException);
    stream.QueueBuffer(&memory);
    EXPECT_THROW(stream.QueueBuffer(&memory), GenICam::LogicalErrorException);
    EXPECT_THROW(stream.RevokeBuffer(&memory), GenICam::LogicalErrorException);
    stream.Close();
}

TEST(EmulationStream, removalCancelsWhatIsQueuedAndRefusesMore)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device, 4);
    grab.QueueAll();
    grab.stream.Start();
    rig.control->Unplug("E-1");
    for (int i = 0; i < 4; ++i)
    {
        SStreamResult result;
        ASSERT_TRUE(grab.stream.RetrieveResult(result, DeadlineMs));
        EXPECT_EQ(result.status, EResultStatus::Canceled);
    }
    EXPECT_THROW(grab.stream.QueueBuffer(grab.Context(0)), GenICam::RuntimeException);
    EXPECT_NO_THROW(grab.stream.Stop());
    EXPECT_THROW(grab.stream.Start(), GenICam::RuntimeException);
    EXPECT_NO_THROW(grab.stream.RevokeBuffer(grab.Context(0)));
    EXPECT_NO_THROW(grab.stream.Close());
}

TEST(EmulationStream, camerasStreamWhileOthersArePluggedAndEnumerated)
{
    const SRig rig({Small("E-1"), Small("E-2")});
    const auto first = rig.Open(0);
    const auto second = rig.Open(1);
    CGrab grabFirst(*first);
    CGrab grabSecond(*second);
    grabFirst.Start();
    grabSecond.Start();
    std::atomic<bool> isDone{false};
    std::thread discovery(
        [&]
        {
            while (!isDone)
            {
                rig.control->Plug(Small("E-3"));
                EXPECT_EQ(rig.Enumerate().size(), 3U);
                EXPECT_TRUE(rig.control->Unplug("E-3"));
            }
        });
    for (int i = 0; i < 50; ++i)
    {
        EXPECT_EQ(grabFirst.Next().status, EResultStatus::Ok);
        EXPECT_EQ(grabSecond.Next().status, EResultStatus::Ok);
    }
    isDone = true;
    discovery.join();
}

TEST(EmulationStream, unplugWhileImagesFlowIsCleanEveryTime)
{
    for (int round = 0; round < 10; ++round)
    {
        const SRig rig({Small("E-1", 1000.0)});
        const auto device = rig.Open();
        CCounter removed;
        device->SetRemovalCallback([&] { removed.Count(); });
        CGrab grab(*device);
        grab.Start();
        EXPECT_EQ(grab.Next().status, EResultStatus::Ok);
        rig.control->Unplug("E-1");
        EXPECT_TRUE(removed.WaitFor(1));
        device->SetRemovalCallback(nullptr);
    }
}
