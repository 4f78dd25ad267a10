// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/socketbuffer.h"

#include "transports/gige/internal/udpsocket.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/socket.h>

using namespace Velmo::GigE::Internal;

namespace
{
constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr std::uint32_t loopback = 0x7F000001;

int ReceiveBuffer(const CUdpSocket& socket)
{
    int bytes = 0;
    socklen_t length = sizeof bytes;
    EXPECT_EQ(getsockopt(socket.GetDescriptor(), SOL_SOCKET, SO_RCVBUF, &bytes, &length), 0);
    return bytes;
}
} // namespace

TEST(GigESocketBuffer, holdsTwoImagesAndAtLeastAMebibyte)
{
    EXPECT_EQ(ChooseSocketBuffer(0, 0).wantedBytes, mebibyte);
    EXPECT_EQ(ChooseSocketBuffer(1000, 0).wantedBytes, mebibyte);
    EXPECT_EQ(ChooseSocketBuffer(6 * mebibyte, 0).wantedBytes, 12 * mebibyte);
    EXPECT_EQ(ChooseSocketBuffer(6 * mebibyte, 0).bytes, 12 * mebibyte);
    EXPECT_EQ(ChooseSocketBuffer(SIZE_MAX, 0).bytes, 1024 * mebibyte);
}

TEST(GigESocketBuffer, takesMoreThanIsWantedAsFarAsTheSystemAllows)
{
    EXPECT_EQ(ChooseSocketBuffer(1000, 0).bytes, 8 * mebibyte);
    EXPECT_EQ(ChooseSocketBuffer(1000, 4 * mebibyte).bytes, 4 * mebibyte);
    EXPECT_EQ(ChooseSocketBuffer(1000, 4 * mebibyte).wantedBytes, mebibyte);
    EXPECT_EQ(ChooseSocketBuffer(1000, 64 * mebibyte).bytes, 8 * mebibyte);
}

TEST(GigESocketBuffer, isCappedByTheSystemsLimitWhichIsTold)
{
    const SSocketBuffer capped = ChooseSocketBuffer(4 * mebibyte, 212992);
    EXPECT_EQ(capped.bytes, 212992u);
    EXPECT_EQ(capped.wantedBytes, 8 * mebibyte);
    const SSocketBuffer enough = ChooseSocketBuffer(4 * mebibyte, 8 * mebibyte);
    EXPECT_EQ(enough.bytes, enough.wantedBytes);
}

TEST(GigESocketBuffer, limitIsTheKernels)
{
    std::size_t kernels = 0;
    std::ifstream("/proc/sys/net/core/rmem_max") >> kernels;
    ASSERT_GT(kernels, 0u);
    EXPECT_EQ(ReceiveBufferLimit(), kernels);
    PretendReceiveBufferLimit(4711);
    EXPECT_EQ(ReceiveBufferLimit(), 4711u);
    PretendReceiveBufferLimit(0);
    EXPECT_EQ(ReceiveBufferLimit(), kernels);
}

TEST(GigESocketBuffer, socketIsFoundByItsAddressAndNotByItsPortAlone)
{
    CUdpSocket first;
    CUdpSocket second;
    ASSERT_TRUE(first.Bind(loopback)) << first.GetError();
    ASSERT_TRUE(second.Bind(loopback + 1, first.GetPort())) << second.GetError();
    const int before = ReceiveBuffer(first);
    constexpr std::size_t wanted = 8192;
    EXPECT_TRUE(ApplySocketBuffer(loopback + 1, first.GetPort(), wanted));
    EXPECT_EQ(ReceiveBuffer(first), before);
    EXPECT_EQ(ReceiveBuffer(second), static_cast<int>(2 * wanted)); // the kernel doubles it for its own needs
    EXPECT_FALSE(ApplySocketBuffer(loopback + 2, first.GetPort(), wanted));
}
