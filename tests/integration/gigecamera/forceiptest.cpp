// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/gigecamera/messagepeer.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/gvcppeer.h"
#include "support/networknamespace.h"
#include "transports/gige/internal/udpsocket.h"

#include <gtest/gtest.h>

using namespace Velmo;
using Gvcp::EStatus;
using Test::CCameraProgram;
using Test::CGvcpPeer;
using Test::CMessagePeer;
using Test::SetNetworkSetting;
using Test::WriteConfig;
using namespace std::chrono_literals;

namespace
{

constexpr std::uint32_t Old = 0x7F000001;
constexpr std::uint32_t New = 0x7F000909;

/** Asks the camera at the old address; its answer may come from anywhere. */
EStatus ForceTo(CGvcpPeer& peer, std::uint32_t ip)
{
    const auto found = peer.Ask(Gvcp::EncodeDiscoveryCmd(peer.NextId(), false));
    Gvcp::SDiscoveryAck camera;
    EXPECT_TRUE(found.has_value() && Gvcp::ParseDiscoveryAck(*found, camera) == Gvcp::EParseResult::Ok);
    Gvcp::SForceIp forceIp;
    forceIp.mac = camera.mac;
    forceIp.ip = ip;
    forceIp.subnetMask = 0xFF000000;
    const auto answer = peer.Ask(Gvcp::EncodeForceIpCmd(peer.NextId(), forceIp, false));
    EXPECT_TRUE(answer.has_value());
    return answer.has_value() ? static_cast<EStatus>(answer->status) : EStatus::Error;
}

void Generate(CGvcpPeer& controller)
{
    EXPECT_EQ(controller.Write(static_cast<std::uint32_t>(Simulator::Register::TestEventGenerate), 1),
              EStatus::Success);
}

/** Leaves the system one port to choose from. */
class COnlyPort
{
public:
    explicit COnlyPort(std::uint16_t port)
        : m_before(SetNetworkSetting(Name, std::to_string(port) + " " + std::to_string(port)))
    {
    }
    ~COnlyPort() { SetNetworkSetting(Name, m_before); }
    COnlyPort(const COnlyPort&) = delete;
    COnlyPort& operator=(const COnlyPort&) = delete;

private:
    static constexpr auto Name = "ipv4/ip_local_port_range";
    const std::string m_before;
};

} // namespace

TEST(ForceIp, messagesComeFromTheNewAddressAndAreAcknowledgedThere)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"EventNotification[Test]\": \"On\"")});
    CGvcpPeer before(Old);
    ASSERT_EQ(ForceTo(before, New), EStatus::Success);
    EXPECT_EQ(before.GetDatagrams().back().sourceIp, New);

    CGvcpPeer controller(New);
    CMessagePeer messages;
    constexpr std::uint32_t timeoutMs = 60'000;
    EXPECT_EQ(controller.Write(Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess), EStatus::Success);
    EXPECT_EQ(controller.Write(Gvbs::GvcpConfiguration, Gvbs::GvcpConfigurationHeartbeatDisable), EStatus::Success);
    messages.Open(controller, timeoutMs, 0);
    for (std::uint16_t id = 1; id <= 2; ++id) // the second waits for the acknowledge of the first
    {
        Generate(controller);
        ASSERT_FALSE(messages.Receive(30s).empty()) << id;
        EXPECT_EQ(messages.GetDatagrams().back().sourceIp, New);
        EXPECT_EQ(messages.GetSenderPort(), controller.Read(Gvbs::MessageChannelSourcePort));
        messages.Acknowledge(id, Gvcp::ECommand::EventAck, New);
    }
}

TEST(ForceIp, cameraThatCannotSendItsMessagesFromTheNewAddressStaysWhereItIs)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    CGvcpPeer peer(Old);
    GigE::Internal::CUdpSocket occupant;
    ASSERT_TRUE(occupant.Bind(New)) << occupant.GetError();
    {
        const COnlyPort onlyPort(occupant.GetPort());
        EXPECT_EQ(ForceTo(peer, New), EStatus::InvalidParameter);
    }
    EXPECT_EQ(peer.GetDatagrams().back().sourceIp, Old);
    EXPECT_EQ(peer.Read(Gvbs::CurrentIpAddress), Old);
    EXPECT_EQ(ForceTo(peer, New), EStatus::Success) << "once there is a port again";
}
