// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "poolcli/options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using PoolCli::SOptions;

/** Parses a command line; output of the parser itself is not of interest. */
bool parse(std::vector<std::string> words, SOptions& options, int& exitCode)
{
    words.insert(words.begin(), "poolcli");
    std::vector<char*> arguments;
    for (std::string& word : words)
    {
        arguments.push_back(word.data());
    }
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool parsed =
        PoolCli::parseCommandLine(static_cast<int>(arguments.size()), arguments.data(), options, exitCode);
    testing::internal::GetCapturedStdout();
    testing::internal::GetCapturedStderr();
    return parsed;
}

TEST(PoolCliOptions, grabTakesCamerasCountTimeAndSettings)
{
    SOptions options;
    int exitCode = -1;
    ASSERT_TRUE(
        parse({"grab", "EMU-1", "EMU-2", "-n", "7", "-s", "1.5", "--set", "Gain=2", "--set", "Width=64", "--json"},
              options, exitCode));
    EXPECT_EQ(options.verb, QStringLiteral("grab"));
    EXPECT_EQ(options.cameras, (QStringList{QStringLiteral("EMU-1"), QStringLiteral("EMU-2")}));
    EXPECT_EQ(options.images, 7);
    EXPECT_EQ(options.durationMs, 1500);
    EXPECT_EQ(options.settings, (QStringList{QStringLiteral("Gain=2"), QStringLiteral("Width=64")}));
    EXPECT_TRUE(options.json);
}

TEST(PoolCliOptions, setTakesOneCameraAndSeveralSettings)
{
    SOptions options;
    int exitCode = -1;
    ASSERT_TRUE(parse({"set", "EMU-1", "Gain=2", "TriggerSoftware"}, options, exitCode));
    EXPECT_EQ(options.cameras, QStringList{QStringLiteral("EMU-1")});
    EXPECT_EQ(options.arguments, (QStringList{QStringLiteral("Gain=2"), QStringLiteral("TriggerSoftware")}));
}

TEST(PoolCliOptions, setForTakesACameraAndASettingAndMayBeRepeated)
{
    SOptions options;
    int exitCode = -1;
    ASSERT_TRUE(parse({"grab", "--set-for", "EMU-1", "Gain=2", "--set-for", "EMU-2", "Width=64", "EMU-1", "EMU-2"},
                      options, exitCode));
    const QVector<std::pair<QString, QString>> expected{{QStringLiteral("EMU-1"), QStringLiteral("Gain=2")},
                                                        {QStringLiteral("EMU-2"), QStringLiteral("Width=64")}};
    EXPECT_EQ(options.cameraSettings, expected);
    EXPECT_EQ(options.cameras, (QStringList{QStringLiteral("EMU-1"), QStringLiteral("EMU-2")}));
}

TEST(PoolCliOptions, chunksTakesNamesWithCommasBetween)
{
    SOptions options;
    int exitCode = -1;
    ASSERT_TRUE(parse({"chunks", "EMU-1", "--enable", "Gain,Timestamp", "-n", "3"}, options, exitCode));
    EXPECT_EQ(options.chunks, (QStringList{QStringLiteral("Gain"), QStringLiteral("Timestamp")}));
    EXPECT_EQ(options.images, 3);
    EXPECT_EQ(options.cameras, QStringList{QStringLiteral("EMU-1")});
}

TEST(PoolCliOptions, helpOfEveryVerbEndsWithZero)
{
    for (const char* verb :
         {"list", "watch", "info", "features", "get", "set", "grab", "snapshot", "stats", "interfaces", "chunks"})
    {
        SOptions options;
        int exitCode = -1;
        EXPECT_FALSE(parse({verb, "--help"}, options, exitCode)) << verb;
        EXPECT_EQ(exitCode, 0) << verb;
    }
}

TEST(PoolCliOptions, wrongUsageEndsWithTwo)
{
    const std::vector<std::vector<std::string>> wrong{
        {},
        {"dance"},
        {"grab", "-n", "0"},
        {"grab", "-n", "many"},
        {"grab", "--seconds", "-1"},
        {"grab", "--seconds", "0"},
        {"grab", "--seconds", "nan"},
        {"snapshot", "--timeout", "NAN"},
        {"list", "--discovery-timeout", "nan"},
        {"network", "plan", "--reserve", "nan"},
        {"network", "plan", "--rate", "nan"},
        {"network", "plan", "--link-speed", "nan"},
        {"action", "issue", "-d", "1", "-g", "1", "-k", "1", "--timeout", "nan"},
        {"action", "issue", "-d", "1", "-g", "1", "-k", "0"},
        {"action", "issue", "-d", "1", "-g", "1", "-k", "0x0"},
        {"action", "issue", "-d", "-1", "-g", "1", "-k", "1"},
        {"action", "schedule", "-d", "1", "-g", "1", "-k", "1", "--time", "-5"},
        {"--language", "xx", "list"},
        {"features", "--visibility", "Everybody"},
        {"get", "EMU-1"},
        {"grab", "--set-for", "EMU-1"},
        {"list", "--unknown"},
    };
    for (const auto& words : wrong)
    {
        SOptions options;
        int exitCode = -1;
        EXPECT_FALSE(parse(words, options, exitCode)) << testing::PrintToString(words);
        EXPECT_EQ(exitCode, 2) << testing::PrintToString(words);
    }
}

} // namespace
