// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/program.h"

#include <array>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace Test
{

using Clock = std::chrono::steady_clock;

CProgram::CProgram(const std::vector<std::string>& programAndArguments)
{
    std::vector<char*> arguments;
    for (const std::string& argument : programAndArguments)
    {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    std::array<int, 2> pipeEnds{-1, -1};
    int error = pipe2(pipeEnds.data(), O_CLOEXEC) == 0 ? 0 : errno;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDERR_FILENO);
    error =
        error == 0 ? posix_spawnp(&m_process, arguments.front(), &actions, nullptr, arguments.data(), environ) : error;
    posix_spawn_file_actions_destroy(&actions);
    close(pipeEnds[1]);
    m_pipe = pipeEnds[0];
    if (error != 0)
    {
        close(m_pipe);
        throw std::runtime_error("Cannot start " + programAndArguments.front() + ": " + std::strerror(error));
    }
}

CProgram::~CProgram()
{
    Kill();
    close(m_pipe);
}

bool CProgram::ReadMore(Clock::time_point deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd entry{m_pipe, POLLIN, 0};
    if (left <= 0 || poll(&entry, 1, static_cast<int>(left)) <= 0)
    {
        return false;
    }
    std::array<char, 4096> piece{};
    const ssize_t bytes = read(m_pipe, piece.data(), piece.size());
    if (bytes <= 0)
    {
        return false;
    }
    m_output.append(piece.data(), static_cast<std::size_t>(bytes));
    return true;
}

bool CProgram::WaitForOutput(const std::string& text, int times, std::chrono::milliseconds limit)
{
    const Clock::time_point deadline = Clock::now() + limit;
    for (;;)
    {
        int found = 0;
        for (std::size_t at = m_output.find(text); at != std::string::npos; at = m_output.find(text, at + 1))
        {
            ++found;
        }
        if (found >= times)
        {
            return true;
        }
        if (!ReadMore(deadline))
        {
            return false;
        }
    }
}

bool CProgram::WaitForEnd(std::chrono::milliseconds limit)
{
    const Clock::time_point deadline = Clock::now() + limit;
    while (ReadMore(deadline))
    {
    }
    if (Clock::now() >= deadline)
    {
        Kill();
        return false;
    }
    int status = 0;
    waitpid(m_process, &status, 0); // its output is closed: it is ending
    m_process = -1;
    m_exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return true;
}

void CProgram::Interrupt() const
{
    if (m_process > 0)
    {
        kill(m_process, SIGINT);
    }
}

void CProgram::Kill()
{
    if (m_process > 0)
    {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = -1;
    }
}

} // namespace Test
