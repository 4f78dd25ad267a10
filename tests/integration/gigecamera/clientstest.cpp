// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/cameraprogram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Test;
using testing::HasSubstr;
using testing::Not;

namespace
{

/** The number behind "name =" in a program's report; -1 when it is not there. */
long NumberOf(const std::string& report, const std::string& name)
{
    const std::size_t at = report.find(name + " ");
    const std::size_t equals = report.find('=', at);
    return at == std::string::npos || equals == std::string::npos ? -1 : std::stol(report.substr(equals + 1));
}

} // namespace

TEST(IndependentClient, findsEveryCameraOfTheProgram)
{
    CCameraProgram cameras({"--count", "3"}, 3);
    const std::string list = OutputOf({"arv-tool-0.8"});
    EXPECT_THAT(list, HasSubstr("GEV-0001 (127.0.0.1)"));
    EXPECT_THAT(list, HasSubstr("GEV-0002 (127.0.0.2)"));
    EXPECT_THAT(list, HasSubstr("GEV-0003 (127.0.0.3)"));
    EXPECT_THAT(cameras.End(), HasSubstr("sent 0 images"));
}

TEST(CameraProgram, endsWithTwoOnWrongUsage)
{
    CProgram program({GIGECAMERA, "--bogus"});
    ASSERT_TRUE(program.WaitForEnd(std::chrono::seconds(20)));
    EXPECT_EQ(program.GetExitCode(), 2);
    EXPECT_THAT(program.GetOutput(), HasSubstr("--bogus"));
}

TEST(IndependentClient, readsAndWritesFeatures)
{
    const CCameraProgram cameras;
    const std::string values =
        OutputOf({"arv-tool-0.8", "-a", "127.0.0.1", "control", "DeviceModelName", "Width=640", "Width",
                  "PixelFormat=Mono12", "PixelFormat", "ExposureTime=2500", "ExposureTime", "DeviceUserID=left",
                  "DeviceUserID", "GevSCPSPacketSize=4000", "GevSCPSPacketSize", "ChunkModeActive"});
    EXPECT_THAT(values, HasSubstr("DeviceModelName = EmuMono1280"));
    EXPECT_THAT(values, HasSubstr("Width = 640 "));
    EXPECT_THAT(values, HasSubstr("PixelFormat = Mono12"));
    EXPECT_THAT(values, HasSubstr("ExposureTime = 2500 "));
    EXPECT_THAT(values, HasSubstr("DeviceUserID = left"));
    EXPECT_THAT(values, HasSubstr("GevSCPSPacketSize = 4000 "));
    EXPECT_THAT(values, HasSubstr("ChunkModeActive = false"));
}

TEST(IndependentClient, understandsEveryFeatureOfTheDescription)
{
    const CCameraProgram cameras;
    const std::string features = OutputOf({"arv-tool-0.8", "-a", "127.0.0.1", "values"});
    for (const char* name : {"DeviceVendorName", "AcquisitionFrameRate", "PayloadSize", "GevCurrentIPAddress",
                             "GevSCCFGExtendedChunkData", "ChunkSelector"})
    {
        EXPECT_THAT(features, HasSubstr(name));
    }
    EXPECT_THAT(features, Not(HasSubstr("rror")));
}

TEST(IndependentClient, streamsWithoutAnError)
{
    const CCameraProgram cameras({"--config", WriteConfig("", "\"frameRate\": 20")});
    const std::string report =
        OutputOf({"arv-camera-test-0.8", "--duration=4", "--gv-packet-size=4000", "--frequency=20"});
    EXPECT_GT(NumberOf(report, "n_completed_buffers"), 50) << report;
    EXPECT_EQ(NumberOf(report, "n_failures"), 0) << report;
    EXPECT_EQ(NumberOf(report, "n_missing_frames"), 0) << report;
    EXPECT_EQ(NumberOf(report, "n_error_packets"), 0) << report;
}

