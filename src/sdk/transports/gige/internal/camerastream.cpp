// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/camerastream.h"

#include "transports/gige/internal/streamresult.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Velmo::GigE::Internal
{

ACameraStream::~ACameraStream()
{
    ACameraStream::Stop();
}

SCamera& ACameraStream::Camera() const
{
    if (m_pCamera == nullptr)
    {
        GENICAM_THROW(RuntimeException, "The stream cannot be used: its camera is not open.");
    }
    return *m_pCamera;
}

void ACameraStream::Detach()
{
    Close();
    m_pCamera = nullptr;
}

void ACameraStream::Open()
{
    Camera();
    if (IsOpen())
    {
        return;
    }
    auto pParameters = std::make_unique<Transport::CSoftwareNodeMap>(m_modelName);
    AddPayloadSize(*pParameters);
    AddSettings(*pParameters);
    AddStatistics(*pParameters);
    pParameters->Build();
    m_pParameters = std::move(pParameters);
}

void ACameraStream::Close()
{
    Stop();
    m_pParameters.reset();
}

GenApi::INodeMap* ACameraStream::GetNodeMap()
{
    return IsOpen() ? m_pParameters->Get() : nullptr;
}

std::size_t ACameraStream::GetPayloadBytes()
{
    const SCamera& camera = Camera();
    const GenApi::CIntegerPtr pPayloadSize(Features().GetNode("PayloadSize"));
    if (!pPayloadSize)
    {
        GENICAM_THROW(RuntimeException, "The description of camera " + camera.name + " has no PayloadSize.");
    }
    return static_cast<std::size_t>(std::max<std::int64_t>(0, pPayloadSize->GetValue()));
}

void ACameraStream::CheckNotRemoved() const
{
    if (Camera().pRemoval->IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera " + Camera().name + " was removed.");
    }
}

void ACameraStream::AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext)
{
    if (pMemory == nullptr || bytes == 0)
    {
        GENICAM_THROW(InvalidArgumentException, "A buffer needs memory.");
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_announced.emplace(pContext, SMemory{static_cast<std::uint8_t*>(pMemory), bytes}).second)
    {
        GENICAM_THROW(InvalidArgumentException, "The buffer is announced already.");
    }
}

void ACameraStream::RevokeBuffer(void* pContext)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (std::find(m_queued.begin(), m_queued.end(), pContext) != m_queued.end())
    {
        GENICAM_THROW(LogicalErrorException, "The buffer is still queued; stop the stream before revoking it.");
    }
    m_announced.erase(pContext);
}

void ACameraStream::QueueBuffer(void* pContext)
{
    CheckNotRemoved();
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
    if (m_pReception != nullptr)
    {
        m_pReception->AddBuffer(pContext, found->second.pMemory, found->second.bytes);
    }
}

void ACameraStream::Start()
{
    const std::lock_guard<std::mutex> runLock(m_runMutex);
    CheckNotRemoved();
    if (m_pReception != nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "The stream of camera " + Camera().name + " is started already.");
    }
    Begin(MakeReception([this](Transport::SStreamResult result) { TakeResult(std::move(result)); }));
}

void ACameraStream::RunWhileStopped(const std::function<void()>& function)
{
    const std::unique_lock<std::mutex> runLock(m_runMutex, std::try_to_lock);
    if (!runLock.owns_lock() || m_pReception != nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "Not while the camera " + Camera().name + " takes images.");
    }
    CheckNotRemoved();
    function();
}

void ACameraStream::Begin(std::unique_ptr<IReception> pReception)
{
    IReception& reception = *pReception;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pReception = std::move(pReception);
        for (void* pContext : m_queued)
        {
            const SMemory& memory = m_announced[pContext];
            m_pReception->AddBuffer(pContext, memory.pMemory, memory.bytes);
        }
    }
    try
    {
        reception.Begin();
    }
    catch (...)
    {
        TakeReception(); // what is queued waits for another start
        throw;
    }
}

std::unique_ptr<IReception> ACameraStream::TakeReception()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::move(m_pReception);
}

void ACameraStream::TakeResult(Transport::SStreamResult result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto queued = std::find(m_queued.begin(), m_queued.end(), result.pContext);
    if (queued != m_queued.end())
    {
        m_queued.erase(queued);
    }
    m_results.push_back(std::move(result));
    m_changed.notify_all();
}

void ACameraStream::Stop()
{
    const std::lock_guard<std::mutex> runLock(m_runMutex);
    SStreamStatistics statistics = ReadStatistics();
    if (const std::unique_ptr<IReception> pReception = TakeReception())
    {
        statistics = pReception->End();
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_statistics = statistics;
    for (void* pContext : m_queued)
    {
        m_results.push_back(MakeCanceledResult(pContext));
    }
    m_queued.clear();
    m_changed.notify_all();
}

void ACameraStream::OnRemoved()
{
    Stop();
}

SStreamStatistics ACameraStream::ReadStatistics()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pReception != nullptr ? m_pReception->GetStatistics() : m_statistics;
}

bool ACameraStream::RetrieveResult(Transport::SStreamResult& result, unsigned int timeoutMs)
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

void ACameraStream::WakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isWakeUp = true;
    m_changed.notify_all();
}

} // namespace Velmo::GigE::Internal
