// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "support/gvcprelay.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <optional>

using namespace Velmo;
using Test::CCameraProgram;
using Test::CGigEClient;
using Test::CGvcpRelay;
using Test::CSignal;
using Test::CStreamBuffers;
using Test::GetInteger;
using Test::WriteConfig;
using namespace std::chrono_literals;
using EFate = CGvcpRelay::EFate;
namespace Register = Simulator::Register;

namespace
{

constexpr const char* CameraAddress = "127.0.0.2";

bool Reads(const Gvcp::SCommand& command, std::uint32_t address)
{
    std::vector<std::uint32_t> addresses;
    return command.command == static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegCmd) &&
           Gvcp::ParseReadRegCmd(command, addresses) == Gvcp::EParseResult::Ok && addresses.front() == address;
}

bool Writes(const Gvcp::SCommand& command)
{
    return command.command == static_cast<std::uint16_t>(Gvcp::ECommand::WriteRegCmd) ||
           command.command == static_cast<std::uint16_t>(Gvcp::ECommand::WriteMemCmd);
}

void SetWidth(IVelmoDevice& device, std::int64_t width)
{
    GenApi::CIntegerPtr(device.GetNodeMap()->GetNode("Width"))->SetValue(width);
}

/** A simulated camera behind a relay; the transport sees the relay only. */
class GigEPatience : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override { GigE::SetAdapters({}); }

    /** The relay first: the program answers at 127.0.0.1 too where nobody else does. */
    void Start(CGvcpRelay::Judge judge)
    {
        m_relay.emplace(CameraAddress, std::move(judge));
        m_camera.emplace(std::vector<std::string>{"--address", CameraAddress, "--config", WriteConfig("")});
    }
    void StartKeepingWrites()
    {
        Start([this](const Gvcp::SCommand& command, std::uint16_t)
              { return m_isKeepingBack && Writes(command) ? EFate::Pending : EFate::Carried; });
    }

    std::optional<CGvcpRelay> m_relay;
    std::optional<CCameraProgram> m_camera;
    std::atomic<bool> m_isKeepingBack{false}; // what the judge of the relay looks at
};

} // namespace

TEST_F(GigEPatience, aReadThatTheCameraKeepsWaitingForEverIsGivenUpAndTheCameraGoesOn)
{
    Start(
        [this](const Gvcp::SCommand& command, std::uint16_t)
        {
            const bool isHeld = m_isKeepingBack && Reads(command, Register::Width);
            return isHeld ? EFate::Pending : EFate::Carried;
        });
    CGigEClient client;
    const auto pDevice = client.Open("GC-1");
    m_isKeepingBack = true;
    EXPECT_THROW(GetInteger(*pDevice->GetNodeMap(), "Width"), GenICam::TimeoutException);
    EXPECT_GE(m_relay->CountPending(), 1);
    EXPECT_FALSE(pDevice->IsRemoved());
    EXPECT_EQ(GetInteger(*pDevice->GetNodeMap(), "Height"), 480);
    SetWidth(*pDevice, 320); // it is controlled still
    m_isKeepingBack = false;
    pDevice->GetNodeMap()->InvalidateNodes();
    EXPECT_EQ(GetInteger(*pDevice->GetNodeMap(), "Width"), 320);
    pDevice->Close();
    EXPECT_TRUE(client.WaitForUsable("GC-1", 60s));
}

TEST_F(GigEPatience, aWriteThatTheCameraKeepsWaitingForEverEndsAsItsLoss)
{
    StartKeepingWrites();
    CGigEClient client;
    CSignal removed; // before the device, whose handler raises it
    const auto pDevice = client.Open("GC-1");
    pDevice->SetRemovalCallback([&removed] { removed.Raise(); });
    m_isKeepingBack = true;
    EXPECT_THROW(SetWidth(*pDevice, 320), GenICam::TimeoutException);
    EXPECT_TRUE(removed.Wait(60s));
    EXPECT_TRUE(pDevice->IsRemoved());
    EXPECT_THROW(GetInteger(*pDevice->GetNodeMap(), "Height"), GenICam::RuntimeException);
    pDevice->Close();
    EXPECT_FALSE(pDevice->IsOpen());
    EXPECT_GE(m_relay->CountPending(), 1);

    // When the camera comes to its senses, what was left behind gives it up.
    m_relay->LetPass();
    ASSERT_TRUE(client.WaitForUsable("GC-1", 60s));
    const auto pAgain = client.Open("GC-1");
    SetWidth(*pAgain, 160);
    EXPECT_EQ(GetInteger(*pAgain->GetNodeMap(), "Width"), 160);
}

TEST_F(GigEPatience, closingEndsThoughTheCameraKeepsEveryWriteWaiting)
{
    StartKeepingWrites();
    CGigEClient client;
    const auto pDevice = client.Open("GC-1");
    Transport::IStream& stream = *pDevice->GetStream(0);
    const CStreamBuffers buffers(stream, 3);
    stream.Start();
    m_isKeepingBack = true;
    pDevice->Close();
    EXPECT_FALSE(pDevice->IsOpen());
    EXPECT_GE(m_relay->CountPending(), 1);
    m_relay->LetPass(); // what was left behind ends
    EXPECT_TRUE(client.WaitForUsable("GC-1", 60s));
}

TEST_F(GigEPatience, aCameraThatLetsOnlyTheControllingSocketReadIsReadThroughIt)
{
    std::atomic<std::uint16_t> controller{0};
    std::atomic<int> denied{0};
    Start(
        [&](const Gvcp::SCommand& command, std::uint16_t port)
        {
            Gvcp::RegisterValues values;
            if (command.command == static_cast<std::uint16_t>(Gvcp::ECommand::WriteRegCmd) &&
                Gvcp::ParseWriteRegCmd(command, values) == Gvcp::EParseResult::Ok &&
                values.front().first == Gvbs::ControlChannelPrivilege)
            {
                controller = values.front().second == 0 ? 0 : port;
            }
            const bool isRead =
                !Writes(command) && command.command != static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryCmd);
            const bool isDenied = isRead && controller != 0 && port != controller;
            denied += isDenied ? 1 : 0;
            return isDenied ? EFate::Denied : EFate::Carried;
        });
    CGigEClient client;
    const auto pDevice = client.Open("GC-1");
    EXPECT_EQ(GetInteger(*pDevice->GetNodeMap(), "Width"), 640);
    SetWidth(*pDevice, 320);
    pDevice->GetNodeMap()->InvalidateNodes();
    EXPECT_EQ(GetInteger(*pDevice->GetNodeMap(), "Width"), 320);
    EXPECT_GT(denied, 0);
    EXPECT_FALSE(pDevice->IsRemoved());
}
