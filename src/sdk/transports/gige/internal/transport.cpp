// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/transport.h"

#include "genapi/exceptions.h"
#include "transport/log.h"
#include "transports/gige/gigetransport.h"
#include "transports/gige/internal/actions.h"
#include "transports/gige/internal/adapterinterface.h"
#include "transports/gige/internal/gigedevice.h"
#include "transports/gige/internal/records.h"
#include "transports/gige/internal/services.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Velmo::GigE::Internal
{

CGigETransport::CGigETransport() : m_pServices(std::make_shared<SServices>()) {}

CGigETransport::~CGigETransport() = default;

CTlInfo CGigETransport::GetTlInfo() const
{
    CTlInfo info;
    info.SetDeviceClass(DeviceClass).SetTLType(TLType).SetFriendlyName("GigE Vision").SetFullName(DeviceClass);
    return info;
}

void CGigETransport::WarnOnce(const std::string& text)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_warnings.insert(text).second)
        {
            return;
        }
    }
    Log(ELogLevel::Warning, "velmo.gige", text);
}

void CGigETransport::WarnOfUnusable(const std::vector<std::string>& entries)
{
    std::map<std::string, std::string> unusable;
    for (const std::string& entry : entries)
    {
        unusable[entry] = WhyUnusable(entry);
    }
    std::map<std::string, std::string> before;
    {
        // What can be used again is forgotten, so that it is told when it goes down for another time.
        const std::lock_guard<std::mutex> lock(m_mutex);
        before = std::exchange(m_unusable, unusable);
    }
    for (const auto& [entry, reason] : unusable)
    {
        if (before[entry] != reason)
        {
            Log(ELogLevel::Warning, "velmo.gige",
                "The network adapter \"" + entry + "\" " + reason + "; it is skipped. There are: " + AdapterNames() +
                    ".");
        }
    }
}

std::vector<SAdapter> CGigETransport::GetAdapters()
{
    std::vector<std::string> unknown;
    std::vector<SAdapter> adapters = SelectAdapters(ListSystemAdapters(), WantedAdapters(), unknown);
    WarnOfUnusable(unknown);
    return adapters;
}

void CGigETransport::EnumerateInterfaces(InterfaceInfoList& list)
{
    const std::vector<SAdapter> adapters = GetAdapters();
    for (const SAdapter& adapter : adapters)
    {
        list.push_back(MakeInterfaceInfo(adapter));
    }
    if (adapters.empty())
    {
        list.push_back(MakeDefaultInterfaceInfo());
    }
}

std::vector<std::uint32_t> CGigETransport::AddressesToAsk()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return {m_remoteAddresses.begin(), m_remoteAddresses.end()};
}

std::set<std::uint32_t> CGigETransport::AddressesSeen(const SAdapter* pAdapter)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::set<std::uint32_t> addresses;
    for (const CDeviceInfo& info : m_seen)
    {
        std::uint32_t address = 0;
        if ((pAdapter == nullptr || info.GetInterfaceID().str() == pAdapter->id) &&
            Gvcp::ParseIp(info.GetIpAddress().str(), address))
        {
            addresses.insert(address);
        }
    }
    return addresses;
}

void CGigETransport::Remember(const std::vector<SFoundDevice>& devices)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const SFoundDevice& device : devices)
    {
        const CDeviceInfo info = MakeDeviceInfo(device);
        m_known[info.GetFullName().str()] = info;
    }
}

void CGigETransport::EnumerateDevices(DeviceInfoList& list, Transport::EDiscoveryScope scope)
{
    const SDiscoveryResult result = Discover(GetAdapters(), AddressesToAsk(), AddressesSeen(nullptr));
    for (const SAdapterFailure& failure : result.failures)
    {
        WarnOnce("The network adapter \"" + failure.adapterId + "\" cannot be used: " + failure.reason +
                 ". It is skipped.");
    }
    Remember(result.devices);
    KeepSeen(result.devices, nullptr);
    for (const SFoundDevice& device : result.devices)
    {
        const bool isUsable = device.access == EAccessStatus::Free || m_pServices->openCameras.Contains(device.ip);
        if (scope == Transport::EDiscoveryScope::All || isUsable)
        {
            list.push_back(MakeDeviceInfo(device));
        }
    }
}

bool CGigETransport::FindRecord(const CDeviceInfo& info, CDeviceInfo& record)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!info.GetFullName().empty())
    {
        const auto found = m_known.find(info.GetFullName().str());
        if (found != m_known.end())
        {
            record = found->second;
        }
        return found != m_known.end();
    }
    const auto found = std::find_if(m_known.begin(), m_known.end(),
                                    [&info](const auto& known) { return info.IsSubset(known.second); });
    if (info.GetIpAddress().empty() || found == m_known.end())
    {
        return false;
    }
    record = found->second;
    return true;
}

