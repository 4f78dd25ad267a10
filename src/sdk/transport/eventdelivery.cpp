// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/eventdelivery.h"

#include "transport/log.h"

#include <cstdio>
#include <utility>

namespace Velmo::Transport
{

CEventDelivery::CEventDelivery(std::string cameraName) : m_cameraName(std::move(cameraName)) {}

CEventDelivery::~CEventDelivery()
{
    Stop();
}

void CEventDelivery::Start(GenApi::INodeMap& nodeMap)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isRunning)
    {
        m_thread = std::thread([this, &nodeMap] { Run(nodeMap); });
        m_isRunning = true;
    }
}

void CEventDelivery::Stop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isRunning = false;
        m_waiting.clear();
    }
    m_changed.notify_all();
    if (m_thread.joinable())
    {
        m_thread.join();
    }
}

bool CEventDelivery::IsRunning() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isRunning;
}

void CEventDelivery::Push(SDeviceEvent event)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_isRunning)
        {
            return;
        }
        if (m_waiting.size() >= m_capacity)
        {
            ++m_dropped;
            return;
        }
        m_waiting.push_back(std::move(event));
    }
    m_changed.notify_all();
}

void CEventDelivery::Run(GenApi::INodeMap& nodeMap)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;)
    {
        m_changed.wait(lock, [this] { return !m_isRunning || !m_waiting.empty(); });
        if (!m_isRunning)
        {
            return;
        }
        const SDeviceEvent event = std::move(m_waiting.front());
        m_waiting.pop_front();
        ++m_delivered;
        lock.unlock();
        Attach(nodeMap, event);
        lock.lock();
    }
}

void CEventDelivery::Attach(GenApi::INodeMap& nodeMap, const SDeviceEvent& event) const
{
    char id[8];
    std::snprintf(id, sizeof id, "%X", static_cast<unsigned int>(event.id));
    const auto report = [&](const char* reason)
    {
        Log(ELogLevel::Warning, "velmo.events",
            "Camera " + m_cameraName + ": handling the event 0x" + id + " failed: " + reason);
    };
    try
    {
        nodeMap.AttachEvent(id, event.bytes.data(), event.bytes.size());
    }
    catch (const GenICam::GenericException& e)
    {
        report(e.GetDescription());
    }
    catch (const std::exception& e)
    {
        report(e.what());
    }
    catch (...)
    {
        report("an exception of unknown type");
    }
}

void CEventDelivery::AddCounter(CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
                                std::int64_t& counter)
{
    SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
    parameter.getter = [this, &counter]
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return counter;
    };
    parameters.AddInteger(std::move(parameter));
}

void CEventDelivery::AddParameters(CSoftwareNodeMap& parameters)
{
    SSoftwareParameter status;
    status.name = "Status";
    status.toolTip = "Whether events of the camera are received.";
    status.isCustom = true;
    status.entries = {{"Closed", 0}, {"Open", 1}};
    status.getter = [this]
    {
        return IsRunning() ? std::int64_t{1} : std::int64_t{0};
    };
    parameters.AddEnumeration(std::move(status));
    constexpr std::int64_t manyBuffers = 100000;
    SSoftwareParameter buffers;
    buffers.name = "NumBuffer";
    buffers.toolTip = "How many events may wait for being handled; more are dropped.";
    buffers.isCustom = true;
    buffers.min = 1;
    buffers.max = manyBuffers;
    buffers.value = static_cast<std::int64_t>(m_capacity);
    buffers.setter = [this](std::int64_t value)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_capacity = static_cast<std::size_t>(value);
    };
    parameters.AddInteger(std::move(buffers));
    AddCounter(parameters, "EventDeliveredCount", "Events that reached the features of the camera.", m_delivered);
    AddCounter(parameters, "EventDroppedCount", "Events for which there was no buffer.", m_dropped);
}

} // namespace Velmo::Transport
