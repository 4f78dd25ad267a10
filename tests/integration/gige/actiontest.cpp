// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "support/actionresponder.h"
#include "transport/log.h"
#include "transports/gige/gigetransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <mutex>

using namespace Velmo;
using Test::CActionResponder;
using Transport::SActionAnswer;
using Transport::SActionCommand;

namespace
{

constexpr std::uint32_t PlentyMs = 10000;
constexpr std::uint32_t ShortMs = 150;

class GigEAction : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override
    {
        GigE::SetAdapters({});
        SetLogSink(nullptr);
    }

    static SActionCommand Command(const std::string& address, std::size_t expected, std::uint32_t timeoutMs = PlentyMs)
    {
        return {0x11223344, 0x55667788, 0x0000000F, std::nullopt, address, timeoutMs, expected};
    }

    /** "address=status" sorted by address. */
    std::vector<std::string> Issue(const SActionCommand& command)
    {
        std::vector<std::string> texts;
        for (const SActionAnswer& answer : m_pTransport->GetGigEExtension()->IssueAction(command))
        {
            texts.push_back(answer.address + "=" + std::to_string(answer.status));
        }
        std::sort(texts.begin(), texts.end());
        return texts;
    }

    std::string RefusalOf(const SActionCommand& command)
    {
        try
        {
            Issue(command);
        }
        catch (const GenICam::GenericException& e)
        {
            return std::string(e.GetKind()) + ": " + e.GetDescription();
        }
        return "";
    }

    /** Keeps what is logged from now on. */
    void Watch()
    {
        SetLogSink(
            [this](const SLogRecord& record)
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                m_lines.push_back(record.category + " " + record.text);
            });
    }
    std::vector<std::string> Lines()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_lines;
    }

    std::mutex m_mutex; // guards m_lines
    std::vector<std::string> m_lines;
    std::shared_ptr<Transport::ITransport> m_pTransport = GigE::CreateTransport();
};

} // namespace

TEST_F(GigEAction, camerasOnABroadcastAnswerWithTheirStatus)
{
    const CActionResponder taking("127.0.0.21");
    const CActionResponder refusing("127.0.0.22", Gvcp::EStatus::Overflow);
    for (const char* address : {"255.255.255.255", "127.255.255.255"})
    {
        EXPECT_THAT(Issue(Command(address, 2)), ::testing::ElementsAre("127.0.0.21=0", "127.0.0.22=32789")) << address;
    }
    EXPECT_EQ(taking.GetCommands().size(), 2U) << "each command goes out once";
}

TEST_F(GigEAction, commandCarriesKeysMaskAndTime)
{
    const CActionResponder camera("127.0.0.21");
    SActionCommand command = Command("127.0.0.21", 1);
    Issue(command);
    command.time = 0x0123456789ABCDEF;
    Issue(command);
    const auto seen = camera.GetCommands();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].flags, Gvcp::Flag::AckRequired);
    EXPECT_EQ(seen[0].action.deviceKey, 0x11223344U);
    EXPECT_EQ(seen[0].action.groupKey, 0x55667788U);
    EXPECT_EQ(seen[0].action.groupMask, 0x0000000FU);
    EXPECT_FALSE(seen[0].action.isScheduled);
    EXPECT_EQ(seen[1].flags, Gvcp::Flag::AckRequired | Gvcp::Flag::ScheduledAction);
    EXPECT_TRUE(seen[1].action.isScheduled);
    EXPECT_EQ(seen[1].action.time, 0x0123456789ABCDEFU);
    EXPECT_NE(seen[0].requestId, 0);
    EXPECT_NE(seen[1].requestId, 0);
}

TEST_F(GigEAction, withoutTimeOrExpectedAnswersNoneIsAskedFor)
{
    CActionResponder camera("127.0.0.21");
    EXPECT_THAT(Issue(Command("127.0.0.21", 5, 0)), ::testing::IsEmpty());
    EXPECT_THAT(Issue(Command("127.0.0.21", 0)), ::testing::IsEmpty());
    ASSERT_TRUE(camera.WaitForCommands(2));
    for (const auto& command : camera.GetCommands())
    {
        EXPECT_EQ(command.flags & Gvcp::Flag::AckRequired, 0);
    }
}

TEST_F(GigEAction, answersComeBackToTheAddressThatWasChosen)
{
    const CActionResponder camera("127.0.0.21");
    GigE::SetAdapters({"127.0.0.30"});
    EXPECT_THAT(Issue(Command("255.255.255.255", 1, 2000)), ::testing::ElementsAre("127.0.0.21=0"));
}

