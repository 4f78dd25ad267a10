// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/receiveall.h"
#include "gigeserver/internal/sockets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <poll.h>
#include <unistd.h>

using namespace GigEServer::Internal;
using ::testing::ElementsAre;

namespace
{

constexpr std::uint32_t Loopback = 0x7F000001;

/** A datagram of one byte that has arrived when this returns. */
void Give(int receiver, std::uint8_t byte)
{
    constexpr int patienceMs = 30'000;
    const int sender = OpenSocket(Loopback, 0, false);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(Loopback);
    address.sin_port = htons(PortOf(receiver));
    EXPECT_EQ(sendto(sender, &byte, 1, 0, reinterpret_cast<const sockaddr*>(&address), sizeof address), 1);
    pollfd entry{receiver, POLLIN, 0};
    EXPECT_EQ(poll(&entry, 1, patienceMs), 1);
    close(sender);
}

} // namespace

TEST(ReceiveAll, handsOverEveryDatagramThatWaits)
{
    const int socket = OpenSocket(Loopback, 0, false);
    std::vector<int> bytes;
    Give(socket, 1);
    ReceiveAll(socket,
               [&](const std::uint8_t* data, std::size_t, const SPeer& peer)
               {
                   EXPECT_EQ(peer.ip, Loopback);
                   bytes.push_back(data[0]);
                   if (data[0] < 3)
                   {
                       Give(socket, static_cast<std::uint8_t>(data[0] + 1));
                   }
               });
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3));
    close(socket);
}

TEST(ReceiveAll, readsNothingFromAnotherSocketThatGotTheNumberOfAClosedOne)
{
    int socket = OpenSocket(Loopback, 0, false);
    const int number = socket;
    std::vector<int> bytes;
    Give(socket, 1);
    ReceiveAll(socket,
               [&](const std::uint8_t* data, std::size_t, const SPeer&)
               {
                   bytes.push_back(data[0]);
                   const int messages = OpenSocket(Loopback, 0, false);
                   socket = OpenSocket(Loopback, 0, false);
                   ASSERT_EQ(dup2(messages, number), number);
                   close(messages);
                   Give(number, 2);
               });
    EXPECT_THAT(bytes, ElementsAre(1));
    close(socket);
    close(number);
}
