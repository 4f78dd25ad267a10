// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"
#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "support/gvcppeer.h"
#include "support/networknamespace.h"
#include "transports/gige/gigetransport.h"
#include "transports/gige/internal/udpsocket.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

using namespace Velmo;
using GigE::Internal::CUdpSocket;
using Test::CCameraProgram;
using Test::CGigEClient;
using Test::CGvcpPeer;
using Test::CPeerNamespace;
using Test::CRunningStream;
using Test::GetInteger;
using Test::RunIp;
using Test::WriteConfig;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Transport::EDiscoveryScope;
using namespace std::chrono_literals;

namespace
{

/** Simulated cameras behind cables, and routers. */
class DiscoveryNetwork : public ::testing::Test
{
protected:
    void TearDown() override { GigE::SetAdapters({}); }

    std::vector<std::string> Addresses(EDiscoveryScope scope)
    {
        std::vector<std::string> addresses;
        for (const CDeviceInfo& info : m_client.Find(scope))
        {
            addresses.push_back(info.GetIpAddress().str() + " " + info.Get(Key::AccessStatus).str());
        }
        std::sort(addresses.begin(), addresses.end());
        return addresses;
    }
    bool Announce(const std::string& address)
    {
        CDeviceInfo info;
        info.SetIpAddress(address.c_str());
        return m_client.Transport().GetGigEExtension()->AnnounceRemoteDevice(info);
    }

    CGigEClient m_client;
};

std::unique_ptr<CCameraProgram> StartAt(const CPeerNamespace& place, const std::string& adapter)
{
    std::unique_ptr<CCameraProgram> pProgram;
    place.Visit(
        [&]
        {
            pProgram = std::make_unique<CCameraProgram>(
                std::vector<std::string>{"--interface", adapter, "--config", WriteConfig("")});
        });
    return pProgram;
}

/** Discovery commands that came to that address. */
std::vector<Gvcp::SCommand> Receive(CUdpSocket& socket)
{
    std::vector<Gvcp::SCommand> commands;
    std::uint8_t data[1024];
    std::uint32_t senderIp = 0;
    std::uint16_t senderPort = 0;
    while (const std::size_t bytes = socket.Receive(data, sizeof data, senderIp, senderPort))
    {
        Gvcp::SCommand command;
        if (Gvcp::ParseCommand(data, bytes, command) == Gvcp::EParseResult::Ok &&
            command.command == static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryCmd))
        {
            command.pPayload = nullptr; // it ends with the buffer
            commands.push_back(command);
        }
    }
    return commands;
}

/** A camera with 10.8.0.2 behind a router that is at the far end of "va" (192.168.77.1). */
class DiscoveryRouter : public DiscoveryNetwork
{
protected:
    void SetUp() override
    {
        m_router.Connect("va", "192.168.77.1/24", "ra", "192.168.77.2/24");
        m_router.Visit([this] { m_far.Connect("rb", "10.8.0.1/24", "cb", "10.8.0.2/24"); });
        m_router.ForwardPackets();
        m_far.Visit([] { RunIp("route add default via 10.8.0.1"); });
        RunIp("route add 10.8.0.0/24 via 192.168.77.2");
        GigE::SetAdapters({"va"});
    }

    CPeerNamespace m_router;
    CPeerNamespace m_far; // its cable ends before the router does
};

} // namespace

TEST_F(DiscoveryNetwork, theInterfaceShowsTheHardwareAddressOfItsAdapter)
{
    CPeerNamespace far;
    far.Connect("va", "192.168.77.1/24", "vb", "");
    RunIp("link set va address 02:1f:c5:33:44:a5");
    GigE::SetAdapters({"va"});
    InterfaceInfoList interfaces;
    m_client.Transport().EnumerateInterfaces(interfaces);
    ASSERT_EQ(interfaces.size(), 1U);
    const auto pInterface = m_client.Transport().CreateInterface(interfaces.front());
    ASSERT_NE(pInterface, nullptr);
    pInterface->Open();
    EXPECT_EQ(GetInteger(*pInterface->GetNodeMap(), "GevInterfaceMACAddress"), 0x021FC53344A5);
    EXPECT_EQ(GenApi::CValuePtr(pInterface->GetNodeMap()->GetNode("GevInterfaceMACAddress"))->ToString(),
              "02:1f:c5:33:44:a5");
}

TEST_F(DiscoveryNetwork, allAdaptersAreSearchedAtOnceAndQuickly)
{
    constexpr int count = 6;
    CPeerNamespace far;
    std::vector<std::unique_ptr<CCameraProgram>> cameras;
    std::vector<std::string> adapters;
    std::vector<std::string> expected;
    for (int i = 0; i < count; ++i)
    {
        const std::string net = "192.168." + std::to_string(81 + i) + ".";
        adapters.push_back("n" + std::to_string(i));
        far.Connect(adapters.back(), net + "1/24", "f" + std::to_string(i), net + "2/24");
        if (i + 1 < count) // nobody is on the last one
        {
            cameras.push_back(StartAt(far, "f" + std::to_string(i)));
            expected.push_back(net + "2 ReadWrite");
        }
    }
    GigE::SetAdapters(adapters);
    const auto begin = std::chrono::steady_clock::now();
    const std::vector<std::string> found = Addresses(EDiscoveryScope::Usable);
    const auto took = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(found, expected);
    EXPECT_LT(took, 700ms) << "one after the other they would take six times 200 ms at least";
    RecordProperty("milliseconds", static_cast<int>(took / 1ms));
}

