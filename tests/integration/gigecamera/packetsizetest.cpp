// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "support/cameraprogram.h"
#include "support/networknamespace.h"
#include "support/warnings.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>

using namespace Velmo;
using Test::CCameraProgram;
using Test::CPeerNamespace;
using Test::CWarnings;
using Test::RunIp;
using Test::WriteConfig;
using ::testing::HasSubstr;
using Transport::EResultStatus;
using Transport::SStreamResult;

namespace
{

/** The packet size that the SDK chooses for simulated cameras behind paths of all kinds. */
class GigEPacketSize : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override
    {
        if (m_pDevice != nullptr)
        {
            m_pDevice->GetStream(0)->Stop();
        }
        m_pDevice.reset();
        GigE::SetAdapters({});
    }

    void Open()
    {
        DeviceInfoList list;
        m_pTransport->EnumerateDevices(list, Transport::EDiscoveryScope::All);
        ASSERT_EQ(list.size(), 1U);
        m_pDevice = m_pTransport->CreateDevice(list.front());
        m_pDevice->Open(EDeviceAccess::Control);
        m_pDevice->GetStream(0)->Open();
    }
    /** Starts the stream with one buffer. */
    void Start()
    {
        Transport::IStream& stream = *m_pDevice->GetStream(0);
        m_memory.resize(stream.GetPayloadBytes());
        stream.AnnounceBuffer(m_memory.data(), m_memory.size(), &m_memory);
        stream.QueueBuffer(&m_memory);
        stream.Start();
    }
    void Stop()
    {
        Transport::IStream& stream = *m_pDevice->GetStream(0);
        stream.Stop();
        SStreamResult result;
        while (stream.RetrieveResult(result, 0))
        {
        }
        stream.RevokeBuffer(&m_memory);
    }
    void ExpectAnImage()
    {
        GenApi::CCommandPtr(m_pDevice->GetNodeMap()->GetNode("AcquisitionStart"))->Execute();
        SStreamResult result;
        ASSERT_TRUE(m_pDevice->GetStream(0)->RetrieveResult(result, 5000));
        EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
        GenApi::CCommandPtr(m_pDevice->GetNodeMap()->GetNode("AcquisitionStop"))->Execute();
    }
    std::int64_t OfStream(const char* name) const
    {
        return GenApi::CIntegerPtr(m_pDevice->GetStream(0)->GetNodeMap()->GetNode(name))->GetValue(false, true);
    }
    std::string Origin() const
    {
        return GenApi::CEnumerationPtr(m_pDevice->GetStream(0)->GetNodeMap()->GetNode("PacketSizeOrigin"))
            ->ToString()
            .str();
    }
    GenApi::CIntegerPtr CameraSize() const { return m_pDevice->GetNodeMap()->GetNode("GevSCPSPacketSize"); }
    std::int64_t OfCamera() const { return CameraSize()->GetValue(false, true); }
    void Probe() const
    {
        GenApi::CCommandPtr(m_pDevice->GetStream(0)->GetNodeMap()->GetNode("ProbePacketSize"))->Execute();
    }

    std::shared_ptr<Transport::ITransport> m_pTransport = GigE::CreateTransport();
    std::unique_ptr<IVelmoDevice> m_pDevice;
    std::vector<std::uint8_t> m_memory;
};

} // namespace

TEST_F(GigEPacketSize, isTheLargestThatAnUnlimitedPathAndTheAdapterCarry)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    Open();
    EXPECT_EQ(OfStream("NegotiatedPacketSize"), 0);
    EXPECT_EQ(Origin(), "Camera");
    Start();
    EXPECT_EQ(OfStream("NegotiatedPacketSize"), 9000);
    EXPECT_EQ(OfStream("PathPacketSize"), 9000);
    EXPECT_EQ(OfCamera(), 9000);
    EXPECT_EQ(Origin(), "TestPackets");
    ExpectAnImage();
}

TEST_F(GigEPacketSize, isWhatASmallerPathLetsThroughToTheByte)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "mtu=4003"});
    Open();
    const auto begin = std::chrono::steady_clock::now();
    Start();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4));
    EXPECT_EQ(OfCamera(), 4000);
    EXPECT_EQ(OfStream("NegotiatedPacketSize"), 4000);
    EXPECT_EQ(Origin(), "TestPackets");
    ExpectAnImage();
}

TEST_F(GigEPacketSize, withoutTestPacketsIsTheLimitOfAdapterAndCamera)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "notest"});
    Open();
    CWarnings warnings;
    Start();
    EXPECT_EQ(OfCamera(), 9000);
    EXPECT_EQ(OfStream("PathPacketSize"), 0);
    EXPECT_EQ(Origin(), "Limits");
    EXPECT_THAT(warnings.Lines(), ::testing::Not(::testing::Contains(HasSubstr("test packet"))));
    ExpectAnImage();
}

TEST_F(GigEPacketSize, ofTheUserStandsEvenWhenItIsTheOneThatTheCameraHad)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    Open();
    const std::int64_t before = OfCamera();
    ASSERT_LT(before, 9000);
    CameraSize()->SetValue(before);
    Start();
    EXPECT_EQ(OfCamera(), before);
    EXPECT_EQ(OfStream("NegotiatedPacketSize"), before);
    EXPECT_EQ(Origin(), "User");
    ExpectAnImage();
}

TEST_F(GigEPacketSize, setBetweenTwoGrabsStandsToo)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    Open();
    Start();
    ASSERT_EQ(OfCamera(), 9000);
    Stop();
    CameraSize()->SetValue(2000);
    Start();
    EXPECT_EQ(OfCamera(), 2000);
    ExpectAnImage();
}

