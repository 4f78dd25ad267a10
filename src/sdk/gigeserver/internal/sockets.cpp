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

namespace
{

sockaddr_in AddressOf(int socket)
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    return getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length) == 0 ? address : sockaddr_in{};
}

} // namespace

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
    return ntohs(AddressOf(socket).sin_port);
}

void SendDatagram(int socket, const std::vector<std::uint8_t>& datagram, std::uint32_t ip, std::uint16_t port,
                  unsigned int adapterIndex)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(ip);
    address.sin_port = htons(port);
    iovec part{const_cast<std::uint8_t*>(datagram.data()), datagram.size()};
    msghdr message{};
    message.msg_name = &address;
    message.msg_namelen = sizeof address;
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(in_pktinfo))] = {};
    if (adapterIndex != 0)
    {
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr* pHeader = CMSG_FIRSTHDR(&message);
        pHeader->cmsg_level = IPPROTO_IP;
        pHeader->cmsg_type = IP_PKTINFO;
        pHeader->cmsg_len = CMSG_LEN(sizeof(in_pktinfo));
        in_pktinfo info{};
        info.ipi_ifindex = static_cast<int>(adapterIndex);
        info.ipi_spec_dst = AddressOf(socket).sin_addr; // otherwise the adapter's first address is the sender
        std::memcpy(CMSG_DATA(pHeader), &info, sizeof info);
    }
    // A refusal that an earlier answer drew is reported by the next call; the second try is the real one.
    for (int attempt = 0; attempt < 2 && sendmsg(socket, &message, MSG_NOSIGNAL) < 0; ++attempt)
    {
    }
}

} // namespace GigEServer::Internal
