// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"
#include "support/cameraprogram.h"
#include "support/gvcppeer.h"
#include "support/networknamespace.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QStringList>

#include <csignal>
#include <memory>

namespace
{

using PoolCliTest::SOutcome;
using ::Test::CCameraProgram;
using ::Test::CGvcpPeer;
using ::Test::CPeerNamespace;
using ::Test::RunIp;
using ::Test::WriteConfig;

/** The real program in front of simulated cameras on loopback or behind a cable. */
class PoolCliNetwork : public PoolCliTest::PoolCliProgram
{
protected:
    PoolCliNetwork() { m_gigeAdapters = QStringLiteral("127.0.0.1"); }
    void SetUp() override
    {
        PoolCliTest::PoolCliProgram::SetUp();
        writeData(R"({"cameras": []})");
    }

    SOutcome network(const QStringList& more = {}) const { return run(QStringList{"network"} + more); }
    SOutcome check(const QStringList& more = {}) const
    {
        return network(QStringList{"check", "--json", "--seconds", "0.7"} + more);
    }
    /** "id" of what warns, "id!" of what stops images. */
    static QStringList findings(const SOutcome& outcome)
    {
        QStringList ids;
        const auto array = outcome.json().object().value("findings").toArray();
        for (const auto& value : array)
        {
            const QJsonObject finding = value.toObject();
            ids.append(finding.value("id").toString() + (finding.value("stops_images").toBool() ? "!" : ""));
        }
        return ids;
    }
    /** Simulated cameras at the far end of a cable from the adapter "va" with 192.168.77.1/24. */
    std::unique_ptr<CCameraProgram> startFar(const QString& farAddress, int cameras = 1)
    {
        m_far = std::make_unique<CPeerNamespace>();
        m_far->Connect("va", "192.168.77.1/24", "vb", farAddress.toStdString());
        m_gigeAdapters = QStringLiteral("va");
        std::unique_ptr<CCameraProgram> program;
        m_far->Visit(
            [&]
            {
                program = std::make_unique<CCameraProgram>(
                    std::vector<std::string>{"--interface", "vb", "--config", WriteConfig("")}, cameras);
            });
        return program;
    }

    std::unique_ptr<CPeerNamespace> m_far;
};

TEST_F(PoolCliNetwork, adaptersAndTheirCamerasAreListed)
{
    const CCameraProgram cameras({"--count", "2"}, 2);
    const SOutcome asJson = network({"--json"});
    ASSERT_EQ(asJson.exitCode, 0) << asJson.err.toStdString();
    const QJsonArray adapters = asJson.json().array();
    ASSERT_EQ(adapters.size(), 1);
    const QJsonObject adapter = adapters.first().toObject();
    EXPECT_EQ(adapter.value("id").toString(), "lo");
    EXPECT_EQ(adapter.value("mtu").toInt(), 65536);
    EXPECT_TRUE(adapter.value("link_mbps").isNull()) << "loopback has no speed";
    const QJsonArray found = adapter.value("cameras").toArray();
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found.first().toObject().value("access").toString(), "ReadWrite");
    EXPECT_TRUE(found.first().toObject().value("same_subnet").toBool());
    const QString table = QString::fromUtf8(network().out);
    EXPECT_TRUE(table.contains(QRegularExpression("lo +127\\.0\\.0\\.1/8 +65536 +unknown +2"))) << table.toStdString();
    EXPECT_TRUE(table.contains(QRegularExpression("GEV-0002\\) +lo +127\\.0\\.0\\.2/8 +ReadWrite")));
}

TEST_F(PoolCliNetwork, cameraInAnotherSubnetIsListedAndCheckedWithBothAddresses)
{
    const auto camera = startFar("10.9.8.7/24");
    m_far->Visit([] { RunIp("route add default dev vb"); }); // it answers by unicast, for which it needs a way
    const SOutcome listed = network({"--json"});
    const QJsonObject found = listed.json().array().first().toObject().value("cameras").toArray().first().toObject();
    EXPECT_EQ(found.value("address").toString(), "10.9.8.7");
    EXPECT_EQ(found.value("access").toString(), "NoAccess");
    EXPECT_FALSE(found.value("same_subnet").toBool(true));
    EXPECT_TRUE(found.value("problem").toString().contains("10.9.8.7/24"));
    EXPECT_TRUE(network().out.contains("is in another subnet than the network adapter va (192.168.77.1/24)"));
    const SOutcome checked = check();
    EXPECT_EQ(findings(checked), QStringList{"other-subnet!"}) << checked.err.toStdString();
    EXPECT_EQ(checked.exitCode, 1);
}

