// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/sockets.h"

#include "genapi/exceptions.h"
#include "protocols/gvcp.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace GigEServer::Internal
{

int OpenSocket(std::uint32_t ip, std::uint16_t port, bool isShared)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(ip);
    address.sin_port = htons(port);
    const int on = 1;
    const bool isBound = descriptor >= 0 && setsockopt(descriptor, SOL_SOCKET, SO_BROADCAST, &on, sizeof on) == 0 &&
                         setsockopt(descriptor, IPPROTO_IP, IP_PKTINFO, &on, sizeof on) == 0 &&
                         (!isShared || setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) == 0) &&
                         bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    if (!isBound)
    {
        const std::string reason = std::strerror(errno);
        if (descriptor >= 0)
        {
            close(descriptor);
        }
        GENICAM_THROW(RuntimeException, "The address " + Velmo::Gvcp::IpText(ip) + ", UDP port " +
                                            std::to_string(port) + ", cannot be used: " + reason + ".");
    }
    return descriptor;
}

std::uint16_t PortOf(int socket)
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    return getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length) == 0 ? ntohs(address.sin_port)
                                                                                    : std::uint16_t{0};
}

} // namespace GigEServer::Internal
