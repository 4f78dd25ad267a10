// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/scriptedtransportstream.h"

#include <algorithm>
#include <cstring>

namespace Test
{

namespace
{

constexpr std::size_t UsualBufferCount = 1024; // queues that grow no further allocate nothing per image

} // namespace

CScriptedStream::CScriptedStream(std::shared_ptr<CScriptedCamera> camera)
    : m_camera(std::move(camera)), m_port(m_camera, true)
{
    m_queued.reserve(UsualBufferCount);
}

CScriptedStream::~CScriptedStream() = default;

void CScriptedStream::Pass(EStep step) const
{
    m_camera->GetScript().Pass(step, m_camera->GetSerialNumber());
}

void CScriptedStream::RefuseWhenRemoved() const
{
    if (m_camera->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera '" + m_camera->GetSerialNumber() + "' has been removed.");
    }
}

bool CScriptedStream::Deliver(const SScriptedImage& image)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_started || m_camera->IsRemoved())
    {
        return false;
    }
    m_lastBlockId = image.blockId == 0 ? m_lastBlockId + 1 : image.blockId;
    if (m_queued.empty())
    {
        return false;
    }
    Velmo::Transport::SStreamResult result;
    result.pContext = m_queued.front();
    m_queued.erase(m_queued.begin());
    const SBuffer& buffer = m_announced.at(result.pContext);
    const std::size_t copied = std::min(image.data.size(), buffer.bytes);
    std::copy_n(image.data.data(), copied, static_cast<std::uint8_t*>(buffer.pMemory));
    result.status = image.status;
    result.payloadType = image.payloadType;
    result.pixelType = image.pixelType;
    result.width = static_cast<std::uint32_t>(m_camera->GetConfig().width);
    result.height = static_cast<std::uint32_t>(m_camera->GetConfig().height);
    result.payloadBytes = image.payloadBytes != 0 ? image.payloadBytes : image.data.empty() ? buffer.bytes : copied;
    result.blockId = m_lastBlockId;
    result.timestamp = image.timestamp;
    result.errorCode = image.errorCode;
    result.errorDescription = image.errorDescription;
    m_results.push_back(std::move(result));
    m_changed.notify_all();
    return true;
}

void CScriptedStream::CancelLocked()
{
    for (void* pContext : m_queued)
    {
        Velmo::Transport::SStreamResult result;
        result.pContext = pContext;
        result.status = Velmo::Transport::EResultStatus::Canceled;
        m_results.push_back(std::move(result));
    }
    m_queued.clear();
    m_changed.notify_all();
}

void CScriptedStream::CancelAll()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    CancelLocked();
}

bool CScriptedStream::IsStarted() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_started;
}

std::size_t CScriptedStream::GetQueuedCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_queued.size();
}

std::size_t CScriptedStream::GetAnnouncedCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_announced.size();
}

bool CScriptedStream::WaitForQueued(std::size_t count, unsigned int timeoutMs) const
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                              [&] { return m_started && m_queued.size() >= count; });
}

void CScriptedStream::Open()
{
    Pass(EStep::OpenStream);
    RefuseWhenRemoved();
    const std::string description = m_camera->GetStreamDescription();
    m_nodeMap = GenApi::CNodeMapFactory::FromData(description.data(), description.size()).CreateNodeMap();
    m_nodeMap->Connect(&m_port);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_open = true;
}

void CScriptedStream::Close()
{
    Pass(EStep::CloseStream);
    m_nodeMap.reset();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_open = false;
}

bool CScriptedStream::IsOpen() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_open;
}

GenApi::INodeMap* CScriptedStream::GetNodeMap()
{
    return m_nodeMap.get();
}

std::size_t CScriptedStream::GetPayloadBytes()
{
    Pass(EStep::GetPayloadBytes);
    RefuseWhenRemoved();
    return m_camera->GetMemory().Peek(CScriptedCamera::FindRegister("StreamPayloadSize").address, 8);
}

void CScriptedStream::AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext)
{
    Pass(EStep::AnnounceBuffer);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_open || !m_announced.emplace(pContext, SBuffer{pMemory, bytes}).second)
    {
        GENICAM_THROW(LogicalErrorException, "The stream is closed, or the buffer is announced already.");
    }
}

void CScriptedStream::RevokeBuffer(void* pContext)
{
    Pass(EStep::RevokeBuffer);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (std::find(m_queued.begin(), m_queued.end(), pContext) != m_queued.end() || m_announced.erase(pContext) == 0)
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is queued, or it is not announced.");
    }
}

void CScriptedStream::QueueBuffer(void* pContext)
{
    Pass(EStep::QueueBuffer);
    RefuseWhenRemoved();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_announced.count(pContext) == 0 || std::find(m_queued.begin(), m_queued.end(), pContext) != m_queued.end())
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is not announced, or it is queued already.");
    }
    m_queued.push_back(pContext);
    m_changed.notify_all();
}

void CScriptedStream::Start()
{
    Pass(EStep::StartStream);
    RefuseWhenRemoved();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_open || m_started)
    {
        GENICAM_THROW(LogicalErrorException, "The stream is closed or started.");
    }
    m_started = true;
    m_lastBlockId = 0;
    m_changed.notify_all();
}

void CScriptedStream::Stop()
{
    Pass(EStep::StopStream);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_started = false;
    CancelLocked();
}

bool CScriptedStream::RetrieveResult(Velmo::Transport::SStreamResult& result, unsigned int timeoutMs)
{
    Pass(EStep::RetrieveResult);
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] { return m_woken || !m_results.empty(); });
    if (m_results.empty() || m_woken)
    {
        m_woken = false;
        return false;
    }
    result = std::move(m_results.front());
    m_results.pop_front();
    return true;
}

void CScriptedStream::WakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_woken = true;
    m_changed.notify_all();
}

} // namespace Test
