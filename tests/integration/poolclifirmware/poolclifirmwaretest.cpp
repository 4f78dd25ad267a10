// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolclifirmware/poolclifirmware.h"
#include "support/cameraprogram.h"

#include <csignal>

namespace
{

using PoolCliTest::PoolCliFirmware;
using PoolCliTest::SOutcome;

TEST_F(PoolCliFirmware, listsInTheFilesOrderAndMatchesNewestFirst)
{
    EXPECT_EQ(versions(firmware({"list", path("e.guf"), "--json"})), (QStringList{"1.5.0", "2.0.0"}));
    const SOutcome table = firmware({"match", path("e.guf"), "FW-A"});
    EXPECT_EQ(table.exitCode, 0) << table.err.toStdString();
    EXPECT_TRUE(table.out.startsWith("VERSION")) << table.out.toStdString();
    EXPECT_EQ(versions(firmware({"match", path("e.guf"), "--json"})), (QStringList{"2.0.0", "1.5.0"}));
}

TEST_F(PoolCliFirmware, updatesToTheNewestAndShowsEachStep)
{
    const SOutcome outcome = update({});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    const QString out = QString::fromUtf8(outcome.out);
    EXPECT_TRUE(out.contains(QStringLiteral("firmware 1.7.0 -> 2.0.0 (upgrade)"))) << outcome.out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("\nEstimated time: 2.6 s\n"))) << outcome.out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("\nUploading a file (0.2 s)\n"))) << outcome.out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("\nRestarting the camera (1 s)\n"))) << outcome.out.toStdString();
    EXPECT_TRUE(out.endsWith(QStringLiteral("has firmware 2.0.0 now.\n")));
}

TEST_F(PoolCliFirmware, tellsProgramsWhatWasDone)
{
    const SOutcome outcome = update({"--version", "1.5.0", "--yes", "--json"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    const QJsonObject done = outcome.json().object();
    EXPECT_TRUE(done.value("camera").toString().contains("FW-A")) << outcome.out.toStdString();
    EXPECT_EQ(done.value("version_before").toString(), QStringLiteral("1.7.0"));
    EXPECT_EQ(done.value("version").toString(), QStringLiteral("1.5.0"));
    EXPECT_EQ(done.value("direction").toString(), QStringLiteral("downgrade"));
    const SOutcome refused = update({"--version", "1.5.0", "--json"});
    expectRefused(refused, "--yes");
    EXPECT_TRUE(refused.out.isEmpty()) << refused.out.toStdString();
}

TEST_F(PoolCliFirmware, downgradesOnlyWithConsent)
{
    expectRefused(update({"--version", "1.5.0"}), "--yes");
    const SOutcome agreed = update({"--version", "1.5.0", "--yes"});
    EXPECT_EQ(agreed.exitCode, 0) << agreed.err.toStdString();
    EXPECT_TRUE(agreed.out.contains("1.7.0 -> 1.5.0 (downgrade)")) << agreed.out.toStdString();
    expectRefused(update({"--version", "3.0"}), "No update to version 3.0");
}

TEST_F(PoolCliFirmware, ofUpdatesThatAreEquallyNewNoneIsChosen)
{
    const auto packageOf = [&](const QByteArray& first, const QByteArray& second)
    {
        const auto update = [](const char* id, const QByteArray& version)
        {
            return QByteArray("<Update id=\"") + id + R"(" procedure="p"><Condition feature="Gain" matches=".*"/>)" +
                   R"(<Info key="Version"><Text>)" + version + "</Text></Info></Update>";
        };
        write("two.xml", R"(<FirmwarePackage xmlns="urn:camerapool:firmwarepackage" version="1.0"><Procedures>
            <Procedure id="p"><Steps><FeatureWrite feature="Gain" value="1"/></Steps></Procedure></Procedures><Updates>)" +
                             update("first", first) + update("second", second) + update("old", "2.0.9") +
                             "</Updates></FirmwarePackage>");
        EXPECT_EQ(firmware({"create", path("two.xml"), path("two.guf")}).exitCode, 0);
    };
    packageOf("2.1", "02.1.0.");
    const SOutcome equal = firmware({"update", path("two.guf"), "FW-A"});
    expectRefused(equal, "--version");
    EXPECT_TRUE(equal.err.contains("2.1")) << equal.err.toStdString();
    EXPECT_TRUE(equal.err.contains("02.1.0.")) << equal.err.toStdString();
    EXPECT_EQ(firmware({"update", path("two.guf"), "FW-A", "--version", "02.1.0."}).exitCode, 0);
    packageOf("2.1", "2.1");
    expectRefused(firmware({"update", path("two.guf"), "FW-A"}), "Several updates to version 2.1 fit");
    expectRefused(firmware({"update", path("two.guf"), "FW-A", "--version", "2.1"}), "Several updates to version 2.1");
    packageOf("2.1", "2.0.10");
    EXPECT_EQ(firmware({"update", path("two.guf"), "FW-A"}).exitCode, 0);
}

