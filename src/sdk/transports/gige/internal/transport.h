// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"

namespace Velmo::GigE::Internal
{

/** The one implementation behind every handle on the GigE transport layer. Threads: any. */
class CGigETransport : public Transport::ITransport
{
public:
    CGigETransport();
    ~CGigETransport() override;
    CTlInfo GetTlInfo() const override;
    void EnumerateInterfaces(InterfaceInfoList& list) override;
    void EnumerateDevices(DeviceInfoList& list, Transport::EDiscoveryScope scope) override;
    std::unique_ptr<IVelmoDevice> CreateDevice(const CDeviceInfo& info) override;
    std::unique_ptr<Transport::IInterface> CreateInterface(const CInterfaceInfo& info) override;
    GenApi::INodeMap* GetNodeMap() override;
};

} // namespace Velmo::GigE::Internal
