// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigecamera/options.h"

#include "genapi/exceptions.h"
#include "gigecamera/faults.h"
#include "simulator/datareader.h"
#include "simulator/firmware.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace GigECamera
{

using GigEServer::SAddress;
using GigEServer::SServedCamera;

namespace
{

constexpr std::size_t MostCameras = 250;
constexpr double MostMegabits = 1.0e6;
constexpr std::size_t MostFirmwareBytes = 64 * 1024 * 1024; // more than a camera takes, to see that it refuses
constexpr std::uint32_t LoopbackNetwork = 127;

std::string IsNumber(const std::string& text)
{
    double value = 0.0;
    return CLI::detail::lexical_cast(text, value) && std::isnan(value) ? "Value " + text + " is no number"
                                                                       : std::string();
}

std::vector<SAddress> ReadAddresses(const SOptions& options)
{
    std::vector<SAddress> addresses;
    for (const std::string& text : options.addresses)
    {
        addresses.push_back(GigEServer::FindAddress(text));
    }
    if (!options.adapter.empty())
    {
        const std::vector<SAddress> others = GigEServer::FindAdapter(options.adapter);
        addresses.insert(addresses.end(), others.begin(), others.end());
    }
    if (addresses.empty())
    {
        addresses.push_back(GigEServer::FindAddress("127.0.0.1"));
    }
    return addresses;
}

/** Loopback addresses need no setting up, so that the last one is followed by as many as are wanted. */
void Continue(std::vector<SAddress>& addresses, std::size_t count)
{
    while (addresses.size() < count)
    {
        SAddress next = addresses.back();
        if (next.ip >> 24 != LoopbackNetwork)
        {
            GENICAM_THROW(InvalidArgumentException,
                          std::to_string(count) + " cameras need as many addresses, and only " +
                              std::to_string(addresses.size()) + " are given. Add addresses to the network adapter.");
        }
        ++next.ip;
        addresses.push_back(next);
    }
}

/** Serial numbers GEV-0001 ..., so that nobody takes them for the emulated cameras that a client has in its process. */
std::vector<Simulator::SCameraConfig> MakeDefaultCameras(std::size_t count)
{
    std::vector<Simulator::SCameraConfig> configs = Simulator::MakeDefaultData(count).cameras;
    constexpr std::size_t prefixLength = 3; // of EMU-0001
    for (Simulator::SCameraConfig& config : configs)
    {
        config.serialNumber.replace(0, prefixLength, "GEV");
    }
    return configs;
}

/** Throws with the file's name; what is wrong in it is told by path or by the camera. */
std::vector<Simulator::SCameraConfig> ReadConfigs(const std::string& fileName)
{
    try
    {
        return Simulator::ReadData(Simulator::ReadFile(fileName)).cameras;
    }
    catch (const GenICam::GenericException& error)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "The cameras of '" + fileName + "' cannot be used: " + error.GetDescription());
    }
}

} // namespace

bool ParseCommandLine(int argc, char** argv, SOptions& options, int& exitCode)
{
    CLI::App app("Simulated GigE Vision cameras on this computer's network.");
    app.set_version_flag("--version", std::string("gigecamera ") + GIGECAMERA_VERSION);
    app.add_option("-a,--address", options.addresses, "IPv4 address of a camera, once for each; 127.0.0.1 by default")
        ->allow_extra_args(false);
    app.add_option("-i,--interface", options.adapter, "Network adapter whose addresses the cameras take");
    app.add_option("-n,--count", options.count, "Number of cameras; by default one for each address")
        ->check(CLI::Range(std::size_t{1}, MostCameras));
    app.add_option("-c,--config", options.configFile, "Cameras as data, in the emulation's JSON format")
        ->check(CLI::ExistingFile);
    app.add_option("-f,--fault", options.faults, GetFaultHelp())->allow_extra_args(false);
    app.add_option("-l,--link-speed", options.linkMegabits, "Mbit/s at which a camera sends; 0: as fast as it can")
        ->check(CLI::Range(0.0, MostMegabits))
        ->check(IsNumber) // a range lets "nan" through
        ->capture_default_str();
    app.add_option("--boot-time", options.bootTimeMs, "Milliseconds that a reset takes");
    app.add_option("--firmware-boot-time", options.firmwareBootTimeMs,
                   "Milliseconds that a reset takes which starts other firmware");
    CLI::Option* maker = app.add_option("--make-firmware", options.firmware,
                                        "Write a firmware image for simulated cameras to FILE, and end")
                             ->type_name("VERSION MODEL FILE")
                             ->expected(3);
    app.add_option("--firmware-size", options.firmwareBytes, "Bytes of the image's payload")
        ->check(CLI::Range(std::size_t{0}, MostFirmwareBytes))
        ->capture_default_str()
        ->needs(maker);
    app.add_flag("--firmware-fails", options.firmwareFails, "The image is one that does not boot")->needs(maker);
    try
    {
        app.parse(argc, argv);
        return true;
    }
    catch (const CLI::ParseError& error)
    {
        constexpr int wrongUsage = 2;
        exitCode = app.exit(error) == 0 ? 0 : wrongUsage;
        return false;
    }
}

std::vector<SServedCamera> MakeCameras(const SOptions& options)
{
    std::vector<SAddress> addresses = ReadAddresses(options);
    std::vector<Simulator::SCameraConfig> configs;
    if (options.configFile.empty())
    {
        configs = MakeDefaultCameras(options.count.value_or(addresses.size()));
    }
    else
    {
        configs = ReadConfigs(options.configFile);
        if (options.count.value_or(configs.size()) > configs.size() || configs.empty())
        {
            GENICAM_THROW(InvalidArgumentException, "'" + options.configFile + "' describes " +
                                                        std::to_string(configs.size()) + " cameras, which is too few.");
        }
        configs.resize(options.count.value_or(configs.size()));
    }
    Continue(addresses, configs.size());
    constexpr double bitsPerMegabit = 1.0e6;
    std::vector<SServedCamera> cameras;
    for (std::size_t i = 0; i < configs.size(); ++i)
    {
        SServedCamera camera;
        camera.config = configs[i];
        camera.address = addresses[i];
        ReadFaults(options.faults, camera.faults, camera.config.faults);
        camera.config.bootTimeMs = options.bootTimeMs.value_or(camera.config.bootTimeMs);
        if (options.firmwareBootTimeMs.has_value())
        {
            camera.config.firmwareBootTimeMs = options.firmwareBootTimeMs;
        }
        camera.linkBitsPerSecond = static_cast<std::uint64_t>(std::llround(options.linkMegabits * bitsPerMegabit));
        cameras.push_back(camera);
    }
    return cameras;
}

void WriteFirmware(const SOptions& options)
{
    const std::string& version = options.firmware.at(0);
    const std::string& model = options.firmware.at(1);
    const std::string& fileName = options.firmware.at(2);
    const std::vector<std::uint8_t> image =
        Simulator::MakeFirmware(version, model, options.firmwareBytes, options.firmwareFails);
    std::ofstream file(fileName, std::ios::binary);
    const bool isOpen = file.is_open();
    file.write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
    file.close();
    if (!file)
    {
        const std::string reason = std::strerror(errno);
        std::error_code ignored;
        if (isOpen && std::filesystem::is_regular_file(fileName, ignored))
        {
            std::filesystem::remove(fileName, ignored); // part of an image is of no use
        }
        GENICAM_THROW(FileIOException, "Cannot write '" + fileName + "': " + reason + ".");
    }
}

} // namespace GigECamera
