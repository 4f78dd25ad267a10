// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/records.h"

#include "transports/emulation/emulationtransport.h"

namespace Velmo::Emulation::Internal
{

namespace
{

constexpr const char* VendorName = "Korvel";

} // namespace

CTlInfo MakeTlInfo()
{
    CTlInfo info;
    info.SetDeviceClass(DeviceClass);
    info.SetTLType(TLType);
    info.SetFriendlyName("Camera Emulation");
    info.SetFullName(DeviceClass);
    info.SetVendorName(VendorName);
    return info;
}

CInterfaceInfo MakeInterfaceInfo(const Simulator::SInterfaceData& data)
{
    CInterfaceInfo info;
    info.SetDeviceClass(DeviceClass);
    info.SetTLType(TLType);
    info.SetFriendlyName(data.name.empty() ? data.id : data.name);
    info.SetFullName(std::string(DeviceClass) + "#" + data.id);
    info.SetVendorName(VendorName);
    info.SetInterfaceID(data.id);
    return info;
}

CDeviceInfo MakeDeviceInfo(const Simulator::SCameraConfig& camera, const std::string& userDefinedName)
{
    CDeviceInfo info;
    info.SetDeviceClass(DeviceClass);
    info.SetTLType(TLType);
    info.SetDeviceFactory(DeviceClass);
    info.SetFullName("Emulated Camera#" + std::string(DeviceClass) + "#" + camera.serialNumber);
    info.SetVendorName(camera.vendorName);
    info.SetModelName(camera.modelName);
    info.SetSerialNumber(camera.serialNumber);
    info.SetDeviceVersion(camera.deviceVersion);
    info.SetPropertyValue(Key::InterfaceID, camera.interfaceId);
    info.SetPropertyValue(Key::AccessStatus, AccessFree);
    if (userDefinedName.empty())
    {
        info.SetFriendlyName(camera.modelName + " (" + camera.serialNumber + ")");
    }
    else
    {
        info.SetFriendlyName(userDefinedName + " (" + camera.serialNumber + ")");
        info.SetUserDefinedName(userDefinedName);
    }
    return info;
}

} // namespace Velmo::Emulation::Internal
