// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/enginereception.h"

#include "transport/log.h"
#include "transports/gige/internal/opencamera.h"
#include "transports/gige/internal/reaper.h"
#include "transports/gige/internal/socketbuffer.h"
#include "transports/gige/internal/streamresult.h"

#include <chrono>
#include <memory>
#include <string>
#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

ObjectPtr<ArvStream> MakeStream(SOpenCamera& camera)
{
    struct SMaking
    {
        ObjectPtr<ArvDevice> pDevice;
        ObjectPtr<ArvStream> pStream;
        CEngineError error;
    };
    const auto pMaking = std::make_shared<SMaking>();
    pMaking->pDevice.reset(ARV_DEVICE(g_object_ref(camera.pEngine.get())));
    const std::string what = "The stream of camera " + camera.name + " cannot be started";
    camera.pCalls->Run(what,
                       [pMaking]
                       {
                           pMaking->pStream.reset(arv_device_create_stream(pMaking->pDevice.get(), nullptr, nullptr,
                                                                           pMaking->error.Receive()));
                       });
    if (pMaking->pStream == nullptr)
    {
        pMaking->error.Throw(what);
    }
    return std::move(pMaking->pStream);
}

} // namespace

CEngineReception::CEngineReception(SOpenCamera& camera, CReaper& reaper, const SSettings& settings, Deliver deliver)
    : m_camera(camera), m_reaper(reaper), m_deliver(std::move(deliver))
{
    ObjectPtr<ArvStream> pStream = MakeStream(camera);
    g_object_set(pStream.get(), "packet-resend",
                 settings.isResending ? ARV_GV_STREAM_PACKET_RESEND_ALWAYS : ARV_GV_STREAM_PACKET_RESEND_NEVER,
                 "packet-timeout", static_cast<guint>(settings.packetTimeoutUs), "frame-retention",
                 static_cast<guint>(settings.frameRetentionUs), nullptr);
    // The engine's callback is not told of buffers that it gives back unfilled; without them it would starve.
    g_signal_connect(pStream.get(), "new-buffer", G_CALLBACK(&CEngineReception::OnNewBuffer), this);
    arv_stream_set_emit_signals(pStream.get(), TRUE);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pStream = pStream.release();
    SizeSocketBuffer(settings.payloadBytes);
}

CEngineReception::~CEngineReception()
{
    CEngineReception::End();
}

void CEngineReception::SizeSocketBuffer(std::size_t payloadBytes)
{
    const std::size_t bytes = Internal::SizeSocketBuffer(m_camera.name, payloadBytes);
    m_camera.receiveBufferBytes = bytes;
    m_camera.receiveBufferWanted = ChooseSocketBuffer(payloadBytes, 0).wantedBytes;
    g_object_set(m_pStream, "socket-buffer", ARV_GV_STREAM_SOCKET_BUFFER_FIXED, "socket-buffer-size",
                 static_cast<gint>(bytes), nullptr);
    // The engine applies that with the first packet only, which is too late for the first image.
    if (!ApplySocketBuffer(m_camera.adapterIp, arv_gv_stream_get_port(ARV_GV_STREAM(m_pStream)), bytes))
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + m_camera.name + ": the receive buffer could not be sized before the first image, which may " +
                "arrive incompletely.");
    }
}

void CEngineReception::AddBuffer(void* pContext, std::uint8_t* pMemory, std::size_t bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_pStream == nullptr)
    {
        return;
    }
    SBuffer& buffer = m_buffers[pContext];
    if (buffer.pMemory != pMemory || buffer.bytes != bytes)
    {
        buffer = {ObjectPtr<ArvBuffer>(arv_buffer_new_full(bytes, pMemory, pContext, nullptr)), pMemory, bytes};
    }
    arv_stream_push_buffer(m_pStream, ARV_BUFFER(g_object_ref(buffer.pBuffer.get())));
}

void CEngineReception::OnNewBuffer(ArvStream*, void* pUser)
{
    static_cast<CEngineReception*>(pUser)->TakeResults();
}

void CEngineReception::TakeResults()
{
    for (;;)
    {
        Transport::SStreamResult result;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            const ObjectPtr<ArvBuffer> pBuffer(m_pStream == nullptr ? nullptr : arv_stream_try_pop_buffer(m_pStream));
            if (pBuffer == nullptr)
            {
                return;
            }
            const auto found = m_buffers.find(const_cast<void*>(arv_buffer_get_user_data(pBuffer.get())));
            result = MakeStreamResult(pBuffer.get(), found == m_buffers.end() ? 0 : found->second.bytes);
            // One that was given back unfilled has no number that could be relied on.
            const bool isNumbered = arv_buffer_get_status(pBuffer.get()) != ARV_BUFFER_STATUS_CLEARED;
            result.blockId = isNumbered ? m_blockCounter.Extend(result.blockId) : 0;
        }
        m_deliver(std::move(result));
    }
}

SStreamStatistics CEngineReception::GetStatistics()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    SStreamStatistics statistics;
    if (m_pStream != nullptr)
    {
        const auto count = [this](const char* name)
        {
            return arv_stream_get_info_uint64_by_name(m_pStream, name);
        };
        statistics.delivered = count("n_completed_buffers");
        statistics.lost = m_blockCounter.CountSkipped();
        statistics.incomplete = count("n_failures");
        statistics.askedFor = count("n_resend_requests");
        statistics.resent = count("n_resent_packets");
        statistics.missing = count("n_missing_packets");
    }
    return statistics;
}

SStreamStatistics CEngineReception::End()
{
    const SStreamStatistics statistics = GetStatistics();
    ArvStream* pStream = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::swap(pStream, m_pStream);
    }
    if (pStream == nullptr)
    {
        return statistics;
    }
    // Waits for a call under way: the thread of a stream that ends has no reception behind it.
    arv_stream_set_emit_signals(pStream, FALSE);
    // Only its thread ends now, and gives up the buffers: the engine waits for the camera's answers before the rest,
    // for seconds or for ever. Destroying the stream ends the thread once more, for which it must run.
    arv_stream_stop_thread(pStream, TRUE);
    m_reaper.Add(m_camera.deviceIp,
                 [pStream]
                 {
                     arv_stream_start_thread(pStream);
                     g_object_unref(pStream);
                 });
    const bool isThere = !m_camera.pRemoval->IsRemoved() && !m_camera.pRemoval->IsLost() && m_camera.isAnswering();
    constexpr std::chrono::seconds longest{6}; // the engine asks five times every 500 ms for each request
    if (isThere && !m_reaper.WaitFor(m_camera.deviceIp, longest))
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + m_camera.name + " does not end its stream, which goes on in the background.");
    }
    return statistics;
}

} // namespace Velmo::GigE::Internal
