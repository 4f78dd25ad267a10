// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/program.h"

#include <string>
#include <vector>

namespace Test
{

/** The simulated cameras under test, as the program that people run. Throws std::runtime_error when they do not come
 *  up. The test program is in a network namespace of its own. */
class CCameraProgram
{
public:
    explicit CCameraProgram(std::vector<std::string> arguments = {}, int cameras = 1);

    void Kill() { m_program.Kill(); }
    /** Ends it in order; what it printed. */
    std::string End();

private:
    CProgram m_program;
};

/** A small quick camera as the program's JSON, in a file that lives as long as the test. Features as "name": value. */
std::string WriteConfig(const std::string& features, const std::string& others = "\"frameRate\": 100",
                        const std::string& serial = "GC-1");

/** The output of a program that must end by itself; "" and a failure when it does not. */
std::string OutputOf(const std::vector<std::string>& programAndArguments);

} // namespace Test
