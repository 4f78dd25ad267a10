// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "transports/gige/internal/discovery.h"
#include "transports/gige/internal/networkview.h"

#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace Velmo::GigE::Internal
{

struct SServices;

/** The one implementation behind every handle on the GigE transport layer. Threads: any. */
class CGigETransport : public Transport::ITransport,
                       public Transport::IGigEExtension,
                       public INetworkView,
                       public std::enable_shared_from_this<CGigETransport>
{
public:
    CGigETransport();
    ~CGigETransport() override;
    CTlInfo GetTlInfo() const override;
    void EnumerateInterfaces(InterfaceInfoList& list) override;
    /** Usable are also cameras that this process has open: they can be opened by whoever has them here. */
    void EnumerateDevices(DeviceInfoList& list, Transport::EDiscoveryScope scope) override;
    std::unique_ptr<IVelmoDevice> CreateDevice(const CDeviceInfo& info) override;
    std::unique_ptr<Transport::IInterface> CreateInterface(const CInterfaceInfo& info) override;
    GenApi::INodeMap* GetNodeMap() override;
    Transport::IGigEExtension* GetGigEExtension() override;
    bool AnnounceRemoteDevice(const CDeviceInfo& info) override;
    std::vector<Transport::SActionAnswer> IssueAction(const Transport::SActionCommand& command) override;

    std::vector<SAdapter> GetAdapters() override;
    DeviceInfoList GetSeen(const SAdapter& adapter) override;
    DeviceInfoList Look(const SAdapter& adapter) override;
    bool IsOpenHere(const CDeviceInfo& info) override;

private:
    void WarnOnce(const std::string& text);
    void WarnOfUnusable(const std::vector<std::string>& entries);
    std::vector<std::uint32_t> AddressesToAsk();
    /** Of the cameras that the newest search found, on that adapter or, with null, on all. */
    std::set<std::uint32_t> AddressesSeen(const SAdapter* pAdapter);
    void Remember(const std::vector<SFoundDevice>& devices);
    /** pAdapter: the only one that was searched; null for all. */
    void KeepSeen(const std::vector<SFoundDevice>& devices, const SAdapter* pAdapter);
    bool FindRecord(const CDeviceInfo& info, CDeviceInfo& record);

    std::shared_ptr<SServices> m_pServices;
    std::mutex m_mutex; // guards what follows; never held while the network is asked
    std::set<std::string> m_warnings;
    std::map<std::string, std::string> m_unusable; // adapters that are wanted but cannot be used: why not
    std::set<std::uint32_t> m_remoteAddresses;
    std::map<std::string, CDeviceInfo> m_known; // newest record by full name
    DeviceInfoList m_seen;                      // of the newest search, in its order
    bool m_hasSearched = false;                 // all adapters
    std::set<std::string> m_searched;           // those adapters, by identifier
};

} // namespace Velmo::GigE::Internal
