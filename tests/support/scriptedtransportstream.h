// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/scriptedtransportcamera.h"

#include <condition_variable>
#include <deque>
#include <map>

namespace Test
{

/** The stream of one device. Threads: as IStream; Deliver, CancelAll and the getters from any. */
class CScriptedStream final : public Velmo::Transport::IStream
{
public:
    explicit CScriptedStream(std::shared_ptr<CScriptedCamera> camera);
    ~CScriptedStream() override;

    bool Deliver(const SScriptedImage& image);
    /** The camera is gone: what is queued becomes cancelled. */
    void CancelAll();
    bool IsStarted() const;
    std::size_t GetQueuedCount() const;
    std::size_t GetAnnouncedCount() const;
    bool WaitForQueued(std::size_t count, unsigned int timeoutMs) const;

    void Open() override;
    void Close() override;
    bool IsOpen() const override;
    GenApi::INodeMap* GetNodeMap() override;
    std::size_t GetPayloadBytes() override;
    void AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext) override;
    void RevokeBuffer(void* pContext) override;
    void QueueBuffer(void* pContext) override;
    void Start() override;
    void Stop() override;
    bool RetrieveResult(Velmo::Transport::SStreamResult& result, unsigned int timeoutMs) override;
    void WakeUp() override;

private:
    struct SBuffer
    {
        void* pMemory = nullptr;
        std::size_t bytes = 0;
    };
    void Pass(EStep step) const;
    void RefuseWhenRemoved() const;
    void CancelLocked();

    const std::shared_ptr<CScriptedCamera> m_camera;
    CScriptedPort m_port;
    std::unique_ptr<GenApi::INodeMap> m_nodeMap;
    mutable std::mutex m_mutex; // guards the members below
    mutable std::condition_variable m_changed;
    std::map<void*, SBuffer> m_announced;
    std::vector<void*> m_queued; // oldest first
    std::deque<Velmo::Transport::SStreamResult> m_results;
    std::uint64_t m_lastBlockId = 0;
    bool m_open = false;
    bool m_started = false;
    bool m_woken = false;
};

} // namespace Test
