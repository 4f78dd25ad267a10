// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/transport.h"

#include "genapi/exceptions.h"
#include "transports/gige/gigetransport.h"

namespace Velmo::GigE::Internal
{

CGigETransport::CGigETransport() = default;
CGigETransport::~CGigETransport() = default;

CTlInfo CGigETransport::GetTlInfo() const
{
    CTlInfo info;
    info.SetDeviceClass(DeviceClass).SetTLType(TLType).SetFriendlyName("GigE Vision").SetFullName(DeviceClass);
    return info;
}

void CGigETransport::EnumerateInterfaces(InterfaceInfoList&) {}

void CGigETransport::EnumerateDevices(DeviceInfoList&, Transport::EDiscoveryScope) {}

std::unique_ptr<IVelmoDevice> CGigETransport::CreateDevice(const CDeviceInfo& info)
{
    GENICAM_THROW(RuntimeException, "There is no GigE Vision camera \"" + info.GetFullName().str() + "\".");
}

std::unique_ptr<Transport::IInterface> CGigETransport::CreateInterface(const CInterfaceInfo& info)
{
    GENICAM_THROW(RuntimeException, "There is no network adapter \"" + info.GetInterfaceID().str() + "\".");
}

GenApi::INodeMap* CGigETransport::GetNodeMap()
{
    return nullptr;
}

} // namespace Velmo::GigE::Internal
