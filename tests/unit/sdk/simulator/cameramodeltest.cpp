// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "fakes.h"
#include "genapi/exceptions.h"
#include "simulator/pixelformats.h"
#include "simulator/registers.h"

#include <gtest/gtest.h>

#include <array>

using Simulator::CCameraModel;
using Simulator::SCameraConfig;
using SimulatorTest::SRig;
namespace Register = Simulator::Register;

namespace
{

std::uint32_t ReadU32(CCameraModel& camera, std::int64_t address)
{
    std::array<std::uint8_t, 4> b{};
    camera.Read(b.data(), address, 4);
    return std::uint32_t{b[0]} << 24U | std::uint32_t{b[1]} << 16U | std::uint32_t{b[2]} << 8U | b[3];
}

void WriteU32(CCameraModel& camera, std::int64_t address, std::uint32_t value)
{
    const std::array<std::uint8_t, 4> b = {static_cast<std::uint8_t>(value >> 24U),
                                           static_cast<std::uint8_t>(value >> 16U),
                                           static_cast<std::uint8_t>(value >> 8U), static_cast<std::uint8_t>(value)};
    camera.Write(b.data(), address, 4);
}

} // namespace

TEST(CameraModel, registersAreBigEndian)
{
    SRig rig;
    EXPECT_EQ(ReadU32(rig.camera, Register::SensorWidth), 64U);
    EXPECT_EQ(ReadU32(rig.camera, Register::SensorHeight), 48U);
}

TEST(CameraModel, textRegistersHoldTheConfiguredNames)
{
    SRig rig;
    std::array<char, Register::TextBytes> text{};
    rig.camera.Read(text.data(), Register::DeviceSerialNumber, Register::TextBytes);
    EXPECT_STREQ(text.data(), "T-1");
}

TEST(CameraModel, oneReadMaySpanSeveralRegisters)
{
    SRig rig;
    std::array<std::uint8_t, 8> both{};
    rig.camera.Read(both.data(), Register::SensorWidth, 8);
    EXPECT_EQ(both[3], 64);
    EXPECT_EQ(both[7], 48);
}

TEST(CameraModel, readOutsideTheMapIsRefused)
{
    SRig rig;
    std::uint32_t value = 0;
    EXPECT_THROW(rig.camera.Read(&value, 0, 4), GenICam::AccessException);
    EXPECT_THROW(rig.camera.Read(&value, Register::End - 2, 4), GenICam::AccessException);
    EXPECT_THROW(rig.camera.Read(&value, INT64_MAX - 1, 4), GenICam::AccessException);
}

TEST(CameraModel, writeToAReadOnlyRegisterIsRefused)
{
    SRig rig;
    EXPECT_THROW(WriteU32(rig.camera, Register::SensorWidth, 32), GenICam::AccessException);
    EXPECT_EQ(ReadU32(rig.camera, Register::SensorWidth), 64U);
}

TEST(CameraModel, writeIntoTheMiddleOfARegisterIsRefused)
{
    SRig rig;
    const std::uint16_t value = 0;
    EXPECT_THROW(rig.camera.Write(&value, Register::Width + 2, 2), GenICam::AccessException);
    EXPECT_THROW(rig.camera.Write(&value, Register::Width, 2), GenICam::AccessException);
}

TEST(CameraModel, widthOffTheIncrementIsRefusedAndLeavesTheOldValue)
{
    SRig rig;
    EXPECT_THROW(WriteU32(rig.camera, Register::Width, 30), GenICam::OutOfRangeException);
    EXPECT_EQ(ReadU32(rig.camera, Register::Width), 64U);
}

TEST(CameraModel, offsetIsLimitedByTheWidth)
{
    SRig rig;
    EXPECT_THROW(WriteU32(rig.camera, Register::OffsetX, 4), GenICam::OutOfRangeException);
    WriteU32(rig.camera, Register::Width, 32);
    WriteU32(rig.camera, Register::OffsetX, 32);
    EXPECT_THROW(WriteU32(rig.camera, Register::Width, 36), GenICam::OutOfRangeException);
}

TEST(CameraModel, unknownPixelFormatValueIsRefused)
{
    SRig rig;
    EXPECT_THROW(WriteU32(rig.camera, Register::PixelFormat, 12345), GenICam::InvalidArgumentException);
}

TEST(CameraModel, formatNotConfiguredForTheCameraIsRefused)
{
    SCameraConfig config = SRig::Small();
    config.pixelFormats = {"Mono8"};
    SRig rig(config);
    EXPECT_THROW(rig.camera.SetFeature("PixelFormat", "RGB8"), GenICam::InvalidArgumentException);
}

