// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "listtransport.h"

#include "genapi/exceptions.h"
#include "velmo/internal/transportregistry.h"
#include "velmo/velmo.h"

#include <cstdio>

namespace Benchmarks
{

namespace
{
constexpr const char* DeviceClass = "BenchList";
} // namespace

Velmo::DeviceInfoList makeDevices(const std::string& set, int count)
{
    Velmo::DeviceInfoList list;
    for (int i = 0; i < count; ++i)
    {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%06d", i);
        const std::string serial = set + "-" + digits;
        Velmo::CDeviceInfo info;
        info.SetDeviceClass(DeviceClass).SetTLType("Custom").SetVendorName("Vendor");
        info.SetModelName("Model 2048");
        info.SetFriendlyName("Model 2048 (" + serial + ")");
        info.SetSerialNumber(serial);
        info.SetUserDefinedName("camera " + serial);
        info.SetDeviceVersion("1.0.0");
        info.SetDeviceFactory(DeviceClass);
        info.SetFullName("Vendor_Model 2048_" + serial + "_169.254.10.20_adapter0");
        info.SetIpAddress("169.254.10.20").SetPropertyValue(Velmo::Key::MacAddress, "00112233" + std::string(digits));
        list.push_back(info);
    }
    return list;
}

Velmo::CTlInfo CListTransport::GetTlInfo() const
{
    Velmo::CTlInfo info;
    info.SetDeviceClass(DeviceClass).SetTLType("Custom").SetFullName(DeviceClass).SetFriendlyName(DeviceClass);
    return info;
}

void CListTransport::EnumerateInterfaces(Velmo::InterfaceInfoList& list)
{
    Velmo::CInterfaceInfo info;
    info.SetInterfaceID("DefaultInterface").SetDeviceClass(DeviceClass).SetFullName(DeviceClass);
    list.push_back(info);
}

void CListTransport::EnumerateDevices(Velmo::DeviceInfoList& list, Velmo::Transport::EDiscoveryScope)
{
    list.insert(list.end(), m_devices.begin(), m_devices.end());
}

std::unique_ptr<Velmo::IVelmoDevice> CListTransport::CreateDevice(const Velmo::CDeviceInfo& info)
{
    GENICAM_THROW(RuntimeException, "The cameras of a list cannot be opened: " + info.GetFullName().str());
}

std::unique_ptr<Velmo::Transport::IInterface> CListTransport::CreateInterface(const Velmo::CInterfaceInfo&)
{
    return nullptr;
}

CListSdk::CListSdk()
{
    auto& registry = Velmo::Internal::CTransportRegistry::GetInstance();
    registry.SetBuiltInTransportsEnabled(false);
    registry.Register(m_transport);
    Velmo::VelmoInitialize();
}

CListSdk::~CListSdk()
{
    Velmo::Internal::CTransportRegistry::GetInstance().Unregister(DeviceClass);
    Velmo::VelmoTerminate();
}

} // namespace Benchmarks
