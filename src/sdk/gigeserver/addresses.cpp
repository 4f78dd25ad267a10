// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "gigeserver/servedcamera.h"
#include "protocols/gvcp.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

namespace GigEServer
{

namespace
{

struct SAdapterAddress
{
    std::string adapter;
    SAddress address;
};

std::uint32_t IpOf(const sockaddr* pAddress)
{
    return ntohl(reinterpret_cast<const sockaddr_in*>(pAddress)->sin_addr.s_addr);
}

std::vector<SAdapterAddress> ListAddresses()
{
    std::vector<SAdapterAddress> list;
    ifaddrs* pFirst = nullptr;
    if (getifaddrs(&pFirst) != 0)
    {
        return list;
    }
    for (const ifaddrs* p = pFirst; p != nullptr; p = p->ifa_next)
    {
        if (p->ifa_addr == nullptr || p->ifa_netmask == nullptr || p->ifa_addr->sa_family != AF_INET)
        {
            continue;
        }
        SAdapterAddress entry;
        entry.adapter = p->ifa_name;
        entry.address.ip = IpOf(p->ifa_addr);
        entry.address.subnetMask = IpOf(p->ifa_netmask);
        entry.address.broadcast = entry.address.ip | ~entry.address.subnetMask;
        entry.address.adapterIndex = if_nametoindex(p->ifa_name);
        list.push_back(entry);
    }
    freeifaddrs(pFirst);
    return list;
}

} // namespace

SAddress FindAddress(const std::string& ip)
{
    std::uint32_t wanted = 0;
    if (!Velmo::Gvcp::ParseIp(ip, wanted))
    {
        GENICAM_THROW(InvalidArgumentException, "'" + ip + "' is no IPv4 address.");
    }
    constexpr std::uint32_t loopbackNetwork = 127;
    for (const SAdapterAddress& entry : ListAddresses())
    {
        const bool isLoopback = entry.address.ip >> 24 == loopbackNetwork && wanted >> 24 == loopbackNetwork;
        if (entry.address.ip == wanted || isLoopback)
        {
            SAddress address = entry.address;
            address.ip = wanted;
            return address;
        }
    }
    GENICAM_THROW(RuntimeException, "No network adapter of this computer has the address " + ip + ".");
}

std::vector<SAddress> FindAdapter(const std::string& name)
{
    std::vector<SAddress> addresses;
    for (const SAdapterAddress& entry : ListAddresses())
    {
        if (entry.adapter == name)
        {
            addresses.push_back(entry.address);
        }
    }
    if (addresses.empty())
    {
        GENICAM_THROW(RuntimeException, "There is no network adapter '" + name + "' with an IPv4 address.");
    }
    return addresses;
}

} // namespace GigEServer