TEST(CameraModel, notANumberIsRefusedAsExposure)
{
    SRig rig;
    EXPECT_THROW(rig.camera.SetFeature("ExposureTime", "nan"), GenICam::OutOfRangeException);
}

class PixelFormats : public testing::TestWithParam<Simulator::SPixelFormat>
{
};

TEST_P(PixelFormats, payloadSizeFollowsTheGeometry)
{
    SRig rig;
    rig.camera.SetFeature("Width", "32");
    rig.camera.SetFeature("Height", "20");
    rig.camera.SetFeature("PixelFormat", std::string(GetParam().name));
    const std::uint32_t bitsPerPixel = GetParam().pfnc >> 16U & 0xFFU; // PFNC: bits 16..23
    EXPECT_EQ(ReadU32(rig.camera, Register::PayloadSize), 32U * 20U * bitsPerPixel / 8U);
    EXPECT_EQ(rig.camera.GetPayloadBytes(), 32U * 20U * GetParam().bytesPerPixel);
}

TEST_P(PixelFormats, framesCarryTheFormatAndItsSize)
{
    SRig rig;
    rig.camera.SetFeature("PixelFormat", std::string(GetParam().name));
    rig.Start();
    rig.RunFrames(1);
    ASSERT_EQ(rig.sink.seen.size(), 1U);
    EXPECT_EQ(rig.sink.seen[0].frame.pfnc, GetParam().pfnc);
    EXPECT_EQ(rig.sink.seen[0].frame.width, 64U);
    EXPECT_EQ(rig.sink.seen[0].frame.height, 48U);
    EXPECT_EQ(rig.sink.seen[0].bytes.size(), 64U * 48U * GetParam().bytesPerPixel);
}

