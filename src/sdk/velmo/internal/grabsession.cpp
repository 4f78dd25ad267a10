// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/grabsession.h"

#include "velmo/internal/exceptiontext.h"
#include "velmo/internal/threadpriority.h"
#include "velmo/log.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Velmo::Internal
{

namespace
{

constexpr unsigned int LongestWaitMs = 60000; // a wait without deadline is a sequence of these
constexpr unsigned int DrainWaitMs = 100;
constexpr std::chrono::seconds DrainLimit{2};

unsigned int RemainingMs(const std::optional<CGrabSession::Clock::time_point>& deadline)
{
    if (!deadline)
    {
        return LongestWaitMs;
    }
    const auto remaining = std::chrono::ceil<std::chrono::milliseconds>(*deadline - CGrabSession::Clock::now()).count();
    return static_cast<unsigned int>(std::clamp<std::int64_t>(remaining, 0, LongestWaitMs));
}

bool IsOver(const std::optional<CGrabSession::Clock::time_point>& deadline)
{
    return deadline && CGrabSession::Clock::now() >= *deadline;
}

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
        if (HasEngine())
        {
            m_engine = std::thread([this] { RunEngine(); });
        }
    }
    catch (...)
    {
        m_stop = true;
        Finish();
        throw;
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

CGrabSession::ETake CGrabSession::Take(CGrabResultPtr& result, const std::optional<Clock::time_point>& deadline)
{
    CGrabBuffer* pBuffer = nullptr;
    const ETake outcome = HasEngine() ? TakeFromOutput(pBuffer, deadline) : TakeFromStream(pBuffer, deadline);
    if (outcome != ETake::Result)
    {
        return outcome;
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        pBuffer->state = CGrabBuffer::EState::Out;
        pBuffer->Number(++m_taken, std::exchange(m_skipped, 0));
    }
    m_failed += pBuffer->GrabSucceeded() ? 0 : 1;
    result = pBuffer->HandOut(shared_from_this());
    return ETake::Result;
}

bool CGrabSession::RetrieveOnce(Transport::SStreamResult& result, unsigned int timeoutMs)
{
    struct SRetrieving
    {
        explicit SRetrieving(std::atomic<int>& count) : m_count(count) { ++m_count; }
        ~SRetrieving() { --m_count; }
        std::atomic<int>& m_count;
    } retrieving(m_retrieving);
    return m_stream.RetrieveResult(result, timeoutMs);
}

CGrabSession::ETake CGrabSession::TakeFromStream(CGrabBuffer*& pBuffer,
                                                 const std::optional<Clock::time_point>& deadline)
{
    while (!m_stop)
    {
        Transport::SStreamResult result;
        bool found = RetrieveOnce(result, m_removed ? 0 : RemainingMs(deadline));
        const bool removed = m_removed.load();
        if (!found && removed && !m_stop)
        {
            found = RetrieveOnce(result, 0); // the first may have been ended by the removal's wake-up
        }
        if (found)
        {
            const bool cancelled = result.status == Transport::EResultStatus::Canceled;
            pBuffer = Accept(std::move(result));
            if (!cancelled || (!m_stop && !removed && !m_device.IsRemoved()))
            {
                return ETake::Result;
            }
            m_removed = m_removed || m_device.IsRemoved();
        }
        else if (removed && !m_stop)
        {
            return ETake::Removed;
        }
        else if (IsOver(deadline) && !m_stop)
        {
            return ETake::Timeout;
        }
    }
    if (m_retrieving > 0)
    {
        m_stream.WakeUp(); // one wake-up ends one wait: pass it on
    }
    return ETake::Stopped;
}

CGrabBuffer* CGrabSession::Accept(Transport::SStreamResult&& result)
{
    auto* pBuffer = static_cast<CGrabBuffer*>(result.pContext);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        pBuffer->state = CGrabBuffer::EState::Idle;
        --m_queued;
    }
    if (!m_stop)
    {
        QueueSpare();
    }
    pBuffer->Fill(std::move(result));
    return pBuffer;
}

CGrabSession::ETake CGrabSession::TakeFromOutput(CGrabBuffer*& pBuffer,
                                                 const std::optional<Clock::time_point>& deadline)
{
    std::vector<CGrabBuffer*> stale;
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_config.strategy == GrabStrategy_UpcomingImage && m_takers == 0 && !m_output.empty())
    {
        stale.swap(m_output);
        m_output.reserve(m_config.maxBuffers);
        DropLocked(stale);
        lock.unlock();
        for (CGrabBuffer* pStale : stale)
        {
            Return(*pStale);
        }
        lock.lock();
    }
    ++m_takers;
    const auto ready = [this]
    {
        return m_stop || !m_output.empty() || m_outputEnd;
    };
    const bool inTime = deadline ? m_changed.wait_until(lock, *deadline, ready) : (m_changed.wait(lock, ready), true);
    --m_takers;
    if (m_stop)
    {
        return ETake::Stopped;
    }
    if (!inTime)
    {
        return ETake::Timeout;
    }
    if (!m_output.empty())
    {
        pBuffer = m_output.front();
        m_output.erase(m_output.begin());
        return ETake::Result;
    }
    if (m_engineError)
    {
        std::rethrow_exception(m_engineError);
    }
    return *m_outputEnd;
}

