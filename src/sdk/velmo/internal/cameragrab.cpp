// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/cameracore.h"
#include "velmo/internal/cameraoperation.h"
#include "velmo/internal/threadpriority.h"
#include "velmo/log.h"

#include <algorithm>
#include <system_error>

namespace Velmo::Internal
{

namespace
{

constexpr const char* RemovedText = "The camera device has been removed.";

/** Writes a number to a feature of the device where there is such a feature and it can be written. */
void SetIntegerIfThere(GenApi::INodeMap* pNodeMap, const char* feature, std::int64_t value)
{
    const GenApi::CIntegerPtr node(pNodeMap == nullptr ? nullptr : pNodeMap->GetNode(feature));
    if (node.IsValid() && GenApi::IsWritable(node.Get()))
    {
        node->SetValue(value);
    }
}

void ExecuteIfThere(GenApi::INodeMap* pNodeMap, const char* feature)
{
    const GenApi::CCommandPtr node(pNodeMap == nullptr ? nullptr : pNodeMap->GetNode(feature));
    if (node.IsValid() && GenApi::IsAvailable(node.Get()))
    {
        node->Execute();
    }
}

/** The text for a grab that ended by itself; "" when it was stopped. */
std::string WhyEnded(const CGrabSession& session, CGrabSession::ETake outcome, unsigned int timeoutMs)
{
    switch (outcome)
    {
    case CGrabSession::ETake::Timeout:
        return "Grab timed out: no image arrived within " + std::to_string(timeoutMs) + " ms.";
    case CGrabSession::ETake::Removed:
        return RemovedText;
    case CGrabSession::ETake::Starved:
        return session.GetStarvedReason();
    default:
        return "";
    }
}

template <class Act> void Attempt(const char* what, Act act)
{
    try
    {
        act();
    }
    catch (...)
    {
        Log(ELogLevel::Debug, "velmo.camera", std::string(what) + " failed: " + CurrentExceptionText());
    }
}

} // namespace

std::shared_ptr<CGrabSession> CCameraCore::GetSession() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_session;
}

void CCameraCore::SetSession(std::shared_ptr<CGrabSession> session)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_session = std::move(session);
    m_grabbing = m_session != nullptr;
    m_lastSession = m_session != nullptr ? m_session : m_lastSession;
}

