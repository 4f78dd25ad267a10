// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/cameradata.h"

#include "genapi/exceptions.h"
#include "simulator/pixelformats.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

namespace Simulator
{

namespace
{

constexpr std::uint32_t MaxSensorPixels = 16384; // per direction
constexpr std::uint32_t MinSensorPixels = 16;
constexpr std::uint32_t MaxFileDelayMs = 60000;
constexpr std::size_t MaxTextBytes = 63; // of a text register, without its end

[[noreturn]] void Refuse(const Simulator::SCameraConfig& camera, const std::string& what)
{
    GENICAM_THROW(InvalidArgumentException, "Emulated camera '" + camera.serialNumber + "': " + what + ".");
}

void CheckText(const Simulator::SCameraConfig& camera, const char* name, const std::string& text, bool mayBeEmpty)
{
    if (text.empty() && !mayBeEmpty)
    {
        Refuse(camera, std::string(name) + " must not be empty");
    }
    if (text.size() > MaxTextBytes)
    {
        Refuse(camera, std::string(name) + " is longer than " + std::to_string(MaxTextBytes) + " bytes");
    }
}

void CheckSize(const Simulator::SCameraConfig& camera, const char* name, std::uint32_t size, std::uint32_t increment)
{
    if (size < MinSensorPixels || size > MaxSensorPixels || size % increment != 0)
    {
        Refuse(camera, std::string(name) + " must be " + std::to_string(MinSensorPixels) + " to " +
                           std::to_string(MaxSensorPixels) + " in steps of " + std::to_string(increment) + ", not " +
                           std::to_string(size));
    }
}

void CheckCamera(const Simulator::SCameraConfig& camera)
{
    CheckText(camera, "the serial number", camera.serialNumber, false);
    CheckText(camera, "the vendor name", camera.vendorName, false);
    CheckText(camera, "the model name", camera.modelName, false);
    CheckText(camera, "the user-defined name", camera.userDefinedName, true);
    CheckText(camera, "the device version", camera.deviceVersion, false);
    CheckText(camera, "the firmware version", camera.firmwareVersion, false);
    CheckSize(camera, "the sensor width", camera.sensorWidth, 4);
    CheckSize(camera, "the sensor height", camera.sensorHeight, 2);
    if (camera.pixelFormats.empty())
    {
        Refuse(camera, "there must be a pixel format");
    }
    for (const std::string& format : camera.pixelFormats)
    {
        if (Simulator::FindPixelFormat(std::string_view(format)) == nullptr)
        {
            Refuse(camera, "unknown pixel format '" + format + "'");
        }
    }
    if (!(camera.frameRate > 0.0 && camera.frameRate <= 10000.0))
    {
        Refuse(camera, "the frame rate must be above 0 and at most 10000 Hz");
    }
    if (!(camera.maxBytesPerSecond >= 1.0e6 && camera.maxBytesPerSecond <= 1.0e11))
    {
        Refuse(camera, "the read-out must be 1e6 to 1e11 bytes per second");
    }
    if (!(std::abs(camera.clockDriftPpm) <= 1000.0))
    {
        Refuse(camera, "the clock's drift must be within 1000 ppm");
    }
    if (camera.faults.fileDelayMs > MaxFileDelayMs)
    {
        Refuse(camera, "a file operation must take at most " + std::to_string(MaxFileDelayMs) + " ms longer");
    }
}

} // namespace

SRackData MakeDefaultData(std::size_t cameras)
{
    SRackData data;
    data.interfaces.push_back({"DefaultInterface", "Default Interface"});
    for (std::size_t i = 0; i < cameras; ++i)
    {
        Simulator::SCameraConfig camera;
        char serial[32];
        std::snprintf(serial, sizeof serial, "EMU-%04zu", i + 1);
        camera.serialNumber = serial;
        if (i % 2 == 1)
        {
            camera.modelName = "EmuColor1920";
            camera.sensorWidth = 1920;
            camera.sensorHeight = 1200;
            camera.pixelFormats = {"BayerRG8", "BayerRG12", "RGB8", "Mono8", "Mono12"};
            camera.frameRate = 25.0;
        }
        camera.clockOffsetNs = static_cast<std::int64_t>(i + 1) * 1'000'000'007;
        camera.clockDriftPpm = static_cast<double>(i % 21) - 10.0;
        data.cameras.push_back(camera);
    }
    return data;
}

void CheckData(const SRackData& data)
{
    std::set<std::string> ids;
    for (const SInterfaceData& interface : data.interfaces)
    {
        if (interface.id.empty() || !ids.insert(interface.id).second)
        {
            GENICAM_THROW(InvalidArgumentException,
                          "Emulated interface '" + interface.id + "': the id must be there and used once.");
        }
    }
    std::set<std::string> serials;
    for (const Simulator::SCameraConfig& camera : data.cameras)
    {
        CheckCamera(camera);
        if (!serials.insert(camera.serialNumber).second)
        {
            Refuse(camera, "the serial number is used twice");
        }
        if (ids.count(camera.interfaceId) == 0)
        {
            Refuse(camera, "there is no interface '" + camera.interfaceId + "'");
        }
    }
}

} // namespace Simulator
