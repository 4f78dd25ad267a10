// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolclifirmware/poolclifirmware.h"

#include <QElapsedTimer>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <memory>
#include <vector>

namespace
{

constexpr int patienceMs = 60000;

/** The program on a terminal of its own, whose other end the test holds. */
class CTerminalRun
{
public:
    CTerminalRun(const QStringList& arguments, const QProcessEnvironment& environment)
    {
        const CStrings argv(QStringList{QStringLiteral(POOLCLI)} + arguments);
        const CStrings envp(environment.toStringList());
        m_process = forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_process == 0)
        {
            execve(argv.data()[0], argv.data(), envp.data());
            _exit(127);
        }
        EXPECT_GT(m_process, 0) << "forkpty failed";
    }
    ~CTerminalRun()
    {
        if (m_process > 0)
        {
            ::kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
        close(m_terminal);
    }
    CTerminalRun(const CTerminalRun&) = delete;
    CTerminalRun& operator=(const CTerminalRun&) = delete;

    void type(const char* keys) const
    {
        const auto length = static_cast<ssize_t>(strlen(keys));
        EXPECT_EQ(write(m_terminal, keys, static_cast<std::size_t>(length)), length);
    }
    void waitFor(const char* text)
    {
        QElapsedTimer clock;
        clock.start();
        while (!m_screen.contains(text) && clock.elapsed() < patienceMs && readSome())
        {
        }
        ASSERT_TRUE(m_screen.contains(text)) << m_screen.toStdString();
    }
    /** Its exit code, once it has closed the terminal; -1 when it did not end by itself. */
    int end()
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < patienceMs && readSome())
        {
        }
        if (clock.elapsed() >= patienceMs)
        {
            return -1;
        }
        int status = 0;
        waitpid(m_process, &status, 0);
        m_process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    /** All that came to the terminal so far. */
    const QByteArray& screen() const { return m_screen; }

private:
    /** As the system takes them. */
    class CStrings
    {
    public:
        explicit CStrings(const QStringList& texts)
        {
            for (const QString& text : texts)
            {
                m_texts.push_back(text.toLocal8Bit());
            }
            for (QByteArray& text : m_texts)
            {
                m_pointers.push_back(text.data());
            }
            m_pointers.push_back(nullptr);
        }
        char* const* data() const { return m_pointers.data(); }

    private:
        std::vector<QByteArray> m_texts;
        std::vector<char*> m_pointers;
    };

    /** False: the program has closed its end, or shows nothing for too long. */
    bool readSome()
    {
        pollfd descriptor{m_terminal, POLLIN, 0};
        if (poll(&descriptor, 1, patienceMs) <= 0)
        {
            return false;
        }
        char bytes[4096];
        const ssize_t count = read(m_terminal, bytes, sizeof bytes);
        if (count <= 0)
        {
            return false;
        }
        m_screen.append(bytes, static_cast<int>(count));
        return true;
    }

    int m_terminal = -1;
    pid_t m_process = -1;
    QByteArray m_screen;
};

class FirmwareOnATerminal : public PoolCliTest::PoolCliFirmware
{
protected:
    std::unique_ptr<CTerminalRun> start(const QStringList& more) const
    {
        QProcess process; // its environment only
        prepare(process);
        QProcessEnvironment environment = process.processEnvironment();
        environment.insert(QStringLiteral("TERM"), m_terminalType);
        return std::make_unique<CTerminalRun>(QStringList{"firmware", "update", path("e.guf"), "FW-A"} + more,
                                              environment);
    }
    /** A downgrade that is asked about and answered with these keys. */
    std::unique_ptr<CTerminalRun> answer(const char* keys) const
    {
        auto run = start({"--version", "1.5.0"});
        run->waitFor("Go on? [y/N]");
        run->type(keys);
        return run;
    }
    void expectUnchanged(const char* keys) const
    {
        const auto run = answer(keys);
        EXPECT_EQ(run->end(), 1);
        EXPECT_TRUE(run->screen().contains("Nothing was changed.")) << run->screen().toStdString();
        EXPECT_FALSE(run->screen().contains("Checking the camera")) << run->screen().toStdString();
    }

    QString m_terminalType = QStringLiteral("xterm");
};

TEST_F(FirmwareOnATerminal, barOfEachStepGoesFromNothingToTheEnd)
{
    const auto run = start({});
    EXPECT_EQ(run->end(), 0) << run->screen().toStdString();
    const QByteArray empty = "\033[?7l\r\033[K[..............................]   0 %  ";
    const QByteArray full = "\033[?7l\r\033[K[##############################] 100 %  ";
    for (const char* const step :
         {"Checking the camera (1 s)", "Uploading a file (0.2 s)", "Restarting the camera (1 s)"})
    {
        const int begin = run->screen().indexOf(empty + step);
        EXPECT_GE(begin, 0) << step;
        EXPECT_GT(run->screen().indexOf(full + step + "\033[?7h\r\n"), begin) << step;
    }
    EXPECT_TRUE(run->screen().contains("#####......")) << "between";
    EXPECT_TRUE(run->screen().endsWith("\r\nEmuMono1280 (FW-A) has firmware 2.0.0 now.\r\n"))
        << run->screen().toStdString();
}

TEST_F(FirmwareOnATerminal, dumbOneGetsALineForEachStepAndNothingDrawn)
{
    m_terminalType = QStringLiteral("dumb");
    const auto run = start({});
    EXPECT_EQ(run->end(), 0) << run->screen().toStdString();
    EXPECT_FALSE(run->screen().contains('\033')) << run->screen().toStdString();
    EXPECT_TRUE(run->screen().contains("\r\nUploading a file (0.2 s)\r\n")) << run->screen().toStdString();
}

TEST_F(FirmwareOnATerminal, downgradeIsDoneAfterYes)
{
    const auto run = answer("y\n");
    EXPECT_EQ(run->end(), 0) << run->screen().toStdString();
    EXPECT_TRUE(run->screen().endsWith("has firmware 1.5.0 now.\r\n")) << run->screen().toStdString();
}

TEST_F(FirmwareOnATerminal, downgradeIsNotDoneAfterNoOrNothing)
{
    expectUnchanged("n\n");
    expectUnchanged("\n");
}

TEST_F(FirmwareOnATerminal, downgradeIsNotDoneAfterCtrlCOrCtrlD)
{
    expectUnchanged("\x03");
    expectUnchanged("\x04");
}

TEST_F(FirmwareOnATerminal, ctrlCAmidABarBeginsALineOfItsOwn)
{
    writeCamera(R"(, "faults": {"fileDelayMs": 500})"); // seconds of upload are left when it comes
    const auto run = start({});
    run->waitFor("Uploading");
    run->type("\x03");
    EXPECT_EQ(run->end(), 1);
    EXPECT_TRUE(run->screen().contains("\r\npoolcli: Interrupted: ")) << run->screen().toStdString();
    EXPECT_TRUE(run->screen().contains("\r\npoolcli: The update of ")) << run->screen().toStdString();
    EXPECT_TRUE(run->screen().endsWith("The camera has firmware 1.7.0.\r\n")) << run->screen().toStdString();
}

} // namespace
