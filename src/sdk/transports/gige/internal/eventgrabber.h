// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/eventdelivery.h"
#include "transport/softwarenodemap.h"
#include "transports/gige/internal/deviceport.h"
#include "transports/gige/internal/eventreader.h"
#include "transports/gige/internal/udpsocket.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace Velmo::GigE::Internal
{

/**
 * The message channel of a controlled camera, from the application's side.
 *
 * One thread receives and acknowledges, another one attaches the events, so that a slow callback does not make the
 * camera send again. Threads: Start and destruction on one at a time; the parameters as any node map.
 */
class CEventGrabber
{
public:
    /** Null when the camera has no message channel. Addresses in host byte order. The port must outlive the result. */
    static std::unique_ptr<CEventGrabber> Create(const std::string& cameraName, std::uint32_t adapterIp,
                                                 std::uint32_t deviceIp, CDevicePort& port);
    CEventGrabber(std::string cameraName, std::uint32_t adapterIp, std::uint32_t deviceIp, CDevicePort& port);
    /** Stops without the camera. */
    ~CEventGrabber();
    CEventGrabber(const CEventGrabber&) = delete;
    CEventGrabber& operator=(const CEventGrabber&) = delete;

    /** Opens the camera's message channel; nothing when it is open. Throws RuntimeException when there is no socket,
     * and what the port throws. */
    void Start(GenApi::INodeMap& nodeMap);
    /** Waits for callbacks that run. isThere: closes the channel at the camera, too. */
    void Stop(bool isThere);
    GenApi::INodeMap* GetParameters() const { return m_pParameters->Get(); }

private:
    void BuildParameters();
    void AddSetting(const char* name, const char* toolTip, const char* unit, std::int64_t max, std::uint32_t address,
                    std::atomic<std::uint32_t>& value);
    void AddCounter(const char* name, const char* toolTip, std::int64_t CEventReader::SCounters::*pCounter);
    void OpenChannel();
    void CloseChannel();
    void Receive();
    void Run();
    void Join();

    const std::string m_cameraName;
    const std::uint32_t m_adapterIp;
    const std::uint32_t m_deviceIp;
    CDevicePort& m_port;
    std::atomic<std::uint32_t> m_timeoutMs{300};
    std::atomic<std::uint32_t> m_retries{3};
    CUdpSocket m_socket; // the receiving thread's while it runs
    const int m_wakeDescriptor;
    std::atomic<bool> m_isStarted{false};
    std::atomic<bool> m_isStopping{false};
    mutable std::mutex m_mutex; // guards m_pReader; nothing but the reader is called while it is held
    std::unique_ptr<CEventReader> m_pReader;
    Transport::CEventDelivery m_delivery;
    std::unique_ptr<Transport::CSoftwareNodeMap> m_pParameters; // after what its getters read
    std::thread m_thread;
};

} // namespace Velmo::GigE::Internal
