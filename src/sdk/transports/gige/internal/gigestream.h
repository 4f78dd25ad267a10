// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/softwarenodemap.h"
#include "transport/stream.h"
#include "transports/gige/internal/blockcounter.h"
#include "transports/gige/internal/engine.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

namespace Velmo::GigE::Internal
{

class CReaper;
struct SOpenCamera;

/**
 * A camera's image stream through the engine, without copying: the engine writes into the announced memory.
 *
 * Results are taken over on the engine's receive thread, in the order of the camera's frames.
 * Locks: m_engineMutex, then m_mutex. Threads: see IStream.
 */
class CGigEStream : public Transport::IStream
{
public:
    explicit CGigEStream(CReaper& reaper);
    ~CGigEStream() override;

    /** The device was opened, or is about to be closed. */
    void Attach(SOpenCamera* pCamera);
    void Detach();
    /** The camera is gone: ends receiving and gives all buffers back. */
    void OnRemoved();

    void Open() override;
    void Close() override;
    bool IsOpen() const override { return m_pParameters != nullptr; }
    GenApi::INodeMap* GetNodeMap() override;
    std::size_t GetPayloadBytes() override;
    void AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext) override;
    void RevokeBuffer(void* pContext) override;
    void QueueBuffer(void* pContext) override;
    void Start() override;
    void Stop() override;
    bool RetrieveResult(Transport::SStreamResult& result, unsigned int timeoutMs) override;
    void WakeUp() override;

private:
    struct SStatistics
    {
        std::uint64_t delivered = 0;
        std::uint64_t lost = 0;
        std::uint64_t incomplete = 0;
        std::uint64_t askedFor = 0;
        std::uint64_t resent = 0;
        std::uint64_t missing = 0;
    };

    struct SAnnounced
    {
        ObjectPtr<ArvBuffer> pBuffer;
        std::size_t bytes = 0;
    };

    static void OnEngineEvent(void* pUser, ArvStreamCallbackType type, ArvBuffer* pBuffer);
    SOpenCamera& Camera() const;
    void BuildParameters();
    void AddStatistic(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
                      std::uint64_t SStatistics::*pMember, bool isCustom);
    SStatistics ReadStatistics();
    void ChoosePacketSize();
    void AskForGeometry();
    void CreateEngineStream();
    void SizeSocketBuffer(ArvStream* pStream, std::size_t payloadBytes);
    void TakeResults(ArvStream* pStream);
    void EndEngineStream();
    void CancelQueued();

    CReaper& m_reaper;
    SOpenCamera* m_pCamera = nullptr;
    std::unique_ptr<Transport::CSoftwareNodeMap> m_pParameters;
    bool m_isResending = true;
    bool m_isChoosingPacketSize = true;
    std::int64_t m_packetTimeoutUs = 20000;
    std::int64_t m_frameRetentionUs = 200000;

    std::mutex m_engineMutex; // one start or end at a time
    std::mutex m_mutex;       // guards what follows; not held while the engine's thread is awaited
    std::condition_variable m_changed;
    ArvStream* m_pStream = nullptr;
    std::map<void*, SAnnounced> m_announced;
    std::deque<void*> m_queued; // with the engine, or waiting for Start
    std::deque<Transport::SStreamResult> m_results;
    CBlockCounter m_blockCounter;
    bool m_isWakeUp = false;
    SStatistics m_statistics; // of the present or last run
};

} // namespace Velmo::GigE::Internal
