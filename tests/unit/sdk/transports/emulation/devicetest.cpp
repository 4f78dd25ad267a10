// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "rig.h"

#include "genapi/exceptions.h"
#include "simulator/registers.h"
#include "support/waitbox.h"

#include <gmock/gmock.h>

#include <array>

using namespace EmulationTest;
using Test::CWaitBox;
using testing::HasSubstr;
using Velmo::EDeviceAccess;

namespace
{

GenApi::CIntegerPtr Integer(Velmo::IVelmoDevice& device, const char* name)
{
    return device.GetNodeMap()->GetNode(name);
}

} // namespace

TEST(EmulationDevice, nodeMapIsThereOnlyWhileOpen)
{
    const SRig rig;
    const auto device = rig.Create();
    EXPECT_EQ(device->GetNodeMap(), nullptr);
    device->Open(EDeviceAccess::Control);
    EXPECT_TRUE(device->IsOpen());
    EXPECT_NE(device->GetNodeMap(), nullptr);
    device->Close();
    EXPECT_EQ(device->GetNodeMap(), nullptr);
    device->Open(EDeviceAccess::Control);
    EXPECT_NE(device->GetNodeMap(), nullptr);
}

TEST(EmulationDevice, nodesShowTheRegisters)
{
    const SRig rig;
    const auto device = rig.Open();
    Integer(*device, "Width")->SetValue(32);
    std::array<std::uint8_t, 4> bytes{};
    rig.control->FindCamera("E-1")->Read(bytes.data(), Simulator::Register::Width, 4);
    EXPECT_EQ(bytes, (std::array<std::uint8_t, 4>{0, 0, 0, 32}));
    EXPECT_EQ(Integer(*device, "PayloadSize")->GetValue(), 32 * 48);
    GenApi::CFloatPtr(device->GetNodeMap()->GetNode("Gain"))->SetValue(3.5);
    EXPECT_EQ(rig.control->FindCamera("E-1")->GetFeature("Gain"), "3.500000");
    GenApi::CEnumerationPtr(device->GetNodeMap()->GetNode("PixelFormat"))->FromString("RGB8");
    EXPECT_EQ(Integer(*device, "PayloadSize")->GetValue(), 32 * 48 * 3);
}

TEST(EmulationDevice, everyFeatureOfTheNodeMapThatIsReadableCanBeRead)
{
    const SRig rig;
    const auto device = rig.Open();
    GenApi::NodeList nodes;
    device->GetNodeMap()->GetNodes(nodes);
    int values = 0;
    for (GenApi::INode* node : nodes)
    {
        GenApi::CValuePtr value(node);
        if (value.IsValid() && node->IsFeature() && GenApi::IsReadable(node))
        {
            EXPECT_NO_THROW(value->ToString(true)) << node->GetName();
            ++values;
        }
    }
    EXPECT_GT(values, 40);
}

TEST(EmulationDevice, limitsFollowEachOther)
{
    const SRig rig;
    const auto device = rig.Open();
    EXPECT_EQ(Integer(*device, "Width")->GetMax(), 64);
    EXPECT_EQ(Integer(*device, "OffsetX")->GetMax(), 0);
    Integer(*device, "Width")->SetValue(32);
    EXPECT_EQ(Integer(*device, "OffsetX")->GetMax(), 32);
    Integer(*device, "OffsetX")->SetValue(16);
    EXPECT_EQ(Integer(*device, "Width")->GetMax(), 48);
    EXPECT_EQ(Integer(*device, "Width")->GetInc(), 4);
}

TEST(EmulationDevice, sizeIsNotWritableWhileTheStreamRuns)
{
    const SRig rig;
    const auto device = rig.Open();
    CGrab grab(*device);
    EXPECT_TRUE(GenApi::IsWritable(device->GetNodeMap()->GetNode("Width")));
    grab.Start();
    EXPECT_FALSE(GenApi::IsWritable(device->GetNodeMap()->GetNode("Width")));
    EXPECT_THROW(Integer(*device, "Width")->SetValue(32), GenICam::AccessException);
    grab.Execute("AcquisitionStop");
    grab.stream.Stop();
    EXPECT_TRUE(GenApi::IsWritable(device->GetNodeMap()->GetNode("Width")));
}

