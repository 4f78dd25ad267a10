// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/datareader.h"

#include "genapi/exceptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Simulator::MakeDefaultData;
using Simulator::ReadData;
using Simulator::SRackData;
using testing::HasSubstr;

namespace
{

/** The text of the refusal; "" when the data are accepted. */
template <class Exception> std::string ErrorOf(const std::string& json)
{
    try
    {
        ReadData(json);
    }
    catch (const Exception& error)
    {
        return error.GetDescription();
    }
    return "";
}

std::string Refusal(const std::string& json)
{
    return ErrorOf<GenICam::InvalidArgumentException>(json);
}

std::string Camera(const std::string& members)
{
    return R"({"cameras": [{"serial": "A1")" + members + "}]}";
}

} // namespace

TEST(EmulationData, minimalCameraHasDefaults)
{
    const SRackData data = ReadData(R"({"cameras": [{"serial": "A1"}]})");
    ASSERT_EQ(data.cameras.size(), 1U);
    EXPECT_EQ(data.cameras[0].serialNumber, "A1");
    EXPECT_EQ(data.cameras[0].interfaceId, "DefaultInterface");
    EXPECT_EQ(data.cameras[0].sensorWidth, 1280U);
    ASSERT_EQ(data.interfaces.size(), 1U);
    EXPECT_EQ(data.interfaces[0].id, "DefaultInterface");
}

TEST(EmulationData, everyMemberIsRead)
{
    const SRackData data = ReadData(R"({
      "interfaces": [{"id": "left", "name": "Left port"}],
      "cameras": [{"serial": "A1", "vendor": "V", "model": "M", "userName": "U", "version": "2", "firmware": "3",
        "interface": "left", "sensor": {"width": 64, "height": 48}, "pixelFormats": ["Mono12", "Mono8"],
        "frameRate": 12.5, "maxBytesPerSecond": 2e6, "clockOffsetNs": -5, "clockDriftPpm": 1.5, "bootTimeMs": 7,
        "features": {"Gain": 1.5, "ReverseX": true, "PixelFormat": "Mono8", "Width": 32},
        "faults": {"dropFrames": 1, "failEveryNth": 2, "stall": true, "refuseOpenOwner": "X", "readError": "R",
          "writeError": "W", "brokenDescription": true, "discoveryDelayMs": 3, "removalReports": 4,
          "chunkLies": true, "chunkMissing": true}}]})");
    ASSERT_EQ(data.cameras.size(), 1U);
    const Simulator::SCameraConfig& camera = data.cameras[0];
    EXPECT_EQ(camera.vendorName, "V");
    EXPECT_EQ(camera.modelName, "M");
    EXPECT_EQ(camera.userDefinedName, "U");
    EXPECT_EQ(camera.deviceVersion, "2");
    EXPECT_EQ(camera.firmwareVersion, "3");
    EXPECT_EQ(camera.interfaceId, "left");
    EXPECT_EQ(camera.sensorWidth, 64U);
    EXPECT_EQ(camera.sensorHeight, 48U);
    EXPECT_THAT(camera.pixelFormats, testing::ElementsAre("Mono12", "Mono8"));
    EXPECT_EQ(camera.frameRate, 12.5);
    EXPECT_EQ(camera.maxBytesPerSecond, 2e6);
    EXPECT_EQ(camera.clockOffsetNs, -5);
    EXPECT_EQ(camera.clockDriftPpm, 1.5);
    EXPECT_EQ(camera.bootTimeMs, 7U);
    EXPECT_THAT(camera.features,
                testing::UnorderedElementsAre(testing::Pair("Gain", "1.5"), testing::Pair("ReverseX", "true"),
                                              testing::Pair("PixelFormat", "Mono8"), testing::Pair("Width", "32")));
    EXPECT_EQ(camera.faults.dropFrames, 1U);
    EXPECT_EQ(camera.faults.failEveryNth, 2U);
    EXPECT_TRUE(camera.faults.stall);
    EXPECT_EQ(camera.faults.refuseOpenOwner, "X");
    EXPECT_EQ(camera.faults.readError, "R");
    EXPECT_EQ(camera.faults.writeError, "W");
    EXPECT_TRUE(camera.faults.brokenDescription);
    EXPECT_EQ(camera.faults.discoveryDelayMs, 3U);
    EXPECT_EQ(camera.faults.removalReports, 4U);
    EXPECT_TRUE(camera.faults.chunkLies);
    EXPECT_TRUE(camera.faults.chunkMissing);
}

