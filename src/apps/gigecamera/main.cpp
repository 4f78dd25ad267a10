// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "gigecamera/options.h"
#include "gigeserver/server.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace
{

/** The signals that end the program, blocked in all threads that are started from now on. */
sigset_t BlockEndSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

std::string IpText(std::uint32_t ip)
{
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
    {
        text += std::to_string(ip >> shift & 0xFF) + (shift > 0 ? "." : "");
    }
    return text;
}

void Run(const GigECamera::SOptions& options)
{
    const std::vector<GigEServer::SServedCamera> cameras = GigECamera::MakeCameras(options);
    const sigset_t endSignals = BlockEndSignals();
    const GigEServer::CServer server(cameras);
    for (const GigEServer::SServedCamera& camera : cameras)
    {
        std::printf("%s %s (%s) is ready\n", IpText(camera.address.ip).c_str(), camera.config.modelName.c_str(),
                    camera.config.serialNumber.c_str());
    }
    std::fflush(stdout);
    int signal = 0;
    sigwait(&endSignals, &signal);
    for (std::size_t i = 0; i < cameras.size(); ++i)
    {
        const GigEServer::SCounters sent = server.GetCounters(i);
        std::printf("%s sent %llu images, %llu packets, %llu of them again; %llu left out, %llu refused by the system, "
                    "%llu requests missed; %llu events, %llu lost\n",
                    IpText(cameras[i].address.ip).c_str(), static_cast<unsigned long long>(sent.blocks),
                    static_cast<unsigned long long>(sent.packets), static_cast<unsigned long long>(sent.resentPackets),
                    static_cast<unsigned long long>(sent.lostPackets),
                    static_cast<unsigned long long>(sent.refusedPackets),
                    static_cast<unsigned long long>(sent.missedRequests), static_cast<unsigned long long>(sent.events),
                    static_cast<unsigned long long>(sent.lostEvents));
    }
}

} // namespace

int main(int argc, char** argv)
{
    GigECamera::SOptions options;
    int exitCode = 0;
    if (!GigECamera::ParseCommandLine(argc, argv, options, exitCode))
    {
        return exitCode;
    }
    try
    {
        options.firmware.empty() ? Run(options) : GigECamera::WriteFirmware(options);
        return EXIT_SUCCESS;
    }
    catch (const GenICam::GenericException& error)
    {
        std::fprintf(stderr, "gigecamera: %s\n", error.GetDescription());
        return EXIT_FAILURE;
    }
}
