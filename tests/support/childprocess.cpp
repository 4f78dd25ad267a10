// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/childprocess.h"

#include <csignal>
#include <cstring>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace Test
{

CChildProcess::CChildProcess(const std::vector<std::string>& programAndArguments)
{
    std::vector<char*> arguments;
    for (const std::string& argument : programAndArguments)
    {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    const int error = posix_spawnp(&m_process, arguments.front(), nullptr, nullptr, arguments.data(), environ);
    if (error != 0)
    {
        throw std::runtime_error("Cannot start " + programAndArguments.front() + ": " + std::strerror(error));
    }
}

CChildProcess::~CChildProcess()
{
    Kill();
}

bool CChildProcess::IsRunning()
{
    if (m_process > 0 && waitpid(m_process, nullptr, WNOHANG) != 0)
    {
        m_process = -1;
    }
    return m_process > 0;
}

void CChildProcess::Kill()
{
    if (m_process > 0)
    {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = -1;
    }
}

void CChildProcess::Pause()
{
    kill(m_process, SIGSTOP);
    waitpid(m_process, nullptr, WUNTRACED);
}

void CChildProcess::Continue()
{
    kill(m_process, SIGCONT);
}

} // namespace Test