TEST(IndependentClient, streamsImagesWithChunksAndLongIdentifiers)
{
    const CCameraProgram cameras({"--config", WriteConfig("", "\"frameRate\": 20")});
    const std::string report =
        OutputOf({"arv-camera-test-0.8", "--duration=3", "--gv-packet-size=4000", "--frequency=20", "--features",
                  "ChunkModeActive=true ChunkSelector=Timestamp ChunkEnable=true GevSCCFGExtendedChunkData=true "
                  "GevGVSPExtendedIDMode=true"});
    EXPECT_GT(NumberOf(report, "n_completed_buffers"), 30) << report;
    EXPECT_EQ(NumberOf(report, "n_failures"), 0) << report;
    // A camera keeps its settings from one application to the next: these were the ones that it streamed with.
    const std::string settings = OutputOf({"arv-tool-0.8", "-a", "127.0.0.1", "control", "ChunkModeActive",
                                           "GevSCCFGExtendedChunkData", "GevGVSPExtendedIDMode"});
    EXPECT_THAT(settings, HasSubstr("ChunkModeActive = true"));
    EXPECT_THAT(settings, HasSubstr("GevSCCFGExtendedChunkData = true"));
    EXPECT_THAT(settings, HasSubstr("GevGVSPExtendedIDMode = true"));
}

TEST(IndependentClient, switchesOffAllChunksAndOnTheOnesItWants)
{
    const CCameraProgram cameras({"--config", WriteConfig("\"ChunkEnable[ExposureTime]\": true", "\"frameRate\": 20")});
    const std::string report = OutputOf(
        {"arv-camera-test-0.8", "--duration=2", "--gv-packet-size=4000", "--frequency=20", "--chunks=Timestamp,Gain"});
    EXPECT_GT(NumberOf(report, "n_completed_buffers"), 15) << report;
    EXPECT_EQ(NumberOf(report, "n_failures"), 0) << report;
    const auto isOn = [](const std::string& chunk)
    {
        const std::string settings = OutputOf(
            {"arv-tool-0.8", "-a", "127.0.0.1", "control", "ChunkModeActive", "ChunkSelector=" + chunk, "ChunkEnable"});
        EXPECT_THAT(settings, HasSubstr("ChunkModeActive = true"));
        return settings.find("ChunkEnable = true") != std::string::npos;
    };
    EXPECT_TRUE(isOn("Image"));
    EXPECT_TRUE(isOn("Timestamp"));
    EXPECT_TRUE(isOn("Gain"));
    EXPECT_FALSE(isOn("ExposureTime"));
}

TEST(IndependentClient, getsLostPacketsAgain)
{
    CCameraProgram cameras({"--config", WriteConfig("", "\"frameRate\": 20"), "--fault", "lost=5"});
    const std::string report =
        OutputOf({"arv-camera-test-0.8", "--duration=4", "--gv-packet-size=4000", "--frequency=20"});
    EXPECT_GT(NumberOf(report, "n_completed_buffers"), 50) << report;
    EXPECT_LE(NumberOf(report, "n_failures"), 2) << report; // a packet may be lost each time it is sent
    EXPECT_GT(NumberOf(report, "n_resent_packets"), 20) << report;
    EXPECT_THAT(cameras.End(), Not(HasSubstr(" 0 left out")));
}

TEST(Program, saysWhatIsWrongWithItsArguments)
{
    CProgram wrongFault({GIGECAMERA, "--fault", "loss=5"});
    EXPECT_TRUE(wrongFault.WaitForEnd(std::chrono::seconds(10)));
    EXPECT_EQ(wrongFault.GetExitCode(), 1);
    EXPECT_THAT(wrongFault.GetOutput(), HasSubstr("There is no fault 'loss=5'"));
    CProgram noAdapter({GIGECAMERA, "--interface", "nosuch0"});
    EXPECT_TRUE(noAdapter.WaitForEnd(std::chrono::seconds(10)));
    EXPECT_THAT(noAdapter.GetOutput(), HasSubstr("no network adapter 'nosuch0'"));
    CProgram noAddress({GIGECAMERA, "--address", "10.99.99.99"});
    EXPECT_TRUE(noAddress.WaitForEnd(std::chrono::seconds(10)));
    EXPECT_THAT(noAddress.GetOutput(), HasSubstr("10.99.99.99"));
}

TEST(Program, saysWhichAddressIsTaken)
{
    const CCameraProgram first;
    CProgram second({GIGECAMERA});
    EXPECT_TRUE(second.WaitForEnd(std::chrono::seconds(10)));
    EXPECT_EQ(second.GetExitCode(), 1);
    EXPECT_THAT(second.GetOutput(), HasSubstr("127.0.0.1, UDP port 3956"));
}
