// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/fakecamera.h"

#include "support/networknamespace.h"

#include <gtest/gtest.h>

#include <chrono>
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

bool IsAddressInUse(const std::string& address)
{
    std::ifstream table("/proc/self/net/udp");
    for (std::string line; std::getline(table, line);)
    {
        if (line.find(address) != std::string::npos)
        {
            return true;
        }
    }
    return false;
}

} // namespace

CFakeCamera::CFakeCamera(std::string serialNumber) : m_serialNumber(std::move(serialNumber))
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
    m_pProcess = std::make_unique<CChildProcess>(
        std::vector<std::string>{"arv-fake-gv-camera-0.8", "-i", "127.0.0.1", "-s", m_serialNumber});
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!IsAddressInUse("0100007F:0F74")) // 127.0.0.1:3956 as the kernel writes it
    {
        if (!m_pProcess->IsRunning() || std::chrono::steady_clock::now() > deadline)
        {
            throw std::runtime_error("arv-fake-gv-camera-0.8 does not listen on 127.0.0.1:3956");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the kernel's table can only be polled
    }
}

} // namespace Test
