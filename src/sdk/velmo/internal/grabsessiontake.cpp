// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/exceptiontext.h"
#include "velmo/internal/grabsession.h"
#include "velmo/internal/threadpriority.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace Velmo::Internal
{

namespace
{

constexpr unsigned int LongestWaitMs = 60000; // a wait without deadline is a sequence of these

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

} // namespace

CGrabSession::ETake CGrabSession::Take(CGrabResultPtr& result, const std::optional<Clock::time_point>& deadline)
{
    CGrabBuffer* pBuffer = nullptr;
    const ETake outcome = HasEngine() ? TakeFromOutput(pBuffer, deadline) : TakeFromStream(pBuffer, deadline);
    if (outcome != ETake::Result)
    {
        return outcome;
    }
    bool isSurplus = false; // several threads may have waited for the last image
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        isSurplus = IsComplete();
        if (!isSurplus)
        {
            pBuffer->state = CGrabBuffer::EState::Out;
            pBuffer->Number(++m_taken, std::exchange(m_skipped, 0));
        }
    }
    if (isSurplus)
    {
        Return(*pBuffer);
        return ETake::Stopped;
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
    // Looked at after the count was raised: who passes a wake-up on either sees this thread or is seen by it.
    if (m_stop)
    {
        return false;
    }
    return m_stream.RetrieveResult(result, m_removed || m_starved ? 0 : timeoutMs);
}

void CGrabSession::PassOnWakeUp()
{
    if ((m_stop || m_removed || m_starved) && m_retrieving > 0)
    {
        m_stream.WakeUp(); // one wake-up ends one wait
    }
}

CGrabSession::ETake CGrabSession::TakeFromStream(CGrabBuffer*& pBuffer,
                                                 const std::optional<Clock::time_point>& deadline)
{
    while (!m_stop)
    {
        const bool removed = m_removed;
        const bool starved = m_starved;
        Transport::SStreamResult result;
        // The first look may have been ended by a wake-up.
        const bool found =
            RetrieveOnce(result, RemainingMs(deadline)) || ((removed || starved) && RetrieveOnce(result, 0));
        if (found)
        {
            const bool cancelled = result.status == Transport::EResultStatus::Canceled;
            pBuffer = Accept(std::move(result));
            if (!cancelled || (!m_stop && !removed && !m_device.IsRemoved()))
            {
                return ETake::Result;
            }
            m_removed = m_removed || m_device.IsRemoved();
            continue;
        }
        if (!m_stop && !removed && !starved && !IsOver(deadline))
        {
            continue;
        }
        PassOnWakeUp();
        return m_stop ? ETake::Stopped : removed ? ETake::Removed : starved ? ETake::Starved : ETake::Timeout;
    }
    PassOnWakeUp();
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

} // namespace Velmo::Internal
