// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/scriptedtransport.h"
#include "velmo/tlfactory.h"

#include <gtest/gtest.h>

#include <array>

using namespace Velmo;
using Test::CScriptedSdk;
using Test::CScriptedTransport;
using Test::EFault;
using Test::EStep;

namespace
{

class ActionCommand : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_pTl = dynamic_cast<IGigETransportLayer*>(CTlFactory::GetInstance().CreateTl("G"));
        ASSERT_NE(m_pTl, nullptr);
    }
    void TearDown() override { CTlFactory::GetInstance().ReleaseTl(m_pTl); }

    static std::shared_ptr<CScriptedTransport> Make()
    {
        ::Test::SScriptedTransportConfig config;
        config.deviceClass = "G";
        config.gige = true;
        return std::make_shared<CScriptedTransport>(config);
    }

    std::shared_ptr<CScriptedTransport> m_transport = Make();
    CScriptedSdk m_sdk{{m_transport}};
    IGigETransportLayer* m_pTl = nullptr;
    std::array<GigEActionCommandResult, 3> m_results{};
    unsigned int m_count = 3;
};

} // namespace

TEST_F(ActionCommand, isSentToEveryCameraWithoutAskingUnlessToldOtherwise)
{
    EXPECT_TRUE(m_pTl->IssueActionCommand(1, 2, 4));
    EXPECT_TRUE(m_pTl->IssueScheduledActionCommand(1, 2, 4, 0x100000000));
    const auto actions = m_transport->GetActions();
    ASSERT_EQ(actions.size(), 2U);
    for (const auto& action : actions)
    {
        EXPECT_EQ(action.deviceKey, 1U);
        EXPECT_EQ(action.groupKey, 2U);
        EXPECT_EQ(action.groupMask, 4U);
        EXPECT_EQ(action.address, "255.255.255.255");
        EXPECT_EQ(action.timeoutMs, 0U);
        EXPECT_EQ(action.expectedAnswers, 0U);
    }
    EXPECT_FALSE(actions[0].time.has_value());
    EXPECT_EQ(actions[1].time.value_or(0), 0x100000000U);
}

TEST_F(ActionCommand, resultsAreTheAnswersAndTheirNumber)
{
    m_transport->SetActionAnswers({{"192.168.100.200", 0x8016}, {"10.0.0.1", 0}});
    m_results.fill({"not touched", -1});
    EXPECT_FALSE(m_pTl->IssueActionCommand(1, 2, 4, "192.168.100.255", 50, &m_count, m_results.data()))
        << "one camera of three did not answer";
    EXPECT_EQ(m_count, 2U);
    EXPECT_STREQ(m_results[0].DeviceAddress, "192.168.100.200");
    EXPECT_EQ(m_results[0].Status, 0x8016);
    EXPECT_STREQ(m_results[1].DeviceAddress, "10.0.0.1");
    EXPECT_EQ(m_results[1].Status, 0);
    EXPECT_STREQ(m_results[2].DeviceAddress, "not touched");
    EXPECT_EQ(m_transport->GetActions().back().expectedAnswers, 3U);
    EXPECT_EQ(m_transport->GetActions().back().timeoutMs, 50U);
    EXPECT_EQ(m_transport->GetActions().back().address, "192.168.100.255");
}

TEST_F(ActionCommand, isTrueWhenAllAnsweredWhateverTheyAnswered)
{
    m_transport->SetActionAnswers({{"10.0.0.1", 0x8015}});
    m_count = 1;
    EXPECT_TRUE(m_pTl->IssueScheduledActionCommand(1, 2, 4, 9, "10.0.0.1", 50, &m_count, m_results.data()));
    EXPECT_EQ(m_count, 1U);
}

TEST_F(ActionCommand, answersBeyondTheArrayAreNeitherWrittenNorCounted)
{
    m_transport->SetActionAnswers({{"10.0.0.1", 0}, {"10.0.0.2", 0}, {"10.0.0.3", 0}});
    m_count = 1;
    EXPECT_TRUE(m_pTl->IssueActionCommand(1, 2, 4, "10.255.255.255", 50, &m_count, m_results.data()));
    EXPECT_EQ(m_count, 1U);
    EXPECT_STREQ(m_results[1].DeviceAddress, "");
}

TEST_F(ActionCommand, answersAreOnlyCountedWithoutAnArray)
{
    m_transport->SetActionAnswers({{"10.0.0.1", 0}, {"10.0.0.2", 0}});
    EXPECT_FALSE(m_pTl->IssueActionCommand(1, 2, 4, "10.255.255.255", 50, &m_count));
    EXPECT_EQ(m_count, 2U);
}

TEST_F(ActionCommand, withoutTimeNobodyIsWaitedForAndNobodyCounts)
{
    m_transport->SetActionAnswers({{"10.0.0.1", 0}});
    EXPECT_TRUE(m_pTl->IssueActionCommand(1, 2, 4, "10.255.255.255", 0, &m_count, m_results.data()));
    EXPECT_EQ(m_count, 0U);
    EXPECT_EQ(m_transport->GetActions().back().expectedAnswers, 0U);
}

TEST_F(ActionCommand, addressThatFillsItsFieldEndsWithANul)
{
    m_transport->SetActionAnswers({{"1234567890123456789", 0}});
    m_count = 1;
    m_pTl->IssueActionCommand(1, 2, 4, "10.255.255.255", 50, &m_count, m_results.data());
    EXPECT_STREQ(m_results[0].DeviceAddress, "123456789012345");
}

TEST_F(ActionCommand, failureOfTheTransportReachesTheCallerAndLeavesTheCount)
{
    m_transport->SetFault(EStep::IssueAction, EFault::Runtime, "cable");
    EXPECT_THROW(m_pTl->IssueActionCommand(1, 2, 4, "10.0.0.1", 50, &m_count, m_results.data()),
                 GenICam::RuntimeException);
    EXPECT_EQ(m_count, 3U);
}
