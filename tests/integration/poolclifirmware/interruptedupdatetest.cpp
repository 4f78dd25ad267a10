// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolclifirmware/poolclifirmware.h"

#include <csignal>

namespace
{

constexpr int patienceMs = 60000;

/** An update whose upload takes its time. */
class InterruptedUpdate : public PoolCliTest::PoolCliFirmware
{
protected:
    void start(const QByteArray& fileDelayMs)
    {
        writeCamera(R"(, "faults": {"fileDelayMs": )" + fileDelayMs + "}");
        startWith("e.guf");
    }
    void startWith(const char* package)
    {
        prepare(m_process);
        m_process.start(QStringLiteral(POOLCLI), {"firmware", "update", path(package), "FW-A"});
    }
    void waitForOutput(const char* text)
    {
        while (!m_out.contains(text) && m_process.waitForReadyRead(patienceMs))
        {
            m_out += m_process.readAllStandardOutput();
        }
        ASSERT_TRUE(m_out.contains(text)) << m_out.toStdString();
    }
    void waitForError(const char* text)
    {
        m_process.setReadChannel(QProcess::StandardError);
        while (!m_errors.contains(text) && m_process.waitForReadyRead(patienceMs))
        {
            m_errors += m_process.readAllStandardError();
        }
        ASSERT_TRUE(m_errors.contains(text)) << m_errors.toStdString();
    }
    void interrupt() { ::kill(static_cast<pid_t>(m_process.processId()), SIGINT); }
    void expectEndedBeforeTheNextStep()
    {
        ASSERT_TRUE(m_process.waitForFinished(patienceMs));
        m_out += m_process.readAllStandardOutput();
        m_errors += m_process.readAllStandardError();
        EXPECT_EQ(m_process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_process.exitCode(), 1) << m_out.toStdString();
        EXPECT_TRUE(m_errors.contains("interrupted between two steps")) << m_errors.toStdString();
    }

    QProcess m_process;
    QByteArray m_out;
    QByteArray m_errors;
};

TEST_F(InterruptedUpdate, endsBeforeTheNextStep)
{
    start("250");
    waitForOutput("Uploading");
    interrupt();
    expectEndedBeforeTheNextStep();
    EXPECT_FALSE(m_out.contains("Restarting")) << m_out.toStdString();
    EXPECT_TRUE(m_errors.contains("Leave the camera switched on")) << m_errors.toStdString();
}

TEST_F(InterruptedUpdate, twiceGoesOnWaitingForTheEndOfTheStep)
{
    start("500"); // seconds of upload are left when the second one comes
    waitForOutput("Uploading");
    interrupt();
    waitForError("Interrupted");
    interrupt();
    waitForError("Still waiting");
    expectEndedBeforeTheNextStep();
    EXPECT_FALSE(m_out.contains("Restarting")) << m_out.toStdString();
}

TEST_F(InterruptedUpdate, inTheRestartLeavesTheNewFirmware)
{
    makePackage(QByteArray(upload) + activate + R"(<DeviceReset waitTimeMs="8000"/>)" +
                R"(<FeatureAssert feature="Gain" equals="7"/>)");
    startWith("own.guf");
    waitForOutput("Restarting");
    interrupt();
    expectEndedBeforeTheNextStep();
    EXPECT_TRUE(m_errors.endsWith("\nThe camera has firmware 2.0.0.\n")) << m_errors.toStdString();
    EXPECT_FALSE(m_out.contains("Checking a feature")) << m_out.toStdString();
}

} // namespace
