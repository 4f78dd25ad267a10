// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/firmware.h"
#include "genapi/exceptions.h"
#include "rig.h"
#include "support/filenodes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace Velmo;
using EmulationTest::CCounter;
using EmulationTest::DeadlineMs;
using EmulationTest::Small;
using EmulationTest::SRig;
using Simulator::MakeFirmware;
using Test::CFileNodes;

namespace
{

constexpr const char* Model = "Inspector";

Simulator::SCameraConfig Updatable()
{
    Simulator::SCameraConfig config = Small();
    config.modelName = Model;
    config.bootTimeMs = 20;
    return config;
}

/** Enumerates until there are that many cameras. Nothing tells of a camera that came: enumeration is how it is found.
 */
DeviceInfoList WaitFor(const SRig& rig, std::size_t count)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(DeadlineMs);
    DeviceInfoList list = rig.Enumerate();
    while (list.size() != count && std::chrono::steady_clock::now() < end)
    {
        std::this_thread::yield();
        list = rig.Enumerate();
    }
    return list;
}

/** The firmware's version of the one camera there is once it is back. */
std::string VersionOf(const SRig& rig)
{
    EXPECT_EQ(WaitFor(rig, 1).size(), 1U);
    const auto device = rig.Open();
    return CFileNodes(*device->GetNodeMap()).Get("DeviceFirmwareVersion");
}

} // namespace

TEST(EmulatedFirmware, anUpdateThroughTheNodeMapRunsAfterTheReset)
{
    SRig rig({Updatable()});
    CCounter losses;
    {
        const auto device = rig.Open();
        device->SetRemovalCallback([&losses] { losses.Count(); });
        CFileNodes nodes(*device->GetNodeMap());
        EXPECT_EQ(nodes.Get("DeviceFirmwareVersion"), "1.0.0");
        EXPECT_EQ(nodes.Upload("FirmwareUpdate", MakeFirmware("2.1.0", Model, 5000)), "Success");
        EXPECT_EQ(nodes.Get("FirmwareStatus"), "Verified");
        nodes.Execute("FirmwareActivate");
        EXPECT_EQ(nodes.Get("FirmwareStatus"), "ActivationPending");
        nodes.Execute("DeviceReset");
        EXPECT_TRUE(losses.WaitFor(1)) << "it fails as a removed device does";
        EXPECT_TRUE(device->IsRemoved());
        EXPECT_THROW(nodes.Get("FirmwareStatus"), GenICam::GenericException);
    }
    EXPECT_EQ(VersionOf(rig), "2.1.0");
}

TEST(EmulatedFirmware, whatWasUploadedIsReadBack)
{
    SRig rig({Updatable()});
    const auto device = rig.Open();
    CFileNodes nodes(*device->GetNodeMap());
    const std::vector<std::uint8_t> image = MakeFirmware("2.1.0", Model, 1301);
    ASSERT_EQ(nodes.Upload("FirmwareUpdate", image), "Success");
    EXPECT_EQ(nodes.Download("FirmwareUpdate"), image);
    EXPECT_EQ(nodes.Get("FileSize"), std::to_string(image.size()));
}

TEST(EmulatedFirmware, theSelectorsSelectWhatTheStandardSays)
{
    SRig rig({Updatable()});
    const auto device = rig.Open();
    const auto selected = [&](const char* name)
    {
        GenApi::FeatureList list;
        dynamic_cast<GenApi::ISelector&>(*device->GetNodeMap()->GetNode(name)).GetSelectedFeatures(list);
        return list.size();
    };
    EXPECT_EQ(selected("FileSelector"), 9U);
    EXPECT_EQ(selected("FileOperationSelector"), 6U);
}

TEST(EmulatedFirmware, powerLostInAnUploadLeavesAnOpenableCameraWithTheOldOne)
{
    const std::vector<std::uint8_t> image = MakeFirmware("2.1.0", Model, 1100);
    constexpr std::uint32_t operations = 5; // open, three writes, close
    for (std::uint32_t nth = 1; nth <= operations; ++nth)
    {
        Simulator::SCameraConfig config = Updatable();
        config.faults.powerLossAtFileOperation = nth;
        SRig rig({config});
        CCounter losses;
        {
            const auto device = rig.Open();
            device->SetRemovalCallback([&losses] { losses.Count(); });
            CFileNodes nodes(*device->GetNodeMap());
            EXPECT_THROW(nodes.Upload("FirmwareUpdate", image), GenICam::GenericException) << nth;
            EXPECT_TRUE(losses.WaitFor(1)) << nth;
        }
        EXPECT_EQ(VersionOf(rig), "1.0.0") << nth;
        const auto device = rig.Open();
        CFileNodes nodes(*device->GetNodeMap());
        EXPECT_EQ(nodes.Get("FirmwareStatus"), "Invalid") << nth;
        EXPECT_EQ(nodes.Upload("FirmwareUpdate", image), "Success") << "the second try, " << nth;
    }
}

