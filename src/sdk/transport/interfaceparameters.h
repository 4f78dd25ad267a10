// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/infos.h"
#include "transport/softwarenodemap.h"

#include <functional>
#include <string>

namespace Velmo::Transport
{

/** Values of the node "InterfaceType" of the GenTL naming conventions. */
enum class EInterfaceType
{
    GigEVision,
    CameraLink,
    CameraLinkHS,
    CoaXPress,
    USB3Vision,
    Custom
};

/** Adds the category "InterfaceInformation": InterfaceID, InterfaceType, InterfaceDisplayName. */
TRANSPORT_EXPORT void AddInterfaceInformation(CSoftwareNodeMap& parameters, const CInterfaceInfo& info,
                                              EInterfaceType type);

/** Where the devices of an interface come from. Called with the lock of the node map held. */
struct SDeviceSource
{
    /** The devices on the interface, after looking again; may take its time and throw GenICam exceptions. */
    std::function<DeviceInfoList()> look;
    /** Whether this process controls that device now. */
    std::function<bool(const CDeviceInfo&)> isOpenHere;
};

/**
 * The devices on an interface as parameters: the category "DeviceEnumeration" with the command DeviceUpdateList,
 * DeviceCount, DeviceSelector, and what it selects. Names follow the interface module of the GenTL naming conventions.
 * The list is that of the last look; DeviceAccessStatus tells of now where this process has the device open.
 */
class TRANSPORT_EXPORT CDeviceListParameters
{
public:
    /** seen: what is shown until DeviceUpdateList is executed. */
    CDeviceListParameters(SDeviceSource source, DeviceInfoList seen);
    CDeviceListParameters(const CDeviceListParameters&) = delete;
    CDeviceListParameters& operator=(const CDeviceListParameters&) = delete;

    /** This object must outlive the node map. withAddresses adds GevDeviceIPAddress and its like. */
    void AddTo(CSoftwareNodeMap& parameters, bool withAddresses);

private:
    std::string Selected(const char* key) const;
    std::int64_t Status() const;
    void Update();
    void AddSelector(CSoftwareNodeMap& parameters, std::vector<std::string> selects);
    void AddTexts(CSoftwareNodeMap& parameters);
    void AddStatus(CSoftwareNodeMap& parameters);
    void AddAddresses(CSoftwareNodeMap& parameters);

    // Touched with the lock of the node map held only.
    const SDeviceSource m_source;
    DeviceInfoList m_devices;
    std::size_t m_selected = 0;
};

constexpr std::int64_t LargestIp = 0xFFFFFFFF;
constexpr std::int64_t LargestMac = 0xFFFFFFFFFFFF;

/** "00:11:22:aa:bb:cc" as a number; 0 for what is none. */
TRANSPORT_EXPORT std::int64_t MacOf(const std::string& text);
/** "192.168.1.5" as a number whose highest byte is the first; 0 for what is none. */
TRANSPORT_EXPORT std::int64_t IpOf(const std::string& text);

} // namespace Velmo::Transport
