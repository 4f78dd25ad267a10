// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/cameracore.h"

#include "velmo/internal/cameraoperation.h"
#include "velmo/internal/tlhandles.h"
#include "velmo/log.h"

namespace Velmo::Internal
{

CCameraCore::CCameraCore(CInstantCamera& camera)
    : m_camera(camera), m_settings([this](CCameraSettings::EStatus status) { return ReadStatus(status); }),
      m_emptyNodeMap(MakeEmptyNodeMap())
{
}

CCameraCore::~CCameraCore() = default;

void CCameraCore::Before(Event event, bool forced)
{
    if (forced)
    {
        After(event);
        return;
    }
    m_configurationHandlers.CallOrThrow([&](CConfigurationEventHandler& handler) { (handler.*event)(m_camera); });
}

void CCameraCore::After(Event event)
{
    m_configurationHandlers.Call(
        [&](CConfigurationEventHandler& handler) { (handler.*event)(m_camera); }, [](const std::string& text)
        { Log(ELogLevel::Warning, "velmo.camera", "A configuration event handler failed: " + text); });
}

void CCameraCore::CarryOut(unsigned int requests)
{
    try
    {
        if ((requests & Request_Stop) != 0)
        {
            StopSession(true);
        }
        if ((requests & (Request_Close | Request_Destroy)) != 0)
        {
            CloseDevice(true);
        }
        if ((requests & Request_Destroy) != 0 && GetDevice() != nullptr)
        {
            LeaveDevice(true, true);
        }
    }
    catch (...)
    {
        Log(ELogLevel::Warning, "velmo.camera", "A request of a callback failed: " + CurrentExceptionText());
    }
}

IVelmoDevice* CCameraCore::GetDevice() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pDevice;
}

IVelmoDevice& CCameraCore::RequireDevice() const
{
    IVelmoDevice* pDevice = GetDevice();
    if (pDevice == nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "No device is attached to the instant camera.");
    }
    return *pDevice;
}

bool CCameraCore::HasOwnership() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pDevice != nullptr && m_cleanup == Cleanup_Delete;
}

bool CCameraCore::IsRemoved() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    // The device's own answer comes earlier than its callback; it is a flag, nothing is called back from it.
    return m_pDevice != nullptr && (m_removed || m_pDevice->IsRemoved());
}

bool CCameraCore::IsOpen() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_open;
}

bool CCameraCore::IsGrabbing() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_grabbing;
}

CDeviceInfo CCameraCore::GetDeviceInfo() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_pDevice == nullptr ? CDeviceInfo() : m_pDevice->GetDeviceInfo();
}

GenApi::INodeMap& CCameraCore::GetNodeMap(const std::function<GenApi::INodeMap*(IVelmoDevice&)>& getter)
{
    IVelmoDevice* pDevice = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        pDevice = m_open ? m_pDevice : nullptr;
    }
    if (pDevice == nullptr)
    {
        GENICAM_THROW(LogicalErrorException, "The camera is not open: it has no node map.");
    }
    GenApi::INodeMap* pNodeMap = getter(*pDevice);
    return pNodeMap == nullptr ? *m_emptyNodeMap->Get() : *pNodeMap;
}

bool CCameraCore::IsMonitorAsked()
{
    return GenApi::CBooleanPtr(m_settings.GetNode("MonitorModeActive"))->GetValue();
}

void CCameraCore::StartEvents(IVelmoDevice& device)
{
    if (!GenApi::CBooleanPtr(m_settings.GetNode("GrabCameraEvents"))->GetValue())
    {
        return;
    }
    try
    {
        device.StartEvents();
    }
    catch (...)
    {
        // The camera is of use without its events.
        Log(ELogLevel::Warning, "velmo.camera", "Receiving the camera's events failed: " + CurrentExceptionText());
    }
}