SGrabConfig CCameraCore::ReadConfig(std::size_t maxImages, EGrabStrategy strategy, EGrabLoop loop)
{
    const auto number = [this](const char* name)
    {
        return GenApi::CIntegerPtr(m_settings.GetNode(name))->GetValue();
    };
    const auto isOn = [this](const char* name)
    {
        return GenApi::CBooleanPtr(m_settings.GetNode(name))->GetValue();
    };
    SGrabConfig config;
    config.strategy = strategy;
    config.loop = loop;
    config.maxImages = maxImages;
    config.maxBuffers = static_cast<std::size_t>(number("MaxNumBuffer"));
    config.maxQueued = static_cast<std::size_t>(number("MaxNumQueuedBuffer"));
    if (loop == GrabLoop_ProvidedByInstantCamera && maxImages != 1)
    {
        // A handler may keep a result until the next one comes, as one that shows chunk values does.
        constexpr std::size_t s_leastBuffersOfALoop = 2;
        config.maxBuffers = std::max(config.maxBuffers, s_leastBuffersOfALoop);
    }
    config.outputQueueSize = static_cast<std::size_t>(number("OutputQueueSize"));
    if (isOn("GrabLoopThreadUseTimeout"))
    {
        config.loopTimeoutMs = static_cast<unsigned int>(number("GrabLoopThreadTimeout"));
    }
    if (isOn("GrabLoopThreadPriorityOverride"))
    {
        config.loopPriority = static_cast<int>(number("GrabLoopThreadPriority"));
    }
    if (isOn("InternalGrabEngineThreadPriorityOverride"))
    {
        config.enginePriority = static_cast<int>(number("InternalGrabEngineThreadPriority"));
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    config.monitor = m_monitor;
    return config;
}

void CCameraCore::StartGrabbing(std::size_t maxImages, EGrabStrategy strategy, EGrabLoop loop)
{
    const COperation operation(*this);
    RequireDevice();
    if (!IsOpen() || IsGrabbing() || m_stopping != EStopping::No)
    {
        GENICAM_THROW(LogicalErrorException, IsOpen() ? "The camera is grabbing already." : "The camera is not open.");
    }
    if (IsRemoved())
    {
        GENICAM_THROW(RuntimeException, RemovedText);
    }
    if (RequireDevice().GetNumStreams() == 0)
    {
        GENICAM_THROW(RuntimeException, "The camera has no image stream.");
    }
    Before(&CConfigurationEventHandler::OnGrabStart, false);
    if (!IsOpen() || IsGrabbing())
    {
        GENICAM_THROW(LogicalErrorException, "An event handler closed the camera or started the grab itself.");
    }
    BeginAcquisition(ReadConfig(maxImages, strategy, loop));
    const std::shared_ptr<CGrabSession> session = GetSession();
    m_settings.SetGrabbing(true);
    After(&CConfigurationEventHandler::OnGrabStarted);
    if (loop == GrabLoop_ProvidedByUser || GetSession() != session)
    {
        return;
    }
    try
    {
        m_loop = std::thread([this, session] { RunLoop(session); });
    }
    catch (const std::system_error& error)
    {
        StopSession(true);
        GENICAM_THROW(RuntimeException, std::string("The grab loop thread cannot be started: ") + error.what());
    }
}

void CCameraCore::BeginAcquisition(const SGrabConfig& config)
{
    IVelmoDevice& device = RequireDevice();
    auto session = std::make_shared<CGrabSession>(device, config);
    session->Start();
    SetSession(session);
    try
    {
        if (!config.monitor)
        {
            SetIntegerIfThere(device.GetNodeMap(), "TLParamsLocked", 1);
            ExecuteIfThere(device.GetNodeMap(), "AcquisitionStart");
        }
    }
    catch (...)
    {
        EndAcquisition();
        throw;
    }
    if (IsRemoved())
    {
        session->NotifyRemoved(); // it may have been noticed before the session was there to be told
    }
}

/** Ends the camera's sending, the takers of results and the stream. */
void CCameraCore::EndAcquisition()
{
    const std::shared_ptr<CGrabSession> session = GetSession();
    IVelmoDevice& device = RequireDevice();
    if (!session->GetConfig().monitor)
    {
        Attempt("AcquisitionStop", [&] { ExecuteIfThere(device.GetNodeMap(), "AcquisitionStop"); });
        Attempt("Unlocking the transport layer's parameters",
                [&] { SetIntegerIfThere(device.GetNodeMap(), "TLParamsLocked", 0); });
    }
    session->RequestStop();
    m_gate->AwaitCallbacks(CallbackKind_Loop);
    session->Finish();
    if (session->IsStreamKeepingBuffers())
    {
        m_keptSessions.push_back(session);
    }
    SetSession(nullptr);
}

void CCameraCore::StopGrabbing()
{
    const COperation operation(*this, Request_Stop);
    if (operation.IsOwner() && m_stopping == EStopping::No)
    {
        StopSession(IsRemoved());
    }
}

void CCameraCore::StopSession(bool forced)
{
    const std::shared_ptr<CGrabSession> session = GetSession();
    if (session == nullptr || m_stopping == EStopping::Ending)
    {
        return;
    }
    if (m_stopping == EStopping::No)
    {
        m_stopping = EStopping::Announcing;
        const CAtExit announced([this] { m_stopping = EStopping::No; });
        Before(&CConfigurationEventHandler::OnGrabStop, forced);
    }
    if (GetSession() != session)
    {
        return; // a handler closed or destroyed the camera
    }
    m_stopping = EStopping::Ending;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_grabbing = false;
    }
    EndAcquisition();
    JoinLoops();
    m_gate->ClearRequest(Request_Stop);
    m_settings.SetGrabbing(false);
    m_stopping = EStopping::No;
    After(&CConfigurationEventHandler::OnGrabStopped);
}

bool CCameraCore::IsEndingGrab() const
{
    return m_stopping == EStopping::Ending && GetSession() != nullptr;
}

void CCameraCore::JoinLoops()
{
    if (m_loop.joinable())
    {
        m_retiredLoops.push_back(std::move(m_loop));
    }
    m_gate->AwaitCallbacks(CallbackKind_Loop); // a retired one may still be in a handler that wants the camera
    std::vector<std::thread> own;
    for (std::thread& loop : m_retiredLoops)
    {
        if (loop.get_id() == std::this_thread::get_id())
        {
            own.push_back(std::move(loop)); // joined when another thread comes by
        }
        else
        {
            loop.join();
        }
    }
    m_retiredLoops = std::move(own);
}

