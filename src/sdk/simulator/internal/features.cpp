// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/features.h"

#include "simulator/internal/actions.h"
#include "simulator/internal/chunkkinds.h"
#include "simulator/internal/compression.h"
#include "simulator/internal/events.h"
#include "simulator/internal/fileaccess.h"
#include "simulator/internal/limits.h"
#include "simulator/pixelformats.h"
#include "simulator/registers.h"

namespace Simulator::Internal
{

namespace
{

using Features = std::vector<SFeature>;

SFeature& Add(Features& all, const char* category, const char* name, EKind kind, std::int64_t address, EAccess access,
              const char* toolTip)
{
    SFeature feature;
    feature.category = category;
    feature.name = name;
    feature.kind = kind;
    feature.address = address;
    feature.bytes = kind == EKind::Text ? Register::TextBytes : kind == EKind::Float ? 8 : 4;
    feature.access = access;
    feature.toolTip = toolTip;
    feature.max = kind == EKind::Integer ? 4294967295.0 : 0.0;
    all.push_back(feature);
    return all.back();
}

/** A setting that user sets keep. */
SFeature& AddSetting(Features& all, const char* category, const char* name, EKind kind, std::int64_t address,
                     const char* toolTip)
{
    SFeature& feature = Add(all, category, name, kind, address, EAccess::ReadWrite, toolTip);
    feature.isInUserSet = true;
    feature.invalidators = {"UserSetLoad"};
    return feature;
}

void AddDeviceControl(Features& all)
{
    constexpr auto Category = "DeviceControl";
    const auto text = [&](const char* name, std::int64_t address, const char* toolTip)
    {
        return &Add(all, Category, name, EKind::Text, address, EAccess::ReadOnly, toolTip);
    };
    text("DeviceVendorName", Register::DeviceVendorName, "Name of the manufacturer.");
    text("DeviceModelName", Register::DeviceModelName, "Name of the model.");
    text("DeviceManufacturerInfo", Register::DeviceManufacturerInfo, "What the manufacturer says of the device.");
    text("DeviceVersion", Register::DeviceVersion, "Version of the device.");
    text("DeviceFirmwareVersion", Register::DeviceFirmwareVersion, "Version of the firmware.");
    text("DeviceSerialNumber", Register::DeviceSerialNumber, "Serial number of the device.");
    text("DeviceID", Register::DeviceSerialNumber, "Identifier of the device.")->visibility = "Expert";
    SFeature& userId = Add(all, Category, "DeviceUserID", EKind::Text, Register::DeviceUserID, EAccess::ReadWrite,
                           "Name that the user gave the device.");
    userId.isVolatile = true;
    const auto number = [&](const char* name, std::int64_t address, const char* toolTip)
    {
        Add(all, Category, name, EKind::Integer, address, EAccess::ReadOnly, toolTip).visibility = "Expert";
    };
    number("DeviceSFNCVersionMajor", Register::DeviceSFNCVersionMajor, "Major version of the feature naming used.");
    number("DeviceSFNCVersionMinor", Register::DeviceSFNCVersionMinor, "Minor version of the feature naming used.");
    number("DeviceSFNCVersionSubMinor", Register::DeviceSFNCVersionSubMinor,
           "Sub-minor version of the feature naming used.");
    SFeature& temperature = Add(all, Category, "DeviceTemperature", EKind::Float, Register::DeviceTemperature,
                                EAccess::ReadOnly, "Temperature of the device.");
    temperature.unit = "C";
    temperature.min = -50.0;
    temperature.max = 150.0;
    temperature.isVolatile = true;
    Add(all, Category, "DeviceReset", EKind::Command, Register::DeviceReset, EAccess::WriteOnly, "Restarts the device.")
        .visibility = "Guru";
    Add(all, Category, "TimestampLatch", EKind::Command, Register::TimestampLatch, EAccess::WriteOnly,
        "Copies the present time to TimestampLatchValue.")
        .visibility = "Expert";
    Add(all, Category, "TimestampReset", EKind::Command, Register::TimestampReset, EAccess::WriteOnly,
        "Sets the device's clock to zero.")
        .visibility = "Expert";
    SFeature& latched = Add(all, Category, "TimestampLatchValue", EKind::Integer, Register::TimestampLatchValue,
                            EAccess::ReadOnly, "The latched time.");
    latched.bytes = 8;
    latched.max = 9223372036854775807.0;
    latched.unit = "ns";
    latched.isVolatile = true;
    latched.visibility = "Expert";
}

void AddImageFormat(Features& all, const SCameraConfig& config)
{
    constexpr auto Category = "ImageFormatControl";
    Add(all, Category, "SensorWidth", EKind::Integer, Register::SensorWidth, EAccess::ReadOnly, "Width of the sensor.");
    Add(all, Category, "SensorHeight", EKind::Integer, Register::SensorHeight, EAccess::ReadOnly,
        "Height of the sensor.");
    Add(all, Category, "WidthMax", EKind::Integer, Register::WidthMax, EAccess::ReadOnly, "Largest width of an image.");
    Add(all, Category, "HeightMax", EKind::Integer, Register::HeightMax, EAccess::ReadOnly,
        "Largest height of an image.");
    const auto region =
        [&](const char* name, std::int64_t address, const char* toolTip, double min, std::int64_t inc, const char* pMax)
    {
        SFeature& feature = AddSetting(all, Category, name, EKind::Integer, address, toolTip);
        feature.min = min;
        feature.inc = inc;
        feature.pMax = pMax;
        feature.unit = "px";
        feature.isLockedWhileGrabbing = true;
    };
    region("Width", Register::Width, "Width of the image.", Limits::MinWidth, Limits::WidthInc, "WidthLimit");
    region("Height", Register::Height, "Height of the image.", Limits::MinHeight, Limits::HeightInc, "HeightLimit");
    region("OffsetX", Register::OffsetX, "First column of the image.", 0.0, Limits::WidthInc, "OffsetXLimit");
    region("OffsetY", Register::OffsetY, "First line of the image.", 0.0, Limits::HeightInc, "OffsetYLimit");
    SFeature& format =
        AddSetting(all, Category, "PixelFormat", EKind::Enumeration, Register::PixelFormat, "Format of the pixels.");
    for (const std::string& name : config.pixelFormats)
    {
        format.entries.emplace_back(name, FindPixelFormat(std::string_view(name))->pfnc);
    }
    format.isLockedWhileGrabbing = true;
    AddSetting(all, Category, "ReverseX", EKind::Boolean, Register::ReverseX, "Flips the image horizontally.");
    SFeature& pattern = AddSetting(all, Category, "TestPattern", EKind::Enumeration, Register::TestPattern,
                                   "Image in place of the scene before the lens.");
    pattern.entries = {{"Off", 0},
                       {"Black", 1},
                       {"White", 2},
                       {"GreyHorizontalRamp", 3},
                       {"GreyVerticalRamp", 4},
                       {"GreyVerticalRampMoving", 6},
                       {"ColorBar", 9},
                       {"NoisyScene", 64}};
}

void AddAcquisitionTiming(Features& all, const char* category)
{
    AddSetting(all, category, "AcquisitionFrameRateEnable", EKind::Boolean, Register::AcquisitionFrameRateEnable,
               "Limits the frame rate to AcquisitionFrameRate.");
    SFeature& rate = AddSetting(all, category, "AcquisitionFrameRate", EKind::Float, Register::AcquisitionFrameRate,
                                "Frames per second wanted.");
    rate.min = Limits::MinFrameRate;
    rate.pMax = "AcquisitionFrameRateMaxReg";
    rate.unit = "Hz";
    // A larger payload may lower it.
    rate.invalidators = {"Width",       "Height",      "PixelFormat",          "ChunkModeActive",
                         "ChunkEnable", "UserSetLoad", "ImageCompressionMode", "ImageCompressionRatio"};
    SFeature& resulting =
        Add(all, category, "AcquisitionResultingFrameRate", EKind::Float, Register::AcquisitionResultingFrameRate,
            EAccess::ReadOnly, "Frames per second under all present settings.");
    resulting.max = Limits::MaxFrameRate;
    resulting.unit = "Hz";
    resulting.invalidators = {"Width",
                              "Height",
                              "PixelFormat",
                              "ChunkModeActive",
                              "ChunkEnable",
                              "AcquisitionFrameRateEnable",
                              "AcquisitionFrameRate",
                              "ExposureTime",
                              "UserSetLoad",
                              "ImageCompressionMode",
                              "ImageCompressionRatio"};
    SFeature& exposure =
        AddSetting(all, category, "ExposureTime", EKind::Float, Register::ExposureTime, "Time of exposure.");
    exposure.min = Limits::MinExposureUs;
    exposure.max = Limits::MaxExposureUs;
    exposure.unit = "us";
    exposure.isVolatile = true;
    SFeature& exposureAuto = AddSetting(all, category, "ExposureAuto", EKind::Enumeration, Register::ExposureAuto,
                                        "Lets the camera choose the time of exposure.");
    exposureAuto.entries = {{"Off", 0}, {"Once", 1}, {"Continuous", 2}};
    exposureAuto.isVolatile = true;
}

void AddAcquisition(Features& all)
{
    constexpr auto Category = "AcquisitionControl";
    SFeature& mode = AddSetting(all, Category, "AcquisitionMode", EKind::Enumeration, Register::AcquisitionMode,
                                "How many frames a start acquires.");
    mode.entries = {{"SingleFrame", 0}, {"MultiFrame", 1}, {"Continuous", 2}};
    mode.isLockedWhileGrabbing = false;
    Add(all, Category, "AcquisitionStart", EKind::Command, Register::AcquisitionStart, EAccess::WriteOnly,
        "Starts the acquisition.");
    Add(all, Category, "AcquisitionStop", EKind::Command, Register::AcquisitionStop, EAccess::WriteOnly,
        "Ends the acquisition.");
    SFeature& count = AddSetting(all, Category, "AcquisitionFrameCount", EKind::Integer,
                                 Register::AcquisitionFrameCount, "Frames of a MultiFrame acquisition.");
    count.min = 1.0;
    count.max = Limits::MaxFrameCount;
    SFeature& status = Add(all, Category, "AcquisitionStatus", EKind::Boolean, Register::AcquisitionStatus,
                           EAccess::ReadOnly, "Whether the camera acquires.");
    status.isVolatile = true;
    AddAcquisitionTiming(all, Category);
    SFeature& selector = AddSetting(all, Category, "TriggerSelector", EKind::Enumeration, Register::TriggerSelector,
                                    "Trigger to configure.");
    selector.entries = {{"FrameStart", 0}};
    selector.selected = "TriggerMode";
    AddSetting(all, Category, "TriggerMode", EKind::Enumeration, Register::TriggerMode, "Whether the trigger is used.")
        .entries = {{"Off", 0}, {"On", 1}};
    AddSetting(all, Category, "TriggerSource", EKind::Enumeration, Register::TriggerSource, "What triggers.")
        .entries = {{"Software", 0}, {"Line1", 1}, {"Action1", 2}, {"Action2", 3}, {"Action3", 4}, {"Action4", 5}};
    Add(all, Category, "TriggerSoftware", EKind::Command, Register::TriggerSoftware, EAccess::WriteOnly,
        "Triggers a frame.");
}

void AddAnalogAndUserSets(Features& all)
{
    SFeature& gain = AddSetting(all, "AnalogControl", "Gain", EKind::Float, Register::Gain, "Amplification.");
    gain.max = Limits::MaxGainDb;
    gain.unit = "dB";
    SFeature& black =
        AddSetting(all, "AnalogControl", "BlackLevel", EKind::Float, Register::BlackLevel, "Level of black.");
    black.max = Limits::MaxBlackLevelPercent;
    black.unit = "%";

    constexpr auto Category = "UserSetControl";
    SFeature& selector = Add(all, Category, "UserSetSelector", EKind::Enumeration, Register::UserSetSelector,
                             EAccess::ReadWrite, "User set to load or save.");
    selector.entries = {{"Default", 0}, {"UserSet1", 1}, {"UserSet2", 2}};
    selector.selected = "UserSetLoad";
    Add(all, Category, "UserSetLoad", EKind::Command, Register::UserSetLoad, EAccess::WriteOnly,
        "Replaces the settings by those of the user set.")
        .isLockedWhileGrabbing = true;
    Add(all, Category, "UserSetSave", EKind::Command, Register::UserSetSave, EAccess::WriteOnly,
        "Keeps the settings in the user set.");
    SFeature& start = Add(all, Category, "UserSetDefault", EKind::Enumeration, Register::UserSetDefault,
                          EAccess::ReadWrite, "User set to load when the camera starts.");
    start.entries = {{"Default", 0}, {"UserSet1", 1}, {"UserSet2", 2}};
    start.isVolatile = true;
}

void AddTransportLayer(Features& all)
{
    constexpr auto Category = "TransportLayerControl";
    SFeature& payload = Add(all, Category, "PayloadSize", EKind::Integer, Register::PayloadSize, EAccess::ReadOnly,
                            "Bytes of an image.");
    payload.unit = "B";
    payload.invalidators = {"Width",       "Height",      "PixelFormat",          "ChunkModeActive",
                            "ChunkEnable", "UserSetLoad", "ImageCompressionMode", "ImageCompressionRatio"};
    SFeature& locked = Add(all, Category, "TLParamsLocked", EKind::Integer, Register::TLParamsLocked,
                           EAccess::ReadWrite, "Whether settings that shape the stream are locked.");
    locked.max = 1.0;
    locked.isVolatile = true;
    locked.visibility = "Invisible";
    locked.invalidators = {"AcquisitionStart", "AcquisitionStop"};
    SFeature& clear = AddSetting(all, Category, "ClearBufferModeEnable", EKind::Boolean,
                                 Register::ClearBufferModeEnable, "Empties the camera's buffers when it stops.");
    clear.isCustom = true;
    clear.visibility = "Expert";
}

void AddFaults(Features& all)
{
    constexpr auto Category = "FaultControl";
    const auto fault = [&](const char* name, EKind kind, std::int64_t address, EAccess access,
                           const char* toolTip) -> SFeature&
    {
        SFeature& feature = Add(all, Category, name, kind, address, access, toolTip);
        feature.isCustom = true;
        feature.isVolatile = kind != EKind::Command;
        feature.visibility = "Guru";
        return feature;
    };
    fault("FaultDropFrames", EKind::Integer, Register::FaultDropFrames, EAccess::ReadWrite,
          "That many next frames vanish.");
    fault("FaultFailEveryNth", EKind::Integer, Register::FaultFailEveryNth, EAccess::ReadWrite,
          "Every n-th frame fails; 0 for none.");
    fault("FaultStall", EKind::Boolean, Register::FaultStall, EAccess::ReadWrite, "Acquires but delivers nothing.");
    fault("FaultChunkLies", EKind::Boolean, Register::FaultChunkLies, EAccess::ReadWrite,
          "The last chunk claims more bytes than there are.");
    fault("FaultChunkMissing", EKind::Boolean, Register::FaultChunkMissing, EAccess::ReadWrite,
          "The last chunk behind the image is not sent.");
    fault("FaultRemovalReports", EKind::Integer, Register::FaultRemovalReports, EAccess::ReadWrite,
          "How often a removal is reported.")
        .max = 100.0;
    fault("FaultRemove", EKind::Command, Register::FaultRemove, EAccess::WriteOnly, "Removes the camera.");
    const auto counter = [&](const char* name, std::int64_t address, const char* toolTip)
    {
        SFeature& feature = fault(name, EKind::Integer, address, EAccess::ReadOnly, toolTip);
        feature.bytes = 8;
        feature.max = 9223372036854775807.0;
    };
    counter("FramesGenerated", Register::FramesGenerated, "Frames of the present or last acquisition.");
    counter("FramesLost", Register::FramesLost, "Of these, how many nobody took or a fault dropped.");
}

} // namespace

std::vector<SFeature> MakeFeatures(const SCameraConfig& config)
{
    Features all;
    AddDeviceControl(all);
    AddImageFormat(all, config);
    AddAcquisition(all);
    AddAnalogAndUserSets(all);
    AddTransportLayer(all);
    AddActionControl(all);
    AddChunkControl(all);
    AddCompressionControl(all);
    AddEventControl(all);
    AddFaults(all);
    AddFileAccessControl(all);
    return all;
}

} // namespace Simulator::Internal
