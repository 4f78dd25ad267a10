// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/interfaceparameters.h"
#include "transport/transport.h"
#include "transports/gige/internal/networkview.h"

#include <memory>

namespace Velmo::GigE::Internal
{

/**
 * A network adapter: its addresses, its link, and the cameras seen on it, as parameters. Addresses and link are read
 * from the system at each access. Threads: one at a time; the node map as any node map.
 */
class GIGE_TEST_EXPORT CAdapterInterface : public Transport::IInterface
{
public:
    CAdapterInterface(CInterfaceInfo info, std::weak_ptr<INetworkView> network);
    ~CAdapterInterface() override;
    const CInterfaceInfo& GetInterfaceInfo() const override { return m_info; }
    /** Throws RuntimeException when the adapter is gone. */
    void Open() override;
    void Close() override;
    bool IsOpen() const override { return m_pParameters != nullptr; }
    GenApi::INodeMap* GetNodeMap() override;

private:
    std::shared_ptr<INetworkView> Network() const;
    bool HasAdapter() const;
    SAdapter Adapter() const;
    std::vector<SAdapter> Addresses() const;
    SAdapter Address() const;
    void AddLink(Transport::CSoftwareNodeMap& parameters);
    void AddAddresses(Transport::CSoftwareNodeMap& parameters);

    const CInterfaceInfo m_info;
    const std::weak_ptr<INetworkView> m_network;
    std::size_t m_address = 0; // which of the adapter's; touched with the node map's lock held
    std::unique_ptr<Transport::CDeviceListParameters> m_pDevices; // while open
    std::unique_ptr<Transport::CSoftwareNodeMap> m_pParameters;   // while open; goes before the devices it shows
};

} // namespace Velmo::GigE::Internal
