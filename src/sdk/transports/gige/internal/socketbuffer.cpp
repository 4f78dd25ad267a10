// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/socketbuffer.h"

#include "transport/log.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
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

std::atomic<std::size_t>& PretendedLimit()
{
    static std::atomic<std::size_t> bytes{0};
    return bytes;
}

bool IsUdpSocketAt(int descriptor, std::uint32_t ip, std::uint16_t port)
{
    int type = 0;
    socklen_t typeBytes = sizeof type;
    sockaddr_in address{};
    socklen_t addressBytes = sizeof address;
    return getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &typeBytes) == 0 && type == SOCK_DGRAM &&
           getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &addressBytes) == 0 &&
           address.sin_family == AF_INET && ntohl(address.sin_addr.s_addr) == ip && ntohs(address.sin_port) == port;
}

} // namespace

std::size_t ReceiveBufferLimit()
{
    if (const std::size_t pretended = PretendedLimit(); pretended != 0)
    {
        return pretended;
    }
    std::ifstream file("/proc/sys/net/core/rmem_max");
    std::size_t limit = 0;
    file >> limit;
    return limit;
}

void PretendReceiveBufferLimit(std::size_t bytes)
{
    PretendedLimit() = bytes;
}

SSocketBuffer ChooseSocketBuffer(std::size_t payloadBytes, std::size_t limitBytes)
{
    constexpr std::size_t least = std::size_t{1} << 20;
    constexpr std::size_t ample = std::size_t{8} << 20;
    constexpr std::size_t most = std::size_t{1} << 30; // the option is an int, which the kernel doubles
    SSocketBuffer size;
    size.wantedBytes = std::min(most, std::max(least, payloadBytes > most ? most : 2 * payloadBytes));
    size.bytes = std::max(size.wantedBytes, ample);
    if (limitBytes != 0)
    {
        size.bytes = std::min(size.bytes, limitBytes);
    }
    return size;
}

std::size_t SizeSocketBuffer(const std::string& cameraName, std::size_t payloadBytes)
{
    const SSocketBuffer size = ChooseSocketBuffer(payloadBytes, ReceiveBufferLimit());
    if (size.bytes < size.wantedBytes)
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + cameraName + ": the receive buffer should have " + std::to_string(size.wantedBytes) +
                " bytes, but net.core.rmem_max allows " + std::to_string(size.bytes) +
                "; images may be lost. Raise it with sysctl -w net.core.rmem_max=" + std::to_string(size.wantedBytes));
    }
    return size.bytes;
}

std::size_t SizeMulticastSocketBuffer(const std::string& cameraName, std::size_t payloadBytes)
{
    constexpr std::size_t plenty = std::size_t{32} << 20;
    const std::size_t least = SizeSocketBuffer(cameraName, payloadBytes);
    const std::size_t limit = ReceiveBufferLimit();
    return std::max(least, limit == 0 ? plenty : std::min(plenty, limit));
}

bool ApplySocketBuffer(std::uint32_t ip, std::uint16_t port, std::size_t bytes)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> pFolder(opendir("/proc/self/fd"), &closedir);
    if (pFolder == nullptr)
    {
        return false;
    }
    while (const dirent* pEntry = readdir(pFolder.get()))
    {
        const int descriptor = std::atoi(pEntry->d_name);
        if (descriptor > 2 && IsUdpSocketAt(descriptor, ip, port))
        {
            const int size = static_cast<int>(bytes);
            return setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &size, sizeof size) == 0;
        }
    }
    return false;
}

} // namespace Velmo::GigE::Internal