TEST(EmulationDevice, secondControlIsRefusedNamingTheOwner)
{
    const SRig rig;
    const auto first = rig.Open();
    const auto second = rig.Create();
    try
    {
        second->Open(EDeviceAccess::Control);
        FAIL() << "no exception";
    }
    catch (const GenICam::AccessException& error)
    {
        EXPECT_THAT(error.GetDescription(), HasSubstr("this process"));
    }
    EXPECT_FALSE(second->IsOpen());
    first->Close();
    second->Open(EDeviceAccess::Control);
    EXPECT_TRUE(second->IsOpen());
}

TEST(EmulationDevice, refusedOpenNamesTheConfiguredOwner)
{
    auto config = Small();
    config.faults.refuseOpenOwner = "another host";
    const SRig rig({config});
    EXPECT_EQ(rig.Enumerate()[0].Get(Velmo::Key::AccessStatus), "InUse");
    try
    {
        rig.Open();
        FAIL() << "no exception";
    }
    catch (const GenICam::AccessException& error)
    {
        EXPECT_THAT(error.GetDescription(), HasSubstr("another host"));
    }
}

TEST(EmulationDevice, monitorReadsButDoesNotWrite)
{
    const SRig rig;
    const auto owner = rig.Open();
    const auto monitor = rig.Open(0, EDeviceAccess::Monitor);
    EXPECT_EQ(Integer(*monitor, "Width")->GetValue(), 64);
    try
    {
        Integer(*monitor, "Width")->SetValue(32);
        FAIL() << "a monitor must not write";
    }
    catch (const GenICam::AccessException& error)
    {
        EXPECT_THAT(error.GetDescription(), HasSubstr("Node 'Width' is not writable: the emulated camera "));
        EXPECT_THAT(error.GetDescription(), HasSubstr("is open as a monitor"));
    }
    EXPECT_EQ(Integer(*owner, "Width")->GetValue(), 64);
}

TEST(EmulationDevice, monitorGetsTheOwnersImages)
{
    const SRig rig;
    const auto owner = rig.Open();
    const auto monitor = rig.Open(0, EDeviceAccess::Monitor);
    CGrab seen(*monitor);
    seen.QueueAll();
    seen.stream.Start();
    GenApi::CEnumerationPtr type(seen.stream.GetNodeMap()->GetNode("TransmissionType"));
    EXPECT_EQ(type->ToString(), "UseCameraConfig");
    CGrab grab(*owner);
    grab.Start();
    EXPECT_EQ(seen.Next().blockId, 1U);
    EXPECT_EQ(grab.Next().blockId, 1U);
}

TEST(EmulationDevice, brokenDescriptionFailsTheOpenAndFreesTheCamera)
{
    auto config = Small();
    config.faults.brokenDescription = true;
    const SRig rig({config});
    const auto device = rig.Create();
    EXPECT_THROW(device->Open(EDeviceAccess::Control), GenICam::GenericException);
    EXPECT_FALSE(device->IsOpen());
    EXPECT_EQ(device->GetNodeMap(), nullptr);
    EXPECT_THROW(device->Open(EDeviceAccess::Monitor), GenICam::GenericException);
}

TEST(EmulationDevice, readErrorReachesTheNode)
{
    const SRig rig;
    const auto device = rig.Open();
    Simulator::SFaults faults;
    faults.readError = "cable cut";
    rig.control->FindCamera("E-1")->SetFaults(faults);
    device->GetNodeMap()->InvalidateNodes();
    EXPECT_THROW(Integer(*device, "Width")->GetValue(false, true), GenICam::GenericException);
}

TEST(EmulationDevice, writeErrorReachesTheNode)
{
    const SRig rig;
    const auto device = rig.Open();
    Simulator::SFaults faults;
    faults.writeError = "cable cut";
    rig.control->FindCamera("E-1")->SetFaults(faults);
    EXPECT_THROW(Integer(*device, "Width")->SetValue(32), GenICam::GenericException);
}

TEST(EmulationDevice, removalIsReportedOnce)
{
    const SRig rig;
    const auto device = rig.Open();
    CCounter removed;
    device->SetRemovalCallback([&] { removed.Count(); });
    rig.control->Unplug("E-1");
    EXPECT_TRUE(removed.WaitFor(1));
    EXPECT_TRUE(device->IsRemoved());
    device->SetRemovalCallback(nullptr);
    EXPECT_EQ(removed.Get(), 1);
    EXPECT_NO_THROW(device->Close());
}

