// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gigestream.h"

#include "protocols/gvbsregisters.h"
#include "transport/log.h"
#include "transports/gige/internal/opencamera.h"
#include "transports/gige/internal/reaper.h"
#include "transports/gige/internal/socketbuffer.h"
#include "transports/gige/internal/streamresult.h"

#include <algorithm>
#include <chrono>

namespace Velmo::GigE::Internal
{

namespace
{
constexpr std::uint32_t LoopbackPacketBytes = 9000;
} // namespace

CGigEStream::CGigEStream(CReaper& reaper) : m_reaper(reaper) {}

CGigEStream::~CGigEStream()
{
    Stop();
}

SOpenCamera& CGigEStream::Camera() const
{
    if (m_pCamera == nullptr)
    {
        GENICAM_THROW(RuntimeException, "The stream cannot be used: its camera is not open.");
    }
    return *m_pCamera;
}

void CGigEStream::Attach(SOpenCamera* pCamera)
{
    m_pCamera = pCamera;
}

void CGigEStream::Detach()
{
    Close();
    m_pCamera = nullptr;
}

void CGigEStream::Open()
{
    Camera();
    if (!IsOpen())
    {
        BuildParameters();
    }
}

void CGigEStream::Close()
{
    Stop();
    m_pParameters.reset();
}

GenApi::INodeMap* CGigEStream::GetNodeMap()
{
    return IsOpen() ? m_pParameters->Get() : nullptr;
}

std::size_t CGigEStream::GetPayloadBytes()
{
    const SOpenCamera& camera = Camera();
    const GenApi::CIntegerPtr pPayloadSize(camera.pNodeMap->GetNode("PayloadSize"));
    if (!pPayloadSize)
    {
        GENICAM_THROW(RuntimeException, "The description of camera " + camera.name + " has no PayloadSize.");
    }
    return static_cast<std::size_t>(std::max<std::int64_t>(0, pPayloadSize->GetValue()));
}

void CGigEStream::AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext)
{
    if (pMemory == nullptr || bytes == 0)
    {
        GENICAM_THROW(InvalidArgumentException, "A buffer needs memory.");
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_announced.count(pContext) != 0)
    {
        GENICAM_THROW(InvalidArgumentException, "The buffer is announced already.");
    }
    m_announced[pContext] = {ObjectPtr<ArvBuffer>(arv_buffer_new_full(bytes, pMemory, pContext, nullptr)), bytes};
}

void CGigEStream::RevokeBuffer(void* pContext)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (std::find(m_queued.begin(), m_queued.end(), pContext) != m_queued.end())
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is still queued; stop the stream before revoking it.");
    }
    m_announced.erase(pContext);
}

void CGigEStream::QueueBuffer(void* pContext)
{
    if (Camera().pRemoval->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera " + Camera().name + " was removed.");
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_announced.find(pContext);
    if (found == m_announced.end())
    {
        GENICAM_THROW(InvalidArgumentException, "The buffer was not announced.");
    }
    if (std::find(m_queued.begin(), m_queued.end(), pContext) != m_queued.end())
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is queued already.");
    }
    m_queued.push_back(pContext);
    if (m_pStream != nullptr)
    {
        arv_stream_push_buffer(m_pStream, ARV_BUFFER(g_object_ref(found->second.pBuffer.get())));
    }
}

void CGigEStream::Start()
{
    const std::lock_guard<std::mutex> engineLock(m_engineMutex);
    if (Camera().pRemoval->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera " + Camera().name + " was removed.");
    }
    if (m_pStream != nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "The stream of camera " + Camera().name + " is started already.");
    }
    ChoosePacketSize();
    AskForGeometry();
    CreateEngineStream();
}

void CGigEStream::ChoosePacketSize()
{
    SOpenCamera& camera = Camera();
    const bool isWanted = m_isChoosingPacketSize && !camera.isPacketSizeChosen;
    camera.isPacketSizeChosen = true;
    if (!isWanted)
    {
        return;
    }
    try
    {
        const std::uint32_t setting = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize);
        if (setting != camera.packetSettingAtOpen)
        {
            return; // the user's choice stands
        }
        CEngineError error;
        if (camera.isLoopback)
        {
            camera.pPort->WriteRegister(Gvbs::StreamChannelPacketSize,
                                        (setting & ~Gvbs::ScpsPacketSizeMask) | LoopbackPacketBytes);
        }
        else
        {
            arv_gv_device_auto_packet_size(ARV_GV_DEVICE(camera.pEngine.get()), error.Receive());
        }
        const std::uint32_t chosen = camera.pPort->ReadRegister(Gvbs::StreamChannelPacketSize);
        camera.pNodeMap->InvalidateNodes();
        Log(ELogLevel::Info, "velmo.gige",
            "Camera " + camera.name + ": packets of " + std::to_string(chosen & Gvbs::ScpsPacketSizeMask) + " bytes" +
                (error.IsSet() ? ", for choosing failed: " + error.Text() : std::string()));
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + camera.name + ": the packet size stays as it is: " + e.GetDescription());
    }
}

void CGigEStream::AskForGeometry()
{
    // Payloads with chunks tell the image's geometry only to an application that said that it understands it. Cameras
    // before version 2 of the standard do not have the register.
    SOpenCamera& camera = Camera();
    constexpr std::uint32_t firstVersion = 0x00020000;
    try
    {
        if (camera.pPort->ReadRegister(Gvbs::Version) < firstVersion ||
            (camera.pPort->ReadRegister(Gvbs::StreamChannelCapability) & Gvbs::SccExtendedChunkData) == 0)
        {
            return;
        }
        const std::uint32_t setting = camera.pPort->ReadRegister(Gvbs::StreamChannelConfiguration);
        if ((setting & Gvbs::SccfgExtendedChunkData) == 0)
        {
            camera.pPort->WriteRegister(Gvbs::StreamChannelConfiguration, setting | Gvbs::SccfgExtendedChunkData);
            camera.pNodeMap->InvalidateNodes();
        }
    }
    catch (const GenICam::GenericException& e)
    {
        Log(ELogLevel::Info, "velmo.gige",
            "Camera " + camera.name + ": images with chunks may come without their geometry: " + e.GetDescription());
    }
}