TEST_F(PoolCliFirmware, badFilesAreRefusedWithTheirReason)
{
    expectRefused(firmware({"list", path("none.guf")}), "does not exist");
    expectRefused(firmware({"list", write("text.guf", "no archive")}), "text.guf");
    const QByteArray whole = package();
    expectRefused(firmware({"update", write("half.guf", whole.left(whole.size() / 2)), "FW-A"}), "half.guf");
    expectRefused(firmware({"create", path("none.xml"), path("new.guf")}), "none.xml");
    EXPECT_EQ(firmware({}).exitCode, 2);
    EXPECT_EQ(firmware({"list"}).exitCode, 2);
}

TEST_F(PoolCliFirmware, updateOfAnotherCameraIsRefused)
{
    writeCamera(R"(, "model": "Other")");
    expectRefused(update({}), "No update in ");
    expectRefused(firmware({"match", path("e.guf"), "FW-A", "--json"}), "is for the camera");
}

TEST_F(PoolCliFirmware, cameraInUseElsewhereIsRefusedWithItsOwner)
{
    writeCamera(R"(, "faults": {"refuseOpenOwner": "somebody"})");
    expectRefused(update({}), "somebody");
}

TEST_F(PoolCliFirmware, cameraThatVanishesMidStepIsAFailureWithTheConsequence)
{
    writeCamera(R"(, "faults": {"powerLossAtFileOperation": 3})");
    expectRefused(update({}), "The camera keeps the firmware that it has");
}

/** The same over the network: a camera keeps its firmware between two runs of the program. */
class PoolCliFirmwareGigE : public PoolCliFirmware
{
protected:
    PoolCliFirmwareGigE() { m_gigeAdapters = QStringLiteral("127.0.0.1"); }
    std::string cameraFile() const
    {
        return write("gige.json", R"({"cameras": [{"serial": "GC-1", "model": "EmuMono1280", "firmware": "1.7.0",
                                      "bootTimeMs": 300}]})")
            .toStdString();
    }
    SOutcome updateGigE(const QStringList& more) const
    {
        return firmware(QStringList{"update", path("e.guf"), "GC-1"} + more);
    }
};

TEST_F(PoolCliFirmwareGigE, upgradesThenWritesTheSameThenDowngrades)
{
    const ::Test::CCameraProgram camera({"--config", cameraFile()});
    const SOutcome up = updateGigE({});
    EXPECT_EQ(up.exitCode, 0) << up.err.toStdString();
    EXPECT_TRUE(up.out.contains("1.7.0 -> 2.0.0 (upgrade)")) << up.out.toStdString();
    EXPECT_TRUE(up.out.endsWith("has firmware 2.0.0 now.\n")) << up.out.toStdString();
    const SOutcome same = updateGigE({});
    EXPECT_EQ(same.exitCode, 0) << same.err.toStdString();
    EXPECT_TRUE(same.out.contains("2.0.0 -> 2.0.0 (the same version again)")) << same.out.toStdString();
    const SOutcome down = updateGigE({"--version", "1.5.0", "--yes"});
    EXPECT_EQ(down.exitCode, 0) << down.err.toStdString();
    EXPECT_TRUE(down.out.endsWith("has firmware 1.5.0 now.\n")) << down.out.toStdString();
}

TEST_F(PoolCliFirmwareGigE, cameraThatAnotherProgramControlsIsRefused)
{
    const ::Test::CCameraProgram camera({"--config", cameraFile()});
    QProcess other;
    prepare(other);
    other.start(QStringLiteral(POOLCLI), {"stats", "GC-1", "--seconds", "60"});
    ASSERT_TRUE(other.waitForReadyRead(30000)) << other.readAllStandardError().toStdString();
    const SOutcome outcome = updateGigE({});
    EXPECT_EQ(outcome.exitCode, 1) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.err.contains("could not be opened")) << outcome.err.toStdString();
    ::kill(static_cast<pid_t>(other.processId()), SIGINT);
    EXPECT_TRUE(other.waitForFinished(30000));
}

} // namespace
