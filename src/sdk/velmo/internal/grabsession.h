// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/device.h"
#include "velmo/instantcamera.h"
#include "velmo/internal/grabbuffer.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Velmo::Internal
{

/** What a grab was asked to be. */
struct SGrabConfig
{
    EGrabStrategy strategy = GrabStrategy_OneByOne;
    EGrabLoop loop = GrabLoop_ProvidedByUser;
    std::size_t maxImages = 0; // 0: no end
    std::size_t maxBuffers = 10;
    std::size_t maxQueued = 10;
    std::size_t outputQueueSize = 1;
    bool monitor = false;
    std::optional<unsigned int> loopTimeoutMs;
    std::optional<int> loopPriority;
    std::optional<int> enginePriority;
};

/**
 * One grab, from its start to its stop, and its buffers for as long as anyone looks at them.
 *
 * With the strategy OneByOne results are taken from the stream by whoever asks; with the others an engine thread takes
 * them at once and keeps what the strategy wants.
 * Life: constructed -> Start -> Take... -> RequestStop -> Finish. The device must live until Finish has returned.
 * Threads: Take, Return, RequestStop, NotifyRemoved and the counters from any; Start and Finish from one.
 */
class CGrabSession : public std::enable_shared_from_this<CGrabSession>
{
public:
    enum class ETake
    {
        Result,
        Timeout,
        Stopped,
        Removed,
        Starved // the stream has no buffer and takes none; see GetStarvedReason
    };
    using Clock = std::chrono::steady_clock;

    CGrabSession(IVelmoDevice& device, const SGrabConfig& config);
    ~CGrabSession();

    /** Makes and queues the buffers and starts the stream; on an exception everything is undone. */
    void Start();
    /** The next result. What the stream throws is passed on. No deadline: waits until there is one. */
    ETake Take(CGrabResultPtr& result, const std::optional<Clock::time_point>& deadline);
    /** Ends Take in every thread. */
    void RequestStop();
    bool IsStopRequested() const { return m_stop.load(); }
    /** The device is gone: Take ends when what has arrived is taken. */
    void NotifyRemoved();
    /** Stops the stream and takes the buffers back; what users hold stays theirs. Never throws. */
    void Finish();
    /** True when the stream did not give all buffers back: their memory must stay, and so must the session, until the
     *  stream is closed. */
    bool IsStreamKeepingBuffers() const;
    /** Called by a buffer whose last user has gone. */
    void Return(CGrabBuffer& buffer);

    std::string GetStarvedReason() const;
    const SGrabConfig& GetConfig() const { return m_config; }
    /** True when as many results were taken as were asked for. */
    bool IsComplete() const;
    std::int64_t GetTakenCount() const { return m_taken.load(); }
    std::int64_t GetFailedCount() const { return m_failed.load(); }
    std::int64_t GetSkippedCount() const { return m_skippedTotal.load(); }
    std::size_t GetQueuedCount() const;
    /** Whether the engine's thread takes the buffers from the stream. */
    bool HasEngine() const { return m_config.strategy != GrabStrategy_OneByOne; }

private:
    void MakeBuffers();
    void StartEngine();
    ETake TakeFromStream(CGrabBuffer*& pBuffer, const std::optional<Clock::time_point>& deadline);
    ETake TakeFromOutput(CGrabBuffer*& pBuffer, const std::optional<Clock::time_point>& deadline);
    CGrabBuffer* Accept(Transport::SStreamResult&& result);
    bool RetrieveOnce(Transport::SStreamResult& result, unsigned int timeoutMs);
    void RunEngine();
    void PutOut(CGrabBuffer& buffer);
    void DropLocked(std::vector<CGrabBuffer*>& dropped);
    void EndOutput(ETake why, std::exception_ptr error);
    /** Whether the stream may be called; each true needs a LeaveStream. */
    bool EnterStream();
    void LeaveStream();
    void WakeTakers();
    void PassOnWakeUp();
    /** Queues what there is to queue; ends at the first buffer that the stream refuses. */
    void QueueSpare();
    CGrabBuffer* TakeSpare();
    bool QueueToStream(CGrabBuffer& buffer);
    void KeepUnqueued(CGrabBuffer& buffer, const std::string& reason);
    void Drain();
    void RevokeAll();

    IVelmoDevice& m_device;
    Transport::IStream& m_stream;
    const SGrabConfig m_config;
    std::vector<std::unique_ptr<CGrabBuffer>> m_buffers;
    std::atomic<bool> m_stop{false};
    std::atomic<bool> m_removed{false};
    std::atomic<bool> m_starved{false};
    std::atomic<int> m_retrieving{0};
    std::atomic<std::int64_t> m_failed{0};
    std::atomic<std::int64_t> m_skippedTotal{0};
    std::atomic<std::int64_t> m_taken{0};

    mutable std::mutex m_mutex; // guards the members below; never held while the stream is called
    std::condition_variable m_changed;
    std::vector<CGrabBuffer*> m_spare;
    std::string m_starvedReason;
    std::size_t m_queued = 0;
    unsigned int m_inStream = 0;
    bool m_closing = false;
    bool m_closed = false;
    std::int64_t m_skipped = 0; // since the last taken result
    // The engine's side.
    std::vector<CGrabBuffer*> m_output; // oldest first
    unsigned int m_takers = 0;
    std::optional<ETake> m_outputEnd;
    std::exception_ptr m_engineError;
    std::thread m_engine;
};

} // namespace Velmo::Internal