void CGigEStream::CreateEngineStream()
{
    SOpenCamera& camera = Camera();
    const std::size_t payloadBytes = GetPayloadBytes();
    CEngineError error;
    ObjectPtr<ArvStream> pStream(
        arv_device_create_stream(camera.pEngine.get(), &CGigEStream::OnEngineEvent, this, error.Receive()));
    if (pStream == nullptr)
    {
        error.Throw("The stream of camera " + camera.name + " cannot be started");
    }
    g_object_set(pStream.get(), "packet-resend",
                 m_isResending ? ARV_GV_STREAM_PACKET_RESEND_ALWAYS : ARV_GV_STREAM_PACKET_RESEND_NEVER,
                 "packet-timeout", static_cast<guint>(m_packetTimeoutUs), "frame-retention",
                 static_cast<guint>(m_frameRetentionUs), nullptr);
    SizeSocketBuffer(pStream.get(), payloadBytes);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_blockCounter = CBlockCounter();
    m_statistics = SStatistics();
    m_pStream = pStream.release();
    for (void* pContext : m_queued)
    {
        arv_stream_push_buffer(m_pStream, ARV_BUFFER(g_object_ref(m_announced[pContext].pBuffer.get())));
    }
}

void CGigEStream::SizeSocketBuffer(ArvStream* pStream, std::size_t payloadBytes)
{
    const std::size_t bytes = Internal::SizeSocketBuffer(Camera().name, payloadBytes);
    g_object_set(pStream, "socket-buffer", ARV_GV_STREAM_SOCKET_BUFFER_FIXED, "socket-buffer-size",
                 static_cast<gint>(bytes), nullptr);
    // The engine applies that with the first packet only, which is too late for the first image.
    if (!ApplySocketBuffer(Camera().adapterIp, arv_gv_stream_get_port(ARV_GV_STREAM(pStream)), bytes))
    {
        Log(ELogLevel::Warning, "velmo.gige",
            "Camera " + Camera().name + ": the receive buffer could not be sized before the first image, which may " +
                "arrive incompletely.");
    }
}

void CGigEStream::OnEngineEvent(void* pUser, ArvStreamCallbackType type, ArvBuffer*)
{
    if (type != ARV_STREAM_CALLBACK_TYPE_BUFFER_DONE)
    {
        return;
    }
    // Not before: the thread of a stream that is only waiting for its destruction has no stream object behind it.
    auto* pThis = static_cast<CGigEStream*>(pUser);
    const std::lock_guard<std::mutex> lock(pThis->m_mutex);
    if (pThis->m_pStream != nullptr)
    {
        pThis->TakeResults(pThis->m_pStream);
    }
}

void CGigEStream::TakeResults(ArvStream* pStream)
{
    while (ArvBuffer* pBuffer = arv_stream_try_pop_buffer(pStream))
    {
        const ObjectPtr<ArvBuffer> reference(pBuffer);
        const auto announced = m_announced.find(const_cast<void*>(arv_buffer_get_user_data(pBuffer)));
        m_results.push_back(MakeStreamResult(pBuffer, announced == m_announced.end() ? 0 : announced->second.bytes));
        m_results.back().blockId = m_blockCounter.Extend(m_results.back().blockId);
        m_statistics.lost = m_blockCounter.CountSkipped();
        const auto queued = std::find(m_queued.begin(), m_queued.end(), m_results.back().pContext);
        if (queued != m_queued.end())
        {
            m_queued.erase(queued);
        }
    }
    m_changed.notify_all();
}

void CGigEStream::Stop()
{
    EndEngineStream();
    CancelQueued();
}

void CGigEStream::OnRemoved()
{
    EndEngineStream();
    CancelQueued();
}

void CGigEStream::EndEngineStream()
{
    const std::lock_guard<std::mutex> engineLock(m_engineMutex);
    ReadStatistics();
    ArvStream* pStream = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::swap(pStream, m_pStream);
    }
    if (pStream == nullptr)
    {
        return;
    }
    if (m_pCamera->pRemoval->IsRemoved() || !m_pCamera->isAnswering())
    {
        // The engine would wait for the camera's answers for seconds. Only its thread ends now, and gives up the
        // buffers; destroying the stream ends the thread once more, for which it must run.
        arv_stream_stop_thread(pStream, TRUE);
        m_reaper.Add(m_pCamera->deviceIp,
                     [pStream]
                     {
                         arv_stream_start_thread(pStream);
                         g_object_unref(pStream);
                     });
        return;
    }
    g_object_unref(pStream);
}

void CGigEStream::CancelQueued()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (void* pContext : m_queued)
    {
        m_results.push_back(MakeCanceledResult(pContext));
    }
    m_queued.clear();
    m_changed.notify_all();
}

bool CGigEStream::RetrieveResult(Transport::SStreamResult& result, unsigned int timeoutMs)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] { return m_isWakeUp || !m_results.empty(); });
    m_isWakeUp = false;
    if (m_results.empty())
    {
        return false;
    }
    result = std::move(m_results.front());
    m_results.pop_front();
    return true;
}

void CGigEStream::WakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isWakeUp = true;
    m_changed.notify_all();
}

} // namespace Velmo::GigE::Internal
