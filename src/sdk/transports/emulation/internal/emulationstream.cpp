// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/emulationstream.h"

#include "genapi/exceptions.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace Velmo::Emulation::Internal
{

using Transport::EResultStatus;
using Transport::SStreamResult;

namespace
{

constexpr std::uint32_t ErrorFrameFailed = 1;
constexpr std::uint32_t ErrorBufferTooSmall = 2;

} // namespace

void CEmulationStream::SChain::Push(SBuffer& buffer)
{
    buffer.next = nullptr;
    (last == nullptr ? first : last->next) = &buffer;
    last = &buffer;
}

CEmulationStream::SBuffer* CEmulationStream::SChain::Pop()
{
    SBuffer* const buffer = first;
    if (buffer != nullptr)
    {
        first = buffer->next;
        last = first == nullptr ? nullptr : last;
    }
    return buffer;
}

void CEmulationStream::SChain::Remove(SBuffer& buffer)
{
    SChain rest;
    while (SBuffer* const taken = Pop())
    {
        if (taken != &buffer)
        {
            rest.Push(*taken);
        }
    }
    *this = rest;
}

CEmulationStream::CEmulationStream(std::shared_ptr<Simulator::CCameraModel> camera) : m_camera(std::move(camera)) {}

CEmulationStream::~CEmulationStream()
{
    Close();
}

void CEmulationStream::Open()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        CheckNotRemoved();
        if (m_isOpen)
        {
            return;
        }
        m_total = 0;
        m_failed = 0;
        m_underruns = 0;
    }
    m_nodeMap = MakeParameters();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isOpen = true;
}

void CEmulationStream::Close()
{
    Stop();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOpen = false;
        m_input = {};
        m_output = {};
        m_buffers.clear();
        m_isWoken = false;
    }
    m_nodeMap.reset();
}

bool CEmulationStream::IsOpen() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isOpen;
}

GenApi::INodeMap* CEmulationStream::GetNodeMap()
{
    return m_nodeMap == nullptr ? nullptr : m_nodeMap->Get();
}

std::size_t CEmulationStream::GetPayloadBytes()
{
    return m_camera->GetPayloadBytes();
}

void CEmulationStream::CheckNotRemoved() const
{
    if (m_isRemoved)
    {
        GENICAM_THROW(RuntimeException,
                      "The emulated camera '" + m_camera->GetConfig().serialNumber + "' was removed.");
    }
}

CEmulationStream::SBuffer& CEmulationStream::Find(void* pContext)
{
    const auto found = m_buffers.find(pContext);
    if (found == m_buffers.end())
    {
        GENICAM_THROW(InvalidArgumentException, "The buffer was not announced to the stream.");
    }
    return found->second;
}

void CEmulationStream::AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isOpen)
    {
        GENICAM_THROW(LogicalErrorException, "The stream takes buffers only while it is open.");
    }
    if (pMemory == nullptr || bytes == 0)
    {
        GENICAM_THROW(InvalidArgumentException, "A buffer without memory cannot be announced.");
    }
    SBuffer buffer;
    buffer.memory = static_cast<std::uint8_t*>(pMemory);
    buffer.bytes = bytes;
    if (!m_buffers.emplace(pContext, std::move(buffer)).second)
    {
        GENICAM_THROW(InvalidArgumentException, "A buffer with this context was announced before.");
    }
}

void CEmulationStream::RevokeBuffer(void* pContext)
{
    bool mustStop = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        mustStop = m_isRemoved && m_isStarted;
    }
    if (mustStop)
    {
        Stop(); // the camera's last frame may still be copied into the buffer
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_buffers.find(pContext);
    if (found == m_buffers.end())
    {
        if (m_isRemoved)
        {
            return;
        }
        GENICAM_THROW(InvalidArgumentException, "The buffer was not announced to the stream.");
    }
    if (found->second.isQueued)
    {
        if (!m_isRemoved)
        {
            GENICAM_THROW(LogicalErrorException, "A queued buffer cannot be revoked.");
        }
        m_input.Remove(found->second);
        m_output.Remove(found->second);
    }
    m_buffers.erase(found);
}

