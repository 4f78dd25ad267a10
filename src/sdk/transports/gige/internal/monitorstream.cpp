// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/monitorstream.h"

#include "protocols/gvbsregisters.h"
#include "protocols/gvcp.h"
#include "transports/gige/internal/monitorcamera.h"
#include "transports/gige/internal/socketbuffer.h"
#include "transports/gige/internal/streamresult.h"

#include <algorithm>
#include <chrono>

namespace Velmo::GigE::Internal
{

CMonitorStream::CMonitorStream() = default;

CMonitorStream::~CMonitorStream()
{
    Stop();
}

SMonitorCamera& CMonitorStream::Camera() const
{
    if (m_pCamera == nullptr)
    {
        GENICAM_THROW(RuntimeException, "The stream cannot be used: its camera is not open.");
    }
    return *m_pCamera;
}

void CMonitorStream::Attach(SMonitorCamera* pCamera)
{
    m_pCamera = pCamera;
}

void CMonitorStream::Detach()
{
    Close();
    m_pCamera = nullptr;
}

void CMonitorStream::Open()
{
    Camera();
    if (!IsOpen())
    {
        BuildParameters();
    }
}

void CMonitorStream::Close()
{
    Stop();
    m_pParameters.reset();
}

GenApi::INodeMap* CMonitorStream::GetNodeMap()
{
    return IsOpen() ? m_pParameters->Get() : nullptr;
}

std::size_t CMonitorStream::GetPayloadBytes()
{
    const SMonitorCamera& camera = Camera();
    const GenApi::CIntegerPtr pPayloadSize(camera.pStreamNodeMap->GetNode("PayloadSize"));
    if (!pPayloadSize)
    {
        GENICAM_THROW(RuntimeException, "The description of camera " + camera.name + " has no PayloadSize.");
    }
    camera.pStreamNodeMap->InvalidateNodes(); // the controlling application may have changed it
    return static_cast<std::size_t>(std::max<std::int64_t>(0, pPayloadSize->GetValue()));
}

void CMonitorStream::AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext)
{
    if (pMemory == nullptr || bytes == 0)
    {
        GENICAM_THROW(InvalidArgumentException, "A buffer needs memory.");
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_announced.emplace(pContext, SMemory{static_cast<std::uint8_t*>(pMemory), bytes}).second)
    {
        GENICAM_THROW(InvalidArgumentException, "The buffer is announced already.");
    }
}

void CMonitorStream::RevokeBuffer(void* pContext)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_queued.count(pContext) != 0)
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is still queued; stop the stream before revoking it.");
    }
    m_announced.erase(pContext);
}

void CMonitorStream::QueueBuffer(void* pContext)
{
    if (Camera().pRemoval->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera " + Camera().name + " was removed.");
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_announced.find(pContext);
    if (found == m_announced.end())
    {
        GENICAM_THROW(InvalidArgumentException, "The buffer was not announced.");
    }
    if (!m_queued.insert(pContext).second)
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is queued already.");
    }
    if (m_pAssembler == nullptr)
    {
        m_waiting.push_back(pContext);
        return;
    }
    m_pAssembler->AddBuffer(pContext, found->second.pMemory, found->second.bytes);
}

SMulticastGroup CMonitorStream::ReadGroup() const
{
    CMonitorPort& port = *Camera().pPort;
    SMulticastGroup group;
    group.ip = port.ReadRegister(Gvbs::StreamChannelDestination);
    group.port = static_cast<std::uint16_t>(port.ReadRegister(Gvbs::StreamChannelPort) & Gvbs::ScpHostPortMask);
    return group;
}

std::optional<SMulticastGroup> CMonitorStream::LookAgain() const
{
    try
    {
        const SMulticastGroup group = ReadGroup();
        return IsMulticast(group.ip) && group.port != 0 ? std::optional<SMulticastGroup>(group) : std::nullopt;
    }
    catch (const GenICam::GenericException&)
    {
        return std::nullopt; // whether the camera is gone is asked elsewhere
    }
}

