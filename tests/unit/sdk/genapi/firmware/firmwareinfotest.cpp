// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "firmwarefixture.h"

#include "genapi/internal/firmwarepattern.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using FirmwareInfo = CFirmwareApplyTest;

namespace
{

std::vector<std::string> Ids(const CUpdateList& list)
{
    std::vector<std::string> versions;
    for (const auto& update : list.updates)
    {
        versions.emplace_back(update.GetInfo("Version", ""));
    }
    return versions;
}

std::string UpdateOf(const std::string& id, const std::string& version)
{
    return "<Update id=\"" + id + "\" procedure=\"main\"><Condition feature=\"DeviceModelName\" matches=\".*\"/>" +
           "<Info key=\"Version\"><Text>" + version + "</Text></Info></Update>";
}

} // namespace

TEST_F(FirmwareInfo, anInvalidOneHasNothing)
{
    const GenApi::CFirmwareUpdateInfo info;
    EXPECT_FALSE(info.IsValid());
    EXPECT_STREQ(info.GetUpdateFilename(), "");
    EXPECT_EQ(info.GetInfo("Version", ""), nullptr);
    EXPECT_THROW(info.ExtractVersionFromDeviceFirmwareVersion("1"), GenICam::InvalidArgumentException);
}

TEST_F(FirmwareInfo, textsComeInTheLanguageThatIsAskedForOrTheDefaultOne)
{
    const auto info = Load(GoodParts());
    EXPECT_STREQ(info.GetInfo("Description", ""), "Better");
    EXPECT_STREQ(info.GetInfo("Description", nullptr), "Better");
    EXPECT_STREQ(info.GetInfo("Description", "de"), "Besser");
    EXPECT_STREQ(info.GetInfo("Description", "ja"), "Better");
    EXPECT_EQ(info.GetInfo("ReleaseNotes", ""), nullptr);
    EXPECT_EQ(info.GetInfo(nullptr, ""), nullptr);
    EXPECT_EQ(info.GetUpdateFilename(), folder.Path("test.guf"));
}

TEST_F(FirmwareInfo, aTextOutlivesAllButItsLastInfo)
{
    auto info = std::make_unique<GenApi::CFirmwareUpdateInfo>(Load(GoodParts()));
    const GenApi::CFirmwareUpdateInfo copy = *info;
    const char* const text = info->GetInfo("Description", "");
    info.reset();
    EXPECT_STREQ(text, "Better");
}

TEST_F(FirmwareInfo, theVersionIsWhatThePatternCaptures)
{
    const auto info = Load(GoodParts());
    EXPECT_EQ(info.ExtractVersionFromDeviceFirmwareVersion("Fw 1.0.0 build 7"), "1.0.0");
    EXPECT_THROW(info.ExtractVersionFromDeviceFirmwareVersion("Fw 1.0.0"), GenICam::InvalidArgumentException);
    EXPECT_THROW(info.ExtractVersionFromDeviceFirmwareVersion(""), GenICam::InvalidArgumentException);
}

TEST_F(FirmwareInfo, withoutAPatternTheVersionIsTheWholeText)
{
    SControlParts parts = GoodParts();
    parts.updates = UpdateOf("u", "1");
    EXPECT_EQ(Load(parts).ExtractVersionFromDeviceFirmwareVersion("Fw 1.0.0 build 7"), "Fw 1.0.0 build 7");
}

TEST_F(FirmwareInfo, updatesComeInTheOrderOfTheFileUntilTheCollectorHasEnough)
{
    SControlParts parts = GoodParts();
    parts.updates = UpdateOf("b", "2") + UpdateOf("a", "3") + UpdateOf("c", "1");
    const std::string name = folder.Write("x.guf", MakePackage(parts));
    CUpdateList all;
    GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(name.c_str(), all);
    EXPECT_THAT(Ids(all), ElementsAre("2", "3", "1"));
    CUpdateList two;
    two.atMost = 2;
    GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(name.c_str(), two);
    EXPECT_THAT(Ids(two), ElementsAre("2", "3"));
}

TEST_F(FirmwareInfo, theFilterMatchesWholeIds)
{
    SControlParts parts = GoodParts();
    parts.updates = UpdateOf("cam-a", "1") + UpdateOf("cam-b", "2") + UpdateOf("cam-bb", "3");
    const std::string name = folder.Write("x.guf", MakePackage(parts));
    const auto filtered = [&](const char* filter)
    {
        CUpdateList list;
        GenApi::CFirmwareUpdater().ReadFirmwareUpdateInfos(name.c_str(), list, filter);
        return Ids(list);
    };
    EXPECT_THAT(filtered("cam-b"), ElementsAre("2"));
    EXPECT_THAT(filtered("cam-b+"), ElementsAre("2", "3"));
    EXPECT_THAT(filtered("none"), ElementsAre());
    EXPECT_THAT(filtered(""), ElementsAre());
    EXPECT_THROW(filtered("("), GenICam::InvalidArgumentException);
}

TEST_F(FirmwareInfo, aDeviceMatchesWhenAllConditionsDo)
{
    device.PrepareForFirmwareUpdate();
    GenApi::INodeMap& nodeMap = device.GetNodeMapOfDeviceToUpdate();
    const GenApi::CFirmwareUpdater updater;
    const auto matches = [&](const std::string& conditions)
    {
        SControlParts parts = GoodParts();
        parts.updates = "<Update id=\"u\" procedure=\"main\">" + conditions +
                        "<Info key=\"Version\"><Text>1</Text></Info></Update>";
        return updater.MatchesDevice(Load(parts), nodeMap);
    };
    const std::string good = "<Condition feature=\"DeviceModelName\" matches=\"Testcam [0-9]+\"/>";
    EXPECT_TRUE(matches(good));
    EXPECT_TRUE(matches(good + "<Condition feature=\"DeviceTemperature\" matches=\"40\"/>"));
    EXPECT_FALSE(matches(good + "<Condition feature=\"DeviceTemperature\" matches=\"4\"/>"));
    EXPECT_FALSE(matches(good + "<Condition feature=\"None\" matches=\".*\"/>"));
    EXPECT_FALSE(matches("<Condition feature=\"DeviceModelName\" matches=\"testcam 12\"/>"));
    EXPECT_THROW(updater.MatchesDevice(GenApi::CFirmwareUpdateInfo(), nodeMap), GenICam::InvalidArgumentException);
    camera.hasPower = false;
    EXPECT_THROW(matches(good), GenICam::AccessException);
}

TEST(FirmwarePattern, aHostileExpressionTakesLittleTime)
{
    // Backtracking would take 2^40 steps.
    const GenApi::Internal::CFirmwarePattern pattern("(a*)*b");
    EXPECT_FALSE(pattern.MatchesWhole(std::string(100000, 'a')));
    const GenApi::Internal::CFirmwarePattern nested("((a+)+)+");
    EXPECT_FALSE(nested.MatchesWhole(std::string(100000, 'a') + "!"));
}

TEST(FirmwareClock, theRealOneLetsTimePass)
{
    GenApi::Internal::CFirmwareClock clock;
    const std::int64_t begin = clock.NowMs();
    clock.PassMs(5);
    EXPECT_GE(clock.NowMs() - begin, 5);
}
