// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvcp.h"
#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "support/networknamespace.h"
#include "transports/gige/gigetransport.h"
#include "transports/gige/internal/udpsocket.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <net/if.h>
#include <poll.h>
#include <string>

using namespace Velmo;
using GigE::Internal::CUdpSocket;
using Test::CCameraProgram;
using Test::CGigEClient;
using Test::CPeerNamespace;
using Test::RunIp;
using Test::SetNetworkSetting;
using Test::WriteConfig;
using ::testing::Contains;
using namespace std::chrono_literals;

namespace
{

constexpr std::uint32_t OwnIp = 0xC0A84D01; // 192.168.77.1
constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;
constexpr std::chrono::seconds Patience = 30s;

/** A camera at the far end of the cable of "va" (192.168.77.1). Neither side has a default route, and neither drops
 * what comes from where it would not send to. */
class BroadcastAcknowledge : public ::testing::Test
{
protected:
    void StartCamera(const std::string& address)
    {
        m_far.Connect("va", "192.168.77.1/24", "vb", address);
        m_filterBefore = AcceptFromAnywhere("va");
        m_far.Visit(
            [this]
            {
                AcceptFromAnywhere("vb");
                m_pCamera = std::make_unique<CCameraProgram>(
                    std::vector<std::string>{"--interface", "vb", "--config", WriteConfig("")});
            });
        ASSERT_TRUE(m_own.Bind(OwnIp)) << m_own.GetError();
        ASSERT_TRUE(m_everybodys.Bind(LimitedBroadcast, m_own.GetPort(), true)) << m_everybodys.GetError();
    }
    void TearDown() override
    {
        GigE::SetAdapters({});
        SetNetworkSetting("ipv4/conf/all/rp_filter", m_filterBefore);
    }
    static std::string AcceptFromAnywhere(const std::string& adapter)
    {
        SetNetworkSetting("ipv4/conf/" + adapter + "/rp_filter", "0");
        return SetNetworkSetting("ipv4/conf/all/rp_filter", "0");
    }
    /** Asks by limited broadcast until something comes in at one of the sockets; whose answer came in where. */
    std::string Ask(bool allowBroadcastAck)
    {
        const auto deadline = std::chrono::steady_clock::now() + Patience;
        while (std::chrono::steady_clock::now() < deadline)
        {
            EXPECT_TRUE(m_own.Send(Gvcp::EncodeDiscoveryCmd(1, allowBroadcastAck), LimitedBroadcast, Gvcp::Port,
                                   if_nametoindex("va")))
                << m_own.GetError();
            pollfd entries[] = {{m_own.GetDescriptor(), POLLIN, 0}, {m_everybodys.GetDescriptor(), POLLIN, 0}};
            constexpr int askAgainMs = 1000;
            if (poll(entries, 2, askAgainMs) > 0)
            {
                return entries[0].revents != 0 ? "to the asking address: " + SenderAt(m_own)
                                               : "to everybody: " + SenderAt(m_everybodys);
            }
        }
        return "none";
    }
    static std::string SenderAt(CUdpSocket& socket)
    {
        std::uint8_t data[1024];
        std::uint32_t ip = 0;
        std::uint16_t port = 0;
        const std::size_t bytes = socket.Receive(data, sizeof data, ip, port);
        Gvcp::SAcknowledge ack;
        Gvcp::SDiscoveryAck camera;
        const bool isDiscovery = Gvcp::ParseAcknowledge(data, bytes, ack) == Gvcp::EParseResult::Ok &&
                                 Gvcp::ParseDiscoveryAck(ack, camera) == Gvcp::EParseResult::Ok;
        return isDiscovery ? camera.serialNumber + " from " + Gvcp::IpText(ip) : "no discovery acknowledge";
    }

    CPeerNamespace m_far;
    std::string m_filterBefore;
    std::unique_ptr<CCameraProgram> m_pCamera;
    CUdpSocket m_own;
    CUdpSocket m_everybodys;
};

} // namespace

TEST_F(BroadcastAcknowledge, cameraOfAnotherSubnetIsFoundThoughNeitherSideHasARoute)
{
    StartCamera("10.8.0.2/24");
    GigE::SetAdapters({"va"});
    CGigEClient client;
    std::vector<std::string> found;
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (found.empty() && std::chrono::steady_clock::now() < deadline) // a busy camera may miss a pass
    {
        for (const CDeviceInfo& info : client.Find(Transport::EDiscoveryScope::All))
        {
            found.push_back(info.GetIpAddress().str());
        }
    }
    EXPECT_THAT(found, Contains("10.8.0.2"));
    for (const CDeviceInfo& info : client.Find(Transport::EDiscoveryScope::Usable))
    {
        ADD_FAILURE() << info.GetIpAddress().str() << " cannot be reached";
    }
}

TEST_F(BroadcastAcknowledge, goesToWhoAllowedItFromAnotherSubnet)
{
    StartCamera("10.8.0.2/24");
    EXPECT_EQ(Ask(true), "to everybody: GC-1 from 10.8.0.2");
}

TEST_F(BroadcastAcknowledge, doesNotGoToWhoDidNotAllowIt)
{
    StartCamera("10.8.0.2/24");
    m_far.Visit([] { RunIp("route add 192.168.77.0/24 dev vb"); });
    EXPECT_EQ(Ask(false), "to the asking address: GC-1 from 10.8.0.2");
}

TEST_F(BroadcastAcknowledge, doesNotGoIntoTheCamerasOwnSubnet)
{
    StartCamera("192.168.77.2/24");
    EXPECT_EQ(Ask(true), "to the asking address: GC-1 from 192.168.77.2");
}
