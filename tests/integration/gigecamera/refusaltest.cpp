// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/cameraprogram.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct SOutcome
{
    int exitCode = -1;
    std::string text; // stdout and stderr
};

/** A command line of bash that must end by itself, in which the program is called "$P". */
SOutcome RunBash(const std::string& line)
{
    SOutcome outcome;
    const std::string command = "P='" + std::string(GIGECAMERA) + "' exec bash -c '" + line + "' 2>&1";
    FILE* const pPipe = popen(command.c_str(), "r");
    EXPECT_NE(pPipe, nullptr);
    char text[1000];
    while (pPipe != nullptr && fgets(text, sizeof text, pPipe) != nullptr)
    {
        outcome.text += text;
    }
    const int status = pPipe == nullptr ? -1 : pclose(pPipe);
    outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

std::string FileName(const char* name)
{
    return std::string(name) + "_" + std::to_string(getpid());
}

TEST(GigECameraRefusal, dataWithAMistakeAreToldWithTheirFile)
{
    const std::string file = FileName("mistake.json");
    std::ofstream(file) << R"({"cameras": [{"serail": "A"}]})";
    const SOutcome outcome = RunBash("exec \"$P\" --config " + file);
    std::remove(file.c_str());
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.text,
              "gigecamera: The cameras of '" + file + "' cannot be used: 'cameras[0].serail' is not known here.\n");
}

TEST(GigECameraRefusal, aFeatureThatACameraDoesNotHaveIsToldWithTheCamera)
{
    const std::string file = FileName("feature.json");
    std::ofstream(file) << R"({"cameras": [{"serial": "B-7", "features": {"Nope": 3}}]})";
    const SOutcome outcome = RunBash("exec \"$P\" --config " + file + " --address 127.0.0.77");
    std::remove(file.c_str());
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.text, "gigecamera: Simulated camera 'B-7': There is no feature 'Nope' to set to '3'.\n");
}

TEST(GigECameraRefusal, aLinkSpeedThatIsNoNumberIsWrongUsage)
{
    const SOutcome outcome = RunBash("exec \"$P\" --link-speed nan --config /dev/null");
    EXPECT_EQ(outcome.exitCode, 2) << outcome.text;
    EXPECT_NE(outcome.text.find("--link-speed"), std::string::npos) << outcome.text;
}

TEST(GigECameraRefusal, firmwareWithoutRoomIsToldAndLeavesNoPart)
{
    const std::string file = FileName("firmware.bin");
    // No file may be longer than 10 KiB, and to try it is an error instead of a signal.
    const SOutcome outcome =
        RunBash("trap \"\" XFSZ; ulimit -f 10; exec \"$P\" --make-firmware 3.0.0 EmuMono1280 " + file);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.text, "gigecamera: Cannot write '" + file + "': File too large.\n");
    EXPECT_NE(access(file.c_str(), F_OK), 0) << "a part is left";
    std::remove(file.c_str());
}

} // namespace