void CCameraCore::Attach(IVelmoDevice* pDevice, ECleanup cleanup)
{
    if (pDevice == nullptr)
    {
        GENICAM_THROW(InvalidArgumentException, "A null device cannot be attached.");
    }
    const COperation operation(*this);
    if (GetDevice() == pDevice)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_cleanup = cleanup;
        return;
    }
    if (GetDevice() != nullptr)
    {
        const bool owned = HasOwnership();
        RefuseWhileEnding();
        CloseDevice(IsRemoved());
        LeaveDevice(owned, IsRemoved());
    }
    Before(&CConfigurationEventHandler::OnAttach, false);
    const bool isOpen = pDevice->IsOpen();
    const bool monitor = isOpen && IsMonitorAsked();
    if (isOpen && pDevice->GetNumStreams() > 0 && !pDevice->GetStream(0)->IsOpen())
    {
        pDevice->GetStream(0)->Open();
    }
    m_removal = std::make_shared<CRemovalLink>(m_gate, [this] { OnRemoved(); });
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pDevice = pDevice;
        m_cleanup = cleanup;
        m_open = isOpen;
        m_monitor = monitor;
        m_removed = false;
    }
    pDevice->SetRemovalCallback([link = m_removal] { link->Fire(); });
    m_settings.SetOpen(isOpen);
    After(&CConfigurationEventHandler::OnAttached);
}

IVelmoDevice* CCameraCore::Detach()
{
    const COperation operation(*this);
    IVelmoDevice* pDevice = GetDevice();
    if (pDevice != nullptr)
    {
        RefuseWhileEnding();
        StopSession(IsRemoved());
        LeaveDevice(false, IsRemoved());
    }
    return pDevice;
}

void CCameraCore::RefuseWhileEnding() const
{
    if (IsEndingGrab())
    {
        GENICAM_THROW(LogicalErrorException, "The device cannot leave the camera while its grab is being ended.");
    }
}

void CCameraCore::Destroy()
{
    const COperation operation(*this, Request_Destroy);
    if (operation.IsOwner() && IsEndingGrab())
    {
        m_gate->Post(Request_Destroy);
    }
    else if (operation.IsOwner() && GetDevice() != nullptr)
    {
        CloseDevice(IsRemoved());
        LeaveDevice(true, IsRemoved());
    }
}

void CCameraCore::LeaveDevice(bool destroy, bool forced)
{
    if (!m_announcingLeave)
    {
        m_announcingLeave = true;
        const CAtExit announced([this] { m_announcingLeave = false; });
        if (destroy)
        {
            Before(&CConfigurationEventHandler::OnDestroy, forced);
        }
        Before(&CConfigurationEventHandler::OnDetach, forced);
    }
    IVelmoDevice* pDevice = GetDevice();
    if (pDevice == nullptr)
    {
        return; // a handler did it
    }
    // From here no removal comes any more, so that the device may wait for its own callbacks without a deadlock.
    m_removal->Disconnect();
    m_gate->AwaitCallbacks(CallbackKind_Removal);
    pDevice->SetRemovalCallback(nullptr);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_pDevice = nullptr;
        m_open = false;
    }
    m_settings.SetOpen(false);
    m_gate->ClearRequest(Request_Close | Request_Destroy);
    if (destroy)
    {
        CTlHandles::GetInstance().DestroyDevice(pDevice);
        m_keptSessions.clear();
    }
    After(&CConfigurationEventHandler::OnDetached);
    if (destroy)
    {
        After(&CConfigurationEventHandler::OnDestroyed);
    }
}

