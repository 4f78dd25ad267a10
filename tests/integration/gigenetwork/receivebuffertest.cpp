// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/fakecamera.h"
#include "support/gigeclient.h"
#include "support/warnings.h"
#include "transports/gige/gigetransport.h"
#include "transports/gige/internal/socketbuffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <memory>
#include <sys/socket.h>

using namespace Velmo;
using GigE::Internal::PretendReceiveBufferLimit;
using Test::CFakeCamera;
using Test::CGigEClient;
using Test::CWarnings;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace
{

constexpr int imageBytes = 512 * 512; // the camera's own setting
constexpr int wantedBytes = 1 << 20;  // two images are less than the least

/** Receive buffers of this process's UDP sockets, the largest last. */
std::vector<int> ReceiveBuffers()
{
    std::vector<int> buffers;
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(opendir("/proc/self/fd"), &closedir);
    while (const dirent* pEntry = readdir(pFolder.get()))
    {
        const int descriptor = std::atoi(pEntry->d_name);
        int domain = 0;
        int type = 0;
        int bytes = 0;
        socklen_t length = sizeof(int);
        if (getsockopt(descriptor, SOL_SOCKET, SO_DOMAIN, &domain, &length) == 0 && domain == AF_INET &&
            getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &length) == 0 && type == SOCK_DGRAM &&
            getsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &bytes, &length) == 0)
        {
            buffers.push_back(bytes);
        }
    }
    std::sort(buffers.begin(), buffers.end());
    return buffers;
}

class GigEReceiveBuffer : public ::testing::Test
{
protected:
    void SetUp() override { GigE::SetAdapters({"127.0.0.1"}); }
    void TearDown() override
    {
        PretendReceiveBufferLimit(0);
        GigE::SetAdapters({});
    }

    CFakeCamera m_camera;
    CGigEClient m_client;
};

} // namespace

TEST_F(GigEReceiveBuffer, hasItsSizeBeforeTheCameraSendsAnything)
{
    const auto pDevice = m_client.Open("GV77");
    Transport::IStream& stream = *pDevice->GetStream(0);
    stream.Open();
    ASSERT_EQ(stream.GetPayloadBytes(), static_cast<std::size_t>(imageBytes));
    ASSERT_FALSE(ReceiveBuffers().empty());
    ASSERT_LT(ReceiveBuffers().back(), wantedBytes) << "the system's default is large enough already";
    stream.Start();
    EXPECT_GE(ReceiveBuffers().back(), wantedBytes);
    stream.Stop();
}

TEST_F(GigEReceiveBuffer, thatTheSystemCapsIsLoggedWithTheRemedy)
{
    const auto pDevice = m_client.Open("GV77");
    Transport::IStream& stream = *pDevice->GetStream(0);
    stream.Open();
    PretendReceiveBufferLimit(300000);
    CWarnings warnings;
    stream.Start();
    stream.Stop();
    EXPECT_THAT(warnings.Lines(), ElementsAre(AllOf(HasSubstr("GV77"), HasSubstr("allows 300000"),
                                                    HasSubstr("sysctl -w net.core.rmem_max=1048576"))));
}

TEST_F(GigEReceiveBuffer, thatIsLargeEnoughIsNotTalkedAbout)
{
    const auto pDevice = m_client.Open("GV77");
    Transport::IStream& stream = *pDevice->GetStream(0);
    stream.Open();
    PretendReceiveBufferLimit(wantedBytes);
    CWarnings warnings;
    stream.Start();
    stream.Stop();
    EXPECT_THAT(warnings.Lines(), IsEmpty());
}
