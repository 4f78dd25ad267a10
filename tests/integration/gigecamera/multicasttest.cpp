// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "protocols/gvbsregisters.h"
#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "support/gigemonitor.h"
#include "support/gvcppeer.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

using namespace Velmo;
using Test::CCameraProgram;
using Test::CGigEClient;
using Test::CGigEMonitor;
using Test::CGvcpPeer;
using Test::CRunningStream;
using Test::CSignal;
using Test::CStreamBuffers;
using Test::Execute;
using Test::WriteConfig;
using ::testing::HasSubstr;
using Transport::EResultStatus;
using Transport::SStreamResult;
using namespace std::chrono_literals;

namespace
{

/** A camera on loopback whose controlling application streams by multicast. */
class Multicast : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override { GigE::SetAdapters({}); }

    std::unique_ptr<IVelmoDevice> OpenCamera()
    {
        std::unique_ptr<IVelmoDevice> pDevice = m_client.Open("GC-1");
        Transport::IStream& stream = *pDevice->GetStream(0);
        stream.Open();
        Choose(stream, "Multicast");
        return pDevice;
    }
    static void Choose(Transport::IStream& stream, const char* type)
    {
        GenApi::CEnumerationPtr(stream.GetNodeMap()->GetNode("TransmissionType"))->FromString(type);
    }
    static GenApi::CIntegerPtr Parameter(IVelmoDevice& device, const char* name)
    {
        return GenApi::CIntegerPtr(device.GetStream(0)->GetNodeMap()->GetNode(name));
    }

    CGigEClient m_client;
};

void ExpectImage(const SStreamResult& result, std::uint64_t number)
{
    EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
    EXPECT_EQ(result.blockId, number);
}

} // namespace

TEST_F(Multicast, theControllerAndTwoMonitorsSeeEveryImage)
{
    CCameraProgram cameras({"--config", WriteConfig("\"TriggerMode\": \"On\", \"TriggerSource\": \"Software\"")});
    {
        const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
        CRunningStream controller(*pDevice, 20);
        CGigEMonitor first;
        CGigEMonitor second;
        first.Start();
        second.Start();
        for (std::uint64_t image = 1; image <= 100; ++image)
        {
            Execute(*pDevice, "TriggerSoftware");
            std::vector<std::uint8_t> own;
            std::vector<std::uint8_t> seenByFirst;
            std::vector<std::uint8_t> seenBySecond;
            ExpectImage(controller.Next(&own), image);
            ExpectImage(first.Next(&seenByFirst), image);
            ExpectImage(second.Next(&seenBySecond), image);
            ASSERT_EQ(own.size(), std::size_t{640} * 480);
            ASSERT_EQ(own, seenByFirst);
            ASSERT_EQ(own, seenBySecond);
        }
        EXPECT_EQ(controller.Statistic("StreamDeliveredFrameCount"), 100);
        EXPECT_EQ(controller.Statistic("StreamLostFrameCount"), 0);
        EXPECT_EQ(first.Statistic("StreamLostFrameCount"), 0);
        EXPECT_EQ(second.Statistic("StreamLostFrameCount"), 0);
    }
    EXPECT_THAT(cameras.End(), HasSubstr("0 left out"));
}

TEST_F(Multicast, aFreeRunningCameraLosesNothing)
{
    const CCameraProgram cameras({"--config", WriteConfig("", "\"frameRate\": 50")});
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CRunningStream controller(*pDevice, 150);
    for (std::uint64_t image = 1; image <= 300; ++image)
    {
        ExpectImage(controller.Next(), image);
    }
}

TEST_F(Multicast, groupAndPortAreThoseThatWereChosen)
{
    constexpr std::uint32_t group = 0xEFFF4D07; // 239.255.77.7
    constexpr std::uint32_t port = 40077;
    const CCameraProgram cameras({"--config", WriteConfig("")});
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Parameter(*pDevice, "DestinationAddr")->FromString("239.255.77.7");
    EXPECT_EQ(Parameter(*pDevice, "DestinationAddr")->GetValue(), group);
    Parameter(*pDevice, "DestinationPort")->SetValue(port);
    CGvcpPeer other;
    {
        CRunningStream stream(*pDevice);
        EXPECT_EQ(other.Read(Gvbs::StreamChannelDestination), group);
        EXPECT_EQ(other.Read(Gvbs::StreamChannelPort), port);
        ExpectImage(stream.Next(), 1);
    }
    EXPECT_EQ(other.Read(Gvbs::StreamChannelPort), 0U) << "the camera may go on sending to the group";
}

