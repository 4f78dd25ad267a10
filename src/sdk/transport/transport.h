// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/device.h"

#include <memory>

namespace Velmo::Transport
{

/**
 * One interface of a transport: its node map, with at least InterfaceID and the devices on it (DeviceUpdateList,
 * DeviceSelector, DeviceID; see interfaceparameters.h). Errors: GenICam exceptions. Threads: one at a time.
 */
class TRANSPORT_EXPORT IInterface
{
public:
    virtual ~IInterface();
    virtual const CInterfaceInfo& GetInterfaceInfo() const = 0;
    virtual void Open() = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    /** Valid while open, null otherwise. */
    virtual GenApi::INodeMap* GetNodeMap() = 0;
};

/** Which devices a discovery reports. */
enum class EDiscoveryScope
{
    Usable, // those that could be opened now
    All     // also those in use or in another subnet
};

/** What a GigE Vision transport offers beyond the rest. */
class TRANSPORT_EXPORT IGigEExtension
{
public:
    virtual ~IGigEExtension();
    /** Makes a camera behind a router known; false when nothing answers at info's "IpAddress". */
    virtual bool AnnounceRemoteDevice(const CDeviceInfo& info) = 0;
};

/**
 * What one transport (GigE, emulation, a test's script ...) must offer: the seam between the SDK and its transports.
 *
 * One implementation per device class serves the process from any thread: enumeration, opening and destruction may
 * overlap. A transport without interfaces of its own reports one whose ID is "DefaultInterface".
 * Enumerations append to the lists. Each device record carries at least DeviceClass, TLType, FullName (unique),
 * FriendlyName, VendorName, ModelName, SerialNumber, DeviceVersion, DeviceFactory (as for the transport) and, when
 * set on the camera, UserDefinedName.
 * Errors: GenICam exceptions.
 */
class TRANSPORT_EXPORT ITransport
{
public:
    virtual ~ITransport();
    virtual CTlInfo GetTlInfo() const = 0;
    virtual void EnumerateInterfaces(InterfaceInfoList& list) = 0;
    virtual void EnumerateDevices(DeviceInfoList& list, EDiscoveryScope scope) = 0;
    /** Never null; throws RuntimeException when the record belongs to no device of this transport. Opens nothing. */
    virtual std::unique_ptr<IVelmoDevice> CreateDevice(const CDeviceInfo& info) = 0;
    /** Null, or RuntimeException with the reason, when there is no such interface. Opens nothing. */
    virtual std::unique_ptr<IInterface> CreateInterface(const CInterfaceInfo& info) = 0;
    /** Parameters of the transport layer; null when there are none. */
    virtual GenApi::INodeMap* GetNodeMap() = 0;
    /** Null when there is none. Asked once for every CTlFactory::CreateTl; what it throws makes that answer null. */
    virtual IGigEExtension* GetGigEExtension() { return nullptr; }
};

} // namespace Velmo::Transport
