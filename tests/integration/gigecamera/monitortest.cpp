// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/gigemonitor.h"
#include "support/gvcppeer.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Velmo;
using Test::CCameraProgram;
using Test::CGigEMonitor;
using Test::CGvcpPeer;
using Test::WriteConfig;
using ::testing::HasSubstr;
using Transport::EResultStatus;
using Transport::SStreamResult;
using namespace std::chrono_literals;

namespace
{

constexpr std::uint32_t Camera = 0x7F000001;
constexpr std::uint32_t Group = 0xEFFF0A0A;      // 239.255.10.10
constexpr std::uint32_t OtherGroup = 0xEFFF0A0B; // 239.255.10.11
constexpr std::uint32_t PacketBytes = 1500;

void StartAcquisition(CGvcpPeer& controller)
{
    EXPECT_EQ(controller.Write(static_cast<std::uint32_t>(Simulator::Register::AcquisitionStart), 1),
              Gvcp::EStatus::Success);
}

/** Takes control for as long as the test may take on a busy machine. */
void OpenStream(CGvcpPeer& controller)
{
    constexpr std::uint32_t longMs = 60000;
    controller.OpenStream(PacketBytes);
    EXPECT_EQ(controller.Write(Gvbs::HeartbeatTimeout, longMs), Gvcp::EStatus::Success);
}

class Monitor : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override { GigE::SetAdapters({}); }
};

} // namespace

TEST_F(Monitor, twoOfThemSeeEveryImageThatTheControllerStreamsByMulticast)
{
    const CCameraProgram cameras({"--config", WriteConfig("", "\"frameRate\": 25")});
    CGvcpPeer controller(Camera, Group);
    OpenStream(controller);
    CGigEMonitor first;
    CGigEMonitor second;
    first.Start();
    second.Start();
    StartAcquisition(controller);
    for (std::uint64_t image = 1; image <= 100; ++image)
    {
        std::vector<std::uint8_t> seenByFirst;
        std::vector<std::uint8_t> seenBySecond;
        const SStreamResult result = first.Next(&seenByFirst);
        const SStreamResult other = second.Next(&seenBySecond);
        ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
        ASSERT_EQ(other.status, EResultStatus::Ok) << other.errorDescription;
        ASSERT_EQ(result.blockId, image);
        ASSERT_EQ(other.blockId, image);
        ASSERT_EQ(result.width, 640U);
        ASSERT_EQ(result.height, 480U);
        ASSERT_EQ(seenByFirst.size(), std::size_t{640} * 480);
        ASSERT_EQ(seenByFirst, seenBySecond);
    }
    EXPECT_GE(first.Statistic("StreamDeliveredFrameCount"), 100);
    EXPECT_EQ(first.Statistic("StreamLostFrameCount"), 0);
    EXPECT_EQ(first.Statistic("StreamIncompleteFrameCount"), 0);
    EXPECT_EQ(first.Statistic("StreamPacketMissingCount"), 0);
}

TEST_F(Monitor, seesTheSameBytesAsTheController)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")});
    CGvcpPeer controller(Camera, Group);
    OpenStream(controller);
    CGigEMonitor monitor;
    monitor.Start();
    for (int grab = 0; grab < 3; ++grab) // each begins with block id 1 again
    {
        StartAcquisition(controller);
        std::vector<std::uint8_t> expected;
        for (const auto& [id, data] : controller.ReceiveBlock(5s))
        {
            Gvsp::SPacket packet;
            ASSERT_EQ(Gvsp::ParsePacket(data.data(), data.size(), packet), Gvsp::EParseResult::Ok);
            if (packet.header.format == Gvsp::EPacketFormat::Payload)
            {
                expected.insert(expected.end(), packet.pPayload, packet.pPayload + packet.payloadBytes);
            }
        }
        std::vector<std::uint8_t> seen;
        const SStreamResult result = monitor.Next(&seen);
        EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
        EXPECT_EQ(seen, expected);
    }
    EXPECT_EQ(monitor.Statistic("StreamLostFrameCount"), 0);
}

/** What a user reads must not sound as if the camera never let anybody write. */
template <class Write> void ExpectMonitorsRefusal(Write write, const std::string& node)
{
    try
    {
        write();
        FAIL() << "a monitor must not write " << node;
    }
    catch (const GenICam::AccessException& error)
    {
        EXPECT_THAT(error.GetDescription(), HasSubstr("Node '" + node + "' is not writable: the camera "));
        EXPECT_THAT(error.GetDescription(), HasSubstr("is open as a monitor, which only watches"));
    }
}

TEST_F(Monitor, looksButCannotTouch)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    CGvcpPeer controller(Camera, Group);
    OpenStream(controller);
    CGigEMonitor monitor;
    const GenApi::CIntegerPtr width(monitor.Device().GetNodeMap()->GetNode("Width"));
    EXPECT_EQ(width->GetValue(), 640);
    EXPECT_EQ(width->GetAccessMode(), GenApi::EAccessMode::RO);
    ExpectMonitorsRefusal([&] { width->SetValue(320); }, "Width");
    const GenApi::CCommandPtr start(monitor.Device().GetNodeMap()->GetNode("AcquisitionStart"));
    EXPECT_FALSE(GenApi::IsWritable(start->GetAccessMode()));
    ExpectMonitorsRefusal([&] { start->Execute(); }, "AcquisitionStart");
    EXPECT_EQ(controller.Read(Gvbs::ControlChannelPrivilege), Gvbs::CcpControlAccess);
}

