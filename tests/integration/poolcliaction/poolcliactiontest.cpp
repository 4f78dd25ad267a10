// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"
#include "support/actionresponder.h"
#include "support/fakecamera.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using PoolCliTest::SOutcome;
using ::Test::CActionResponder;
using ::Test::CFakeCamera;
using Velmo::Gvcp::EStatus;

/** The real program, with cameras of the loopback network that answer action commands. */
class PoolCliAction : public PoolCliTest::PoolCliProgram
{
protected:
    PoolCliAction() { m_gigeAdapters = QStringLiteral("127.0.0.1"); }

    SOutcome act(const QString& what, const QStringList& more = {}) const
    {
        return run(QStringList{"action", what, "--device-key", "0x11223344", "--group-key", "5", "--group-mask", "0xF0",
                               "--discovery-timeout", "2"} +
                   more);
    }
    /** "address=answer" of each camera, sorted. */
    static QStringList answers(const SOutcome& outcome)
    {
        QStringList texts;
        const auto cameras = outcome.json().object().value("cameras").toArray();
        for (const auto& value : cameras)
        {
            const QJsonObject camera = value.toObject();
            texts.append(camera.value("address").toString() + QLatin1Char('=') + camera.value("answer").toString());
        }
        texts.sort();
        return texts;
    }
};

TEST_F(PoolCliAction, tableTellsWhoAcceptedWhoRefusedAndWhoWasSilent)
{
    const CFakeCamera silent("GV77"); // an independent camera that does not know action commands
    const CActionResponder taking("127.0.0.21");
    const CActionResponder refusing("127.0.0.22", EStatus::Busy);
    const SOutcome asJson = act("issue", {"--json"});
    EXPECT_EQ(answers(asJson), (QStringList{"127.0.0.1=silent", "127.0.0.21=accepted", "127.0.0.22=refused"}));
    EXPECT_EQ(asJson.exitCode, 1);
    EXPECT_TRUE(asJson.err.contains("Cameras refused the action command")) << asJson.err.toStdString();
    const SOutcome asTable = act("issue");
    const QString table = QString::fromUtf8(asTable.out);
    EXPECT_TRUE(table.startsWith(QLatin1String("ADDRESS"))) << asTable.out.toStdString();
    EXPECT_TRUE(table.contains(QRegularExpression(QStringLiteral("127\\.0\\.0\\.1 .*\\(GV77\\) +silent"))));
    EXPECT_TRUE(table.contains(QRegularExpression(QStringLiteral("127\\.0\\.0\\.21 +accepted"))));
    EXPECT_TRUE(table.contains(QRegularExpression(QStringLiteral("127\\.0\\.0\\.22 +refused"))));
    EXPECT_EQ(taking.GetCommands().size(), 2U) << "once for each run";
}

