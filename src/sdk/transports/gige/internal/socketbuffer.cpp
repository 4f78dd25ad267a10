// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/socketbuffer.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <memory>
#include <netinet/in.h>
#include <sys/socket.h>

namespace Velmo::GigE::Internal
{

namespace
{

/** The largest receive buffer that a process may ask for; 0 when the system does not tell. */
std::size_t SystemLimit()
{
    std::ifstream file("/proc/sys/net/core/rmem_max");
    std::size_t limit = 0;
    file >> limit;
    return limit;
}

bool IsUdpSocketOfPort(int descriptor, std::uint16_t port)
{
    int type = 0;
    socklen_t typeBytes = sizeof type;
    sockaddr_in address{};
    socklen_t addressBytes = sizeof address;
    return getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &typeBytes) == 0 && type == SOCK_DGRAM &&
           getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &addressBytes) == 0 &&
           address.sin_family == AF_INET && ntohs(address.sin_port) == port;
}

} // namespace

SSocketBuffer ChooseSocketBuffer(std::size_t payloadBytes)
{
    constexpr std::size_t least = std::size_t{1} << 20;
    constexpr std::size_t most = std::size_t{1} << 30; // the option is an int, which the kernel doubles
    SSocketBuffer size;
    size.wantedBytes = std::min(most, std::max(least, payloadBytes > most ? most : 2 * payloadBytes));
    const std::size_t limit = SystemLimit();
    size.bytes = limit == 0 ? size.wantedBytes : std::min(size.wantedBytes, limit);
    return size;
}

bool ApplySocketBuffer(std::uint16_t port, std::size_t bytes)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(opendir("/proc/self/fd"), &closedir);
    if (pFolder == nullptr)
    {
        return false;
    }
    while (const dirent* pEntry = readdir(pFolder.get()))
    {
        const int descriptor = std::atoi(pEntry->d_name);
        if (descriptor > 2 && IsUdpSocketOfPort(descriptor, port))
        {
            const int size = static_cast<int>(bytes);
            return setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &size, sizeof size) == 0;
        }
    }
    return false;
}

} // namespace Velmo::GigE::Internal
