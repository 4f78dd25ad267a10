// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "integration/gigecamera/messagepeer.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/gvcppeer.h"
#include "support/waitbox.h"
#include "transports/gige/gigetransport.h"
#include "transports/gige/internal/udpsocket.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Velmo;
using GigE::Internal::CUdpSocket;
using Test::CCameraProgram;
using Test::CGvcpPeer;
using Test::CMessagePeer;
using Test::CWaitBox;
using Test::WriteConfig;
using namespace std::chrono_literals;

namespace
{

constexpr std::uint32_t Camera = 0x7F000001;
constexpr std::uint32_t OtherAddress = 0x7F000009;

const char* const TestIsOn = "\"EventNotification[Test]\": \"On\"";

void GenerateTest(CGvcpPeer& controller)
{
    EXPECT_EQ(controller.Write(static_cast<std::uint32_t>(Simulator::Register::TestEventGenerate), 1),
              Gvcp::EStatus::Success);
}

/** The transport's side, in front of the program. */
class Events : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override
    {
        m_pDevice.reset();
        GigE::SetAdapters({});
    }
    void Open(EDeviceAccess access = EDeviceAccess::Control)
    {
        DeviceInfoList list;
        m_pTransport->EnumerateDevices(list, Transport::EDiscoveryScope::All);
        ASSERT_EQ(list.size(), 1U);
        m_pDevice = m_pTransport->CreateDevice(list.front());
        m_pDevice->Open(access);
    }
    void SwitchOn(const char* event)
    {
        GenApi::CEnumerationPtr(m_pDevice->GetNodeMap()->GetNode("EventSelector"))->FromString(event);
        GenApi::CEnumerationPtr(m_pDevice->GetNodeMap()->GetNode("EventNotification"))->FromString("On");
    }
    void Execute(const char* command) { GenApi::CCommandPtr(m_pDevice->GetNodeMap()->GetNode(command))->Execute(); }
    std::int64_t Counter(const char* name)
    {
        return GenApi::CIntegerPtr(m_pDevice->GetEventGrabberNodeMap()->GetNode(name))->GetValue();
    }
    void Watch(const char* name)
    {
        m_pDevice->GetNodeMap()->GetNode(name)->RegisterCallback(
            [this](GenApi::INode* pNode) { m_values.Put(GenApi::CIntegerPtr(pNode)->GetValue()); });
    }

    CWaitBox<std::int64_t> m_values; // before the device whose thread fills it
    std::shared_ptr<Transport::ITransport> m_pTransport = GigE::CreateTransport();
    std::unique_ptr<IVelmoDevice> m_pDevice;
};

} // namespace

TEST(MessageChannelOnTheNetwork, eventIsSentAgainUntilItIsAcknowledged)
{
    const CCameraProgram cameras({"--config", WriteConfig(TestIsOn)});
    CGvcpPeer controller(Camera);
    CMessagePeer messages;
    messages.Open(controller, 100, 5);
    GenerateTest(controller);
    const Gvcp::Bytes first = messages.Receive(5s);
    ASSERT_EQ(first.size(), 24U);
    EXPECT_EQ(messages.GetSenderPort(), controller.Read(Gvbs::MessageChannelSourcePort));
    EXPECT_EQ(messages.Receive(5s), first);
    messages.Acknowledge(1);
    while (!messages.Receive(300ms).empty())
    {
        // one may have been on its way
    }
    GenerateTest(controller);
    const Gvcp::Bytes second = messages.Receive(5s);
    ASSERT_EQ(second.size(), 24U);
    EXPECT_EQ(second[7], 2); // its own request number
}

TEST(MessageChannelOnTheNetwork, closesWithTheControl)
{
    const CCameraProgram cameras({"--config", WriteConfig(TestIsOn)});
    CGvcpPeer controller(Camera);
    CMessagePeer messages;
    messages.Open(controller, 0, 0);
    GenerateTest(controller);
    EXPECT_FALSE(messages.Receive(5s).empty());
    EXPECT_EQ(controller.Write(Gvbs::ControlChannelPrivilege, 0), Gvcp::EStatus::Success);
    EXPECT_EQ(controller.Read(Gvbs::MessageChannelPort), 0U);
    EXPECT_EQ(controller.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), Gvcp::EStatus::Success);
    GenerateTest(controller);
    EXPECT_TRUE(messages.Receive(300ms).empty());
}