TEST(EmulatedFirmware, anUploadThatIsNotClosedIsInvalidForTheNextApplication)
{
    SRig rig({Updatable()});
    {
        const auto device = rig.Open();
        CFileNodes nodes(*device->GetNodeMap());
        ASSERT_EQ(nodes.Open("FirmwareUpdate", "Write"), "Success");
    }
    const auto device = rig.Open();
    CFileNodes nodes(*device->GetNodeMap());
    EXPECT_EQ(nodes.Get("FirmwareStatus"), "Invalid");
    EXPECT_EQ(nodes.Upload("FirmwareUpdate", MakeFirmware("2.1.0", Model, 10)), "Success");
}

TEST(EmulatedFirmware, aDeviceOfBeforeTheResetDoesNotDisturbTheUploadOfTheNext)
{
    SRig rig({Updatable()});
    auto old = rig.Open();
    CFileNodes(*old->GetNodeMap()).Execute("DeviceReset");
    ASSERT_EQ(WaitFor(rig, 1).size(), 1U);
    const auto device = rig.Open();
    CFileNodes nodes(*device->GetNodeMap());
    ASSERT_EQ(nodes.Open("FirmwareUpdate", "Write"), "Success");
    old.reset();
    EXPECT_EQ(nodes.Get("FirmwareStatus"), "Receiving");
}

TEST(EmulatedFirmware, afterAResetTheFaultLetsNothingComeBack)
{
    Simulator::SCameraConfig config = Updatable();
    config.bootTimeMs = 0;
    config.faults.afterReset = Simulator::EAfterReset::Never;
    SRig rig({config});
    CFileNodes(*rig.Open()->GetNodeMap()).Execute("DeviceReset");
    EXPECT_TRUE(rig.Enumerate().empty());
    rig.control->Plug(config);
    EXPECT_EQ(rig.Enumerate().size(), 1U);
}

TEST(EmulatedFirmware, afterAResetTheFaultLetsTwoComeBack)
{
    Simulator::SCameraConfig config = Updatable();
    config.faults.afterReset = Simulator::EAfterReset::Twice;
    SRig rig({config});
    CFileNodes(*rig.Open()->GetNodeMap()).Execute("DeviceReset");
    const DeviceInfoList list = WaitFor(rig, 2);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].GetSerialNumber(), list[1].GetSerialNumber());
    EXPECT_NE(list[0].GetFullName(), list[1].GetFullName());
    const auto first = rig.Open(0);
    const auto second = rig.Open(1); // a camera of its own
    EXPECT_TRUE(rig.control->Unplug("E-1"));
    EXPECT_TRUE(first->IsRemoved());
    EXPECT_TRUE(second->IsRemoved());
    EXPECT_TRUE(rig.Enumerate().empty());
}

TEST(EmulatedFirmware, afterAResetTheFaultChangesTheSerialNumber)
{
    Simulator::SCameraConfig config = Updatable();
    config.faults.afterReset = Simulator::EAfterReset::OtherSerial;
    SRig rig({config});
    CFileNodes(*rig.Open()->GetNodeMap()).Execute("DeviceReset");
    const DeviceInfoList list = WaitFor(rig, 1);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0].GetSerialNumber(), "X-1");
    EXPECT_TRUE(rig.control->Unplug("E-1")) << "the data know it by its old number";
    EXPECT_TRUE(rig.Enumerate().empty());
}

TEST(EmulatedFirmware, aResetIntoOtherFirmwareTakesItsOwnTime)
{
    using Clock = std::chrono::steady_clock;
    Simulator::SCameraConfig config = Updatable();
    config.bootTimeMs = 0;
    config.firmwareBootTimeMs = 150;
    SRig rig({config});
    Clock::time_point begin;
    {
        const auto device = rig.Open();
        CFileNodes nodes(*device->GetNodeMap());
        ASSERT_EQ(nodes.Upload("FirmwareUpdate", MakeFirmware("2.1.0", Model, 10)), "Success");
        nodes.Execute("FirmwareActivate");
        begin = Clock::now();
        nodes.Execute("DeviceReset");
    }
    EXPECT_EQ(WaitFor(rig, 1).size(), 1U);
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(150));
}

TEST(EmulatedFirmware, fileOperationsTakeAsLongAsTheFaultSays)
{
    using Clock = std::chrono::steady_clock;
    Simulator::SCameraConfig config = Updatable();
    config.faults.fileDelayMs = 60;
    SRig rig({config});
    const auto device = rig.Open();
    CFileNodes nodes(*device->GetNodeMap());
    const auto begin = Clock::now();
    ASSERT_EQ(nodes.Open("UserFile1", "Write"), "Success");
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(60));
}