TEST_F(Multicast, everyCameraHasAGroupOfItsOwnUnlessOneIsChosen)
{
    const CCameraProgram cameras({"--count", "2"}, 2);
    for (const auto& [serial, group] : {std::pair("GEV-0001", 0xEFFF0001), std::pair("GEV-0002", 0xEFFF0002)})
    {
        const std::unique_ptr<IVelmoDevice> pDevice = m_client.Open(serial);
        pDevice->GetStream(0)->Open();
        EXPECT_EQ(Parameter(*pDevice, "DestinationAddr")->GetValue(), group);
        EXPECT_EQ(Parameter(*pDevice, "DestinationPort")->GetValue(), 0);
    }
}

TEST_F(Multicast, anAddressThatIsNoGroupIsRefused)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    for (const char* address : {"192.168.0.1", "224.0.0.1", "240.0.0.1"})
    {
        EXPECT_THROW(Parameter(*pDevice, "DestinationAddr")->FromString(address), GenICam::GenericException) << address;
    }
    EXPECT_THROW(Parameter(*pDevice, "DestinationPort")->SetValue(65536), GenICam::OutOfRangeException);
    EXPECT_EQ(Parameter(*pDevice, "DestinationAddr")->ToString(), "239.255.0.1");
}

TEST_F(Multicast, theStreamIsUnicastAgainWhenThatIsChosen)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CGvcpPeer other;
    for (const char* type : {"Multicast", "Unicast", "Multicast"})
    {
        pDevice->GetStream(0)->Open();
        Choose(*pDevice->GetStream(0), type);
        CRunningStream stream(*pDevice);
        ExpectImage(stream.Next(), 1);
        EXPECT_EQ(other.Read(Gvbs::StreamChannelDestination) >> 28 == 0xE, type == std::string("Multicast"));
    }
}

TEST_F(Multicast, aPortThatSomebodyHasForHimselfIsAnErrorAndBuffersStayQueued)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    const int taken = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    ASSERT_EQ(bind(taken, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    socklen_t bytes = sizeof address;
    getsockname(taken, reinterpret_cast<sockaddr*>(&address), &bytes);
    Parameter(*pDevice, "DestinationPort")->SetValue(ntohs(address.sin_port));
    CStreamBuffers buffers(stream, 3);
    try
    {
        stream.Start();
        FAIL() << "started";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("joining 239.255.0.1, UDP port"));
    }
    close(taken);
    stream.Start();
    Execute(*pDevice, "AcquisitionStart");
    ExpectImage(buffers.Next(), 1);
}

TEST_F(Multicast, theLossOfTheCameraGivesAllBuffersBackAndStoppingDoesNotBlock)
{
    CCameraProgram cameras({"--config", WriteConfig("")});
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    CSignal removed;
    pDevice->SetRemovalCallback([&removed] { removed.Raise(); });
    Transport::IStream& stream = *pDevice->GetStream(0);
    std::optional<CStreamBuffers> buffers(std::in_place, stream, 5);
    stream.Start();
    Execute(*pDevice, "AcquisitionStart");
    ExpectImage(buffers->Next(), 1);
    cameras.Kill();
    ASSERT_TRUE(removed.Wait(3s));
    SStreamResult result;
    int returned = 0;
    while (stream.RetrieveResult(result, 0))
    {
        ++returned;
    }
    EXPECT_EQ(returned, 5);
    EXPECT_EQ(result.status, EResultStatus::Canceled);
    EXPECT_THROW(stream.Start(), GenICam::RuntimeException);
    const auto start = std::chrono::steady_clock::now();
    buffers.reset();
    pDevice->Close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 500ms);
    pDevice->SetRemovalCallback(nullptr);
}

TEST_F(Multicast, stoppingRightAfterDeathDoesNotBlock)
{
    CCameraProgram cameras({"--config", WriteConfig("")});
    const std::unique_ptr<IVelmoDevice> pDevice = OpenCamera();
    Transport::IStream& stream = *pDevice->GetStream(0);
    std::optional<CStreamBuffers> buffers(std::in_place, stream, 3);
    stream.Start();
    cameras.Kill();
    const auto start = std::chrono::steady_clock::now();
    buffers.reset();
    pDevice->Close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1500ms);
}
