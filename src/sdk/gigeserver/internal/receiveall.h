// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/internal/controlchannel.h"

#include <netinet/in.h>
#include <sys/socket.h>

namespace GigEServer::Internal
{

/** Calls handle with every datagram that waits at the socket, and its sender. Ends when handle gave the camera another
 *  socket: the number of the one before may be something else's by then. */
template <class Handle> void ReceiveAll(const int& socket, Handle handle)
{
    constexpr int mostAtOnce = 256; // so that a flood at one camera cannot keep the others waiting
    const int descriptor = socket;
    std::uint8_t data[2048];
    for (int i = 0; i < mostAtOnce && socket == descriptor; ++i)
    {
        sockaddr_in sender{};
        socklen_t length = sizeof sender;
        const ssize_t bytes =
            recvfrom(descriptor, data, sizeof data, MSG_DONTWAIT, reinterpret_cast<sockaddr*>(&sender), &length);
        if (bytes <= 0)
        {
            return;
        }
        handle(data, static_cast<std::size_t>(bytes), SPeer{ntohl(sender.sin_addr.s_addr), ntohs(sender.sin_port)});
    }
}

} // namespace GigEServer::Internal
