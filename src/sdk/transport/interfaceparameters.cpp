// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/interfaceparameters.h"

#include "genapi/exceptions.h"

#include <array>
#include <charconv>

namespace Velmo::Transport
{

namespace
{

// Values of DEVICE_ACCESS_STATUS of the GenTL standard.
enum EAccess : std::int64_t
{
    AccessUnknown = 0,
    AccessReadWrite = 1,
    AccessReadOnly = 2,
    AccessNone = 3,
    AccessBusy = 4,
    AccessOpenReadWrite = 5,
    AccessOpenReadOnly = 6
};

constexpr const char* UpdateCommand = "DeviceUpdateList";
constexpr const char* Selector = "DeviceSelector";
constexpr const char* Count = "DeviceCount";
constexpr const char* LastIndex = "DeviceLastIndex";

struct SText
{
    const char* name;
    const char* key;
    const char* toolTip;
};

constexpr std::array<SText, 6> Texts = {{
    {"DeviceID", Key::FullName, "Identifier of the selected device, unique on this machine."},
    {"DeviceVendorName", Key::VendorName, "Vendor of the selected device."},
    {"DeviceModelName", Key::ModelName, "Model of the selected device."},
    {"DeviceSerialNumber", Key::SerialNumber, "Serial number of the selected device."},
    {"DeviceUserID", Key::UserDefinedName, "Name that users gave the selected device."},
    {"DeviceDisplayName", Key::FriendlyName, "Name of the selected device for people."},
}};

struct SAddress
{
    const char* name;
    const char* key;
    const char* toolTip;
    bool isMac;
};

constexpr std::array<SAddress, 4> Addresses = {{
    {"GevDeviceIPAddress", Key::IpAddress, "IP address of the selected device.", false},
    {"GevDeviceSubnetMask", Key::SubnetMask, "Subnet mask of the selected device.", false},
    {"GevDeviceGateway", Key::DefaultGateway, "Default gateway of the selected device.", false},
    {"GevDeviceMACAddress", Key::MacAddress, "Hardware address of the selected device.", true},
}};

constexpr const char* AccessStatusName = "DeviceAccessStatus";

/** Reads count numbers with separators between them; 0 when the text is anything else. */
std::int64_t Join(const std::string& text, char separator, int count, int base)
{
    constexpr unsigned int byteMax = 0xFF;
    constexpr int byteBits = 8;
    std::int64_t result = 0;
    const char* position = text.data();
    const char* const end = text.data() + text.size();
    for (int i = 0; i < count; ++i)
    {
        unsigned int byte = 0;
        const auto [next, error] = std::from_chars(position, end, byte, base);
        const bool isLast = i + 1 == count;
        if (error != std::errc() || byte > byteMax || (isLast ? next != end : next == end || *next != separator))
        {
            return 0;
        }
        result = (result << byteBits) | byte;
        position = isLast ? next : next + 1;
    }
    return result;
}

} // namespace

std::int64_t MacOf(const std::string& text)
{
    constexpr int macBytes = 6;
    constexpr int hexadecimal = 16;
    return Join(text, ':', macBytes, hexadecimal);
}

std::int64_t IpOf(const std::string& text)
{
    constexpr int ipBytes = 4;
    constexpr int decimal = 10;
    return Join(text, '.', ipBytes, decimal);
}

void AddInterfaceInformation(CSoftwareNodeMap& parameters, const CInterfaceInfo& info, EInterfaceType type)
{
    parameters.BeginCategory("InterfaceInformation", "What the interface is.");
    SSoftwareParameter id;
    id.name = "InterfaceID";
    id.toolTip = "Identifier of the interface, unique in its transport layer.";
    id.text = info.GetInterfaceID().str();
    parameters.AddText(std::move(id));
    SSoftwareParameter kind;
    kind.name = "InterfaceType";
    kind.toolTip = "Technology of the interface.";
    kind.value = static_cast<std::int64_t>(type);
    const std::array names{"GigEVision", "CameraLink", "CameraLinkHS", "CoaXPress", "USB3Vision", "Custom"};
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        kind.entries.emplace_back(names[i], static_cast<std::int64_t>(i));
    }
    parameters.AddEnumeration(std::move(kind));
    SSoftwareParameter name;
    name.name = "InterfaceDisplayName";
    name.toolTip = "Name of the interface for people.";
    name.text = info.GetFriendlyName().str();
    parameters.AddText(std::move(name));
}

CDeviceListParameters::CDeviceListParameters(SDeviceSource source, DeviceInfoList seen)
    : m_source(std::move(source)), m_devices(std::move(seen))
{
}

std::string CDeviceListParameters::Selected(const char* key) const
{
    return m_selected < m_devices.size() ? m_devices[m_selected].Get(key).str() : std::string();
}

