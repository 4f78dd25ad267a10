// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>

#include <csignal>

namespace
{

using PoolCliTest::PoolCliProgram;
using PoolCliTest::SOutcome;

TEST_F(PoolCliProgram, listShowsTheEmulatedCamerasAsJson)
{
    const SOutcome outcome = run({QStringLiteral("list"), QStringLiteral("--json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    QStringList serials;
    for (const auto& value : outcome.json().array())
    {
        serials.append(value.toObject().value(QStringLiteral("serial")).toString());
    }
    EXPECT_EQ(serials, (QStringList{QStringLiteral("EMU-A"), QStringLiteral("EMU-B")}));
}

TEST_F(PoolCliProgram, aCameraIsFoundByEachOfItsNames)
{
    const SOutcome list = run({QStringLiteral("list"), QStringLiteral("--json")});
    const QJsonObject first = list.json().array().at(0).toObject();
    const QStringList names{
        QStringLiteral("left"), QStringLiteral("EMU-A"),
        QStringLiteral("%1-%2-EMU-A")
            .arg(first.value(QStringLiteral("vendor")).toString(), first.value(QStringLiteral("model")).toString()),
        first.value(QStringLiteral("full_name")).toString()};
    for (const QString& name : names)
    {
        const SOutcome info = run({QStringLiteral("info"), name, QStringLiteral("--json")});
        ASSERT_EQ(info.exitCode, 0) << name.toStdString() << ": " << info.err.constData();
        EXPECT_EQ(info.json().object().value(QStringLiteral("serial")).toString(), QStringLiteral("EMU-A"));
    }
}

TEST_F(PoolCliProgram, anUnknownCameraIsRefusedWithItsName)
{
    const SOutcome outcome = run({QStringLiteral("info"), QStringLiteral("nobody")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("nobody")) << outcome.err.constData();
}

TEST_F(PoolCliProgram, wrongUsageEndsWithTwo)
{
    const SOutcome outcome = run({QStringLiteral("dance")});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.err.contains("dance")) << outcome.err.constData();
}

TEST_F(PoolCliProgram, helpIsInTheLanguageAskedFor)
{
    const SOutcome japanese = run({QStringLiteral("--language"), QStringLiteral("ja"), QStringLiteral("--help")});
    EXPECT_EQ(japanese.exitCode, 0);
    EXPECT_TRUE(japanese.out.contains("使い方: poolcli [オプション] コマンド")) << japanese.out.constData();
    EXPECT_TRUE(japanese.out.contains("終了コード")) << japanese.out.constData();
    EXPECT_FALSE(japanese.out.contains("Options:") || japanese.out.contains("Subcommands:"))
        << japanese.out.constData();
    const SOutcome korean =
        run({QStringLiteral("--language=ko"), QStringLiteral("snapshot"), QStringLiteral("--help")});
    EXPECT_TRUE(korean.out.contains("이미지를 기다리는 시간(초)")) << korean.out.constData();
    EXPECT_TRUE(korean.out.contains("이 도움말을 표시하고 끝냅니다")) << korean.out.constData();
    const SOutcome english = run({QStringLiteral("snapshot"), QStringLiteral("--help")});
    EXPECT_TRUE(english.out.contains("Usage: poolcli snapshot [OPTIONS]")) << english.out.constData();
}

TEST_F(PoolCliProgram, featuresAreReadAndWritten)
{
    const SOutcome set =
        run({QStringLiteral("set"), QStringLiteral("EMU-A"), QStringLiteral("Width=64"), QStringLiteral("--json")});
    ASSERT_EQ(set.exitCode, 0) << set.err.constData();
    EXPECT_EQ(set.json().object().value(QStringLiteral("Width")).toString(), QStringLiteral("64"));
    const SOutcome get = run({QStringLiteral("get"), QStringLiteral("EMU-A"), QStringLiteral("DeviceSerialNumber"),
                              QStringLiteral("--json")});
    ASSERT_EQ(get.exitCode, 0) << get.err.constData();
    EXPECT_EQ(get.json().object().value(QStringLiteral("DeviceSerialNumber")).toString(), QStringLiteral("EMU-A"));
}

TEST_F(PoolCliProgram, aValueOutOfRangeIsRefusedWithTheFeature)
{
    const SOutcome outcome = run({QStringLiteral("set"), QStringLiteral("EMU-A"), QStringLiteral("Width=99999999")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("Width")) << outcome.err.constData();
}

TEST_F(PoolCliProgram, aSettingThatOneOfSeveralCamerasRefusesIsToldWithThatCamera)
{
    writeData(R"({"cameras": [{"serial": "EMU-A", "pixelFormats": ["Mono8", "BayerRG8"]},
                              {"serial": "EMU-B", "pixelFormats": ["Mono8"]}]})");
    const SOutcome outcome = run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("1"),
                                  QStringLiteral("--set"), QStringLiteral("PixelFormat=BayerRG8")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("(EMU-B): PixelFormat=BayerRG8 was refused: ")) << outcome.err.constData();
}

TEST_F(PoolCliProgram, theFeatureTreeHoldsTheCategoryAndTheFeature)
{
    const SOutcome outcome = run({QStringLiteral("features"), QStringLiteral("EMU-A"), QStringLiteral("--filter"),
                                  QStringLiteral("exposuretime")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_TRUE(outcome.out.contains("AcquisitionControl")) << outcome.out.constData();
    EXPECT_TRUE(outcome.out.contains("ExposureTime = ")) << outcome.out.constData();
}

TEST_F(PoolCliProgram, grabStopsAfterTheImagesAskedForOnBothCameras)
{
    const SOutcome outcome = run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("10"),
                                  QStringLiteral("--json"), QStringLiteral("-o"), QStringLiteral("pictures")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const QJsonArray cameras = outcome.json().array();
    ASSERT_EQ(cameras.size(), 2);
    for (const auto& camera : cameras)
    {
        EXPECT_EQ(camera.toObject().value(QStringLiteral("images")).toInt(), 10);
        EXPECT_EQ(camera.toObject().value(QStringLiteral("missing")).toInt(), 0);
    }
    EXPECT_EQ(QDir(m_folder.filePath(QStringLiteral("pictures"))).entryList({QStringLiteral("*.png")}).size(), 2);
}

TEST_F(PoolCliProgram, camerasWhoseNamesGiveTheSameFileGetAPictureEach)
{
    writeData(R"({"cameras": [{"serial": "A B", "model": "Mono"}, {"serial": "A_B", "model": "Mono"}]})");
    const SOutcome outcome = run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("2"),
                                  QStringLiteral("-o"), QStringLiteral("pictures")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_EQ(QDir(m_folder.filePath(QStringLiteral("pictures"))).entryList({QStringLiteral("*.png")}),
              (QStringList{QStringLiteral("Mono-A_B-2.png"), QStringLiteral("Mono-A_B.png")}));
}

TEST_F(PoolCliProgram, aGrabOfAllCamerasGoesOnWithoutTheBusyOneAndEndsWithOne)
{
    writeData(R"({"cameras": [{"serial": "BUSY", "faults": {"refuseOpenOwner": "10.1.2.3"}}, {"serial": "FREE"}]})");
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("3"), QStringLiteral("--json")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("BUSY") && outcome.err.contains("10.1.2.3")) << outcome.err.constData();
    EXPECT_FALSE(outcome.err.contains("FREE")) << outcome.err.constData();
    const QJsonArray cameras = outcome.json().array();
    ASSERT_EQ(cameras.size(), 1);
    EXPECT_TRUE(cameras.at(0).toObject().value(QStringLiteral("full_name")).toString().contains("FREE"));
    EXPECT_EQ(cameras.at(0).toObject().value(QStringLiteral("images")).toInt(), 3);
}

TEST_F(PoolCliProgram, aGrabOfANamedCameraThatIsBusyDoesNotBegin)
{
    writeData(R"({"cameras": [{"serial": "BUSY", "faults": {"refuseOpenOwner": "10.1.2.3"}}, {"serial": "FREE"}]})");
    const SOutcome outcome = run({QStringLiteral("grab"), QStringLiteral("FREE"), QStringLiteral("BUSY"),
                                  QStringLiteral("-n"), QStringLiteral("3"), QStringLiteral("--json")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("BUSY")) << outcome.err.constData();
    EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.constData();
}

TEST_F(PoolCliProgram, aSnapshotOfADeepFormatKeepsSixteenBits)
{
    const SOutcome outcome =
        run({QStringLiteral("snapshot"), QStringLiteral("EMU-B"), QStringLiteral("--set"),
             QStringLiteral("PixelFormat=Mono12"), QStringLiteral("-o"), QStringLiteral("deep.png")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const QImage picture(m_folder.filePath(QStringLiteral("deep.png")));
    EXPECT_EQ(picture.format(), QImage::Format_Grayscale16);
    EXPECT_GT(picture.width(), 0);
}

TEST_F(PoolCliProgram, statsPrintsTheObjectsOfTheCamerasSourceNode)
{
    const SOutcome outcome = run({QStringLiteral("stats"), QStringLiteral("EMU-A"), QStringLiteral("-s"),
                                  QStringLiteral("1.5"), QStringLiteral("--json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const QList<QByteArray> lines = outcome.out.trimmed().split('\n');
    EXPECT_GE(lines.size(), 2) << outcome.out.constData(); // after a second, and at the end
    const QJsonObject last = QJsonDocument::fromJson(lines.last()).object();
    EXPECT_EQ(last.keys(), (QStringList{QStringLiteral("bps"), QStringLiteral("camera_friendly_name"),
                                        QStringLiteral("compression_enabled"), QStringLiteral("fps"),
                                        QStringLiteral("images_failed"), QStringLiteral("images_grabbed")}))
        << outcome.out.constData();
    EXPECT_GT(last.value(QStringLiteral("images_grabbed")).toInt(), 0) << outcome.out.constData();
    EXPECT_GT(last.value(QStringLiteral("fps")).toDouble(), 0.0) << outcome.out.constData();
    EXPECT_TRUE(last.value(QStringLiteral("camera_friendly_name")).toString().contains(QStringLiteral("EMU-A")));
}

TEST_F(PoolCliProgram, ctrlCEndsAGrabInOrder)
{
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {QStringLiteral("grab"), QStringLiteral("EMU-A")});
    constexpr int limitMs = 30000;
    ASSERT_TRUE(process.waitForReadyRead(limitMs)) << "no live line";
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(limitMs));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
}

TEST_F(PoolCliProgram, aCameraThatDiesDuringAGrabEndsItWithOneAndAReason)
{
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {QStringLiteral("grab"), QStringLiteral("EMU-B")});
    constexpr int limitMs = 30000;
    ASSERT_TRUE(process.waitForReadyRead(limitMs)) << "no live line";
    writeData(R"({"cameras": [{"serial": "EMU-A", "model": "Mono"}]})");
    constexpr int promptMs = 5000; // the next discovery is 8 s away
    ASSERT_TRUE(process.waitForFinished(promptMs)) << "the loss was not reported at once";
    EXPECT_EQ(process.exitCode(), 1);
    const QByteArray err = process.readAllStandardError();
    EXPECT_TRUE(err.contains("EMU-B") && err.contains("lost")) << err.constData();
}

TEST_F(PoolCliProgram, aCameraThatDiesWithoutAReportEndsTheGrabWithTheNextDiscovery)
{
    writeData(R"({"cameras": [{"serial": "QUIET", "faults": {"removalReports": 0}}]})");
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {QStringLiteral("grab"), QStringLiteral("QUIET")});
    constexpr int limitMs = 30000;
    ASSERT_TRUE(process.waitForReadyRead(limitMs)) << "no live line";
    writeData(R"({"cameras": []})");
    ASSERT_TRUE(process.waitForFinished(limitMs)) << "the grab goes on without its camera";
    EXPECT_EQ(process.exitCode(), 1);
    const QByteArray err = process.readAllStandardError();
    EXPECT_TRUE(err.contains("QUIET") && err.contains("lost")) << err.constData();
}

TEST_F(PoolCliProgram, aGrabWithoutOneGoodImageEndsWithOneAndAReason)
{
    writeData(R"({"cameras": [{"serial": "BAD", "faults": {"failEveryNth": 1}}]})");
    const SOutcome outcome = run({QStringLiteral("grab"), QStringLiteral("--seconds"), QStringLiteral("1")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("BAD")) << outcome.err.constData();
}

TEST_F(PoolCliProgram, aCameraThatDeliversNothingIsNotSaidToFailForAnotherReason)
{
    writeData(R"({"cameras": [{"serial": "SILENT", "faults": {"stall": true}}]})");
    const SOutcome outcome = run({QStringLiteral("grab"), QStringLiteral("--seconds"), QStringLiteral("1")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("none arrived in time.")) << outcome.err.constData();
}

TEST_F(PoolCliProgram, failedImagesAreNotCountedAsMissingToo)
{
    writeData(R"({"cameras": [{"serial": "THIRD", "faults": {"failEveryNth": 3}}]})");
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("6"), QStringLiteral("--json")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const QJsonObject camera = outcome.json().array().at(0).toObject();
    EXPECT_GE(camera.value(QStringLiteral("failed")).toInt(), 2);
    EXPECT_EQ(camera.value(QStringLiteral("missing")).toInt(), 0);
}

TEST_F(PoolCliProgram, watchShowsACameraThatIsUnplugged)
{
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {QStringLiteral("watch"), QStringLiteral("--json")});
    constexpr int limitMs = 30000;
    QByteArray out;
    const auto waitFor = [&](const char* text)
    {
        while (!out.contains(text) && process.waitForReadyRead(limitMs))
        {
            out += process.readAllStandardOutput();
        }
        return out.contains(text);
    };
    ASSERT_TRUE(waitFor("\"connected\"")) << out.constData();
    writeData(R"({"cameras": [{"serial": "EMU-A", "model": "Mono"}]})");
    EXPECT_TRUE(waitFor("\"disconnected\"")) << out.constData();
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(limitMs));
    EXPECT_EQ(process.exitCode(), 0);
}

} // namespace