void CEmulationStream::QueueBuffer(void* pContext)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    CheckNotRemoved();
    SBuffer& buffer = Find(pContext);
    if (buffer.isQueued)
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is queued already.");
    }
    buffer.isQueued = true;
    buffer.result = SStreamResult();
    buffer.result.pContext = pContext;
    m_input.Push(buffer);
}

void CEmulationStream::Start()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        CheckNotRemoved();
        if (!m_isOpen)
        {
            GENICAM_THROW(LogicalErrorException, "The stream must be open to be started.");
        }
        if (m_isStarted)
        {
            return;
        }
        m_isStarted = true;
    }
    if (!m_isMonitor)
    {
        m_camera->SetTransportLocked(true);
    }
    m_camera->AddSink(this);
}

void CEmulationStream::Stop()
{
    bool wasStarted = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::swap(wasStarted, m_isStarted);
    }
    if (wasStarted)
    {
        m_camera->RemoveSink(this); // waits for a frame that is being copied
        if (!m_isMonitor)
        {
            m_camera->SetTransportLocked(false);
        }
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    CancelQueued();
}

void CEmulationStream::CancelQueued()
{
    while (SBuffer* const buffer = m_input.Pop())
    {
        buffer->result.status = EResultStatus::Canceled;
        m_output.Push(*buffer);
    }
    m_changed.notify_all();
}

bool CEmulationStream::RetrieveResult(SStreamResult& result, unsigned int timeoutMs)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                       [this] { return m_output.first != nullptr || m_isWoken; });
    SBuffer* const buffer = m_output.Pop();
    if (buffer == nullptr)
    {
        m_isWoken = false;
        return false;
    }
    buffer->isQueued = false;
    result = std::move(buffer->result);
    return true;
}

void CEmulationStream::WakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isWoken = true;
    m_changed.notify_all();
}

void CEmulationStream::OnRemoved()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isRemoved = true;
    CancelQueued();
}

bool CEmulationStream::OnFrame(const Simulator::SFrame& frame)
{
    SBuffer* buffer = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        buffer = m_input.Pop();
        if (buffer == nullptr)
        {
            ++m_underruns;
            return false;
        }
    }
    Fill(*buffer, frame);
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_total;
    m_failed += buffer->result.status == EResultStatus::Failed ? 1 : 0;
    m_output.Push(*buffer);
    m_changed.notify_one();
    return true;
}

void CEmulationStream::Fill(SBuffer& buffer, const Simulator::SFrame& frame)
{
    SStreamResult& result = buffer.result;
    const std::size_t wholeBytes = frame.bytes + frame.tailBytes;
    const std::size_t imageBytes = std::min(frame.bytes, buffer.bytes);
    const std::size_t tailBytes = std::min(frame.tailBytes, buffer.bytes - imageBytes);
    std::memcpy(buffer.memory, frame.data, imageBytes);
    if (tailBytes > 0)
    {
        std::memcpy(buffer.memory + imageBytes, frame.tail, tailBytes);
    }
    result.payloadBytes = imageBytes + tailBytes;
    result.payloadType =
        frame.payload == Simulator::EFramePayload::ChunkData ? EPayloadType::ChunkData : EPayloadType::Image;
    result.pixelType = frame.pfnc;
    result.width = frame.width;
    result.height = frame.height;
    result.offsetX = frame.offsetX;
    result.offsetY = frame.offsetY;
    result.blockId = frame.blockId;
    result.timestamp = frame.timestamp;
    result.status = EResultStatus::Ok;
    if (frame.isFailed)
    {
        result.status = EResultStatus::Failed;
        result.errorCode = ErrorFrameFailed;
        result.errorDescription = "The image was not transferred completely.";
    }
    else if (wholeBytes > buffer.bytes)
    {
        result.status = EResultStatus::Failed;
        result.errorCode = ErrorBufferTooSmall;
        result.errorDescription = "The buffer of " + std::to_string(buffer.bytes) +
                                  " bytes is too small for an image of " + std::to_string(wholeBytes) + " bytes.";
    }
}

} // namespace Velmo::Emulation::Internal
