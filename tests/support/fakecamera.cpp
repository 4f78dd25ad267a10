// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/fakecamera.h"

#include "support/networknamespace.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Test
{

namespace
{

class CNetworkEnvironment : public ::testing::Environment
{
public:
    void SetUp() override { EnterOwnNetworkNamespace(); }
};

const auto* const pEnvironment = ::testing::AddGlobalTestEnvironment(new CNetworkEnvironment);

/** "127.0.0.1" and the GVCP port as the kernel's table of the calling thread's namespace writes them. */
std::string KernelText(const std::string& address)
{
    in_addr ip{};
    if (inet_pton(AF_INET, address.c_str(), &ip) != 1)
    {
        throw std::runtime_error("\"" + address + "\" is no IPv4 address");
    }
    char text[16];
    std::snprintf(text, sizeof text, "%08X:0F74", ip.s_addr); // 3956
    return text;
}

bool IsInUse(const std::string& kernelText)
{
    std::ifstream table("/proc/thread-self/net/udp");
    for (std::string line; std::getline(table, line);)
    {
        if (line.find(kernelText) != std::string::npos)
        {
            return true;
        }
    }
    return false;
}

} // namespace

CFakeCamera::CFakeCamera(std::string serialNumber, SFakeCameraPlace place)
    : m_serialNumber(std::move(serialNumber)), m_place(std::move(place))
{
    Start();
}

void CFakeCamera::Restart()
{
    m_pProcess.reset();
    Start();
}

void CFakeCamera::Start()
{
    if (m_place.pNamespace == nullptr)
    {
        StartHere();
    }
    else
    {
        m_place.pNamespace->Visit([this] { StartHere(); });
    }
}

void CFakeCamera::StartHere()
{
    m_pProcess = std::make_unique<CChildProcess>(std::vector<std::string>{"arv-fake-gv-camera-0.8", "-i",
                                                                          m_place.address, "-s", m_serialNumber, "-r",
                                                                          std::to_string(m_place.lostPerThousand)});
    const std::string listening = KernelText(m_place.address);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!IsInUse(listening))
    {
        if (!m_pProcess->IsRunning() || std::chrono::steady_clock::now() > deadline)
        {
            throw std::runtime_error("arv-fake-gv-camera-0.8 does not listen on " + m_place.address + ":3956");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the kernel's table can only be polled
    }
}

} // namespace Test
