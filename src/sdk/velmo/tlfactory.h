// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/device.h"
#include "velmo/transportlayer.h"

namespace Velmo
{

/**
 * Finds transport layers and makes devices. One per process. Threads: any.
 * Errors: GenICam exceptions, but CreateTl answers null for a class that does not exist or cannot be started.
 */
class VELMO_EXPORT CTlFactory
{
public:
    static CTlFactory& GetInstance();

    /** Replaces the list by the installed transport layers, in order of registration; returns their number. */
    int EnumerateTls(TlInfoList& list);
    /** A counted handle; release each with ReleaseTl. Null on failure. */
    ITransportLayer* CreateTl(const CTlInfo& info);
    ITransportLayer* CreateTl(const GenICam::gcstring& deviceClass);
    void ReleaseTl(const ITransportLayer* pTl);

    /** Devices of all transport layers; returns the number of list entries. */
    int EnumerateDevices(DeviceInfoList& list, bool addToList = false);
    /** Those that match any filter (CInfoBase::IsSubset); an empty filter list matches all. */
    int EnumerateDevices(DeviceInfoList& list, const DeviceInfoList& filter, bool addToList = false);

    /** The device of exactly that record; throws RuntimeException when there is none. */
    IVelmoDevice* CreateDevice(const CDeviceInfo& info);
    /** The first device that matches the record; an empty one matches any. Throws RuntimeException when there is none.
     */
    IVelmoDevice* CreateFirstDevice(const CDeviceInfo& info = CDeviceInfo());
    void DestroyDevice(IVelmoDevice* pDevice);

    CTlFactory(const CTlFactory&) = delete;
    CTlFactory& operator=(const CTlFactory&) = delete;

private:
    CTlFactory();
    ~CTlFactory();
};

} // namespace Velmo
