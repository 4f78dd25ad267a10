// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/adapterlink.h"

#include <arpa/inet.h>
#include <cstring>
#include <fstream>
#include <net/if.h>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace Velmo::GigE::Internal
{

namespace
{

/** A number that the system keeps for the adapter in that folder; UnknownLinkValue when it has none. */
std::int64_t ReadSystemNumber(const std::string& adapterFolder, const char* item)
{
    std::ifstream file(adapterFolder + "/" + item);
    std::int64_t value = UnknownLinkValue;
    return file >> value ? value : UnknownLinkValue;
}

} // namespace

std::int64_t ReadMtu(const SAdapter& adapter)
{
    const int handle = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (handle < 0)
    {
        return UnknownLinkValue;
    }
    ifreq request{};
    std::strncpy(request.ifr_name, adapter.name.c_str(), sizeof request.ifr_name - 1);
    const bool isKnown = ioctl(handle, SIOCGIFMTU, &request) == 0;
    close(handle);
    return isKnown ? request.ifr_mtu : UnknownLinkValue;
}

std::int64_t ReadLinkSpeedMbps(const SAdapter& adapter, const std::string& folder)
{
    const std::string adapterFolder = folder + "/" + adapter.name;
    // In a network namespace of its own the process may still see the adapters of another one there.
    if (ReadSystemNumber(adapterFolder, "ifindex") != static_cast<std::int64_t>(adapter.index))
    {
        return UnknownLinkValue;
    }
    const std::int64_t speed = ReadSystemNumber(adapterFolder, "speed");
    return speed > 0 ? speed : UnknownLinkValue;
}

std::uint32_t ReadGateway(const SAdapter& adapter)
{
    const std::ifstream file("/proc/net/route");
    std::ostringstream text;
    text << file.rdbuf();
    return GatewayIn(text.str(), adapter.name);
}

std::uint32_t GatewayIn(const std::string& routes, const std::string& adapterName)
{
    // Columns: adapter, destination, gateway, flags ...; addresses as hexadecimal numbers in network byte order.
    constexpr std::uint32_t isUp = 0x1;       // RTF_UP
    constexpr std::uint32_t hasGateway = 0x2; // RTF_GATEWAY
    std::istringstream lines(routes);
    for (std::string line; std::getline(lines, line);)
    {
        std::istringstream columns(line);
        std::string name;
        std::uint32_t destination = 0;
        std::uint32_t gateway = 0;
        std::uint32_t flags = 0;
        if (columns >> name >> std::hex >> destination >> gateway >> flags && name == adapterName && destination == 0 &&
            (flags & isUp) != 0 && (flags & hasGateway) != 0)
        {
            return ntohl(gateway);
        }
    }
    return 0;
}

} // namespace Velmo::GigE::Internal
