// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/softwarenodemap.h"
#include "transport/stream.h"
#include "transports/gige/internal/frameassembler.h"
#include "transports/gige/internal/gvspreceiver.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <set>

namespace Velmo::GigE::Internal
{

struct SMonitorCamera;

/**
 * The image stream of a camera that another application controls, as that application had it sent to a multicast group.
 *
 * It speaks to nobody: the group and the port are read from the camera, packets that are missing are not asked for.
 * When nothing arrives, it looks every second whether the stream goes elsewhere now.
 * Locks: m_receiverMutex, then m_mutex. Threads: see IStream; images are assembled on the receiver's thread.
 */
class CMonitorStream : public Transport::IStream
{
public:
    CMonitorStream();
    ~CMonitorStream() override;

    /** The device was opened, or is about to be closed. */
    void Attach(SMonitorCamera* pCamera);
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
    /** Throws RuntimeException when the camera does not stream to a multicast group. */
    void Start() override;
    void Stop() override;
    bool RetrieveResult(Transport::SStreamResult& result, unsigned int timeoutMs) override;
    void WakeUp() override;

private:
    struct SMemory
    {
        std::uint8_t* pMemory = nullptr;
        std::size_t bytes = 0;
    };

    SMonitorCamera& Camera() const;
    void BuildParameters();
    void AddStatistic(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
                      std::uint64_t SAssemblerCounters::*pMember, bool isCustom);
    CGvspReceiver::SConfig ReadConfig();
    void BeginAssembling(std::size_t packetBytes);
    SMulticastGroup ReadGroup() const;
    std::optional<SMulticastGroup> LookAgain() const;
    std::optional<CGvspReceiver::Time> Take(const std::vector<CGvspReceiver::SDatagram>& datagrams,
                                            CGvspReceiver::Time now);
    void TakeResults();
    void EndReceiving();

    SMonitorCamera* m_pCamera = nullptr;
    std::unique_ptr<Transport::CSoftwareNodeMap> m_pParameters;
    std::int64_t m_frameRetentionUs = 200000;

    std::mutex m_receiverMutex; // one start or end at a time; guards m_pReceiver
    std::unique_ptr<CGvspReceiver> m_pReceiver;
    std::mutex m_mutex; // guards what follows; not held while the receiver's thread is awaited
    std::condition_variable m_changed;
    std::unique_ptr<CFrameAssembler> m_pAssembler; // while started
    std::map<void*, SMemory> m_announced;
    std::set<void*> m_queued;
    std::deque<void*> m_waiting; // queued, while not started
    std::deque<Transport::SStreamResult> m_results;
    SAssemblerCounters m_counters; // of the present or last run
    bool m_isWakeUp = false;
};

} // namespace Velmo::GigE::Internal
