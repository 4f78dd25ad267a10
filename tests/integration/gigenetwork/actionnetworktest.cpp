// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/actionresponder.h"
#include "support/networknamespace.h"
#include "transport/transport.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>

using namespace Velmo;
using Test::CActionResponder;
using Test::CPeerNamespace;
using Test::RunIp;
using ::testing::ElementsAre;

namespace
{

constexpr std::uint32_t PlentyMs = 10000;

/** Two adapters, "va" and "vb", each with a cable to a camera of a network of its own. */
class ActionNetwork : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_left.Connect("va", "192.168.77.1/24", "fa", "192.168.77.21/24");
        m_right.Connect("vb", "192.168.78.1/24", "fb", "192.168.78.21/24");
        m_left.Visit([this] { m_leftCamera = MakeCamera("192.168.77.21", "192.168.77.255"); });
        m_right.Visit([this] { m_rightCamera = MakeCamera("192.168.78.21", "192.168.78.255"); });
        GigE::SetAdapters({"va", "vb"});
        // A cable that was just plugged in carries nothing for a moment, and a command is sent once only.
        AwaitLink("192.168.77.21");
        AwaitLink("192.168.78.21");
        m_leftBefore = m_leftCamera->GetCommands().size();
        m_rightBefore = m_rightCamera->GetCommands().size();
    }
    void TearDown() override { GigE::SetAdapters({}); }

    static std::unique_ptr<CActionResponder> MakeCamera(const std::string& address, const std::string& broadcast)
    {
        return std::make_unique<CActionResponder>(address, Gvcp::EStatus::Success, CActionResponder::EWay::Once,
                                                  std::vector<std::string>{broadcast, "255.255.255.255"});
    }
    void AwaitLink(const std::string& address)
    {
        constexpr std::uint32_t shortMs = 50;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(PlentyMs);
        while (Issue(address, 1, shortMs).empty())
        {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline) << address << " is not reached";
        }
    }
    /** Who answered, sorted. */
    std::vector<std::string> Issue(const std::string& address, std::size_t expected, std::uint32_t timeoutMs = PlentyMs)
    {
        std::vector<std::string> texts;
        const Transport::SActionCommand command{1, 2, 4, std::nullopt, address, timeoutMs, expected};
        for (const Transport::SActionAnswer& answer : m_pTransport->GetGigEExtension()->IssueAction(command))
        {
            texts.push_back(answer.address);
        }
        std::sort(texts.begin(), texts.end());
        return texts;
    }
    std::size_t LeftCommands() const { return m_leftCamera->GetCommands().size() - m_leftBefore; }
    std::size_t RightCommands() const { return m_rightCamera->GetCommands().size() - m_rightBefore; }

    CPeerNamespace m_left;
    CPeerNamespace m_right;
    std::unique_ptr<CActionResponder> m_leftCamera;
    std::unique_ptr<CActionResponder> m_rightCamera;
    std::size_t m_leftBefore = 0; // commands that only tried the cable
    std::size_t m_rightBefore = 0;
    std::shared_ptr<Transport::ITransport> m_pTransport = GigE::CreateTransport();
};

} // namespace

TEST_F(ActionNetwork, limitedBroadcastReachesTheCamerasOfAllAdaptersOnce)
{
    EXPECT_THAT(Issue("255.255.255.255", 2), ElementsAre("192.168.77.21", "192.168.78.21"));
    EXPECT_EQ(LeftCommands(), 1U);
    EXPECT_EQ(RightCommands(), 1U);
}

TEST_F(ActionNetwork, furtherAddressesOfAnAdapterDoNotTriggerTwice)
{
    RunIp("addr add 10.77.0.1/16 dev va");
    EXPECT_THAT(Issue("255.255.255.255", 2), ElementsAre("192.168.77.21", "192.168.78.21"));
    Issue("255.255.255.255", 2); // whatever the first one sent has arrived by now
    EXPECT_EQ(LeftCommands(), 2U);
}

TEST_F(ActionNetwork, answersComeBackToAFurtherAddressOfAnAdapter)
{
    RunIp("addr add 10.77.0.1/16 dev va");
    m_left.Visit([] { RunIp("route add 10.77.0.0/16 dev fa"); });
    GigE::SetAdapters({"10.77.0.1"});
    const Transport::SActionCommand command{1, 2, 4, std::nullopt, "255.255.255.255", 2000, 1};
    // The camera is in another subnet than the address, which a limited broadcast does not mind.
    const auto answers = m_pTransport->GetGigEExtension()->IssueAction(command);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers.front().address, "192.168.77.21");
}

TEST_F(ActionNetwork, broadcastOfANetworkReachesItsCamerasAlone)
{
    EXPECT_THAT(Issue("192.168.78.255", 1), ElementsAre("192.168.78.21"));
    EXPECT_THAT(Issue("192.168.77.21", 1), ElementsAre("192.168.77.21"));
    EXPECT_EQ(LeftCommands(), 1U);
    EXPECT_EQ(RightCommands(), 1U);
}

TEST_F(ActionNetwork, adaptersThatAreNotInUseAreLeftOut)
{
    GigE::SetAdapters({"vb"});
    EXPECT_THAT(Issue("255.255.255.255", 1), ElementsAre("192.168.78.21"));
    GigE::SetAdapters({"va"});
    EXPECT_THAT(Issue("255.255.255.255", 1), ElementsAre("192.168.77.21"));
    EXPECT_EQ(LeftCommands(), 1U);
}
