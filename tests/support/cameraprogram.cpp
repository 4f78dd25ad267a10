// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/cameraprogram.h"

#include "support/networknamespace.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace Test
{

using namespace std::chrono_literals;

namespace
{

class CNetworkEnvironment : public ::testing::Environment
{
public:
    void SetUp() override { EnterOwnNetworkNamespace(); }
};

const auto* const pEnvironment = ::testing::AddGlobalTestEnvironment(new CNetworkEnvironment);

std::vector<std::string> CommandLine(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), GIGECAMERA);
    return arguments;
}

} // namespace

CCameraProgram::CCameraProgram(std::vector<std::string> arguments, int cameras)
    : m_program(CommandLine(std::move(arguments)))
{
    if (!m_program.WaitForOutput("is ready\n", cameras, 20s))
    {
        throw std::runtime_error("The simulated cameras do not come up: " + m_program.GetOutput());
    }
}

std::string CCameraProgram::End()
{
    m_program.Interrupt();
    EXPECT_TRUE(m_program.WaitForEnd(10s)) << "it did not end when it was asked to";
    EXPECT_EQ(m_program.GetExitCode(), 0);
    return m_program.GetOutput();
}

std::string WriteConfig(const std::string& features, const std::string& others, const std::string& serial)
{
    const std::string name = ::testing::TempDir() + "gigecamera-" + std::to_string(getpid()) + serial + ".json";
    std::ofstream(name) << R"({"cameras": [{"serial": ")" << serial
                        << R"(", "model": "Tester", "sensor": {"width": 640, "height": 480}, )" << others
                        << R"(, "features": {)" << features << "}}]}";
    return name;
}

std::string OutputOf(const std::vector<std::string>& programAndArguments)
{
    CProgram program(programAndArguments);
    EXPECT_TRUE(program.WaitForEnd(60s)) << programAndArguments.front() << " did not end: " << program.GetOutput();
    EXPECT_EQ(program.GetExitCode(), 0) << program.GetOutput();
    return program.GetOutput();
}

} // namespace Test