TEST(EmulationDevice, removalIsReportedSeveralTimesWhenAskedFor)
{
    auto config = Small();
    config.faults.removalReports = 3;
    const SRig rig({config});
    const auto device = rig.Open();
    CCounter removed;
    device->SetRemovalCallback([&] { removed.Count(); });
    rig.control->FindCamera("E-1")->Remove();
    EXPECT_TRUE(removed.WaitFor(3));
    device->SetRemovalCallback(nullptr);
}

TEST(EmulationDevice, callbackSetAfterTheLossIsStillCalled)
{
    const SRig rig;
    const auto device = rig.Open();
    rig.control->Unplug("E-1");
    CCounter removed;
    device->SetRemovalCallback([&] { removed.Count(); });
    EXPECT_TRUE(removed.WaitFor(1));
    device->SetRemovalCallback(nullptr);
}

TEST(EmulationDevice, callbackMayTakeItselfAway)
{
    const SRig rig;
    const auto device = rig.Open();
    CCounter removed;
    device->SetRemovalCallback(
        [&]
        {
            device->SetRemovalCallback(nullptr);
            removed.Count();
        });
    rig.control->Unplug("E-1");
    EXPECT_TRUE(removed.WaitFor(1));
    device->SetRemovalCallback(nullptr);
}

TEST(EmulationDevice, removedCameraCannotBeOpenedAgain)
{
    const SRig rig;
    const auto device = rig.Open();
    rig.control->Unplug("E-1");
    device->Close();
    EXPECT_TRUE(device->IsRemoved());
    EXPECT_THROW(device->Open(EDeviceAccess::Control), GenICam::RuntimeException);
}

TEST(EmulationDevice, outlivesItsTransport)
{
    auto rig = std::make_unique<SRig>();
    const auto device = rig->Open();
    rig.reset();
    EXPECT_EQ(Integer(*device, "Width")->GetValue(), 64);
}

TEST(EmulationDevice, hasOneStream)
{
    const SRig rig;
    const auto device = rig.Create();
    EXPECT_EQ(device->GetNumStreams(), 1U);
    EXPECT_NE(device->GetStream(0), nullptr);
    EXPECT_EQ(device->GetStream(1), nullptr);
}

TEST(EmulationDevice, eventsReachTheNodesOfTheController)
{
    const SRig rig;
    const auto owner = rig.Open();
    const auto monitor = rig.Open(0, EDeviceAccess::Monitor);
    EXPECT_EQ(monitor->GetEventGrabberNodeMap(), nullptr);
    ASSERT_NE(owner->GetEventGrabberNodeMap(), nullptr);
    CWaitBox<std::int64_t> frames;
    GenApi::INode* const pFrame = owner->GetNodeMap()->GetNode("EventExposureEndFrameID");
    const auto handle =
        pFrame->RegisterCallback([&](GenApi::INode* pNode) { frames.Put(GenApi::CIntegerPtr(pNode)->GetValue()); });
    owner->StartEvents();
    monitor->StartEvents();
    GenApi::CEnumerationPtr(owner->GetNodeMap()->GetNode("EventSelector"))->FromString("ExposureEnd");
    GenApi::CEnumerationPtr(owner->GetNodeMap()->GetNode("EventNotification"))->FromString("On");
    CGrab grab(*owner);
    grab.Start();
    const std::vector<std::int64_t> seen = frames.Await(3);
    ASSERT_GE(seen.size(), 3U);
    EXPECT_EQ((std::vector<std::int64_t>{seen[0], seen[1], seen[2]}), (std::vector<std::int64_t>{1, 2, 3}));
    EXPECT_EQ(Integer(*owner, "EventExposureEnd")->GetValue(), 0x9003);
    EXPECT_GT(Integer(*owner, "EventExposureEndTimestamp")->GetValue(), 0);
    EXPECT_FALSE(GenApi::IsReadable(Integer(*monitor, "EventExposureEnd").Get()));
    pFrame->DeregisterCallback(handle);
    owner->Close();
    EXPECT_EQ(owner->GetEventGrabberNodeMap(), nullptr);
}
