// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include <csignal>

namespace
{

using PoolCliTest::SOutcome;

constexpr int limitMs = 60000;

class PoolCliOutput : public PoolCliTest::PoolCliProgram
{
protected:
    /** A command line of bash, in which the first parameter is the program; pipes end with its exit code. */
    SOutcome shell(const QString& line) const
    {
        QProcess process;
        prepare(process);
        process.start(QStringLiteral("bash"), {QStringLiteral("-c"), QStringLiteral("set -o pipefail; ") + line,
                                               QStringLiteral("bash"), QStringLiteral(POOLCLI)});
        EXPECT_TRUE(process.waitForFinished(limitMs)) << "poolcli does not end";
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
};

TEST_F(PoolCliOutput, aReaderThatHasSeenEnoughEndsAGrabInOrder)
{
    const SOutcome outcome = shell(QStringLiteral("\"$1\" grab EMU-A | head -n 1"));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_EQ(outcome.out.count('\n'), 1) << outcome.out.constData();
    EXPECT_TRUE(outcome.err.isEmpty()) << outcome.err.constData();
}

TEST_F(PoolCliOutput, aReaderThatHasSeenEnoughEndsChunksInOrder)
{
    const SOutcome outcome = shell(QStringLiteral("\"$1\" chunks EMU-A -n 1000000 | head -n 2"));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_EQ(outcome.out.count('\n'), 2) << outcome.out.constData();
}

TEST_F(PoolCliOutput, aFullDiskIsToldAndEndsWithOne)
{
    const SOutcome outcome = shell(QStringLiteral("\"$1\" list >/dev/full"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("stdout")) << outcome.err.constData();
}

TEST_F(PoolCliOutput, aClosedTerminalEndsAGrabInOrder)
{
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {QStringLiteral("grab"), QStringLiteral("EMU-A")});
    ASSERT_TRUE(process.waitForReadyRead(limitMs)) << "no live line";
    ::kill(static_cast<pid_t>(process.processId()), SIGHUP);
    ASSERT_TRUE(process.waitForFinished(limitMs));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
}

TEST_F(PoolCliOutput, aFolderThatCannotBeMadeIsRefusedBeforeTheGrab)
{
    const QString folder = dataFile() + QStringLiteral("/pictures");
    const SOutcome outcome =
        run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("2"), QStringLiteral("-o"), folder});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.constData();
    EXPECT_TRUE(outcome.err.contains(folder.toUtf8())) << outcome.err.constData();
}

TEST_F(PoolCliOutput, aFolderThatAMonitorCannotMakeIsRefusedBeforeItWatches)
{
    const QString folder = dataFile() + QStringLiteral("/pictures");
    const SOutcome outcome = run({QStringLiteral("monitor"), QStringLiteral("EMU-A"), QStringLiteral("-s"),
                                  QStringLiteral("1"), QStringLiteral("-o"), folder});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.constData();
    EXPECT_TRUE(outcome.err.contains(folder.toUtf8())) << outcome.err.constData();
}

TEST_F(PoolCliOutput, aPictureWithoutRoomLeavesTheOldOneAndNothingElse)
{
    const QDir folder(m_folder.filePath(QStringLiteral("pictures")));
    ASSERT_TRUE(QDir().mkpath(folder.path()));
    QFile old(folder.filePath(QStringLiteral("a.png")));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3 && old.flush());
    // No file may be longer than 100 KiB, and to try it is an error instead of a signal.
    const QString limited = QStringLiteral("trap '' XFSZ; ulimit -f 100; \"$1\" snapshot EMU-A --set "
                                           "TestPattern=NoisyScene --output pictures/");
    for (const char* const name : {"a.png", "b.png"})
    {
        const SOutcome outcome = shell(limited + QLatin1String(name));
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.constData();
        EXPECT_EQ(outcome.err, QByteArray("poolcli: pictures/") + name + " could not be written: File too large\n");
    }
    EXPECT_EQ(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{"a.png"});
    EXPECT_EQ(old.size(), 3);
}

TEST_F(PoolCliOutput, aPipeIsWrittenToAndNotReplaced)
{
    const SOutcome outcome =
        shell(QStringLiteral("mkfifo p; head -c 4 p | tail -c 3 & \"$1\" snapshot EMU-A --output p >/dev/null 2>&1; "
                             "wait; [ -p p ]"));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_EQ(outcome.out, "PNG");
}

TEST_F(PoolCliOutput, aPictureThatCannotBeWrittenKeepsTheOthersAndTheSummary)
{
    const QDir folder(m_folder.filePath(QStringLiteral("pictures")));
    ASSERT_TRUE(QDir().mkpath(folder.filePath(QStringLiteral("Mono-EMU-A.png")))); // a folder of the picture's name
    const SOutcome outcome = run({QStringLiteral("grab"), QStringLiteral("-n"), QStringLiteral("2"),
                                  QStringLiteral("-o"), QStringLiteral("pictures"), QStringLiteral("--json")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("Mono-EMU-A.png")) << outcome.err.constData();
    const QJsonArray cameras = outcome.json().array();
    ASSERT_EQ(cameras.size(), 2) << outcome.out.constData();
    EXPECT_FALSE(cameras.at(0).toObject().contains(QStringLiteral("picture")));
    EXPECT_EQ(cameras.at(1).toObject().value(QStringLiteral("picture")).toString(),
              QStringLiteral("pictures/Deep-EMU-B.png"));
    EXPECT_TRUE(QFileInfo(folder.filePath(QStringLiteral("Deep-EMU-B.png"))).isFile());
}

} // namespace