TEST(EmulationData, countMakesNumberedCameras)
{
    const SRackData data = ReadData(R"({"cameras": [{"serial": "A", "count": 3}]})");
    ASSERT_EQ(data.cameras.size(), 3U);
    EXPECT_EQ(data.cameras[0].serialNumber, "A-0001");
    EXPECT_EQ(data.cameras[2].serialNumber, "A-0003");
}

TEST(EmulationData, emptyListOfCamerasIsFine)
{
    EXPECT_TRUE(ReadData(R"({"cameras": []})").cameras.empty());
}

TEST(EmulationData, brokenJsonIsRefusedWithItsLine)
{
    EXPECT_THAT(ErrorOf<GenICam::FormatException>("{\n\"cameras\": [\n}"), HasSubstr("line 3"));
}

TEST(EmulationData, emptyTextIsRefused)
{
    EXPECT_THAT(ErrorOf<GenICam::FormatException>(""), HasSubstr("JSON"));
}

TEST(EmulationData, textThatIsNotUtf8IsRefused)
{
    EXPECT_THAT(ErrorOf<GenICam::FormatException>("{\"cameras\": [{\"serial\": \"\xff\"}]}"), HasSubstr("JSON"));
}

TEST(EmulationData, listInPlaceOfTheDocumentIsRefused)
{
    EXPECT_THAT(Refusal("[]"), HasSubstr("must be an object"));
}

TEST(EmulationData, missingCamerasAreRefused)
{
    EXPECT_THAT(Refusal("{}"), HasSubstr("'cameras' is missing"));
}

TEST(EmulationData, camerasThatAreNoListAreRefused)
{
    EXPECT_THAT(Refusal(R"({"cameras": 3})"), HasSubstr("'cameras' must be a list"));
}

TEST(EmulationData, cameraThatIsNoObjectIsRefusedWithItsPlace)
{
    EXPECT_THAT(Refusal(R"({"cameras": [{"serial": "A"}, 7]})"), HasSubstr("'cameras[1]' must be an object"));
}

TEST(EmulationData, unknownMemberIsRefusedWithItsPlace)
{
    EXPECT_THAT(Refusal(Camera(R"(, "sensro": {})")), HasSubstr("'cameras[0].sensro' is not known"));
}

TEST(EmulationData, missingSerialIsRefused)
{
    EXPECT_THAT(Refusal(R"({"cameras": [{}]})"), HasSubstr("'cameras[0].serial' is missing"));
}

TEST(EmulationData, textInPlaceOfANumberIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "sensor": {"width": "64"})")), HasSubstr("'cameras[0].sensor.width'"));
}

TEST(EmulationData, negativeSizeIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "sensor": {"height": -2})")), HasSubstr("'cameras[0].sensor.height'"));
}

TEST(EmulationData, numberInPlaceOfATextIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "model": 5)")), HasSubstr("'cameras[0].model' must be a text"));
}

TEST(EmulationData, numberInPlaceOfATruthValueIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "faults": {"stall": 1})")), HasSubstr("'cameras[0].faults.stall'"));
}

TEST(EmulationData, formatsThatAreNoTextsAreRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "pixelFormats": [8])")), HasSubstr("list of texts"));
}

TEST(EmulationData, noPixelFormatIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "pixelFormats": [])")), HasSubstr("pixel format"));
}

TEST(EmulationData, unknownPixelFormatIsRefusedByName)
{
    EXPECT_THAT(Refusal(Camera(R"(, "pixelFormats": ["Mono9"])")), HasSubstr("'Mono9'"));
}

TEST(EmulationData, widthOffTheIncrementIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "sensor": {"width": 65, "height": 48})")), HasSubstr("sensor width"));
}

TEST(EmulationData, hugeSensorIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "sensor": {"width": 4000000000, "height": 48})")), HasSubstr("sensor width"));
}

TEST(EmulationData, rateOfZeroIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "frameRate": 0)")), HasSubstr("frame rate"));
}

TEST(EmulationData, emptySerialIsRefused)
{
    EXPECT_THAT(Refusal(R"({"cameras": [{"serial": ""}]})"), HasSubstr("serial number must not be empty"));
}

