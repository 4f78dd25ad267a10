// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/eventgrabber.h"

#include "protocols/gvbsregisters.h"
#include "transport/log.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace Velmo::GigE::Internal
{

std::unique_ptr<CEventGrabber> CEventGrabber::Create(const std::string& cameraName, std::uint32_t adapterIp,
                                                     std::uint32_t deviceIp, CDevicePort& port)
{
    try
    {
        if (port.ReadRegister(Gvbs::NumberOfMessageChannels) == 0)
        {
            return nullptr;
        }
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Debug, "velmo.events",
            "Camera " + cameraName + " does not say whether it has a message channel: " + e.GetDescription());
        return nullptr;
    }
    return std::make_unique<CEventGrabber>(cameraName, adapterIp, deviceIp, port);
}

CEventGrabber::CEventGrabber(std::string cameraName, std::uint32_t adapterIp, std::uint32_t deviceIp, CDevicePort& port)
    : m_cameraName(std::move(cameraName)), m_adapterIp(adapterIp), m_deviceIp(deviceIp), m_port(port),
      m_wakeDescriptor(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), m_delivery(m_cameraName)
{
    BuildParameters();
}

CEventGrabber::~CEventGrabber()
{
    Stop(false);
    close(m_wakeDescriptor);
}

void CEventGrabber::AddSetting(const char* name, const char* toolTip, const char* unit, std::int64_t max,
                               std::uint32_t address, std::atomic<std::uint32_t>& value)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.unit = unit;
    parameter.isCustom = true;
    parameter.max = max;
    parameter.value = value;
    parameter.setter = [this, address, &value](std::int64_t number)
    {
        if (m_isStarted)
        {
            m_port.WriteRegister(address, static_cast<std::uint32_t>(number));
        }
        value = static_cast<std::uint32_t>(number);
    };
    m_pParameters->AddInteger(std::move(parameter));
}

void CEventGrabber::AddCounter(const char* name, const char* toolTip, std::int64_t CEventReader::SCounters::*pCounter)
{
    Transport::SSoftwareParameter parameter;
    parameter.name = name;
    parameter.toolTip = toolTip;
    parameter.isCustom = true;
    parameter.getter = [this, pCounter]
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_pReader == nullptr ? 0 : m_pReader->GetCounters().*pCounter;
    };
    m_pParameters->AddInteger(std::move(parameter));
}

void CEventGrabber::BuildParameters()
{
    constexpr std::int64_t longestMs = 60000;
    constexpr std::int64_t mostRetries = 100;
    m_pParameters = std::make_unique<Transport::CSoftwareNodeMap>("GigEEventGrabber");
    m_delivery.AddParameters(*m_pParameters);
    AddSetting("Timeout", "Time after which the camera sends an event again that was not acknowledged; 0: never.", "ms",
               longestMs, Gvbs::MessageChannelTransmissionTimeout, m_timeoutMs);
    AddSetting("RetryCount", "How often the camera sends an event again.", "", mostRetries,
               Gvbs::MessageChannelRetryCount, m_retries);
    AddCounter("EventReceivedCount", "Events that the camera sent.", &CEventReader::SCounters::received);
    AddCounter("EventDuplicateCount", "Messages that came again because their acknowledge was lost.",
               &CEventReader::SCounters::duplicates);
    AddCounter("EventIgnoredCount", "Datagrams that are no events of the camera.", &CEventReader::SCounters::ignored);
    m_pParameters->Build();
}

void CEventGrabber::OpenChannel()
{
    const bool saysPort = (m_port.ReadRegister(Gvbs::MessageChannelCapability) & Gvbs::MccSourcePort) != 0;
    const std::uint32_t sourcePort = saysPort ? m_port.ReadRegister(Gvbs::MessageChannelSourcePort) : 0;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pReader = std::make_unique<CEventReader>(m_deviceIp, static_cast<std::uint16_t>(sourcePort));
    }
    m_port.WriteRegister(Gvbs::MessageChannelDestination, m_adapterIp);
    m_port.WriteRegister(Gvbs::MessageChannelTransmissionTimeout, m_timeoutMs);
    m_port.WriteRegister(Gvbs::MessageChannelRetryCount, m_retries);
    m_port.WriteRegister(Gvbs::MessageChannelPort, m_socket.GetPort()); // opens the channel
}

void CEventGrabber::Start(GenApi::INodeMap& nodeMap)
{
    if (m_isStarted)
    {
        return;
    }
    if (!m_socket.Bind(m_adapterIp))
    {
        GENICAM_THROW(RuntimeException, "The events of the camera " + m_cameraName +
                                            " cannot be received: the network adapter's address " +
                                            Gvcp::IpText(m_adapterIp) + " cannot be used: " + m_socket.GetError() +
                                            ".");
    }
    m_isStopping = false;
    m_delivery.Start(nodeMap);
    try
    {
        OpenChannel();
    }
    catch (...)
    {
        m_delivery.Stop();
        m_socket.Close();
        throw;
    }
    m_thread = std::thread([this] { Run(); });
    m_isStarted = true;
}

void CEventGrabber::Join()
{
    m_isStopping = true;
    const std::uint64_t one = 1;
    // It can only fail when the counter is full, and then the thread wakes up anyway.
    static_cast<void>(!write(m_wakeDescriptor, &one, sizeof one));
    m_thread.join();
}

void CEventGrabber::CloseChannel()
{
    try
    {
        m_port.WriteRegister(Gvbs::MessageChannelPort, 0);
    }
    catch (const GenICam::GenericException& e)
    {
        // The camera closes it by itself when it loses its controller.
        Log(ELogLevel::Debug, "velmo.events",
            "Camera " + m_cameraName + ": the message channel was not closed: " + e.GetDescription());
    }
}

void CEventGrabber::Stop(bool isThere)
{
    if (!m_isStarted)
    {
        return;
    }
    m_isStarted = false;
    if (isThere)
    {
        CloseChannel();
    }
    Join();
    m_delivery.Stop();
    m_socket.Close();
}

void CEventGrabber::Receive()
{
    std::uint8_t data[Gvcp::HeaderBytes + Gvcp::MaxPayloadBytes];
    std::uint32_t senderIp = 0;
    std::uint16_t senderPort = 0;
    while (const std::size_t bytes = m_socket.Receive(data, sizeof data, senderIp, senderPort))
    {
        Gvcp::Bytes answer;
        std::vector<Transport::SDeviceEvent> events;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            answer = m_pReader->Handle(data, bytes, senderIp, senderPort,
                                       [&](Transport::SDeviceEvent event) { events.push_back(std::move(event)); });
        }
        if (!answer.empty())
        {
            m_socket.Send(answer, senderIp, senderPort);
        }
        for (Transport::SDeviceEvent& event : events)
        {
            m_delivery.Push(std::move(event));
        }
    }
}

void CEventGrabber::Run()
{
    while (!m_isStopping)
    {
        pollfd entries[] = {{m_wakeDescriptor, POLLIN, 0}, {m_socket.GetDescriptor(), POLLIN, 0}};
        poll(entries, std::size(entries), -1);
        std::uint64_t count = 0;
        static_cast<void>(!read(m_wakeDescriptor, &count, sizeof count));
        Receive();
    }
}

} // namespace Velmo::GigE::Internal
