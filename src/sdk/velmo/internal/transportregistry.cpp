// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/transportregistry.h"

#include "velmo/internal/exceptiontext.h"
#include "velmo/log.h"

#include <algorithm>

namespace Velmo::Internal
{

CTransportRegistry& CTransportRegistry::GetInstance()
{
    static CTransportRegistry& registry = *new CTransportRegistry; // never destroyed: as CTlHandles
    return registry;
}

void CTransportRegistry::Register(std::shared_ptr<Transport::ITransport> transport)
{
    Append(std::move(transport), false);
}

void CTransportRegistry::Append(std::shared_ptr<Transport::ITransport> transport, bool builtIn)
{
    if (transport == nullptr)
    {
        GENICAM_THROW(InvalidArgumentException, "A null transport cannot be registered.");
    }
    SEntry entry{transport->GetTlInfo().GetDeviceClass(), std::move(transport), builtIn};
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const SEntry& other : m_entries)
    {
        if (other.deviceClass == entry.deviceClass)
        {
            GENICAM_THROW(LogicalErrorException,
                          "A transport of the device class '" + entry.deviceClass.str() + "' is registered already.");
        }
    }
    m_entries.push_back(std::move(entry));
}

void CTransportRegistry::Unregister(const GenICam::gcstring& deviceClass)
{
    std::shared_ptr<Transport::ITransport> removed; // destroyed after the lock is released
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const SEntry& entry) { return entry.deviceClass == deviceClass; });
    if (found != m_entries.end())
    {
        removed = std::move(found->transport);
        m_entries.erase(found);
    }
}

void CTransportRegistry::SetBuiltInTransportsEnabled(bool enabled)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_builtInEnabled = enabled;
}

void CTransportRegistry::RegisterBuiltIn(const char* name, const Factory& factory)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_builtInEnabled)
        {
            return;
        }
    }
    try
    {
        Append(factory(), true);
    }
    catch (...)
    {
        Log(ELogLevel::Error, "velmo.factory",
            std::string("The transport '") + name + "' cannot be started: " + CurrentExceptionText());
    }
}

void CTransportRegistry::DropBuiltIns()
{
    std::vector<SEntry> dropped; // destroyed after the lock is released
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto middle =
        std::stable_partition(m_entries.begin(), m_entries.end(), [](const SEntry& entry) { return !entry.builtIn; });
    dropped.assign(std::make_move_iterator(middle), std::make_move_iterator(m_entries.end()));
    m_entries.erase(middle, m_entries.end());
}

std::vector<std::shared_ptr<Transport::ITransport>> CTransportRegistry::GetAll() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<std::shared_ptr<Transport::ITransport>> all;
    all.reserve(m_entries.size());
    for (const SEntry& entry : m_entries)
    {
        all.push_back(entry.transport);
    }
    return all;
}

std::shared_ptr<Transport::ITransport> CTransportRegistry::Find(const GenICam::gcstring& deviceClass) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const SEntry& entry : m_entries)
    {
        if (entry.deviceClass == deviceClass)
        {
            return entry.transport;
        }
    }
    return nullptr;
}

} // namespace Velmo::Internal
