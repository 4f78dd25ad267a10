// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/tlfactory.h"

#include "velmo/internal/exceptiontext.h"
#include "velmo/internal/tlhandles.h"
#include "velmo/internal/transportregistry.h"
#include "velmo/log.h"
#include "velmo/velmo.h"

#include <algorithm>

namespace Velmo
{

namespace
{

using Internal::CTlHandles;
using Internal::CTransportRegistry;
using TransportPtr = std::shared_ptr<Transport::ITransport>;

std::vector<TransportPtr> RunningTransports()
{
    if (VelmoInitializationCount() == 0)
    {
        GENICAM_THROW(RuntimeException, "The camera SDK is not running: call VelmoInitialize first.");
    }
    return CTransportRegistry::GetInstance().GetAll();
}

bool MatchesAny(const CDeviceInfo& info, const DeviceInfoList& filter)
{
    return filter.empty() ||
           std::any_of(filter.begin(), filter.end(), [&](const CDeviceInfo& wanted) { return wanted.IsSubset(info); });
}

/** False when every filter names another device class: such a transport need not be searched, which can take a second.
 */
bool CanMatch(const CTlInfo& tl, const DeviceInfoList& filter)
{
    return filter.empty() || std::any_of(filter.begin(), filter.end(),
                                         [&](const CDeviceInfo& wanted) {
                                             return !wanted.GetPropertyAvailable(Key::DeviceClass) ||
                                                    wanted.GetDeviceClass() == tl.GetDeviceClass();
                                         });
}

/** What matches on one transport; one that fails costs only its own devices. */
DeviceInfoList FindOn(Transport::ITransport& transport, const DeviceInfoList& filter)
{
    DeviceInfoList found;
    std::string name;
    try
    {
        const CTlInfo tl = transport.GetTlInfo();
        name = tl.GetDeviceClass().str();
        if (CanMatch(tl, filter))
        {
            transport.EnumerateDevices(found, Transport::EDiscoveryScope::Usable);
        }
    }
    catch (...)
    {
        Log(ELogLevel::Warning, "velmo.factory",
            "Enumerating the devices of '" + name + "' failed: " + Internal::CurrentExceptionText());
        found.clear();
    }
    found.erase(
        std::remove_if(found.begin(), found.end(), [&](const CDeviceInfo& info) { return !MatchesAny(info, filter); }),
        found.end());
    return found;
}

} // namespace

CTlFactory::CTlFactory() = default;
CTlFactory::~CTlFactory() = default;

CTlFactory& CTlFactory::GetInstance()
{
    static CTlFactory factory;
    return factory;
}

int CTlFactory::EnumerateTls(TlInfoList& list)
{
    TlInfoList found;
    for (const TransportPtr& transport : RunningTransports())
    {
        try
        {
            found.push_back(transport->GetTlInfo());
        }
        catch (...)
        {
            Log(ELogLevel::Warning, "velmo.factory",
                "A transport layer does not describe itself: " + Internal::CurrentExceptionText());
        }
    }
    list.swap(found);
    return static_cast<int>(list.size());
}

ITransportLayer* CTlFactory::CreateTl(const CTlInfo& info)
{
    return CreateTl(info.GetDeviceClass());
}

ITransportLayer* CTlFactory::CreateTl(const GenICam::gcstring& deviceClass)
{
    RunningTransports();
    return CTlHandles::GetInstance().Acquire(deviceClass);
}

void CTlFactory::ReleaseTl(const ITransportLayer* pTl)
{
    CTlHandles::GetInstance().Release(pTl);
}

int CTlFactory::EnumerateDevices(DeviceInfoList& list, bool addToList)
{
    return EnumerateDevices(list, DeviceInfoList(), addToList);
}

int CTlFactory::EnumerateDevices(DeviceInfoList& list, const DeviceInfoList& filter, bool addToList)
{
    DeviceInfoList result;
    for (const TransportPtr& transport : RunningTransports())
    {
        DeviceInfoList found = FindOn(*transport, filter);
        result.insert(result.end(), found.begin(), found.end());
    }
    if (!addToList)
    {
        list.clear();
    }
    list.insert(list.end(), result.begin(), result.end());
    return static_cast<int>(list.size());
}

IVelmoDevice* CTlFactory::CreateDevice(const CDeviceInfo& info)
{
    RunningTransports();
    const TransportPtr transport = CTransportRegistry::GetInstance().Find(info.GetDeviceClass());
    if (transport == nullptr)
    {
        GENICAM_THROW(RuntimeException, "There is no transport layer of the device class '" +
                                            info.GetDeviceClass().str() + "' for the device '" +
                                            info.GetFullName().str() + "'.");
    }
    return CTlHandles::GetInstance().CreateDevice(transport, info);
}

IVelmoDevice* CTlFactory::CreateFirstDevice(const CDeviceInfo& info)
{
    for (const TransportPtr& transport : RunningTransports())
    {
        const DeviceInfoList found = FindOn(*transport, {info});
        if (!found.empty())
        {
            return CTlHandles::GetInstance().CreateDevice(transport, found.front());
        }
    }
    GENICAM_THROW(RuntimeException, "No device is available, or none matches the given information.");
}

void CTlFactory::DestroyDevice(IVelmoDevice* pDevice)
{
    CTlHandles::GetInstance().DestroyDevice(pDevice);
}

} // namespace Velmo