TEST_F(GigEPacketSize, isLeftAloneWhenChoosingIsSwitchedOff)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    Open();
    const std::int64_t before = OfCamera();
    GenApi::CBooleanPtr(m_pDevice->GetStream(0)->GetNodeMap()->GetNode("AutoPacketSize"))->SetValue(false);
    Start();
    EXPECT_EQ(OfCamera(), before);
    EXPECT_EQ(OfStream("NegotiatedPacketSize"), 0);
}

TEST_F(GigEPacketSize, isProbedOnDemandWithoutTouchingTheUsersChoice)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "mtu=1500"});
    Open();
    CameraSize()->SetValue(8000);
    Probe();
    EXPECT_EQ(OfStream("PathPacketSize"), 1500);
    EXPECT_EQ(OfStream("NegotiatedPacketSize"), 8000);
    EXPECT_EQ(OfCamera(), 8000);
    EXPECT_EQ(Origin(), "User");
}

TEST_F(GigEPacketSize, probedOnDemandIsTheGrabsOwn)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "mtu=1500"});
    Open();
    Probe();
    EXPECT_EQ(OfCamera(), 1500);
    EXPECT_EQ(Origin(), "TestPackets");
    Start();
    EXPECT_EQ(OfCamera(), 1500);
    EXPECT_THROW(Probe(), GenICam::GenericException) << "while images are taken";
    ExpectAnImage();
}

TEST_F(GigEPacketSize, testPacketsThatNeverArriveLeaveTheStreamChannelClosed)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--fault", "nostream"});
    Open();
    Probe();
    EXPECT_EQ(OfStream("PathPacketSize"), 0);
    EXPECT_EQ(Origin(), "Limits");
    EXPECT_EQ(GenApi::CIntegerPtr(m_pDevice->GetNodeMap()->GetNode("GevSCPHostPort"))->GetValue(false, true), 0);
    EXPECT_EQ(GenApi::CIntegerPtr(m_pDevice->GetNodeMap()->GetNode("GevSCDA"))->GetValue(false, true), 0);
}

TEST_F(GigEPacketSize, behindACableIsWhatItsNarrowerEndCarries)
{
    CPeerNamespace far;
    far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
    RunIp("link set va mtu 9000");
    far.Visit([] { RunIp("link set vb mtu 3000"); });
    GigE::SetAdapters({"va"});
    std::unique_ptr<CCameraProgram> pCameras;
    far.Visit(
        [&]
        {
            pCameras = std::make_unique<CCameraProgram>(
                std::vector<std::string>{"--interface", "vb", "--config", WriteConfig("")});
        });
    Open();
    Start();
    EXPECT_EQ(OfCamera(), 3000);
    EXPECT_EQ(Origin(), "TestPackets");
    ExpectAnImage();
}

TEST_F(GigEPacketSize, onARealAdapterWithoutTestPacketsIsChosenWithAWarning)
{
    CPeerNamespace far;
    far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
    GigE::SetAdapters({"va"});
    std::unique_ptr<CCameraProgram> pCameras;
    far.Visit(
        [&]
        {
            pCameras = std::make_unique<CCameraProgram>(
                std::vector<std::string>{"--interface", "vb", "--config", WriteConfig(""), "--fault", "notest"});
        });
    Open();
    CWarnings warnings;
    Start();
    EXPECT_EQ(OfCamera(), 1500);
    EXPECT_EQ(Origin(), "Limits");
    EXPECT_THAT(warnings.Lines(),
                ::testing::Contains(
                    ::testing::AllOf(HasSubstr("packets of 1500 bytes, the most that network adapter and camera allow"),
                                     HasSubstr("no test packet arrived"), HasSubstr("firewall"))));
    ExpectAnImage();
}

TEST_F(GigEPacketSize, isNotMoreThanTheAdapterTakes)
{
    CPeerNamespace far;
    far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
    far.Visit([] { RunIp("link set vb mtu 9000"); });
    GigE::SetAdapters({"va"});
    std::unique_ptr<CCameraProgram> pCameras;
    far.Visit(
        [&]
        {
            pCameras = std::make_unique<CCameraProgram>(
                std::vector<std::string>{"--interface", "vb", "--config", WriteConfig("")});
        });
    Open();
    Start();
    EXPECT_EQ(OfCamera(), 1500);
    ExpectAnImage();
}

TEST_F(GigEPacketSize, clockAndLinkOfTheCameraAreTold)
{
    const CCameraProgram cameras({"--config", WriteConfig(""), "--link-speed", "2500"});
    Open();
    GenApi::INodeMap& parameters = *m_pDevice->GetTLNodeMap();
    EXPECT_EQ(GenApi::CIntegerPtr(parameters.GetNode("TimestampTickFrequency"))->GetValue(), 1'000'000'000);
    EXPECT_EQ(GenApi::CIntegerPtr(parameters.GetNode("LinkSpeed"))->GetValue(), 2500);
}

TEST_F(GigEPacketSize, receiveBufferOfTheStreamIsTold)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    Open();
    EXPECT_EQ(OfStream("ReceiveBufferSize"), 0);
    Start();
    EXPECT_GE(OfStream("ReceiveBufferWanted"), std::int64_t{1} << 20);
    std::int64_t allowed = 0;
    std::ifstream("/proc/sys/net/core/rmem_max") >> allowed;
    EXPECT_EQ(OfStream("ReceiveBufferSize"), std::min(allowed, std::int64_t{8} << 20));
}