void CMonitorStream::Start()
{
    const std::lock_guard<std::mutex> receiverLock(m_receiverMutex);
    const SMonitorCamera& camera = Camera();
    if (camera.pRemoval->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera " + camera.name + " was removed.");
    }
    if (m_pReceiver != nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "The stream of camera " + camera.name + " is started already.");
    }
    const CGvspReceiver::SConfig config = ReadConfig();
    BeginAssembling(config.packetBytes);
    try
    {
        m_pReceiver = std::make_unique<CGvspReceiver>(
            config, CGvspReceiver::SSink{[this](const auto& datagrams, auto now) { return Take(datagrams, now); },
                                         [this]
                                         {
                                             return LookAgain();
                                         }});
    }
    catch (...)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pAssembler.reset();
        m_waiting.assign(m_queued.begin(), m_queued.end());
        throw;
    }
}

CGvspReceiver::SConfig CMonitorStream::ReadConfig()
{
    const SMonitorCamera& camera = Camera();
    CGvspReceiver::SConfig config;
    config.group = ReadGroup();
    if (config.group.ip == 0 || (IsMulticast(config.group.ip) && config.group.port == 0))
    {
        GENICAM_THROW(RuntimeException, "The camera " + camera.name +
                                            " does not stream: start the grab of the controlling application first.");
    }
    if (!IsMulticast(config.group.ip))
    {
        GENICAM_THROW(RuntimeException, "The camera " + camera.name + " streams unicast to " +
                                            Gvcp::IpText(config.group.ip) +
                                            ": ask the controlling application for multicast.");
    }
    config.adapterIp = camera.adapterIp;
    config.cameraIp = camera.deviceIp;
    config.cameraName = camera.name;
    config.packetBytes = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize) & Gvbs::ScpsPacketSizeMask;
    config.socketBufferBytes = SizeMonitorSocketBuffer(camera.name, GetPayloadBytes());
    return config;
}

void CMonitorStream::BeginAssembling(std::size_t packetBytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_counters = SAssemblerCounters();
    m_pAssembler = std::make_unique<CFrameAssembler>(packetBytes, std::chrono::microseconds(m_frameRetentionUs));
    for (void* pContext : m_waiting)
    {
        m_pAssembler->AddBuffer(pContext, m_announced[pContext].pMemory, m_announced[pContext].bytes);
    }
    m_waiting.clear();
}

std::optional<CGvspReceiver::Time> CMonitorStream::Take(const std::vector<CGvspReceiver::SDatagram>& datagrams,
                                                        CGvspReceiver::Time now)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const CGvspReceiver::SDatagram& datagram : datagrams)
    {
        m_pAssembler->Push(datagram.data, datagram.bytes, now);
    }
    m_pAssembler->Expire(now);
    TakeResults();
    return m_pAssembler->GetDeadline();
}

void CMonitorStream::TakeResults()
{
    bool hasResult = false;
    Transport::SStreamResult result;
    while (m_pAssembler->TakeResult(result))
    {
        m_queued.erase(result.pContext);
        m_results.push_back(std::move(result));
        hasResult = true;
    }
    m_counters = m_pAssembler->GetCounters();
    if (hasResult)
    {
        m_changed.notify_all();
    }
}

void CMonitorStream::Stop()
{
    EndReceiving();
}

void CMonitorStream::OnRemoved()
{
    EndReceiving();
}

void CMonitorStream::EndReceiving()
{
    const std::lock_guard<std::mutex> receiverLock(m_receiverMutex);
    m_pReceiver.reset();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_pAssembler != nullptr)
    {
        m_pAssembler->CancelAll();
        TakeResults();
        m_pAssembler.reset();
    }
    for (void* pContext : m_waiting)
    {
        m_results.push_back(MakeCanceledResult(pContext));
        m_queued.erase(pContext);
    }
    m_waiting.clear();
    m_changed.notify_all();
}

bool CMonitorStream::RetrieveResult(Transport::SStreamResult& result, unsigned int timeoutMs)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] { return m_isWakeUp || !m_results.empty(); });
    m_isWakeUp = false;
    if (m_results.empty())
    {
        return false;
    }
    result = std::move(m_results.front());
    m_results.pop_front();
    return true;
}

void CMonitorStream::WakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isWakeUp = true;
    m_changed.notify_all();
}

} // namespace Velmo::GigE::Internal
