// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/records.h"

#include "transports/gige/gigetransport.h"

#include <algorithm>

namespace Velmo::GigE::Internal
{

namespace
{

/** What a camera says of itself may hold anything; control characters would break lists and logs. */
std::string Printable(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    const auto last = text.find_last_not_of(' ');
    return last == std::string::npos ? std::string() : text.substr(0, last + 1);
}

} // namespace

const char* AccessText(EAccessStatus access)
{
    switch (access)
    {
    case EAccessStatus::Free:
        return "ReadWrite";
    case EAccessStatus::InUse:
        return "InUse";
    case EAccessStatus::Unreachable:
        return "Unreachable";
    }
    return "";
}

CDeviceInfo MakeDeviceInfo(const SFoundDevice& device)
{
    const std::string vendor = Printable(device.ack.manufacturerName);
    const std::string model = Printable(device.ack.modelName);
    const std::string serial = Printable(device.ack.serialNumber);
    const std::string userName = Printable(device.ack.userDefinedName);
    const std::string mac = Gvcp::MacText(device.ack.mac);
    const std::string name = userName.empty() ? vendor + " " + model : userName;
    CDeviceInfo info;
    info.SetDeviceClass(DeviceClass).SetTLType(TLType).SetVendorName(vendor);
    info.SetModelName(model).SetPropertyValue(Key::SerialNumber, serial);
    info.SetDeviceVersion(Printable(device.ack.deviceVersion));
    info.SetDeviceFactory(DeviceClass);
    info.SetFullName(vendor + " " + model + "#" + DeviceClass + "#" + serial + "#" + mac);
    info.SetFriendlyName(name + " (" + (serial.empty() ? mac : serial) + ")");
    if (!userName.empty())
    {
        info.SetUserDefinedName(userName);
    }
    info.SetIpAddress(Gvcp::IpText(device.ip));
    info.SetPropertyValue(Key::SubnetMask, Gvcp::IpText(device.ack.currentSubnetMask));
    info.SetPropertyValue(Key::DefaultGateway, Gvcp::IpText(device.ack.defaultGateway));
    info.SetPropertyValue(Key::MacAddress, mac);
    info.SetPropertyValue(Key::InterfaceID, device.adapter.id);
    info.SetPropertyValue(Key::Interface, Gvcp::IpText(device.adapter.ip));
    info.SetPropertyValue(Key::AccessStatus, AccessText(device.access));
    return info;
}

CInterfaceInfo MakeInterfaceInfo(const SAdapter& adapter)
{
    const std::string ip = Gvcp::IpText(adapter.ip);
    CInterfaceInfo info;
    info.SetDeviceClass(DeviceClass).SetTLType(TLType).SetFriendlyName(adapter.name + " (" + ip + ")");
    info.SetFullName(std::string(DeviceClass) + "/" + adapter.id);
    info.SetInterfaceID(adapter.id);
    info.SetPropertyValue(Key::IpAddress, ip);
    info.SetPropertyValue(Key::SubnetMask, Gvcp::IpText(adapter.mask));
    info.SetPropertyValue(Key::MacAddress, Gvcp::MacText(adapter.mac));
    return info;
}

CInterfaceInfo MakeDefaultInterfaceInfo()
{
    CInterfaceInfo info;
    info.SetDeviceClass(DeviceClass).SetTLType(TLType).SetFriendlyName("No network adapter");
    info.SetFullName(std::string(DeviceClass) + "/DefaultInterface");
    info.SetInterfaceID("DefaultInterface");
    return info;
}

} // namespace Velmo::GigE::Internal