TEST_F(PoolCliNetwork, cameraThatWorksIsCheckedWithoutFindingsThatStopIt)
{
    const auto camera = startFar("192.168.77.2/24");
    const SOutcome outcome = check();
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(findings(outcome).filter("!"), QStringList()) << outcome.out.toStdString();
    const QJsonObject object = outcome.json().object();
    EXPECT_GT(object.value("images").toInt(), 0);
    EXPECT_EQ(object.value("path_bytes").toInt(), 1500);
    EXPECT_EQ(object.value("packet_bytes").toInt(), 1500);
    EXPECT_EQ(object.value("mtu").toInt(), 1500);
    const SOutcome asText = network({"check", "--seconds", "0.5"});
    EXPECT_TRUE(asText.out.contains("Opening")) << asText.out.toStdString();
    EXPECT_TRUE(asText.out.contains("Trying the way"));
    EXPECT_TRUE(asText.out.contains("Grabbing for 0.5 s"));
    EXPECT_TRUE(asText.out.contains("images arrived, 0 incompletely"));
}

TEST_F(PoolCliNetwork, packetsThatDoNotArriveAreAFirewall)
{
    const CCameraProgram camera({"--config", WriteConfig(""), "--fault", "nostream"});
    const SOutcome outcome = check();
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(findings(outcome).filter("!"), QStringList{"nothing-arrives!"}) << outcome.out.toStdString();
    EXPECT_TRUE(network({"check", "--seconds", "0.5"}).out.contains("firewall"));
}