TEST(EmulationData, longTextIsRefused)
{
    EXPECT_THAT(Refusal(Camera(", \"userName\": \"" + std::string(64, 'x') + "\"")), HasSubstr("63 bytes"));
}

TEST(EmulationData, serialUsedTwiceIsRefused)
{
    EXPECT_THAT(Refusal(R"({"cameras": [{"serial": "A"}, {"serial": "A"}]})"), HasSubstr("used twice"));
}

TEST(EmulationData, unknownInterfaceIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "interface": "none")")), HasSubstr("no interface 'none'"));
}

TEST(EmulationData, resetsAndFaultsOfFilesAreRead)
{
    const SRackData data =
        ReadData(Camera(R"(, "bootTimeMs": 7, "firmwareBootTimeMs": 8, "faults": {"powerLossAtFileOperation": 1,
          "powerLossAtWrite": 2, "fileFailure": 3, "fileShortWrite": 4, "fileDelayMs": 5, "afterReset": "twice"})"));
    const Simulator::SCameraConfig& camera = data.cameras.at(0);
    EXPECT_EQ(camera.bootTimeMs, 7U);
    EXPECT_EQ(camera.firmwareBootTimeMs, 8U);
    EXPECT_EQ(camera.faults.powerLossAtFileOperation, 1U);
    EXPECT_EQ(camera.faults.powerLossAtWrite, 2U);
    EXPECT_EQ(camera.faults.fileFailure, 3U);
    EXPECT_EQ(camera.faults.fileShortWrite, 4U);
    EXPECT_EQ(camera.faults.fileDelayMs, 5U);
    EXPECT_EQ(camera.faults.afterReset, Simulator::EAfterReset::Twice);
    EXPECT_EQ(ReadData(Camera("")).cameras.at(0).firmwareBootTimeMs, std::nullopt);
}

TEST(EmulationData, afterResetHasFourMeanings)
{
    const auto read = [](const std::string& name)
    {
        return ReadData(Camera(R"(, "faults": {"afterReset": ")" + name + "\"}")).cameras.at(0).faults.afterReset;
    };
    EXPECT_EQ(read("same"), Simulator::EAfterReset::Same);
    EXPECT_EQ(read("never"), Simulator::EAfterReset::Never);
    EXPECT_EQ(read("otherSerial"), Simulator::EAfterReset::OtherSerial);
    EXPECT_EQ(Refusal(Camera(R"(, "faults": {"afterReset": "late"})")),
              "'cameras[0].faults.afterReset' must be \"same\", \"never\", \"twice\" or \"otherSerial\".");
}

TEST(EmulationData, fileOperationsThatTakeTooLongAreRefused)
{
    EXPECT_NE(Refusal(Camera(R"(, "faults": {"fileDelayMs": 60001})")), "");
}

TEST(EmulationData, interfaceIdUsedTwiceIsRefused)
{
    EXPECT_THAT(Refusal(R"({"interfaces": [{"id": "a"}, {"id": "a"}], "cameras": []})"), HasSubstr("'a'"));
}

TEST(EmulationData, tooManyCamerasAreRefused)
{
    EXPECT_THAT(Refusal(R"({"cameras": [{"serial": "A", "count": 4000000000}]})"), HasSubstr("10000"));
}

TEST(EmulationData, featureThatIsAListIsRefused)
{
    EXPECT_THAT(Refusal(Camera(R"(, "features": {"Width": [1]})")), HasSubstr("'cameras[0].features.Width'"));
}

TEST(EmulationData, missingFileIsNamed)
{
    try
    {
        Simulator::ReadFile("no-such-file.json");
        FAIL() << "no exception";
    }
    catch (const GenICam::FileNotFoundException& error)
    {
        EXPECT_THAT(error.GetDescription(), HasSubstr("no-such-file.json"));
    }
}

TEST(EmulationData, defaultCamerasAreOfDifferentKinds)
{
    const SRackData data = MakeDefaultData(2);
    ASSERT_EQ(data.cameras.size(), 2U);
    EXPECT_NE(data.cameras[0].modelName, data.cameras[1].modelName);
    EXPECT_EQ(data.cameras[0].pixelFormats.front(), "Mono8");
    EXPECT_EQ(data.cameras[1].pixelFormats.front(), "BayerRG8");
}
