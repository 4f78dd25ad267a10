// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/softwarenodemap.h"
#include "transport/stream.h"
#include "transports/gige/internal/camera.h"
#include "transports/gige/internal/reception.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace Velmo::GigE::Internal
{

/**
 * What the streams of controlled and of watched cameras have in common: buffers, results, statistics, parameters. How
 * images come in is the reception's affair.
 *
 * Locks: m_runMutex, then m_mutex, then the reception's own. Threads: see IStream.
 */
class ACameraStream : public Transport::IStream
{
public:
    ~ACameraStream() override;

    /** The device is about to be closed. */
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

protected:
    explicit ACameraStream(const char* modelName) : m_modelName(modelName) {}
    /** The device was opened. */
    void AttachTo(SCamera& camera) { m_pCamera = &camera; }
    /** Throws RuntimeException while the device is not open. */
    SCamera& Camera() const;
    /** The camera's features, as they are now. */
    virtual GenApi::INodeMap& Features() = 0;
    /** The parameters between the payload size and the statistics. */
    virtual void AddSettings(Transport::CSoftwareNodeMap& parameters) = 0;
    /** Calls that while no start can begin. Throws LogicalErrorException at once when the stream is started, or a start
     *  or an end is under way, which may wait for the caller's locks. */
    void RunWhileStopped(const std::function<void()>& function);
    /** Prepares the camera for the run that begins. */
    virtual std::unique_ptr<IReception> MakeReception(Deliver deliver) = 0;

private:
    struct SMemory
    {
        std::uint8_t* pMemory = nullptr;
        std::size_t bytes = 0;
    };

    void AddPayloadSize(Transport::CSoftwareNodeMap& parameters);
    void AddStatistics(Transport::CSoftwareNodeMap& parameters);
    void CheckNotRemoved() const;
    SStreamStatistics ReadStatistics();
    void Begin(std::unique_ptr<IReception> pReception);
    void TakeResult(Transport::SStreamResult result);
    std::unique_ptr<IReception> TakeReception();

    const char* const m_modelName; // of the parameters
    SCamera* m_pCamera = nullptr;
    std::unique_ptr<Transport::CSoftwareNodeMap> m_pParameters;

    std::mutex m_runMutex; // one start or end at a time
    std::mutex m_mutex;    // guards what follows; not held while a reception begins or ends
    std::condition_variable m_changed;
    std::unique_ptr<IReception> m_pReception; // while started
    std::map<void*, SMemory> m_announced;
    std::deque<void*> m_queued; // with the reception, or waiting for Start
    std::deque<Transport::SStreamResult> m_results;
    SStreamStatistics m_statistics; // of the last run
    bool m_isWakeUp = false;
};

} // namespace Velmo::GigE::Internal
