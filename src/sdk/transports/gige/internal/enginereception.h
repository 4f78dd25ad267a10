// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/blockcounter.h"
#include "transports/gige/internal/engine.h"
#include "transports/gige/internal/reception.h"

#include <map>
#include <mutex>

namespace Velmo::GigE::Internal
{

class CReaper;
struct SOpenCamera;

/**
 * Receives a unicast stream through the engine, without copying: the engine writes into the buffers.
 *
 * Results are delivered on the engine's receive thread, in the order of the camera's frames.
 */
class CEngineReception : public IReception
{
public:
    struct SSettings
    {
        bool isResending = true;
        std::int64_t packetTimeoutUs = 0;
        std::int64_t frameRetentionUs = 0;
        std::size_t payloadBytes = 0;
    };

    /** Throws what the engine says when the camera's stream cannot be opened. */
    CEngineReception(SOpenCamera& camera, CReaper& reaper, const SSettings& settings, Deliver deliver);
    ~CEngineReception() override;
    CEngineReception(const CEngineReception&) = delete;
    CEngineReception& operator=(const CEngineReception&) = delete;

    void Begin() override {} // the engine does since its stream was made
    void AddBuffer(void* pContext, std::uint8_t* pMemory, std::size_t bytes) override;
    SStreamStatistics GetStatistics() override;
    SStreamStatistics End() override;

private:
    struct SBuffer
    {
        ObjectPtr<ArvBuffer> pBuffer;
        std::uint8_t* pMemory = nullptr;
        std::size_t bytes = 0;
    };

    static void OnNewBuffer(ArvStream* pStream, void* pUser);
    void SizeSocketBuffer(std::size_t payloadBytes);
    void TakeResults();

    SOpenCamera& m_camera;
    CReaper& m_reaper;
    const Deliver m_deliver;
    std::mutex m_mutex;                 // guards what follows; not held while anything is delivered
    ArvStream* m_pStream = nullptr;     // until End
    std::map<void*, SBuffer> m_buffers; // by context, also those that are not queued: an engine object each is enough
    CBlockCounter m_blockCounter;
};

} // namespace Velmo::GigE::Internal