TEST_F(PoolCliAction, camerasThatAllTakeItAreSuccessAndTheCommandIsTheOneAskedFor)
{
    const CActionResponder first("127.0.0.21");
    const CActionResponder second("127.0.0.22");
    const SOutcome outcome = act("issue", {"--json", "--address", "127.255.255.255"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(answers(outcome), (QStringList{"127.0.0.21=accepted", "127.0.0.22=accepted"}));
    ASSERT_EQ(first.GetCommands().size(), 1U);
    const auto action = first.GetCommands().front().action;
    EXPECT_EQ(action.deviceKey, 0x11223344U);
    EXPECT_EQ(action.groupKey, 5U);
    EXPECT_EQ(action.groupMask, 0xF0U);
    EXPECT_FALSE(action.isScheduled);
}

TEST_F(PoolCliAction, scheduleSendsTheTime)
{
    const CActionResponder camera("127.0.0.21");
    const SOutcome outcome = act("schedule", {"--json", "--address", "127.0.0.21", "--time", "1234567890123456789"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(answers(outcome), QStringList{"127.0.0.21=accepted"});
    ASSERT_EQ(camera.GetCommands().size(), 1U);
    EXPECT_TRUE(camera.GetCommands().front().action.isScheduled);
    EXPECT_EQ(camera.GetCommands().front().action.time, 1234567890123456789U);
}

TEST_F(PoolCliAction, reasonOfARefusalIsInTheDebugLog)
{
    const CActionResponder camera("127.0.0.21", EStatus::NoReferenceTime);
    m_loggingRules = QStringLiteral("velmo.gige.debug=true");
    const SOutcome outcome = act("schedule", {"--address", "127.0.0.21", "--time", "5"});
    EXPECT_EQ(outcome.exitCode, 1);
    const std::string reason = Velmo::Gvcp::StatusText(static_cast<std::uint16_t>(EStatus::NoReferenceTime));
    EXPECT_TRUE(outcome.err.contains(
        ("velmo.gige: The scheduled action for 127.0.0.21 was refused by 127.0.0.21: " + reason).c_str()))
        << outcome.err.toStdString();
}

TEST_F(PoolCliAction, namedCameraThatIsSilentIsAFailureAndAnUnnamedOneIsNot)
{
    const CFakeCamera silent("GV77");
    const CActionResponder taking("127.0.0.21");
    const SOutcome unnamed = act("issue", {"--json"});
    EXPECT_EQ(answers(unnamed), (QStringList{"127.0.0.1=silent", "127.0.0.21=accepted"}));
    EXPECT_EQ(unnamed.exitCode, 0) << unnamed.err.toStdString();
    const SOutcome named = act("issue", {"--json", "GV77"});
    EXPECT_EQ(answers(named), answers(unnamed));
    EXPECT_EQ(named.exitCode, 1);
    EXPECT_TRUE(named.err.contains("stayed silent: no application has them open")) << named.err.toStdString();
}

TEST_F(PoolCliAction, withoutTimeNoAnswersAreAskedFor)
{
    CActionResponder camera("127.0.0.21");
    const SOutcome outcome = act("issue", {"--timeout", "0"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.contains("Sent to 255.255.255.255; no answers asked for.")) << outcome.out.toStdString();
    ASSERT_TRUE(camera.WaitForCommands(1));
    EXPECT_EQ(camera.GetCommands().front().flags & Velmo::Gvcp::Flag::AckRequired, 0);
}

TEST_F(PoolCliAction, nobodyThereIsAFailure)
{
    const SOutcome outcome = act("issue", {"--json", "--timeout", "0.1"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("No camera answered the action command: no application has one open"))
        << outcome.err.toStdString();
}

TEST_F(PoolCliAction, commandThatCannotBeSentIsAFailureWithItsReasonInTheDebugLog)
{
    m_gigeAdapters = QStringLiteral("none");
    for (const char* timeout : {"0", "0.1"})
    {
        const SOutcome outcome = act("issue", {"--timeout", timeout});
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_TRUE(outcome.err.contains("could not be sent to 255.255.255.255")) << outcome.err.toStdString();
    }
    m_loggingRules = QStringLiteral("default.debug=true");
    EXPECT_TRUE(act("issue").err.contains("no network adapter in use leads there"));
}

TEST_F(PoolCliAction, camerasOfOtherTransportsAreRefusedByName)
{
    const SOutcome outcome = act("issue", {"left"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("is no GigE Vision camera")) << outcome.err.toStdString();
}

TEST_F(PoolCliAction, wrongUsageIsToldApart)
{
    EXPECT_EQ(run({"action"}).exitCode, 2);
    EXPECT_EQ(run({"action", "issue", "--device-key", "1", "--group-key", "1"}).exitCode, 2);
    EXPECT_EQ(act("schedule").exitCode, 2) << "no time";
    EXPECT_EQ(act("issue", {"--address", "everybody"}).exitCode, 2);
    EXPECT_EQ(run({"action", "issue", "-d", "1", "-g", "1", "-k", "0"}).exitCode, 2);
    EXPECT_EQ(run({"action", "issue", "-d", "0x100000000", "-g", "1", "-k", "1"}).exitCode, 2);
}

TEST_F(PoolCliAction, supportIsToldOfEachCameraThatCanBeOpened)
{
    const CFakeCamera other("GV77");
    writeData(R"({"cameras": [{"serial": "EMU-A", "model": "Mono"},
                              {"serial": "EMU-B", "model": "Mono", "faults": {"refuseOpenOwner": "another program"}}]})");
    const SOutcome outcome = run({"action", "support", "--json"});
    EXPECT_EQ(outcome.exitCode, 1) << "one could not be opened";
    EXPECT_TRUE(outcome.err.contains("another program")) << outcome.err.toStdString();
    QStringList told;
    const auto cameras = outcome.json().array();
    for (const auto& value : cameras)
    {
        const QJsonObject camera = value.toObject();
        told.append(QStringLiteral("%1 %2 %3")
                        .arg(camera.value("name").toString(), camera.value("action").toBool() ? "yes" : "no",
                             camera.value("scheduled").toBool() ? "yes" : "no"));
    }
    ASSERT_EQ(told.size(), 2) << outcome.out.toStdString();
    EXPECT_TRUE(told.filter("EMU-A").value(0).endsWith("yes yes")) << told.join('\n').toStdString();
    EXPECT_TRUE(told.filter("GV77").value(0).endsWith("no no")) << told.join('\n').toStdString();
}

} // namespace