TEST_F(PoolCliNetwork, waitingForATriggerIsNoFirewall)
{
    const CCameraProgram camera({"--config", WriteConfig("")});
    const SOutcome outcome = check({"--set", "TriggerMode=On"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(findings(outcome).filter("!"), QStringList{"no-images!"}) << outcome.out.toStdString();
}

TEST_F(PoolCliNetwork, packetSizeThatTheWayDoesNotCarry)
{
    const CCameraProgram camera({"--config", WriteConfig(""), "--fault", "mtu=1500"});
    const SOutcome outcome = check({"--set", "GevSCPSPacketSize=8000"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(findings(outcome).filter("!"), QStringList{"packets-too-large!"}) << outcome.out.toStdString();
    EXPECT_EQ(outcome.json().object().value("path_bytes").toInt(), 1500);
    const SOutcome leftAlone = check();
    EXPECT_EQ(leftAlone.exitCode, 0) << leftAlone.out.toStdString();
    EXPECT_TRUE(findings(leftAlone).contains("small-path"));
}

TEST_F(PoolCliNetwork, cameraThatAnotherApplicationControls)
{
    const CCameraProgram camera({"--config", WriteConfig("")});
    CGvcpPeer owner;
    owner.OpenStream(1500);
    const SOutcome outcome = check();
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(findings(outcome), QStringList{"in-use!"}) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.out.contains("in use by the application at 127.0.0.1")) << outcome.out.toStdString();
}

TEST_F(PoolCliNetwork, cameraThatDiesDuringTheGrabIsSaidToBeLost)
{
    const CCameraProgram camera({"--config", WriteConfig(""), "--fault", "die=5"});
    const SOutcome outcome = network({"check", "--seconds", "50", "--json"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(findings(outcome), QStringList{"lost!"}) << outcome.out.toStdString() << outcome.err.toStdString();
}

TEST_F(PoolCliNetwork, cameraThatDoesNotAnswerIsNotFound)
{
    const CCameraProgram camera({"--config", WriteConfig(""), "--count", "1"});
    const SOutcome outcome = check({"NO-SUCH", "--discovery-timeout", "0.5"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("NO-SUCH")) << outcome.err.toStdString();
}

TEST_F(PoolCliNetwork, ctrlCEndsACheckInOrderAndAccusesNobody)
{
    const CCameraProgram camera({"--config", WriteConfig(""), "--fault", "nostream"});
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {"network", "check", "--seconds", "60"});
    constexpr int limitMs = 30000;
    QByteArray out;
    while (!out.contains("Grabbing") && process.waitForReadyRead(limitMs))
    {
        out += process.readAllStandardOutput();
    }
    ASSERT_TRUE(out.contains("Grabbing")) << out.toStdString();
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(limitMs));
    out += process.readAllStandardOutput();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    EXPECT_TRUE(out.contains("Ended early.")) << out.toStdString();
    EXPECT_FALSE(out.contains("No images:"));
    EXPECT_EQ(check().json().object().value("findings").toArray().first().toObject().value("id").toString(),
              "nothing-arrives")
        << "the camera is free again";
}

// Plans

TEST_F(PoolCliNetwork, planIsShownAndWrittenOnRequestOnly)
{
    const CCameraProgram cameras({"--count", "3"}, 3);
    const QStringList plan{"plan", "--link-speed", "1000", "--rate", "5", "--json"};
    const SOutcome shown = network(plan);
    ASSERT_EQ(shown.exitCode, 0) << shown.err.toStdString();
    const QJsonObject link = shown.json().array().first().toObject();
    EXPECT_TRUE(link.value("fits").toBool());
    EXPECT_FALSE(link.value("applied").toBool(true));
    const QJsonArray planned = link.value("cameras").toArray();
    ASSERT_EQ(planned.size(), 3);
    EXPECT_EQ(planned.first().toObject().value("packet_bytes").toInt(), 9000) << "the way was tried";
    const auto ticks = static_cast<qint64>(planned.first().toObject().value("delay_ticks").toDouble());
    EXPECT_GT(ticks, 0);
    EXPECT_TRUE(run({"get", "GEV-0001", "GevSCPD"}).out.contains("GevSCPD = 0\n"));
    EXPECT_EQ(network(plan + QStringList{"--apply"}).exitCode, 0);
    EXPECT_EQ(QString::fromUtf8(run({"get", "GEV-0001", "GevSCPD"}).out).trimmed(),
              QStringLiteral("GevSCPD = %1").arg(ticks));
    const QString table = QString::fromUtf8(network({"plan", "--link-speed", "1000", "--rate", "5"}).out);
    EXPECT_TRUE(table.contains("Everything fits")) << table.toStdString();
    EXPECT_TRUE(table.contains(QStringLiteral(" %1\n").arg(ticks)));
}

TEST_F(PoolCliNetwork, tooMuchForTheLinkIsToldWithARateThatFitsAndNothingIsWritten)
{
    const CCameraProgram cameras({"--count", "4"}, 4);
    const SOutcome outcome = network({"plan", "--link-speed", "1000", "--apply", "--json"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("but only 900.0 can be used")) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains("lower the frame rate from 30.0 to ")) << outcome.err.toStdString();
    const QJsonObject link = outcome.json().array().first().toObject();
    EXPECT_FALSE(link.value("fits").toBool(true));
    EXPECT_FALSE(link.value("applied").toBool(true));
    EXPECT_TRUE(run({"get", "GEV-0001", "GevSCPD"}).out.contains("GevSCPD = 0\n"));
    const double most = link.value("cameras").toArray().first().toObject().value("most_fps").toDouble();
    EXPECT_GT(most, 0.0);
    EXPECT_LT(most, 30.0);
}

TEST_F(PoolCliNetwork, imagesAllArriveWithThePlannedPauses)
{
    const CCameraProgram cameras({"--count", "2"}, 2);
    ASSERT_EQ(network({"plan", "--link-speed", "500", "--rate", "5", "--apply"}).exitCode, 0);
    const SOutcome grabbed =
        run({"grab", "-n", "5", "--json", "--set", "AcquisitionFrameRateEnable=1", "--set", "AcquisitionFrameRate=5"});
    EXPECT_EQ(grabbed.exitCode, 0) << grabbed.err.toStdString();
    const auto counts = grabbed.json().array();
    ASSERT_EQ(counts.size(), 2);
    for (const auto& count : counts)
    {
        EXPECT_EQ(count.toObject().value("images").toInt(), 5);
        EXPECT_EQ(count.toObject().value("missing").toInt(), 0) << "the pauses would make the rate too low";
    }
}

TEST_F(PoolCliNetwork, linkSpeedThatIsNotKnownIsAskedFor)
{
    const CCameraProgram cameras({"--config", WriteConfig("")});
    const SOutcome outcome = network({"plan"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("give it with --link-speed")) << outcome.err.toStdString();
}

TEST_F(PoolCliNetwork, wrongUsageIsToldApart)
{
    EXPECT_EQ(network({"plan", "--reserve", "95"}).exitCode, 2);
    EXPECT_EQ(network({"plan", "--link-speed", "0"}).exitCode, 2);
    EXPECT_EQ(network({"check", "--seconds", "0"}).exitCode, 2);
}

TEST_F(PoolCliNetwork, camerasThatAreNoGigECamerasAreRefusedByName)
{
    writeData(R"({"cameras": [{"serial": "EMU-A", "model": "Mono"}]})");
    EXPECT_TRUE(network({"plan", "EMU-A", "--link-speed", "1000"}).err.contains("is no GigE Vision camera"));
    EXPECT_TRUE(check({"EMU-A"}).err.contains("is no GigE Vision camera"));
    EXPECT_TRUE(network({"plan", "--link-speed", "1000"}).err.contains("no GigE Vision camera to plan for"));
    EXPECT_TRUE(network().out.contains("No GigE Vision camera answers."));
}

} // namespace
