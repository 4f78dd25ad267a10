// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameramodel.h"
#include "transport/softwarenodemap.h"
#include "transport/stream.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace Velmo::Emulation::Internal
{

/** The one stream of an emulated camera: copies each frame into the buffer queued longest. Nothing is allocated per
 *  image: buffers are chained through their own records. */
class CEmulationStream final : public Transport::IStream, private Simulator::IFrameSink
{
public:
    explicit CEmulationStream(std::shared_ptr<Simulator::CCameraModel> camera);
    ~CEmulationStream() override;

    /** A monitor's stream leaves the camera's settings unlocked. Before Open. */
    void SetMonitor(bool isMonitor) { m_isMonitor = isMonitor; }

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
    bool RetrieveResult(Transport::SStreamResult& result, unsigned int timeoutMs) override;
    void WakeUp() override;

    /** The camera is gone: queued buffers come back cancelled, nothing is accepted any more. Threads: any. */
    void OnRemoved();

private:
    struct SBuffer
    {
        std::uint8_t* memory = nullptr;
        std::size_t bytes = 0;
        bool isQueued = false; // to the stream, or in the output
        SBuffer* next = nullptr;
        Transport::SStreamResult result;
    };
    /** First in, first out. */
    struct SChain
    {
        void Push(SBuffer& buffer);
        SBuffer* Pop();
        void Remove(SBuffer& buffer);
        SBuffer* first = nullptr;
        SBuffer* last = nullptr;
    };

    std::unique_ptr<Transport::CSoftwareNodeMap> MakeParameters();
    bool OnFrame(const Simulator::SFrame& frame) override;
    static void Fill(SBuffer& buffer, const Simulator::SFrame& frame);
    void CancelQueued();
    void CheckNotRemoved() const;
    SBuffer& Find(void* pContext);

    const std::shared_ptr<Simulator::CCameraModel> m_camera;
    bool m_isMonitor = false;
    std::unique_ptr<Transport::CSoftwareNodeMap> m_nodeMap; // while open

    mutable std::mutex m_mutex; // guards all below; not held while a frame is copied
    std::condition_variable m_changed;
    std::unordered_map<void*, SBuffer> m_buffers; // by context; records stay where they are
    SChain m_input;
    SChain m_output;
    std::uint64_t m_total = 0;
    std::uint64_t m_failed = 0;
    std::uint64_t m_underruns = 0;
    bool m_isOpen = false;
    bool m_isStarted = false;
    bool m_isRemoved = false;
    bool m_isWoken = false;
};

} // namespace Velmo::Emulation::Internal