TEST_F(DiscoveryNetwork, asksByDirectedAndByLimitedBroadcastWhoMayAnswerByBroadcast)
{
    CPeerNamespace far;
    far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
    GigE::SetAdapters({"va"});
    CUdpSocket directed;
    CUdpSocket limited;
    far.Visit(
        [&]
        {
            ASSERT_TRUE(directed.Bind(0xC0A84DFF, Gvcp::Port)) << directed.GetError(); // 192.168.77.255
            ASSERT_TRUE(limited.Bind(0xFFFFFFFF, Gvcp::Port)) << limited.GetError();
        });
    EXPECT_THAT(Addresses(EDiscoveryScope::All), IsEmpty());
    const auto byDirected = Receive(directed);
    const auto byLimited = Receive(limited);
    ASSERT_EQ(byDirected.size(), 2u) << "once, and once more for what got lost";
    ASSERT_EQ(byLimited.size(), 2u);
    EXPECT_EQ(byDirected.front().flags & Gvcp::Flag::AllowBroadcastAck, 0);
    EXPECT_NE(byLimited.front().flags & Gvcp::Flag::AllowBroadcastAck, 0);
}

TEST_F(DiscoveryNetwork, cameraInUseIsInTheListOfAllOnlyUntilItIsFree)
{
    CPeerNamespace far;
    far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
    GigE::SetAdapters({"va"});
    const auto pCamera = StartAt(far, "vb");
    EXPECT_THAT(Addresses(EDiscoveryScope::All), ElementsAre("192.168.77.2 ReadWrite"));
    {
        std::unique_ptr<CGvcpPeer> pOwner;
        far.Visit(
            [&]
            {
                pOwner = std::make_unique<CGvcpPeer>(0xC0A84D02);
                pOwner->OpenStream(1500);
            });
        EXPECT_THAT(Addresses(EDiscoveryScope::All), ElementsAre("192.168.77.2 InUse"));
        EXPECT_THAT(Addresses(EDiscoveryScope::Usable), IsEmpty());
    }
    EXPECT_TRUE(m_client.WaitForUsable("GC-1", 15s)) << "its heartbeat time-out is over";
}

TEST_F(DiscoveryRouter, announcedCameraIsFoundByTheNextPassOpensAndStreams)
{
    const auto pCamera = StartAt(m_far, "cb");
    EXPECT_THAT(Addresses(EDiscoveryScope::All), IsEmpty()) << "no broadcast crosses the router";
    ASSERT_TRUE(Announce("10.8.0.2"));
    EXPECT_THAT(Addresses(EDiscoveryScope::Usable), ElementsAre("10.8.0.2 ReadWrite"));
    EXPECT_THAT(Addresses(EDiscoveryScope::All), ElementsAre("10.8.0.2 ReadWrite")) << "and it stays known";
    const auto pDevice = m_client.Open("GC-1");
    EXPECT_EQ(pDevice->GetDeviceInfo().Get(Key::InterfaceID), "va");
    CRunningStream stream(*pDevice, 4);
    EXPECT_EQ(stream.Next().status, Transport::EResultStatus::Ok);
}

TEST_F(DiscoveryRouter, packetSizeIsWhatTheRouterTakesThoughCameraAndAdapterTakeMore)
{
    m_router.Visit([] { RunIp("link set ra mtu 1200"); });
    const auto pCamera = StartAt(m_far, "cb");
    ASSERT_TRUE(Announce("10.8.0.2"));
    const auto pDevice = m_client.Open("GC-1");
    CRunningStream stream(*pDevice, 4);
    EXPECT_EQ(stream.Next().status, Transport::EResultStatus::Ok);
    EXPECT_EQ(GetInteger(*pDevice->GetNodeMap(), "GevSCPSPacketSize"), 1200);
}

TEST_F(DiscoveryRouter, announcingFailsWhileNobodyAnswersAndAddsNothing)
{
    EXPECT_FALSE(Announce("10.8.0.2"));
    const auto pCamera = StartAt(m_far, "cb");
    EXPECT_THAT(Addresses(EDiscoveryScope::All), IsEmpty());
}

TEST_F(DiscoveryRouter, announcedCameraThatGoesAwayIsNotListedUntilItIsBack)
{
    auto pCamera = StartAt(m_far, "cb");
    ASSERT_TRUE(Announce("10.8.0.2"));
    pCamera.reset();
    EXPECT_THAT(Addresses(EDiscoveryScope::All), IsEmpty());
    pCamera = StartAt(m_far, "cb");
    EXPECT_THAT(Addresses(EDiscoveryScope::Usable), ElementsAre("10.8.0.2 ReadWrite"));
}