std::unique_ptr<IVelmoDevice> CGigETransport::CreateDevice(const CDeviceInfo& info)
{
    CDeviceInfo record;
    if (!FindRecord(info, record))
    {
        DeviceInfoList ignored;
        EnumerateDevices(ignored, Transport::EDiscoveryScope::All);
        if (!FindRecord(info, record))
        {
            GENICAM_THROW(RuntimeException,
                          "There is no GigE Vision camera \"" + info.GetFullName().str() + "\" on the network.");
        }
    }
    return std::make_unique<CGigEDevice>(std::move(record), m_pServices);
}

std::unique_ptr<Transport::IInterface> CGigETransport::CreateInterface(const CInterfaceInfo& info)
{
    InterfaceInfoList interfaces;
    EnumerateInterfaces(interfaces);
    for (CInterfaceInfo& record : interfaces)
    {
        if (record.GetInterfaceID() == info.GetInterfaceID())
        {
            return std::make_unique<CAdapterInterface>(std::move(record), weak_from_this());
        }
    }
    GENICAM_THROW(RuntimeException, "There is no network adapter \"" + info.GetInterfaceID().str() + "\".");
}

void CGigETransport::KeepSeen(const std::vector<SFoundDevice>& devices, const SAdapter* pAdapter)
{
    DeviceInfoList fresh;
    for (const SFoundDevice& device : devices)
    {
        fresh.push_back(MakeDeviceInfo(device));
        if (m_pServices->openCameras.Contains(device.ip))
        {
            // In use by this process: free as soon as it is closed here.
            fresh.back().SetPropertyValue(Key::AccessStatus, AccessText(EAccessStatus::Free));
        }
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto isOld = [pAdapter](const CDeviceInfo& info)
    {
        return pAdapter == nullptr || info.GetInterfaceID().str() == pAdapter->id;
    };
    m_seen.erase(std::remove_if(m_seen.begin(), m_seen.end(), isOld), m_seen.end());
    std::move(fresh.begin(), fresh.end(), std::back_inserter(m_seen));
    if (pAdapter == nullptr)
    {
        m_hasSearched = true;
    }
    else
    {
        m_searched.insert(pAdapter->id);
    }
}

DeviceInfoList CGigETransport::GetSeen(const SAdapter& adapter)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_hasSearched || m_searched.count(adapter.id) != 0)
        {
            DeviceInfoList devices;
            std::copy_if(m_seen.begin(), m_seen.end(), std::back_inserter(devices),
                         [&adapter](const CDeviceInfo& info) { return info.GetInterfaceID().str() == adapter.id; });
            return devices;
        }
    }
    return Look(adapter);
}

DeviceInfoList CGigETransport::Look(const SAdapter& adapter)
{
    const SDiscoveryResult result = Discover({adapter}, AddressesToAsk(), AddressesSeen(&adapter));
    if (!result.failures.empty())
    {
        GENICAM_THROW(RuntimeException, "The network adapter \"" + adapter.id +
                                            "\" cannot be searched: " + result.failures.front().reason + ".");
    }
    Remember(result.devices);
    KeepSeen(result.devices, &adapter);
    return GetSeen(adapter);
}

bool CGigETransport::IsOpenHere(const CDeviceInfo& info)
{
    std::uint32_t address = 0;
    return Gvcp::ParseIp(info.GetIpAddress().str(), address) && m_pServices->openCameras.Contains(address);
}

GenApi::INodeMap* CGigETransport::GetNodeMap()
{
    return nullptr;
}

Transport::IGigEExtension* CGigETransport::GetGigEExtension()
{
    return this;
}

bool CGigETransport::AnnounceRemoteDevice(const CDeviceInfo& info)
{
    const std::vector<SAdapter> adapters = GetAdapters();
    std::uint32_t address = 0;
    const auto isBroadcast = [&address](const SAdapter& adapter)
    {
        return adapter.IsBroadcast(address);
    };
    if (!Gvcp::ParseIp(info.GetIpAddress().str(), address) || !IsUnicast(address) ||
        std::any_of(adapters.begin(), adapters.end(), isBroadcast))
    {
        GENICAM_THROW(InvalidArgumentException,
                      "\"" + info.GetIpAddress().str() + "\" is no IPv4 address of a remote camera.");
    }
    std::vector<SFoundDevice> devices = DiscoverAddress(adapters, address).devices;
    const auto isElsewhere = [](const SFoundDevice& device)
    {
        return !device.isRemote;
    };
    devices.erase(std::remove_if(devices.begin(), devices.end(), isElsewhere), devices.end());
    if (devices.empty())
    {
        return false;
    }
    Remember(devices);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_remoteAddresses.insert(address);
    return true;
}

std::vector<Transport::SActionAnswer> CGigETransport::IssueAction(const Transport::SActionCommand& command)
{
    return Internal::IssueAction(GetAdapters(), command);
}

} // namespace Velmo::GigE::Internal
