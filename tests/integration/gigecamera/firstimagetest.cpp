// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "transports/gige/gigetransport.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Velmo;
using Test::CCameraProgram;
using Test::CGigEClient;
using Test::CRunningStream;
using Test::Execute;
using Test::GetInteger;
using Test::WriteConfig;
using Transport::EResultStatus;
using Transport::SStreamResult;

namespace
{

constexpr int strayImages = 10; // as many as there are buffers

/** The leaders of images of a kind that nobody knows, to a port of this computer. */
void SendStrayLeaders(std::uint16_t port)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    to.sin_port = htons(port);
    constexpr int first = 201; // so far off that the camera's own are not taken for late ones
    for (int image = first; image < first + strayImages; ++image)
    {
        std::array<std::uint8_t, 44> leader{};
        leader[3] = static_cast<std::uint8_t>(image); // block ID
        leader[4] = 1;                                // packet format: leader
        leader[10] = 0x7F;                            // payload type
        EXPECT_EQ(sendto(descriptor, leader.data(), leader.size(), 0, reinterpret_cast<sockaddr*>(&to), sizeof to),
                  static_cast<ssize_t>(leader.size()));
    }
    close(descriptor);
}

std::atomic<bool> g_isNetworkBusy{false};

/** Sockets of this process that see a network's packets before its UDP sockets do. */
int CountPacketSockets()
{
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
    {
        int domain = 0;
        socklen_t bytes = sizeof domain;
        const int descriptor = std::atoi(entry.path().filename().c_str());
        if (getsockopt(descriptor, SOL_SOCKET, SO_DOMAIN, &domain, &bytes) == 0 && domain == AF_PACKET)
        {
            ++count;
        }
    }
    return count;
}

/** A camera that sends when it is told, to an application that may open packet sockets, as root or with CAP_NET_RAW. */
class GigEFirstImage : public ::testing::Test
{
protected:
    void SetUp() override
    {
        GigE::SetAdapters({"127.0.0.1"});
        const int descriptor = socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
        ASSERT_GE(descriptor, 0) << "in a network namespace of its own the test may";
        close(descriptor);
    }
    void TearDown() override { GigE::SetAdapters({}); }

    const CCameraProgram m_cameras{{"--config", WriteConfig(R"("TriggerMode": "On", "TriggerSource": "Software")")}};
    CGigEClient m_client;
};

} // namespace

/** In place of the C library's, for the libraries too: on a busy network a packet socket has others' packets before it
 *  can say which it wants. */
extern "C" __attribute__((visibility("default"))) int setsockopt(int descriptor, int level, int option,
                                                                 const void* pValue, socklen_t bytes) noexcept
{
    if (level == SOL_SOCKET && option == SO_ATTACH_FILTER && g_isNetworkBusy)
    {
        SendStrayLeaders(4000);
    }
    return static_cast<int>(syscall(SYS_setsockopt, descriptor, level, option, pValue, bytes));
}

TEST_F(GigEFirstImage, arrivesAlsoOnABusyNetwork)
{
    const std::unique_ptr<IVelmoDevice> pDevice = m_client.Open("GC-1");
    g_isNetworkBusy = true;
    CRunningStream stream(*pDevice, strayImages);
    g_isNetworkBusy = false;
    Execute(*pDevice, "TriggerSoftware");
    const SStreamResult result = stream.Next();
    EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
    EXPECT_EQ(result.blockId, 1U);
}

TEST_F(GigEFirstImage, isTakenFromTheSocketThatIsThereBeforeTheCameraSends)
{
    const std::unique_ptr<IVelmoDevice> pDevice = m_client.Open("GC-1");
    CRunningStream stream(*pDevice);
    for (std::uint64_t image = 1; image <= 3; ++image)
    {
        Execute(*pDevice, "TriggerSoftware");
        ASSERT_EQ(stream.Next().status, EResultStatus::Ok);
    }
    EXPECT_EQ(CountPacketSockets(), 0);
}

TEST_F(GigEFirstImage, arrivesAlsoAfterPacketsThatAreNotTheCameras)
{
    const std::unique_ptr<IVelmoDevice> pDevice = m_client.Open("GC-1");
    CRunningStream stream(*pDevice, strayImages);
    SendStrayLeaders(static_cast<std::uint16_t>(GetInteger(*pDevice->GetNodeMap(), "GevSCPHostPort")));
    for (int image = 0; image < strayImages; ++image)
    {
        const SStreamResult stray = stream.Next();
        EXPECT_EQ(stray.status, EResultStatus::Failed);
        EXPECT_EQ(stray.errorDescription, "The image is of a kind that cannot be received.");
    }
    Execute(*pDevice, "TriggerSoftware");
    const SStreamResult result = stream.Next();
    EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
    EXPECT_EQ(result.blockId, 1U);
    EXPECT_EQ(result.payloadBytes, 640U * 480U);
    EXPECT_EQ(stream.Statistic("StreamLostFrameCount"), 0);
}
