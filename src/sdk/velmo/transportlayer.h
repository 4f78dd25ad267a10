// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

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

/** A GigE Vision transport layer; reached by dynamic cast. */
class VELMO_EXPORT IGigETransportLayer : public ITransportLayer
{
public:
    ~IGigETransportLayer() override;
    /** Also devices in use or in other subnets. */
    virtual int EnumerateAllDevices(DeviceInfoList& list, bool addToList = false) = 0;
    /** Makes the camera at info's "IpAddress" known to later enumerations; false when nothing answers there. */
    virtual bool AnnounceRemoteDevice(const CDeviceInfo& info) = 0;
};

} // namespace Velmo
