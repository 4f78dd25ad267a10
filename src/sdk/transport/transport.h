// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/device.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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

/** One action command: what is to happen in every camera that knows the keys. */
struct SActionCommand
{
    std::uint32_t deviceKey = 0;
    std::uint32_t groupKey = 0;
    std::uint32_t groupMask = 0;       // not 0
    std::optional<std::uint64_t> time; // ticks of the cameras' clock; without it at once
    std::string address;               // dotted IPv4: a broadcast address or a camera's own
    std::uint32_t timeoutMs = 0;       // 0: no answer is asked for
    std::size_t expectedAnswers = 0;   // the wait is over with that many; 0: no answer is asked for
};

/** What one camera answered. */
struct SActionAnswer
{
    std::string address;      // dotted IPv4
    std::uint32_t status = 0; // GVCP status code; 0 when the camera took the command
};

/** What a GigE Vision transport offers beyond the rest. */
class TRANSPORT_EXPORT IGigEExtension
{
public:
    virtual ~IGigEExtension();
    /** Makes a camera behind a router known; false when nothing answers at info's "IpAddress". */
    virtual bool AnnounceRemoteDevice(const CDeviceInfo& info) = 0;
    /**
     * Sends the command once through each adapter that it concerns. Returns the answers in the order of their arrival,
     * each sender once, at most as many as are expected.
     * Errors: InvalidArgumentException for an address that is none and for a mask of 0, RuntimeException when no
     * adapter could send it.
     */
    virtual std::vector<SActionAnswer> IssueAction(const SActionCommand& command) = 0;
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
