// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>

#include <csignal>
#include <set>

namespace
{

constexpr int cameraCount = 8;

/** What the guide says to type, block by block. */
QStringList shellBlocks()
{
    QFile file(QStringLiteral(GUIDE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << GUIDE;
    const QRegularExpression block(QStringLiteral("^```sh\\n(.*?)^```$"),
                                   QRegularExpression::MultilineOption |
                                       QRegularExpression::DotMatchesEverythingOption);
    QStringList blocks;
    for (auto match = block.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();)
    {
        blocks.append(match.next().captured(1));
    }
    return blocks;
}

/** Types the guide's commands into one shell, as its reader does who waits for what the guide tells to wait for. */
class ActionGuide : public PoolCliTest::PoolCliProgram
{
protected:
    void SetUp() override
    {
        PoolCliProgram::SetUp();
        writeData(R"({"cameras": []})");
        m_gigeAdapters = QStringLiteral("127.0.0.1");
        prepare(m_shell);
        QProcessEnvironment environment = m_shell.processEnvironment();
        const QStringList folders{QFileInfo(QStringLiteral(POOLCLI)).path(),
                                  QFileInfo(QStringLiteral(GIGECAMERA)).path(), environment.value("PATH")};
        environment.insert(QStringLiteral("PATH"), folders.join(QLatin1Char(':')));
        environment.remove(QStringLiteral("CAMERAPOOL_GIGE_ADAPTERS")); // the guide sets it
        m_shell.setProcessEnvironment(environment);
        m_shell.setProcessChannelMode(QProcess::MergedChannels);
        m_shell.start(QStringLiteral("bash"), {QStringLiteral("-u")});
        ASSERT_TRUE(m_shell.waitForStarted());
        ASSERT_EQ(m_blocks.size(), 7) << "blocks of the guide";
    }
    void TearDown() override
    {
        // The shell leaves its jobs alone when it ends.
        const auto cameras = QRegularExpression(QStringLiteral("cameras run as (\\d+)"))
                                 .match(QString::fromUtf8(m_all))
                                 .captured(1)
                                 .toInt();
        EXPECT_GT(cameras, 0);
        if (cameras > 0)
        {
            EXPECT_EQ(::kill(cameras, SIGKILL), 0);
        }
        m_shell.closeWriteChannel();
        m_shell.terminate();
        EXPECT_TRUE(m_shell.waitForFinished(limitMs));
    }

    void type(const QString& commands)
    {
        m_seen.clear();
        m_shell.write(commands.toUtf8() + '\n');
        EXPECT_TRUE(m_shell.waitForBytesWritten());
    }
    /** Whether as many different texts as there are cameras match the pattern in what was printed since type(). */
    bool seeOfAll(const char* pattern, int captured = 1)
    {
        const QRegularExpression expression(QString::fromLatin1(pattern));
        QElapsedTimer timer;
        timer.start();
        std::set<QString> cameras;
        while (true)
        {
            for (auto match = expression.globalMatch(QString::fromUtf8(m_seen)); match.hasNext();)
            {
                cameras.insert(match.next().captured(captured));
            }
            if (cameras.size() == cameraCount || timer.elapsed() > limitMs)
            {
                return cameras.size() == cameraCount;
            }
            m_shell.waitForReadyRead(pollMs);
            read();
        }
    }
    void read()
    {
        const QByteArray fresh = m_shell.readAll();
        m_seen += fresh;
        m_all += fresh;
    }
    bool see(const char* text)
    {
        QElapsedTimer timer;
        timer.start();
        while (!m_seen.contains(text) && timer.elapsed() < limitMs)
        {
            m_shell.waitForReadyRead(pollMs);
            read();
        }
        return m_seen.contains(text);
    }

    static constexpr int limitMs = 30000;
    static constexpr int pollMs = 100;
    const QStringList m_blocks = shellBlocks();
    QProcess m_shell;
    QByteArray m_seen; // since the last type()
    QByteArray m_all;
};

TEST_F(ActionGuide, triggersEightCamerasAsPrinted)
{
    type(m_blocks.at(0));
    type(QStringLiteral("echo cameras run as $!"));
    ASSERT_TRUE(see("cameras run as ")) << m_seen.toStdString();
    ASSERT_TRUE(seeOfAll("(127\\.0\\.0\\.\\d) .* is ready")) << m_seen.toStdString();
    type(m_blocks.at(1));
    ASSERT_TRUE(seeOfAll("\\((GEV-000\\d)\\) +127\\.0\\.0\\.\\d +yes +yes")) << m_seen.toStdString();
    type(m_blocks.at(2));
    ASSERT_TRUE(seeOfAll("\\((GEV-000\\d)\\): 0 images")) << m_seen.toStdString();
    type(m_blocks.at(3));
    ASSERT_TRUE(seeOfAll("\\((GEV-000\\d)\\) +accepted")) << m_seen.toStdString();
    ASSERT_TRUE(seeOfAll("\\((GEV-000\\d)\\): 1 images")) << m_seen.toStdString();
    type(QStringLiteral("wait %2; echo the grab has ended"));
    ASSERT_TRUE(see("the grab has ended")) << m_seen.toStdString();

    type(m_blocks.at(4));
    ASSERT_TRUE(see("TimestampLatch done")) << m_seen.toStdString();
    EXPECT_TRUE(m_seen.contains("PtpStatus = Slave")) << m_seen.toStdString();
    type(m_blocks.at(5));
    ASSERT_TRUE(seeOfAll("\\((GEV-000\\d)\\): 0 images")) << m_seen.toStdString();
    type(m_blocks.at(6));
    ASSERT_TRUE(seeOfAll("\\((GEV-000\\d)\\) +accepted")) << m_seen.toStdString();
    EXPECT_FALSE(m_seen.contains(": 1 images")) << "that is for later\n" << m_seen.toStdString();
    ASSERT_TRUE(seeOfAll("\\((GEV-000\\d)\\): 1 images")) << m_seen.toStdString();
}

} // namespace