INSTANTIATE_TEST_SUITE_P(All, PixelFormats, testing::ValuesIn(Simulator::PixelFormats()),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(CameraModel, sizeIsLockedWhileAcquiringAndFreeAfterwards)
{
    SRig rig;
    rig.Start();
    EXPECT_EQ(ReadU32(rig.camera, Register::TLParamsLocked), 1U);
    EXPECT_THROW(WriteU32(rig.camera, Register::Width, 32), GenICam::AccessException);
    rig.Stop();
    EXPECT_EQ(ReadU32(rig.camera, Register::TLParamsLocked), 0U);
    WriteU32(rig.camera, Register::Width, 32);
    EXPECT_EQ(ReadU32(rig.camera, Register::Width), 32U);
}

TEST(CameraModel, sizeIsLockedByTLParamsLockedAlone)
{
    SRig rig;
    WriteU32(rig.camera, Register::TLParamsLocked, 1);
    EXPECT_THROW(WriteU32(rig.camera, Register::Height, 20), GenICam::AccessException);
    WriteU32(rig.camera, Register::TLParamsLocked, 0);
    WriteU32(rig.camera, Register::Height, 20);
    EXPECT_EQ(ReadU32(rig.camera, Register::Height), 20U);
}

TEST(CameraModel, exposureCanChangeWhileAcquiring)
{
    SRig rig;
    rig.Start();
    rig.camera.SetFeature("ExposureTime", "1000");
    EXPECT_EQ(rig.camera.GetFeature("ExposureTime"), "1000.000000");
}

TEST(CameraModel, frameRateIsLimitedBySize)
{
    SCameraConfig config = SRig::Small();
    config.sensorWidth = 2000;
    config.sensorHeight = 1000;
    config.maxBytesPerSecond = 1.0e8;
    config.frameRate = 1000.0;
    SRig rig(config);
    EXPECT_EQ(rig.camera.GetFeature("AcquisitionFrameRate"), "50.000000");
    EXPECT_THROW(rig.camera.SetFeature("AcquisitionFrameRate", "51"), GenICam::OutOfRangeException);
    rig.camera.SetFeature("Width", "1000");
    rig.camera.SetFeature("AcquisitionFrameRate", "100");
    EXPECT_EQ(rig.camera.GetFeature("AcquisitionFrameRate"), "100.000000");
}

TEST(CameraModel, longExposureLimitsTheResultingRate)
{
    SRig rig;
    rig.camera.SetFeature("ExposureTime", "100000");
    EXPECT_EQ(rig.camera.GetFeature("AcquisitionResultingFrameRate"), "10.000000");
}

TEST(CameraModel, configuredFeaturesAreSetAtStart)
{
    SCameraConfig config = SRig::Small();
    config.features = {{"Width", "32"}, {"OffsetX", "8"}, {"PixelFormat", "Mono12"}, {"ReverseX", "true"}};
    SRig rig(config);
    EXPECT_EQ(rig.camera.GetFeature("Width"), "32");
    EXPECT_EQ(rig.camera.GetFeature("OffsetX"), "8");
    EXPECT_EQ(rig.camera.GetFeature("PixelFormat"), "Mono12");
    EXPECT_EQ(rig.camera.GetFeature("ReverseX"), "true");
}

TEST(CameraModel, unknownConfiguredFeatureIsRefused)
{
    SCameraConfig config = SRig::Small();
    config.features = {{"NoSuchFeature", "1"}};
    EXPECT_THROW(SRig rig(config), GenICam::InvalidArgumentException);
}

TEST(CameraModel, latchedTimestampHasOffsetAndDrift)
{
    SCameraConfig config = SRig::Small();
    config.clockOffsetNs = 5'000;
    config.clockDriftPpm = 10.0;
    SRig rig(config);
    rig.clock.Advance(1'000'000'000);
    rig.camera.SetFeature("TimestampLatch", "1");
    EXPECT_EQ(rig.camera.GetFeature("TimestampLatchValue"), std::to_string(5'000 + 1'000'000'000 + 10'000));
}

TEST(CameraModel, timestampResetStartsFromZero)
{
    SCameraConfig config = SRig::Small();
    config.clockOffsetNs = 5'000;
    SRig rig(config);
    rig.clock.Advance(1'000);
    rig.camera.SetFeature("TimestampReset", "1");
    rig.clock.Advance(250);
    rig.camera.SetFeature("TimestampLatch", "1");
    EXPECT_EQ(rig.camera.GetFeature("TimestampLatchValue"), "250");
}

TEST(CameraModel, descriptionNamesEveryFeatureOnce)
{
    SRig rig;
    const std::string xml = rig.camera.GetDescription();
    for (const char* name : {"Width", "PixelFormat", "AcquisitionStart", "UserSetSave", "FaultStall", "PayloadSize"})
    {
        const std::string attribute = std::string(" Name=\"") + name + "\"";
        const std::string entry = "<EnumEntry"; // of a selector: may be called like the feature
        int found = 0;
        for (std::size_t at = xml.find(attribute); at != std::string::npos; at = xml.find(attribute, at + 1))
        {
            found += xml.compare(at - entry.size(), entry.size(), entry) == 0 ? 0 : 1;
        }
        EXPECT_EQ(found, 1) << name;
    }
}

TEST(UserSets, loadBringsBackWhatWasSaved)
{
    SRig rig;
    rig.camera.SetFeature("UserSetSelector", "UserSet1");
    rig.camera.SetFeature("Width", "32");
    rig.camera.SetFeature("Gain", "6");
    rig.camera.SetFeature("UserSetSave", "1");
    rig.camera.SetFeature("Width", "48");
    rig.camera.SetFeature("Gain", "0");
    rig.camera.SetFeature("UserSetLoad", "1");
    EXPECT_EQ(rig.camera.GetFeature("Width"), "32");
    EXPECT_EQ(rig.camera.GetFeature("Gain"), "6.000000");
    EXPECT_EQ(rig.camera.GetFeature("PayloadSize"), std::to_string(32 * 48));
}

TEST(UserSets, defaultSetHoldsTheFactoryValues)
{
    SRig rig;
    rig.camera.SetFeature("Width", "32");
    rig.camera.SetFeature("UserSetLoad", "1");
    EXPECT_EQ(rig.camera.GetFeature("Width"), "64");
}

TEST(UserSets, defaultSetCannotBeOverwritten)
{
    SRig rig;
    EXPECT_THROW(rig.camera.SetFeature("UserSetSave", "1"), GenICam::AccessException);
}

TEST(UserSets, loadIsRefusedWhileAcquiring)
{
    SRig rig;
    rig.Start();
    EXPECT_THROW(rig.camera.SetFeature("UserSetLoad", "1"), GenICam::AccessException);
}

TEST(UserSets, flashSurvivesTheModel)
{
    const auto flash = std::make_shared<Simulator::SFlash>();
    {
        SRig rig(SRig::Small(), flash);
        rig.camera.SetFeature("UserSetSelector", "UserSet2");
        rig.camera.SetFeature("Height", "20");
        rig.camera.SetFeature("UserSetSave", "1");
        rig.camera.SetFeature("UserSetDefault", "UserSet2");
        rig.camera.SetFeature("DeviceUserID", "left");
    }
    SRig again(SRig::Small(), flash);
    EXPECT_EQ(again.camera.GetFeature("Height"), "20");
    EXPECT_EQ(again.camera.GetUserDefinedName(), "left");
    EXPECT_EQ(again.camera.GetFeature("UserSetDefault"), "UserSet2");
}