TEST_F(Events, reachTheNodesOfTheCamera)
{
    CCameraProgram cameras({"--config", WriteConfig("")});
    Open();
    Watch("EventExposureEndFrameID");
    m_pDevice->StartEvents();
    SwitchOn("ExposureEnd");
    Execute("AcquisitionStart");
    const std::vector<std::int64_t> seen = m_values.Await(3);
    ASSERT_GE(seen.size(), 3U);
    EXPECT_EQ((std::vector<std::int64_t>{seen[0], seen[1], seen[2]}), (std::vector<std::int64_t>{1, 2, 3}));
    Execute("AcquisitionStop");
    GenApi::INodeMap& nodes = *m_pDevice->GetNodeMap();
    EXPECT_EQ(GenApi::CIntegerPtr(nodes.GetNode("EventExposureEnd"))->GetValue(), 0x9003);
    EXPECT_GT(GenApi::CIntegerPtr(nodes.GetNode("EventExposureEndTimestamp"))->GetValue(), 0);
    EXPECT_FALSE(GenApi::IsReadable(nodes.GetNode("EventExposureStart")));
    EXPECT_EQ(Counter("EventDuplicateCount"), 0);
    EXPECT_EQ(Counter("EventIgnoredCount"), 0);
    m_pDevice->Close();
    EXPECT_THAT(cameras.End(), ::testing::HasSubstr(" events, 0 lost"));
}

TEST_F(Events, areNotReceivedUntilTheyAreWanted)
{
    const CCameraProgram cameras({"--config", WriteConfig(TestIsOn)});
    Open();
    CGvcpPeer observer(Camera);
    const GenApi::CEnumerationPtr status(m_pDevice->GetEventGrabberNodeMap()->GetNode("Status"));
    EXPECT_EQ(status->ToString(), "Closed");
    EXPECT_EQ(observer.Read(Gvbs::MessageChannelPort), 0U);
    GenApi::CIntegerPtr(m_pDevice->GetEventGrabberNodeMap()->GetNode("RetryCount"))->SetValue(7);
    m_pDevice->StartEvents();
    EXPECT_EQ(status->ToString(), "Open");
    EXPECT_NE(observer.Read(Gvbs::MessageChannelPort), 0U);
    EXPECT_EQ(observer.Read(Gvbs::MessageChannelDestination), Camera);
    EXPECT_EQ(observer.Read(Gvbs::MessageChannelRetryCount), 7U);
    GenApi::CIntegerPtr(m_pDevice->GetEventGrabberNodeMap()->GetNode("Timeout"))->SetValue(123);
    EXPECT_EQ(observer.Read(Gvbs::MessageChannelTransmissionTimeout), 123U);
    m_pDevice->Close();
    EXPECT_EQ(m_pDevice->GetEventGrabberNodeMap(), nullptr);
    EXPECT_EQ(observer.Read(Gvbs::MessageChannelPort), 0U);
}

TEST_F(Events, ofStrangersAreIgnored)
{
    const CCameraProgram cameras({"--config", WriteConfig(TestIsOn)});
    Open();
    Watch("EventTest");
    m_pDevice->StartEvents();
    CGvcpPeer observer(Camera);
    const auto port = static_cast<std::uint16_t>(observer.Read(Gvbs::MessageChannelPort));
    Gvcp::SEvent forged;
    forged.id = 0x9010;
    for (const std::uint32_t ip : {OtherAddress, Camera}) // another computer; another port of the camera's
    {
        CUdpSocket stranger;
        ASSERT_TRUE(stranger.Bind(ip));
        stranger.Send(Gvcp::EncodeEventCmd(1, forged, true), Camera, port);
    }
    Execute("TestEventGenerate");
    EXPECT_EQ(m_values.Await(1), std::vector<std::int64_t>{0x9010});
    EXPECT_EQ(Counter("EventReceivedCount"), 1);
    EXPECT_EQ(Counter("EventIgnoredCount"), 2);
    EXPECT_EQ(Counter("EventDeliveredCount"), 1);
    m_pDevice->Close(); // before the camera goes
}

TEST_F(Events, areNotForMonitors)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    Open(EDeviceAccess::Monitor);
    EXPECT_EQ(m_pDevice->GetEventGrabberNodeMap(), nullptr);
    m_pDevice->StartEvents();
    CGvcpPeer observer(Camera);
    EXPECT_EQ(observer.Read(Gvbs::MessageChannelPort), 0U);
}

TEST_F(Events, endWithACameraThatVanishes)
{
    CCameraProgram cameras({"--config", WriteConfig("")});
    Open();
    CWaitBox<int> removals;
    m_pDevice->SetRemovalCallback([&] { removals.Put(0); });
    m_pDevice->StartEvents();
    cameras.Kill();
    EXPECT_EQ(removals.Await(1).size(), 1U);
    m_pDevice->Close();
    EXPECT_FALSE(m_pDevice->IsOpen());
}