void CCameraCore::RunLoop(const std::shared_ptr<CGrabSession>& session)
{
    const CCallbackScope scope(*m_gate, CallbackKind_Loop);
    const SGrabConfig& config = session->GetConfig();
    // Without an engine this thread is the one that takes the buffers from the stream.
    const auto& priority = !session->HasEngine() && config.enginePriority ? config.enginePriority : config.loopPriority;
    if (priority)
    {
        ApplyRealTimePriority(*priority, "grab loop");
    }
    std::string error;
    try
    {
        while (!session->IsStopRequested() && !session->IsComplete())
        {
            std::optional<CGrabSession::Clock::time_point> deadline;
            if (config.loopTimeoutMs)
            {
                deadline = CGrabSession::Clock::now() + std::chrono::milliseconds(*config.loopTimeoutMs);
            }
            CGrabResultPtr result;
            const auto outcome = session->Take(result, deadline);
            if (outcome == CGrabSession::ETake::Result)
            {
                Deliver(result);
                continue;
            }
            error = WhyEnded(*session, outcome, config.loopTimeoutMs.value_or(0));
            break;
        }
    }
    catch (...)
    {
        error = CurrentExceptionText();
    }
    if (!error.empty() && !session->IsStopRequested())
    {
        ReportGrabError(error);
    }
    StopFromLoop(session);
}

void CCameraCore::StopFromLoop(const std::shared_ptr<CGrabSession>& session)
{
    if (session->IsStopRequested())
    {
        return; // whoever asked does it
    }
    const COperation operation(*this, Request_Stop);
    if (operation.IsOwner() && GetSession() == session)
    {
        StopSession(true);
    }
}

void CCameraCore::Deliver(const CGrabResultPtr& result)
{
    const auto report = [this](const std::string& text)
    {
        ReportGrabError(text);
    };
    const std::int64_t skipped = result->GetNumberOfSkippedImages();
    if (skipped > 0)
    {
        m_imageHandlers.Call([&](CImageEventHandler& handler)
                             { handler.OnImagesSkipped(m_camera, static_cast<std::size_t>(skipped)); },
                             report);
    }
    m_imageHandlers.Call([&](CImageEventHandler& handler) { handler.OnImageGrabbed(m_camera, result); }, report);
}

void CCameraCore::ReportGrabError(const std::string& text)
{
    m_configurationHandlers.Call(
        [&](CConfigurationEventHandler& handler) { handler.OnGrabError(m_camera, text.c_str()); },
        [](const std::string& failure)
        { Log(ELogLevel::Warning, "velmo.camera", "A configuration event handler failed: " + failure); });
}

bool CCameraCore::RetrieveResult(unsigned int timeoutMs, CGrabResultPtr& result, ETimeoutHandling timeoutHandling)
{
    result.Release();
    const std::shared_ptr<CGrabSession> session = GetSession();
    if (session == nullptr)
    {
        return false;
    }
    if (session->GetConfig().loop == GrabLoop_ProvidedByInstantCamera)
    {
        GENICAM_THROW(LogicalErrorException, "The instant camera's own grab loop takes the results.");
    }
    const CCallbackScope scope(*m_gate, CallbackKind_Loop);
    const auto outcome = session->Take(result, CGrabSession::Clock::now() + std::chrono::milliseconds(timeoutMs));
    switch (outcome)
    {
    case CGrabSession::ETake::Result:
        Deliver(result);
        if (session->IsComplete())
        {
            StopFromLoop(session);
        }
        return true;
    case CGrabSession::ETake::Timeout:
        if (timeoutHandling == TimeoutHandling_ThrowException)
        {
            GENICAM_THROW(TimeoutException, WhyEnded(*session, outcome, timeoutMs));
        }
        return false;
    case CGrabSession::ETake::Removed:
    case CGrabSession::ETake::Starved:
        StopFromLoop(session);
        GENICAM_THROW(RuntimeException, WhyEnded(*session, outcome, timeoutMs));
    case CGrabSession::ETake::Stopped:
        return false;
    }
    return false;
}

} // namespace Velmo::Internal
