// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

#include <QRegularExpression>
#include <QSet>

#include <csignal>

namespace
{

using PoolCliTest::PoolCliProgram;
using PoolCliTest::SOutcome;

class PoolCliEvents : public PoolCliProgram
{
protected:
    SOutcome events(const QStringList& more) const { return run(QStringList{"events", "EMU-A"} + more); }
    static QVector<QJsonObject> objects(const QByteArray& out)
    {
        QVector<QJsonObject> result;
        for (const QByteArray& line : out.trimmed().split('\n'))
        {
            result.append(QJsonDocument::fromJson(line).object());
        }
        return result;
    }
};

TEST_F(PoolCliEvents, thoseThatWereNamedAreShownInOrderWhileImagesAreGrabbed)
{
    const SOutcome outcome = events({"ExposureEnd", "--grab", "-n", "5", "--json"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const auto seen = objects(outcome.out);
    ASSERT_EQ(seen.size(), 5) << outcome.out.constData();
    for (int i = 0; i < seen.size(); ++i)
    {
        EXPECT_EQ(seen[i].value("event").toString(), "ExposureEnd");
        EXPECT_EQ(seen[i].value("id").toInt(), 0x9003);
        EXPECT_GT(seen[i].value("timestamp").toString().toLongLong(), 0);
        EXPECT_EQ(seen[i].value("values").toObject(),
                  (QJsonObject{{"EventExposureEndFrameID", QString::number(i + 1)}}));
    }
}

TEST_F(PoolCliEvents, allAreSwitchedOnWhenNoneIsNamed)
{
    const SOutcome outcome = events({"--grab", "-n", "6", "--json", "--set", "TestEventGenerate"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    QSet<QString> names;
    for (const QJsonObject& event : objects(outcome.out))
    {
        names.insert(event.value("event").toString());
    }
    EXPECT_EQ(names, (QSet<QString>{"FrameStart", "ExposureStart", "ExposureEnd", "Test"})) << outcome.out.constData();
}

TEST_F(PoolCliEvents, aLineIsPrintedForPeople)
{
    const SOutcome outcome = events({"Test", "-n", "1", "--set", "TestEventGenerate"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    const QRegularExpression line("^Test  id=0x9010  timestamp=\\d+\n$");
    EXPECT_TRUE(line.match(QString::fromUtf8(outcome.out)).hasMatch()) << outcome.out.constData();
}

TEST_F(PoolCliEvents, theTimeEndsItWhenNothingHappens)
{
    const SOutcome outcome = events({"Test", "-t", "0.3"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.constData();
}

TEST_F(PoolCliEvents, ctrlCEndsItInOrder)
{
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {"events", "EMU-A", "--grab"});
    constexpr int limitMs = 30000;
    ASSERT_TRUE(process.waitForReadyRead(limitMs)) << "no event";
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(limitMs));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
}

TEST_F(PoolCliEvents, aCameraThatDiesEndsItWithOneAndAReason)
{
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {"events", "EMU-B", "--set", "TestEventGenerate"});
    constexpr int limitMs = 30000;
    ASSERT_TRUE(process.waitForReadyRead(limitMs)) << "no event";
    writeData(R"({"cameras": [{"serial": "EMU-A", "model": "Mono"}]})");
    ASSERT_TRUE(process.waitForFinished(limitMs)) << "the loss was not noticed";
    EXPECT_EQ(process.exitCode(), 1);
    const QByteArray err = process.readAllStandardError();
    EXPECT_TRUE(err.contains("EMU-B") && err.contains("lost")) << err.constData();
}

TEST_F(PoolCliEvents, anUnknownEventIsRefusedWithThoseThatThereAre)
{
    const SOutcome outcome = events({"Test", "Nonsense"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "poolcli: The camera has no event Nonsense; it has: FrameStart, ExposureStart, ExposureEnd, "
                           "Test.\n");
}

TEST_F(PoolCliEvents, zeroEventsAreWrongUsage)
{
    EXPECT_EQ(events({"-n", "0"}).exitCode, 2);
}

} // namespace