void CCameraCore::Open()
{
    const COperation operation(*this);
    RequireDevice();
    if (IsOpen())
    {
        return;
    }
    if (IsRemoved())
    {
        GENICAM_THROW(RuntimeException, "The camera device has been removed.");
    }
    Before(&CConfigurationEventHandler::OnOpen, false);
    IVelmoDevice& device = RequireDevice();
    const bool monitor = IsMonitorAsked();
    device.Open(monitor ? EDeviceAccess::Monitor : EDeviceAccess::Control);
    try
    {
        if (device.GetNumStreams() > 0)
        {
            device.GetStream(0)->Open();
        }
    }
    catch (...)
    {
        device.Close();
        throw;
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_open = true;
        m_monitor = monitor;
    }
    m_settings.SetOpen(true);
    StartEvents(device);
    After(&CConfigurationEventHandler::OnOpened);
}

void CCameraCore::Close()
{
    const COperation operation(*this, Request_Close);
    if (operation.IsOwner() && IsEndingGrab())
    {
        m_gate->Post(Request_Close);
    }
    else if (operation.IsOwner())
    {
        CloseDevice(IsRemoved());
    }
}

void CCameraCore::CloseStreamAndDevice(IVelmoDevice& device)
{
    const auto attempt = [](const char* what, auto act)
    {
        try
        {
            act();
        }
        catch (...)
        {
            Log(ELogLevel::Warning, "velmo.camera", std::string(what) + " failed: " + CurrentExceptionText());
        }
    };
    const COperationGate::CTransportWait wait(*m_gate, CallbackKind_Removal); // for its report of a removal
    attempt("Closing the stream",
            [&]
            {
                if (device.GetNumStreams() > 0)
                {
                    device.GetStream(0)->Close();
                    m_keptSessions.clear();
                }
            });
    attempt("Closing the device", [&] { device.Close(); });
}

void CCameraCore::CloseDevice(bool forced)
{
    if (!IsOpen())
    {
        return;
    }
    StopSession(forced);
    if (!m_announcingClose)
    {
        m_announcingClose = true;
        const CAtExit announced([this] { m_announcingClose = false; });
        Before(&CConfigurationEventHandler::OnClose, forced);
    }
    IVelmoDevice* pDevice = IsOpen() ? GetDevice() : nullptr;
    if (pDevice == nullptr)
    {
        return; // a handler did it
    }
    CloseStreamAndDevice(*pDevice);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_open = false;
    }
    m_gate->ClearRequest(Request_Close);
    m_settings.SetOpen(false);
    After(&CConfigurationEventHandler::OnClosed);
}

void CCameraCore::OnRemoved()
{
    std::shared_ptr<CGrabSession> session;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_removed)
        {
            return;
        }
        m_removed = true;
        session = m_session;
    }
    if (session != nullptr)
    {
        session->NotifyRemoved();
    }
    After(&CConfigurationEventHandler::OnCameraDeviceRemoved);
}

void CCameraCore::End()
{
    {
        const COperation operation(*this);
        CarryOut(Request_Close);
        const bool owned = HasOwnership();
        try
        {
            if (GetDevice() != nullptr)
            {
                LeaveDevice(owned, true);
            }
        }
        catch (...)
        {
            Log(ELogLevel::Warning, "velmo.camera", "Leaving the device failed: " + CurrentExceptionText());
        }
        JoinLoops();
    }
    RegisterImageHandler(nullptr, RegistrationMode_ReplaceAll, Cleanup_None);
    RegisterConfiguration(nullptr, RegistrationMode_ReplaceAll, Cleanup_None);
}

std::int64_t CCameraCore::ReadStatus(CCameraSettings::EStatus status) const
{
    std::shared_ptr<CGrabSession> session;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        session = m_lastSession;
    }
    if (session == nullptr)
    {
        return 0;
    }
    switch (status)
    {
    case CCameraSettings::EStatus::QueuedBuffers:
        return static_cast<std::int64_t>(session->GetQueuedCount());
    case CCameraSettings::EStatus::GrabbedImages:
        return session->GetTakenCount();
    case CCameraSettings::EStatus::FailedImages:
        return session->GetFailedCount();
    case CCameraSettings::EStatus::SkippedImages:
        return session->GetSkippedCount();
    }
    return 0;
}

} // namespace Velmo::Internal
