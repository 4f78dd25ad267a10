// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/udpsocket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

sockaddr_in MakeAddress(std::uint32_t ip, std::uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(ip);
    address.sin_port = htons(port);
    return address;
}

} // namespace

CUdpSocket::~CUdpSocket()
{
    Close();
}

CUdpSocket::CUdpSocket(CUdpSocket&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)), m_error(std::move(other.m_error))
{
}

CUdpSocket& CUdpSocket::operator=(CUdpSocket&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_error, other.m_error);
    return *this;
}

bool CUdpSocket::Bind(std::uint32_t ip, std::uint16_t port, bool isShared)
{
    Close();
    m_descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int on = 1;
    const sockaddr_in address = MakeAddress(ip, port);
    const bool isBound = m_descriptor >= 0 && setsockopt(m_descriptor, SOL_SOCKET, SO_BROADCAST, &on, sizeof on) == 0 &&
                         (!isShared || setsockopt(m_descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) == 0) &&
                         bind(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    if (!isBound)
    {
        m_error = std::strerror(errno);
        Close();
    }
    return isBound;
}

void CUdpSocket::Close()
{
    if (m_descriptor >= 0)
    {
        close(m_descriptor);
        m_descriptor = -1;
    }
}

std::uint16_t CUdpSocket::GetPort() const
{
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (getsockname(m_descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0)
    {
        return 0;
    }
    return ntohs(address.sin_port);
}

bool CUdpSocket::Send(const Gvcp::Bytes& packet, std::uint32_t ip, std::uint16_t port, unsigned int adapterIndex)
{
    sockaddr_in address = MakeAddress(ip, port);
    iovec part{const_cast<std::uint8_t*>(packet.data()), packet.size()};
    msghdr message{};
    message.msg_name = &address;
    message.msg_namelen = sizeof address;
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(in_pktinfo))] = {};
    if (adapterIndex != 0)
    {
        // The routing table knows one way for a limited broadcast only; each adapter must send its own.
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr* pHeader = CMSG_FIRSTHDR(&message);
        pHeader->cmsg_level = IPPROTO_IP;
        pHeader->cmsg_type = IP_PKTINFO;
        pHeader->cmsg_len = CMSG_LEN(sizeof(in_pktinfo));
        in_pktinfo info{};
        info.ipi_ifindex = static_cast<int>(adapterIndex);
        // Without it the adapter's first address is the sender, and answers go past a socket bound to another one.
        sockaddr_in own{};
        socklen_t length = sizeof own;
        if (getsockname(m_descriptor, reinterpret_cast<sockaddr*>(&own), &length) == 0)
        {
            info.ipi_spec_dst = own.sin_addr;
        }
        std::memcpy(CMSG_DATA(pHeader), &info, sizeof info);
    }
    // A refusal that an earlier datagram drew is reported by the next call; the second try is the real one.
    for (int attempt = 0; attempt < 2; ++attempt)
    {
        if (sendmsg(m_descriptor, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(packet.size()))
        {
            return true;
        }
        if (errno != ECONNREFUSED && errno != EINTR)
        {
            break;
        }
    }
    m_error = std::strerror(errno);
    return false;
}

std::size_t CUdpSocket::Receive(std::uint8_t* data, std::size_t bytes, std::uint32_t& senderIp,
                                std::uint16_t& senderPort)
{
    for (int attempt = 0; attempt < 4; ++attempt)
    {
        sockaddr_in address{};
        socklen_t length = sizeof address;
        const ssize_t received = recvfrom(m_descriptor, data, bytes, 0, reinterpret_cast<sockaddr*>(&address), &length);
        if (received > 0)
        {
            senderIp = ntohl(address.sin_addr.s_addr);
            senderPort = ntohs(address.sin_port);
            return static_cast<std::size_t>(received);
        }
        if (received < 0 && errno != ECONNREFUSED && errno != EINTR)
        {
            return 0;
        }
    }
    return 0;
}

} // namespace Velmo::GigE::Internal
