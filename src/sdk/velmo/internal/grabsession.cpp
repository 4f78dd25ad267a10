// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/grabsession.h"

#include "velmo/internal/exceptiontext.h"
#include "velmo/log.h"

#include <limits>
#include <system_error>

namespace Velmo::Internal
{

namespace
{

constexpr unsigned int DrainWaitMs = 100;
constexpr std::chrono::seconds DrainLimit{2};

void LogFailure(const char* what)
{
    Log(ELogLevel::Debug, "velmo.camera", std::string(what) + " failed: " + CurrentExceptionText());
}

} // namespace

CGrabSession::CGrabSession(IVelmoDevice& device, const SGrabConfig& config)
    : m_device(device), m_stream(*device.GetStream(0)), m_config(config)
{
}

CGrabSession::~CGrabSession() = default;

void CGrabSession::Start()
{
    try
    {
        MakeBuffers();
        m_stream.Start();
        StartEngine();
    }
    catch (...)
    {
        m_stop = true;
        Finish();
        throw;
    }
}

void CGrabSession::StartEngine()
{
    if (!HasEngine())
    {
        return;
    }
    try
    {
        m_engine = std::thread([this] { RunEngine(); });
    }
    catch (const std::system_error& error)
    {
        GENICAM_THROW(RuntimeException, std::string("The grab engine thread cannot be started: ") + error.what());
    }
}

void CGrabSession::MakeBuffers()
{
    const std::size_t bytes = m_stream.GetPayloadBytes();
    if (bytes == 0)
    {
        GENICAM_THROW(RuntimeException, "The stream of '" + m_device.GetDeviceInfo().GetFriendlyName().str() +
                                            "' reports a payload size of 0 bytes.");
    }
    if (bytes > static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / m_config.maxBuffers)
    {
        GENICAM_THROW(BadAllocException, "There is no memory for " + std::to_string(m_config.maxBuffers) +
                                             " image buffers of " + std::to_string(bytes) + " bytes.");
    }
    m_buffers.reserve(m_config.maxBuffers);
    m_spare.reserve(m_config.maxBuffers);
    m_output.reserve(m_config.maxBuffers);
    while (m_buffers.size() < m_config.maxBuffers)
    {
        m_buffers.push_back(std::make_unique<CGrabBuffer>(bytes));
    }
    for (const auto& buffer : m_buffers)
    {
        m_stream.AnnounceBuffer(buffer->GetMemory(), bytes, buffer.get());
    }
    for (const auto& buffer : m_buffers)
    {
        if (m_queued < m_config.maxQueued)
        {
            m_stream.QueueBuffer(buffer.get());
            buffer->state = CGrabBuffer::EState::Queued;
            ++m_queued;
        }
        else
        {
            m_spare.push_back(buffer.get());
        }
    }
}

bool CGrabSession::IsComplete() const
{
    return m_config.maxImages != 0 && m_taken.load() >= static_cast<std::int64_t>(m_config.maxImages);
}

std::size_t CGrabSession::GetQueuedCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_queued;
}

void CGrabSession::RequestStop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
        m_changed.notify_all();
    }
    WakeTakers();
}

void CGrabSession::NotifyRemoved()
{
    m_removed = true;
    WakeTakers();
}

void CGrabSession::WakeTakers()
{
    if (!EnterStream())
    {
        return;
    }
    try
    {
        m_stream.WakeUp();
    }
    catch (...)
    {
        LogFailure("Waking the grab");
    }
    LeaveStream();
}

bool CGrabSession::EnterStream()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_inStream += m_closing ? 0 : 1;
    return !m_closing;
}

void CGrabSession::LeaveStream()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    --m_inStream;
    m_changed.notify_all();
}

void CGrabSession::Return(CGrabBuffer& buffer)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        buffer.state = CGrabBuffer::EState::Idle;
        if (m_closed)
        {
            buffer.FreeMemory();
            return;
        }
        m_spare.push_back(&buffer);
    }
    QueueSpare();
}

CGrabBuffer* CGrabSession::TakeSpare()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_closing || m_spare.empty() || m_queued >= m_config.maxQueued)
    {
        return nullptr;
    }
    CGrabBuffer* pBuffer = m_spare.back();
    m_spare.pop_back();
    pBuffer->state = CGrabBuffer::EState::Queued;
    ++m_queued;
    ++m_inStream;
    return pBuffer;
}

void CGrabSession::QueueSpare()
{
    bool isQueued = true;
    while (isQueued)
    {
        CGrabBuffer* pBuffer = TakeSpare();
        if (pBuffer == nullptr)
        {
            return;
        }
        isQueued = QueueToStream(*pBuffer);
        LeaveStream();
    }
}

bool CGrabSession::QueueToStream(CGrabBuffer& buffer)
{
    try
    {
        m_stream.QueueBuffer(&buffer);
        return true;
    }
    catch (...)
    {
        LogFailure("Queueing a buffer");
        KeepUnqueued(buffer, CurrentExceptionText());
        return false;
    }
}

void CGrabSession::KeepUnqueued(CGrabBuffer& buffer, const std::string& reason)
{
    const bool removed = m_removed || m_device.IsRemoved();
    bool starved = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        buffer.state = CGrabBuffer::EState::Idle;
        --m_queued;
        m_spare.push_back(&buffer); // the next buffer that comes back brings it along
        starved = m_queued == 0 && !removed && !m_starved;
        if (starved)
        {
            m_starvedReason = "The stream takes no image buffer any more: " + reason;
            m_starved = true;
        }
    }
    if (starved)
    {
        WakeTakers();
    }
}

std::string CGrabSession::GetStarvedReason() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_starvedReason;
}

void CGrabSession::Finish()
{
    if (m_engine.joinable())
    {
        m_engine.join();
    }
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_closing = true;
        m_changed.wait(lock, [this] { return m_inStream == 0; });
    }
    try
    {
        m_stream.Stop();
        Drain();
    }
    catch (...)
    {
        LogFailure("Stopping the stream");
    }
    RevokeAll();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_closed = true;
    for (const auto& buffer : m_buffers)
    {
        if (buffer->state != CGrabBuffer::EState::Out && buffer->state != CGrabBuffer::EState::Queued)
        {
            buffer->FreeMemory();
        }
    }
}

bool CGrabSession::IsStreamKeepingBuffers() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_closed && m_queued > 0;
}

void CGrabSession::Drain()
{
    const auto limit = Clock::now() + DrainLimit;
    Transport::SStreamResult result;
    while (GetQueuedCount() > 0)
    {
        if (m_stream.RetrieveResult(result, DrainWaitMs))
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            static_cast<CGrabBuffer*>(result.pContext)->state = CGrabBuffer::EState::Idle;
            --m_queued;
        }
        else if (Clock::now() >= limit)
        {
            Log(ELogLevel::Warning, "velmo.camera",
                "The stream of '" + m_device.GetDeviceInfo().GetFriendlyName().str() + "' kept " +
                    std::to_string(GetQueuedCount()) + " buffers after it was stopped.");
            return;
        }
    }
}

void CGrabSession::RevokeAll()
{
    for (const auto& buffer : m_buffers)
    {
        try
        {
            m_stream.RevokeBuffer(buffer.get());
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (buffer->state == CGrabBuffer::EState::Queued)
            {
                buffer->state = CGrabBuffer::EState::Idle;
                --m_queued;
            }
        }
        catch (...)
        {
            LogFailure("Revoking a buffer"); // also one that was never announced, when the start failed half way
        }
    }
}

} // namespace Velmo::Internal