void CGrabSession::DropLocked(std::vector<CGrabBuffer*>& dropped)
{
    m_skipped += static_cast<std::int64_t>(dropped.size());
    m_skippedTotal += static_cast<std::int64_t>(dropped.size());
}

void CGrabSession::RunEngine()
{
    if (m_config.enginePriority)
    {
        ApplyRealTimePriority(*m_config.enginePriority, "grab engine");
    }
    try
    {
        CGrabBuffer* pBuffer = nullptr;
        ETake outcome = ETake::Result;
        while ((outcome = TakeFromStream(pBuffer, std::nullopt)) == ETake::Result)
        {
            PutOut(*pBuffer);
        }
        EndOutput(outcome, nullptr);
    }
    catch (...)
    {
        EndOutput(ETake::Stopped, std::current_exception());
    }
}

void CGrabSession::EndOutput(ETake why, std::exception_ptr error)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_outputEnd = why;
    m_engineError = std::move(error);
    m_changed.notify_all();
}

void CGrabSession::PutOut(CGrabBuffer& buffer)
{
    const std::size_t limit = m_config.strategy == GrabStrategy_LatestImages ? m_config.outputQueueSize : 1;
    CGrabBuffer* pDropped = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const bool wanted = m_config.strategy != GrabStrategy_UpcomingImage || m_takers > m_output.size();
        if (wanted)
        {
            buffer.state = CGrabBuffer::EState::Output;
            m_output.push_back(&buffer);
            if (m_config.strategy != GrabStrategy_UpcomingImage && m_output.size() > limit)
            {
                pDropped = m_output.front();
                m_output.erase(m_output.begin());
            }
            m_changed.notify_all();
        }
        else
        {
            pDropped = &buffer;
        }
        const std::int64_t skipped = pDropped == nullptr ? 0 : 1;
        m_skipped += skipped;
        m_skippedTotal += skipped;
    }
    if (pDropped != nullptr)
    {
        Return(*pDropped);
    }
}

void CGrabSession::RequestStop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
        m_changed.notify_all();
    }
    if (EnterStream())
    {
        m_stream.WakeUp();
        LeaveStream();
    }
}

void CGrabSession::NotifyRemoved()
{
    m_removed = true;
    if (EnterStream())
    {
        m_stream.WakeUp();
        LeaveStream();
    }
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

void CGrabSession::QueueSpare()
{
    CGrabBuffer* pBuffer = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_closing || m_spare.empty() || m_queued >= m_config.maxQueued)
        {
            return;
        }
        pBuffer = m_spare.back();
        m_spare.pop_back();
        pBuffer->state = CGrabBuffer::EState::Queued;
        ++m_queued;
        ++m_inStream;
    }
    QueueToStream(*pBuffer);
    LeaveStream();
}

void CGrabSession::QueueToStream(CGrabBuffer& buffer)
{
    try
    {
        m_stream.QueueBuffer(&buffer);
    }
    catch (...)
    {
        // The device is gone or its stream broken: the grab ends for that reason, not for this buffer.
        LogFailure("Queueing a buffer");
        const std::lock_guard<std::mutex> lock(m_mutex);
        buffer.state = CGrabBuffer::EState::Idle;
        --m_queued;
    }
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
        if (buffer->state != CGrabBuffer::EState::Out)
        {
            buffer->FreeMemory();
        }
    }
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
        }
        catch (...)
        {
            LogFailure("Revoking a buffer"); // one that was never announced, when the start failed half way
        }
    }
}

} // namespace Velmo::Internal