std::int64_t CDeviceListParameters::Status() const
{
    if (m_selected >= m_devices.size())
    {
        return AccessUnknown;
    }
    if (m_source.isOpenHere && m_source.isOpenHere(m_devices[m_selected]))
    {
        return AccessOpenReadWrite;
    }
    const std::string status = Selected(Key::AccessStatus);
    if (status == "ReadWrite")
    {
        return AccessReadWrite;
    }
    if (status == "InUse")
    {
        return AccessBusy;
    }
    return status == "Unreachable" ? AccessNone : AccessUnknown;
}

void CDeviceListParameters::Update()
{
    m_devices = m_source.look();
    if (m_selected >= m_devices.size())
    {
        m_selected = 0;
    }
}

void CDeviceListParameters::AddTo(CSoftwareNodeMap& parameters, bool withAddresses)
{
    parameters.BeginCategory("DeviceEnumeration", "The devices on the interface.");
    SSoftwareParameter update;
    update.name = UpdateCommand;
    update.toolTip = "Looks again for devices on the interface.";
    update.setter = [this](std::int64_t)
    {
        Update();
    };
    parameters.AddCommand(std::move(update));
    SSoftwareParameter count;
    count.name = Count;
    count.toolTip = "Devices that the last look found.";
    count.isCustom = true;
    count.changeWith = {UpdateCommand};
    count.getter = [this]
    {
        return static_cast<std::int64_t>(m_devices.size());
    };
    parameters.AddInteger(std::move(count));
    std::vector<std::string> selects;
    for (const SText& text : Texts)
    {
        selects.emplace_back(text.name);
    }
    selects.emplace_back(AccessStatusName);
    for (std::size_t i = 0; withAddresses && i < Addresses.size(); ++i)
    {
        selects.emplace_back(Addresses[i].name);
    }
    AddSelector(parameters, std::move(selects));
    AddTexts(parameters);
    AddStatus(parameters);
    if (withAddresses)
    {
        AddAddresses(parameters);
    }
}

void CDeviceListParameters::AddSelector(CSoftwareNodeMap& parameters, std::vector<std::string> selects)
{
    SSoftwareParameter last;
    last.name = LastIndex;
    last.getter = [this]
    {
        return m_devices.empty() ? std::int64_t{0} : static_cast<std::int64_t>(m_devices.size()) - 1;
    };
    parameters.AddHidden(std::move(last));
    SSoftwareParameter selector;
    selector.name = Selector;
    selector.toolTip = "Which of the devices the parameters below tell of.";
    selector.maxFrom = LastIndex;
    selector.availableBy = Count;
    selector.selects = std::move(selects);
    selector.changeWith = {UpdateCommand};
    selector.getter = [this]
    {
        return static_cast<std::int64_t>(m_selected);
    };
    selector.setter = [this](std::int64_t value)
    {
        m_selected = static_cast<std::size_t>(value);
    };
    parameters.AddInteger(std::move(selector));
}

void CDeviceListParameters::AddTexts(CSoftwareNodeMap& parameters)
{
    for (const SText& text : Texts)
    {
        SSoftwareParameter parameter;
        parameter.name = text.name;
        parameter.toolTip = text.toolTip;
        parameter.availableBy = Count;
        parameter.changeWith = {UpdateCommand, Selector};
        parameter.textGetter = [this, key = text.key]
        {
            return Selected(key);
        };
        parameters.AddText(std::move(parameter));
    }
}

void CDeviceListParameters::AddStatus(CSoftwareNodeMap& parameters)
{
    constexpr int pollingMs = 1000;
    SSoftwareParameter parameter;
    parameter.name = AccessStatusName;
    parameter.toolTip = "How the selected device can be opened now.";
    parameter.availableBy = Count;
    parameter.changeWith = {UpdateCommand, Selector};
    parameter.pollingMs = pollingMs;
    parameter.entries = {{"Unknown", AccessUnknown},
                         {"ReadWrite", AccessReadWrite},
                         {"ReadOnly", AccessReadOnly},
                         {"NoAccess", AccessNone},
                         {"Busy", AccessBusy},
                         {"OpenReadWrite", AccessOpenReadWrite},
                         {"OpenReadOnly", AccessOpenReadOnly}};
    parameter.getter = [this]
    {
        return Status();
    };
    parameters.AddEnumeration(std::move(parameter));
}

void CDeviceListParameters::AddAddresses(CSoftwareNodeMap& parameters)
{
    for (const SAddress& address : Addresses)
    {
        SSoftwareParameter parameter;
        parameter.name = address.name;
        parameter.toolTip = address.toolTip;
        parameter.representation = address.isMac ? "MACAddress" : "IPV4Address";
        parameter.max = address.isMac ? LargestMac : LargestIp;
        parameter.availableBy = Count;
        parameter.changeWith = {UpdateCommand, Selector};
        parameter.getter = [this, address]
        {
            const std::string text = Selected(address.key);
            return address.isMac ? MacOf(text) : IpOf(text);
        };
        parameters.AddInteger(std::move(parameter));
    }
}

} // namespace Velmo::Transport
