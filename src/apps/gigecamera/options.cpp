// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigecamera/options.h"

#include "genapi/exceptions.h"
#include "simulator/datareader.h"

#include <CLI/CLI.hpp>

#include <cmath>
#include <limits>

namespace GigECamera
{

using GigEServer::SAddress;
using GigEServer::SNetworkFaults;
using GigEServer::SServedCamera;

namespace
{

constexpr std::size_t MostCameras = 250;
constexpr double MostMegabits = 1.0e6;
constexpr std::uint32_t LoopbackNetwork = 127;
constexpr const char* FaultHelp =
    "What goes wrong, as often as needed: lost=N, reordered=N, duplicated=N (stream packets per thousand), delay=MS "
    "(of images), slow=MS (of commands), die=N (silent for good in the N-th image), silent (answers nothing), mtu=N "
    "(larger "
    "datagrams vanish on the way), nostream (no stream packet arrives), notest (sends no test packets)";

std::uint32_t FaultValue(const std::string& fault, std::size_t equals, std::uint32_t most)
{
    const std::string text = equals == std::string::npos ? "" : fault.substr(equals + 1);
    const bool isNumber = !text.empty() && text.size() <= 10 && text.find_first_not_of("0123456789") == text.npos;
    const unsigned long long value = isNumber ? std::stoull(text) : 0;
    if (!isNumber || value > most)
    {
        GENICAM_THROW(InvalidArgumentException,
                      "The fault '" + fault + "' needs a number from 0 to " + std::to_string(most) + ".");
    }
    return static_cast<std::uint32_t>(value);
}

SNetworkFaults ReadFaults(const std::vector<std::string>& texts)
{
    constexpr std::uint32_t thousand = 1000;
    constexpr std::uint32_t mostMs = 60'000;
    constexpr std::uint32_t mostMtu = 0xFFFF;
    SNetworkFaults faults;
    for (const std::string& text : texts)
    {
        const std::size_t equals = text.find('=');
        const std::string name = text.substr(0, equals);
        if (name == "lost")
        {
            faults.lostPerThousand = FaultValue(text, equals, thousand);
        }
        else if (name == "reordered")
        {
            faults.reorderedPerThousand = FaultValue(text, equals, thousand);
        }
        else if (name == "duplicated")
        {
            faults.duplicatedPerThousand = FaultValue(text, equals, thousand);
        }
        else if (name == "delay")
        {
            faults.delayMs = FaultValue(text, equals, mostMs);
        }
        else if (name == "slow")
        {
            faults.commandMs = FaultValue(text, equals, mostMs);
        }
        else if (name == "die")
        {
            faults.dieInFrame = FaultValue(text, equals, std::numeric_limits<std::uint32_t>::max());
        }
        else if (name == "mtu")
        {
            faults.pathMtu = FaultValue(text, equals, mostMtu);
        }
        else if (text == "silent")
        {
            faults.isSilent = true;
        }
        else if (text == "nostream")
        {
            faults.isStreamBlocked = true;
        }
        else if (text == "notest")
        {
            faults.hasNoTestPackets = true;
        }
        else
        {
            GENICAM_THROW(InvalidArgumentException, "There is no fault '" + text + "'. " + FaultHelp + ".");
        }
    }
    return faults;
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
    app.add_option("-f,--fault", options.faults, FaultHelp)->allow_extra_args(false);
    app.add_option("-l,--link-speed", options.linkMegabits, "Mbit/s at which a camera sends; 0: as fast as it can")
        ->check(CLI::Range(0.0, MostMegabits))
        ->capture_default_str();
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
        configs = Simulator::ReadData(Simulator::ReadFile(options.configFile)).cameras;
        if (options.count.value_or(configs.size()) > configs.size() || configs.empty())
        {
            GENICAM_THROW(InvalidArgumentException, "'" + options.configFile + "' describes " +
                                                        std::to_string(configs.size()) + " cameras, which is too few.");
        }
        configs.resize(options.count.value_or(configs.size()));
    }
    Continue(addresses, configs.size());
    const SNetworkFaults faults = ReadFaults(options.faults);
    constexpr double bitsPerMegabit = 1.0e6;
    std::vector<SServedCamera> cameras;
    for (std::size_t i = 0; i < configs.size(); ++i)
    {
        SServedCamera camera;
        camera.config = configs[i];
        camera.address = addresses[i];
        camera.faults = faults;
        camera.linkBitsPerSecond = static_cast<std::uint64_t>(std::llround(options.linkMegabits * bitsPerMegabit));
        cameras.push_back(camera);
    }
    return cameras;
}

} // namespace GigECamera
