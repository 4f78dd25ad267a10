// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "transport/softwarenodemap.h"
#include "transport/transport_export.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Velmo::Transport
{

/** An event as the camera's description sees it. */
struct SDeviceEvent
{
    std::uint16_t id = 0;
    std::vector<std::uint8_t> bytes; // address 0 of the event's port is the first; GigE Vision: from "reserved" on
};

/**
 * Brings a camera's events to its node map, on a thread of its own: callbacks of nodes may take their time and may use
 * the node map, and whoever receives the events goes on meanwhile.
 *
 * The callbacks must not close the camera: closing waits for the one that runs. What they throw is logged.
 * Threads: Start and Stop on one thread at a time, everything else on any.
 */
class TRANSPORT_EXPORT CEventDelivery
{
public:
    /** The name is for texts. */
    explicit CEventDelivery(std::string cameraName);
    ~CEventDelivery();
    CEventDelivery(const CEventDelivery&) = delete;
    CEventDelivery& operator=(const CEventDelivery&) = delete;

    /** The node map must stay until Stop. Nothing when it is running. */
    void Start(GenApi::INodeMap& nodeMap);
    /** Waits for callbacks that run; events that wait are dropped. */
    void Stop();
    bool IsRunning() const;
    /** When as many events wait as there are buffers, it is dropped and counted. Nothing while not running. */
    void Push(SDeviceEvent event);

    /** "Status", "NumBuffer" and the counters. This object must outlive the node map. */
    void AddParameters(CSoftwareNodeMap& parameters);

private:
    void Run(GenApi::INodeMap& nodeMap);
    void Attach(GenApi::INodeMap& nodeMap, const SDeviceEvent& event) const;
    void AddCounter(CSoftwareNodeMap& parameters, const char* name, const char* toolTip, std::int64_t& counter);

    const std::string m_cameraName;
    mutable std::mutex m_mutex; // guards all below but the thread; never held while the node map is called
    std::condition_variable m_changed;
    std::deque<SDeviceEvent> m_waiting; // the oldest first
    std::size_t m_capacity = 100;
    std::int64_t m_delivered = 0;
    std::int64_t m_dropped = 0;
    bool m_isRunning = false;
    std::thread m_thread;
};

} // namespace Velmo::Transport
