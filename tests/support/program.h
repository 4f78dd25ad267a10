// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Test
{

/** A program whose output is read while it runs. It ends with the object at the latest. Threads: one at a time. */
class CProgram
{
public:
    /** The program is looked up in the PATH; its two outputs are one. Throws std::runtime_error when it cannot be
     *  started. */
    explicit CProgram(const std::vector<std::string>& programAndArguments);
    ~CProgram();
    CProgram(const CProgram&) = delete;
    CProgram& operator=(const CProgram&) = delete;

    /** Reads until the text was written so often; false at the end of the output or of the time. */
    bool WaitForOutput(const std::string& text, int times, std::chrono::milliseconds limit);
    /** Reads to the end and waits for the program; false when the time was over, and the program was killed. */
    bool WaitForEnd(std::chrono::milliseconds limit);
    const std::string& GetOutput() const { return m_output; }
    /** After WaitForEnd: what main returned, or -1 when the program was killed. */
    int GetExitCode() const { return m_exitCode; }
    /** Asks it to end, as Ctrl+C does. */
    void Interrupt() const;
    /** Ends it at once, as a power cut ends a camera. */
    void Kill();

private:
    bool ReadMore(std::chrono::steady_clock::time_point deadline);

    pid_t m_process = -1;
    int m_pipe = -1;
    int m_exitCode = -1;
    std::string m_output;
};

} // namespace Test
