// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/adapters.h"

#include "protocols/gvcp.h"
#include "transports/gige/gigetransport.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdlib>
#include <cstring>
#include <ifaddrs.h>
#include <memory>
#include <mutex>
#include <net/if.h>
#include <netpacket/packet.h>
#include <sstream>

namespace Velmo::GigE::Internal
{

namespace
{

struct SWanted
{
    std::mutex mutex; // guards list
    std::vector<std::string> list;
};

SWanted& Wanted()
{
    static SWanted wanted;
    return wanted;
}

using AddressList = std::unique_ptr<ifaddrs, decltype(&freeifaddrs)>;

std::uint32_t Ipv4Of(const sockaddr* address)
{
    sockaddr_in ipv4{};
    std::memcpy(&ipv4, address, sizeof ipv4);
    return ntohl(ipv4.sin_addr.s_addr);
}

void FillMac(const ifaddrs* list, SAdapter& adapter)
{
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next)
    {
        if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_PACKET || adapter.name != entry->ifa_name)
        {
            continue;
        }
        sockaddr_ll link{};
        std::memcpy(&link, entry->ifa_addr, sizeof link);
        if (link.sll_halen == adapter.mac.size())
        {
            std::copy_n(link.sll_addr, adapter.mac.size(), adapter.mac.begin());
        }
    }
}

bool Matches(const SAdapter& adapter, const std::string& entry)
{
    return entry == adapter.name || entry == adapter.id || entry == Gvcp::IpText(adapter.ip);
}

bool IsUp(const std::string& name)
{
    ifaddrs* raw = nullptr;
    if (getifaddrs(&raw) != 0)
    {
        return false;
    }
    const AddressList list(raw, &freeifaddrs);
    for (const ifaddrs* entry = raw; entry != nullptr; entry = entry->ifa_next)
    {
        if (name == entry->ifa_name)
        {
            return (entry->ifa_flags & IFF_UP) != 0;
        }
    }
    return false;
}

/** The loopback adapter under another address of its network. */
bool MakeLoopbackAlias(const std::vector<SAdapter>& system, const std::string& entry, SAdapter& alias)
{
    std::uint32_t ip = 0;
    if (!Gvcp::ParseIp(entry, ip))
    {
        return false;
    }
    const auto found =
        std::find_if(system.begin(), system.end(),
                     [ip](const SAdapter& adapter) { return adapter.isLoopback && adapter.IsInSubnet(ip); });
    if (found == system.end())
    {
        return false;
    }
    alias = *found;
    alias.ip = ip;
    alias.id = alias.name + "/" + entry;
    return true;
}

} // namespace

std::vector<SAdapter> ListSystemAdapters()
{
    ifaddrs* raw = nullptr;
    if (getifaddrs(&raw) != 0)
    {
        return {};
    }
    const AddressList list(raw, &freeifaddrs);
    std::vector<SAdapter> adapters;
    for (const ifaddrs* entry = raw; entry != nullptr; entry = entry->ifa_next)
    {
        if (entry->ifa_addr == nullptr || entry->ifa_addr->sa_family != AF_INET || (entry->ifa_flags & IFF_UP) == 0)
        {
            continue;
        }
        SAdapter adapter;
        adapter.name = entry->ifa_name;
        adapter.index = if_nametoindex(entry->ifa_name);
        adapter.ip = Ipv4Of(entry->ifa_addr);
        adapter.mask = entry->ifa_netmask == nullptr ? 0xFFFFFFFF : Ipv4Of(entry->ifa_netmask);
        adapter.isLoopback = (entry->ifa_flags & IFF_LOOPBACK) != 0;
        const bool isFurther = std::any_of(adapters.begin(), adapters.end(),
                                           [&adapter](const SAdapter& other) { return other.name == adapter.name; });
        adapter.id = isFurther ? adapter.name + "/" + Gvcp::IpText(adapter.ip) : adapter.name;
        FillMac(raw, adapter);
        adapters.push_back(std::move(adapter));
    }
    return adapters;
}

std::vector<SAdapter> SelectAdapters(const std::vector<SAdapter>& system, const std::vector<std::string>& wanted,
                                     std::vector<std::string>& unknown)
{
    std::vector<SAdapter> selected;
    for (const SAdapter& adapter : system)
    {
        const bool isWanted =
            wanted.empty() ? !adapter.isLoopback
                           : std::any_of(wanted.begin(), wanted.end(),
                                         [&adapter](const std::string& entry) { return Matches(adapter, entry); });
        if (isWanted)
        {
            selected.push_back(adapter);
        }
    }
    for (const std::string& entry : wanted)
    {
        const bool isFound = std::any_of(system.begin(), system.end(),
                                         [&entry](const SAdapter& adapter) { return Matches(adapter, entry); });
        SAdapter alias;
        if (isFound || entry == "none")
        {
            continue;
        }
        if (MakeLoopbackAlias(system, entry, alias))
        {
            selected.push_back(std::move(alias));
        }
        else
        {
            unknown.push_back(entry);
        }
    }
    return selected;
}

std::string WhyUnusable(const std::string& entry)
{
    std::uint32_t ip = 0;
    if (Gvcp::ParseIp(entry, ip))
    {
        return "is not there: no adapter that is up has this address";
    }
    if (if_nametoindex(entry.c_str()) == 0)
    {
        return "does not exist";
    }
    return IsUp(entry) ? "has no IPv4 address" : "is down";
}

std::string AdapterNames()
{
    const std::unique_ptr<struct if_nameindex, decltype(&if_freenameindex)> list(if_nameindex(), &if_freenameindex);
    std::string names;
    for (const struct if_nameindex* pEntry = list.get(); pEntry != nullptr && pEntry->if_index != 0; ++pEntry)
    {
        names += (names.empty() ? "" : ", ") + std::string(pEntry->if_name);
    }
    return names;
}

std::vector<std::string> SplitList(const std::string& text)
{
    std::vector<std::string> entries;
    std::istringstream stream(text);
    for (std::string entry; std::getline(stream, entry, ',');)
    {
        const auto first = entry.find_first_not_of(" \t");
        if (first != std::string::npos)
        {
            entries.push_back(entry.substr(first, entry.find_last_not_of(" \t") - first + 1));
        }
    }
    return entries;
}

std::vector<std::string> WantedAdapters()
{
    {
        SWanted& wanted = Wanted();
        const std::lock_guard<std::mutex> lock(wanted.mutex);
        if (!wanted.list.empty())
        {
            return wanted.list;
        }
    }
    const char* text = std::getenv(AdaptersVariable);
    return text == nullptr ? std::vector<std::string>() : SplitList(text);
}

void SetWantedAdapters(std::vector<std::string> adapters)
{
    SWanted& wanted = Wanted();
    const std::lock_guard<std::mutex> lock(wanted.mutex);
    wanted.list = std::move(adapters);
}

} // namespace Velmo::GigE::Internal