TEST_F(Monitor, takesTheStreamAsTheControllerConfiguredIt)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    CGigEMonitor monitor;
    monitor.Stream().Open();
    const GenApi::CEnumerationPtr type(monitor.Stream().GetNodeMap()->GetNode("TransmissionType"));
    EXPECT_NO_THROW(type->FromString("UseCameraConfig"));
    EXPECT_EQ(type->ToString(), "UseCameraConfig");
    EXPECT_THROW(type->FromString("Multicast"), GenICam::GenericException);
}

TEST_F(Monitor, aStreamThatIsNotMulticastIsRefusedInWords)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    CGigEMonitor monitor;
    try
    {
        monitor.Start();
        FAIL() << "started";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("does not stream"));
    }
    CGvcpPeer controller;
    OpenStream(controller);
    try
    {
        monitor.Stream().Start();
        FAIL() << "started";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("unicast to 127.0.0.1: ask the controlling application"));
    }
    SStreamResult result;
    monitor.Stream().Stop();
    for (int buffer = 0; buffer < 20; ++buffer)
    {
        ASSERT_TRUE(monitor.Stream().RetrieveResult(result, 0)) << buffer;
        EXPECT_EQ(result.status, EResultStatus::Canceled);
    }
}

TEST_F(Monitor, aCameraThatSomebodyHasForHimselfAloneIsRefused)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    CGvcpPeer controller;
    ASSERT_EQ(controller.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpExclusiveAccess), Gvcp::EStatus::Success);
    EXPECT_THROW(CGigEMonitor(), GenICam::AccessException);
}

TEST_F(Monitor, lossIsAFailedImageWithItsReasonAndTheNextImagesCome)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "lost=2"});
    CGvcpPeer controller(Camera, Group);
    OpenStream(controller);
    CGigEMonitor monitor;
    monitor.Start(60);
    StartAcquisition(controller);
    int good = 0;
    int failed = 0;
    std::uint64_t last = 0;
    while (good + failed < 100)
    {
        const SStreamResult result = monitor.Next();
        EXPECT_GT(result.blockId, last);
        last = result.blockId;
        good += result.status == EResultStatus::Ok ? 1 : 0;
        if (result.status != EResultStatus::Ok)
        {
            ++failed;
            EXPECT_THAT(result.errorDescription, HasSubstr("packets are missing"));
            EXPECT_NE(result.errorCode, 0U);
        }
    }
    // 208 packets an image, of which 2 in a thousand vanish: some two in three images have a gap.
    EXPECT_GT(good, 5);
    EXPECT_GT(failed, 20);
    EXPECT_GE(monitor.Statistic("StreamPacketMissingCount"), failed);
}

TEST_F(Monitor, disorderAndDuplicatesDoNotHurt)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "reordered=50", "--fault", "duplicated=50"});
    CGvcpPeer controller(Camera, Group);
    OpenStream(controller);
    CGigEMonitor monitor;
    monitor.Start();
    StartAcquisition(controller);
    for (std::uint64_t image = 1; image <= 100; ++image)
    {
        const SStreamResult result = monitor.Next();
        ASSERT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
        ASSERT_EQ(result.blockId, image);
    }
}

TEST_F(Monitor, followsTheControllerToAnotherGroup)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"AcquisitionMode\": \"SingleFrame\"")});
    CGigEMonitor monitor;
    {
        CGvcpPeer controller(Camera, Group);
        OpenStream(controller);
        monitor.Start();
        StartAcquisition(controller);
        EXPECT_EQ(monitor.Next().status, EResultStatus::Ok);
        ASSERT_EQ(controller.Write(Gvbs::ControlChannelPrivilege, 0), Gvcp::EStatus::Success);
    }
    CGvcpPeer controller(Camera, OtherGroup);
    OpenStream(controller);
    SStreamResult result;
    for (int attempt = 0; attempt < 20; ++attempt)
    {
        StartAcquisition(controller);
        if (monitor.Stream().RetrieveResult(result, 200))
        {
            break;
        }
    }
    EXPECT_EQ(result.status, EResultStatus::Ok);
}

TEST_F(Monitor, theLossOfTheCameraIsNoticed)
{
    CCameraProgram cameras({"--config", WriteConfig("")});
    CGvcpPeer controller(Camera, Group);
    OpenStream(controller);
    CGigEMonitor monitor;
    monitor.Start(4);
    cameras.Kill();
    EXPECT_TRUE(monitor.WaitForRemoval(3s));
    EXPECT_TRUE(monitor.Device().IsRemoved());
    for (int buffer = 0; buffer < 4; ++buffer)
    {
        EXPECT_EQ(monitor.Next().status, EResultStatus::Canceled);
    }
    EXPECT_THROW(monitor.Stream().Start(), GenICam::RuntimeException);
}