TEST_F(GigEAction, waitEndsWithTheLastExpectedAnswer)
{
    const CActionResponder camera("127.0.0.21");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Issue(Command("127.255.255.255", 1, 60000)).size(), 1U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST_F(GigEAction, silentCameraCostsTheTimeAndNoMore)
{
    const CActionResponder silent("127.0.0.21", Gvcp::EStatus::Success, CActionResponder::EWay::Silent);
    const CActionResponder taking("127.0.0.22");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(Issue(Command("127.255.255.255", 2, ShortMs)), ::testing::ElementsAre("127.0.0.22=0"));
    const auto took = std::chrono::steady_clock::now() - start;
    EXPECT_GE(took, std::chrono::milliseconds(ShortMs));
    EXPECT_LT(took, std::chrono::seconds(5));
}

TEST_F(GigEAction, repeatedAnswersOfACameraCountOnce)
{
    const CActionResponder twice("127.0.0.21", Gvcp::EStatus::Success, CActionResponder::EWay::Twice);
    const CActionResponder once("127.0.0.22");
    EXPECT_THAT(Issue(Command("127.255.255.255", 2)), ::testing::ElementsAre("127.0.0.21=0", "127.0.0.22=0"));
}

TEST_F(GigEAction, foreignCutAndLateAnswersAreIgnored)
{
    using EWay = CActionResponder::EWay;
    const CActionResponder foreign("127.0.0.21", Gvcp::EStatus::Success, EWay::WrongRequest);
    const CActionResponder cut("127.0.0.22", Gvcp::EStatus::Success, EWay::Truncated);
    CActionResponder late("127.0.0.23", Gvcp::EStatus::Success, EWay::Late);
    const CActionResponder spoofing("127.0.0.24", Gvcp::EStatus::Success, EWay::FromAnotherPort);
    EXPECT_THAT(Issue(Command("127.255.255.255", 4, ShortMs)), ::testing::IsEmpty());
    late.SendLate(); // to a command that is over
    EXPECT_THAT(Issue(Command("127.0.0.23", 1, ShortMs)), ::testing::IsEmpty());
}

TEST_F(GigEAction, unicastIsAnsweredByThatCameraAlone)
{
    const CActionResponder first("127.0.0.21");
    CActionResponder second("127.0.0.22");
    EXPECT_THAT(Issue(Command("127.0.0.21", 1)), ::testing::ElementsAre("127.0.0.21=0"));
    EXPECT_THAT(Issue(Command("127.0.0.22", 1)), ::testing::ElementsAre("127.0.0.22=0"));
    EXPECT_EQ(second.GetCommands().size(), 1U);
}

TEST_F(GigEAction, aCameraThatIsNotThereIsSilence)
{
    EXPECT_THAT(Issue(Command("127.0.0.21", 1, ShortMs)), ::testing::IsEmpty());
}

TEST_F(GigEAction, badAddressesAndMasksAreRefusedByName)
{
    for (const char* address : {"", "camera", "192.168.1", "192.168.1.256", "0.0.0.0", "239.0.0.1", "1.2.3.4 "})
    {
        EXPECT_THAT(RefusalOf(Command(address, 1)),
                    ::testing::StartsWith("InvalidArgumentException: \"" + std::string(address) + "\" is no address"));
    }
    SActionCommand command = Command("255.255.255.255", 1);
    command.groupMask = 0;
    EXPECT_THAT(RefusalOf(command), ::testing::StartsWith("InvalidArgumentException: The group mask"));
}

TEST_F(GigEAction, withoutAdapterItSaysThatNoneLeadsThere)
{
    GigE::SetAdapters({"none"});
    EXPECT_THAT(RefusalOf(Command("255.255.255.255", 1)),
                ::testing::AllOf(::testing::StartsWith("RuntimeException: The action for 255.255.255.255 cannot"),
                                 ::testing::HasSubstr("lo")));
    GigE::SetAdapters({"127.0.0.1"});
    SActionCommand far = Command("203.0.113.7", 1); // a documentation address, RFC 5737
    far.time = 5;
    EXPECT_THAT(RefusalOf(far), ::testing::StartsWith("RuntimeException: The scheduled action for 203.0.113.7 cannot"));
}

TEST_F(GigEAction, zeroKeysAreKeysLikeOthers)
{
    const CActionResponder camera("127.0.0.21");
    SActionCommand command = Command("127.0.0.21", 1);
    command.deviceKey = 0;
    command.groupKey = 0;
    command.time = 0;
    EXPECT_THAT(Issue(command), ::testing::ElementsAre("127.0.0.21=0"));
    ASSERT_EQ(camera.GetCommands().size(), 1U);
    const Gvcp::SAction action = camera.GetCommands().front().action;
    EXPECT_EQ(action.deviceKey, 0U);
    EXPECT_EQ(action.groupKey, 0U);
    EXPECT_TRUE(action.isScheduled);
    EXPECT_EQ(action.time, 0U);
}

TEST_F(GigEAction, twoCamerasBehindOneAddressCountOnceAndTheLogTellsOfBoth)
{
    const CActionResponder twin("127.0.0.21", Gvcp::EStatus::Success, CActionResponder::EWay::OnceAndRefused);
    Watch();
    EXPECT_THAT(Issue(Command("127.255.255.255", 2, ShortMs)), ::testing::ElementsAre("127.0.0.21=0"));
    EXPECT_THAT(Lines(), ::testing::Contains(::testing::AllOf(
                             ::testing::HasSubstr("refused by 127.0.0.21: " + Gvcp::StatusText(0x8007)),
                             ::testing::HasSubstr("two cameras may have that address"))));
}

TEST_F(GigEAction, reasonsOfRefusalsAndSilenceAreInTheDebugLog)
{
    Watch();
    const CActionResponder refusing("127.0.0.21", Gvcp::EStatus::NoReferenceTime);
    Issue(Command("127.0.0.21", 2, ShortMs));
    const std::vector<std::string> lines = Lines();
    EXPECT_THAT(lines, ::testing::Contains(::testing::AllOf(
                           ::testing::StartsWith("velmo.gige The action for"),
                           ::testing::HasSubstr("refused by 127.0.0.21: " + Gvcp::StatusText(0x8013)))));
    EXPECT_THAT(lines, ::testing::Contains(::testing::HasSubstr("drew 1 answers within 150 ms; 2 were expected")));
}
