// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/tlhandles.h"

#include "velmo/internal/exceptiontext.h"
#include "velmo/internal/transportlayerhandle.h"
#include "velmo/internal/transportregistry.h"
#include "velmo/log.h"

#include <algorithm>

namespace Velmo::Internal
{

CTlHandles& CTlHandles::GetInstance()
{
    static CTlHandles& handles = *new CTlHandles; // never destroyed: global cameras of a user may end later
    return handles;
}

CTlHandles::CTlHandles() = default;
CTlHandles::~CTlHandles() = default;

ITransportLayer* CTlHandles::Acquire(const GenICam::gcstring& deviceClass)
{
    const auto transport = CTransportRegistry::GetInstance().Find(deviceClass);
    if (transport == nullptr)
    {
        return nullptr;
    }
    SHandle made;
    try
    {
        made.handle = MakeTransportLayerHandle(transport, made.pDetachable);
    }
    catch (...)
    {
        Log(ELogLevel::Warning, "velmo.factory",
            "The transport layer '" + deviceClass.str() + "' cannot be created: " + CurrentExceptionText());
        return nullptr;
    }
    made.transport = transport;
    made.deviceClass = deviceClass;
    made.held = 1;
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (SHandle& known : m_handles)
    {
        if (known.transport == transport)
        {
            ++known.held;
            return known.handle.get();
        }
    }
    m_handles.push_back(std::move(made));
    return m_handles.back().handle.get();
}

void CTlHandles::Release(const ITransportLayer* pTl)
{
    if (pTl == nullptr)
    {
        return;
    }
    SHandle gone; // destroyed after the lock is released
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = std::find_if(m_handles.begin(), m_handles.end(),
                                    [pTl](const SHandle& handle) { return handle.handle.get() == pTl; });
    if (found == m_handles.end())
    {
        GENICAM_THROW(InvalidArgumentException, "The transport layer to release is not held.");
    }
    if (--found->held == 0)
    {
        gone = std::move(*found);
        m_handles.erase(found);
    }
}

unsigned int CTlHandles::HeldCount(const GenICam::gcstring& deviceClass) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    unsigned int count = 0;
    for (const SHandle& handle : m_handles)
    {
        count += handle.deviceClass == deviceClass ? handle.held : 0;
    }
    return count;
}

void CTlHandles::DetachAll()
{
    std::vector<std::shared_ptr<Transport::ITransport>> released; // destroyed after the lock is released
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (SHandle& handle : m_handles)
    {
        if (handle.transport != nullptr)
        {
            released.push_back(handle.pDetachable->Detach());
            handle.transport.reset();
        }
    }
}

IVelmoDevice* CTlHandles::CreateDevice(const std::shared_ptr<Transport::ITransport>& transport, const CDeviceInfo& info)
{
    auto device = transport->CreateDevice(info);
    if (device == nullptr)
    {
        GENICAM_THROW(RuntimeException, "There is no device '" + info.GetFullName().str() + "'.");
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_devices.emplace(device.get(), transport);
    return device.release();
}

void CTlHandles::DestroyDevice(IVelmoDevice* pDevice)
{
    std::shared_ptr<Transport::ITransport> transport; // outlives the device
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_devices.find(pDevice);
        if (found != m_devices.end())
        {
            transport = std::move(found->second);
            m_devices.erase(found);
        }
    }
    delete pDevice;
}

} // namespace Velmo::Internal
