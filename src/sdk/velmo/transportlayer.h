// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/gcstring.h"
#include "transport/infos.h"
#include "velmo/velmo_export.h"

#include <cstdint>

namespace GenApi
{
class INodeMap;
}

namespace Velmo
{

class IVelmoDevice;

/** An interface object made by ITransportLayer::CreateInterface. Errors: GenICam exceptions. */
class VELMO_EXPORT IInterface
{
public:
    virtual ~IInterface();
    virtual const CInterfaceInfo& GetInterfaceInfo() const = 0;
    virtual void Open() = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    virtual GenApi::INodeMap* GetNodeMap() = 0;
};

/** A handle on one transport layer. Threads: any. Errors: GenICam exceptions. */
class VELMO_EXPORT ITransportLayer
{
public:
    virtual ~ITransportLayer();
    virtual const CTlInfo& GetTlInfo() const = 0;
    /** Returns the number of list entries; the list is emptied first unless addToList. */
    virtual int EnumerateInterfaces(InterfaceInfoList& list, bool addToList = false) = 0;
    /** Devices that could be opened now. */
    virtual int EnumerateDevices(DeviceInfoList& list, bool addToList = false) = 0;
    /** Null when there is no such interface. Destroy with DestroyInterface of a handle of the same class. */
    virtual IInterface* CreateInterface(const CInterfaceInfo& info) = 0;
    virtual void DestroyInterface(IInterface* pInterface) = 0;
    virtual IVelmoDevice* CreateDevice(const CDeviceInfo& info) = 0;
    virtual void DestroyDevice(IVelmoDevice* pDevice) = 0;
    /** A record that carries this transport layer's class and type only. */
    virtual CDeviceInfo CreateDeviceInfo() = 0;
    virtual GenApi::INodeMap* GetNodeMap() = 0;
};

/** What one camera answered to an action command. */
struct GigEActionCommandResult
{
    char DeviceAddress[16]; // the camera's IPv4 address, dotted, ends with a NUL
    std::int32_t Status;    // GVCP status code; 0 when the camera took the command
};

/** A GigE Vision transport layer; reached by dynamic cast. */
class VELMO_EXPORT IGigETransportLayer : public ITransportLayer
{
public:
    /** Through every adapter that is searched for cameras. */
    static constexpr const char* EveryCamera = "255.255.255.255";

    ~IGigETransportLayer() override;
    /** Also devices in use or in other subnets. */
    virtual int EnumerateAllDevices(DeviceInfoList& list, bool addToList = false) = 0;
    /** Makes the camera at info's "IpAddress" known to later enumerations; false when nothing answers there. */
    virtual bool AnnounceRemoteDevice(const CDeviceInfo& info) = 0;

    /**
     * Triggers an action at once in every camera that has this device key, an action signal of this group key, and a
     * bit of its group mask in common with this one. Other cameras neither act nor answer. The datagram is sent once
     * and not repeated: a camera would act twice.
     *
     * broadcastAddress: EveryCamera; the broadcast address of an adapter's network; or one camera's own address.
     * timeoutMs, pNumResults: with 0, null or a count of 0 no answer is asked for and the call returns at once.
     * Otherwise *pNumResults is how many cameras are expected to answer, which is the room in the array; the call
     * returns when so many have answered or the time is over, and sets it to the number that did. A camera counts once,
     * with its first answer; further cameras are not waited for.
     * results: the answers in the order of their arrival; may be null when only their number matters.
     * Returns true when the command was sent and every expected camera answered; whether each took the command, its
     * status tells.
     * Errors: InvalidArgumentException for an address that is none and for a group mask of 0, which no camera can
     * match; RuntimeException when there is no adapter that could send it.
     */
    virtual bool IssueActionCommand(std::uint32_t deviceKey, std::uint32_t groupKey, std::uint32_t groupMask,
                                    const GenICam::gcstring& broadcastAddress = EveryCamera,
                                    std::uint32_t timeoutMs = 0, unsigned int* pNumResults = nullptr,
                                    GigEActionCommandResult* results = nullptr) = 0;
    /** As IssueActionCommand, but the cameras act at that time of their clocks (ticks; the cameras' clocks must have
     *  been synchronised by IEEE 1588). A camera whose time has passed says so in its status. */
    virtual bool IssueScheduledActionCommand(std::uint32_t deviceKey, std::uint32_t groupKey, std::uint32_t groupMask,
                                             std::uint64_t actionTime,
                                             const GenICam::gcstring& broadcastAddress = EveryCamera,
                                             std::uint32_t timeoutMs = 0, unsigned int* pNumResults = nullptr,
                                             GigEActionCommandResult* results = nullptr) = 0;
};

} // namespace Velmo
