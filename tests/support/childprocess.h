// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace Test
{

/** A program that runs beside the test and ends with it at the latest. */
class CChildProcess
{
public:
    /** The program is looked up in the PATH. Throws std::runtime_error when it cannot be started. */
    explicit CChildProcess(const std::vector<std::string>& programAndArguments);
    ~CChildProcess();
    CChildProcess(const CChildProcess&) = delete;
    CChildProcess& operator=(const CChildProcess&) = delete;

    bool IsRunning();
    /** Ends it at once, as a power cut ends a camera. */
    void Kill();
    /** Halts or continues it, as a network that breaks and heals. */
    void Pause();
    void Continue();

private:
    pid_t m_process = -1;
};

} // namespace Test
