// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/cameracore.h"

#include "velmo/internal/cameraoperation.h"
#include "velmo/internal/tlhandles.h"
#include "velmo/log.h"

namespace Velmo::Internal
{

void CRemovalLink::Fire()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_connected)
        {
            return;
        }
        m_gate->EnterCallback(CallbackKind_Removal);
    }
    m_onRemoved();
    m_gate->LeaveCallback(CallbackKind_Removal);
}

void CRemovalLink::Disconnect()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_connected = false;
}

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
    return pNodeMap == nullptr ? *m_emptyNodeMap : *pNodeMap;
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
        CloseDevice(IsRemoved());
        LeaveDevice(owned, IsRemoved());
    }
    Before(&CConfigurationEventHandler::OnAttach, false);
    const bool isOpen = pDevice->IsOpen();
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
        StopSession(IsRemoved());
        LeaveDevice(false, IsRemoved());
    }
    return pDevice;
}

void CCameraCore::Destroy()
{
    const COperation operation(*this, Request_Destroy);
    if (operation.IsOwner() && GetDevice() != nullptr)
    {
        CloseDevice(IsRemoved());
        LeaveDevice(true, IsRemoved());
    }
}

void CCameraCore::LeaveDevice(bool destroy, bool forced)
{
    if (destroy)
    {
        Before(&CConfigurationEventHandler::OnDestroy, forced);
    }
    Before(&CConfigurationEventHandler::OnDetach, forced);
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
    const bool monitor = GenApi::CBooleanPtr(m_settings.GetNode("MonitorModeActive"))->GetValue();
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
    After(&CConfigurationEventHandler::OnOpened);
}

void CCameraCore::Close()
{
    const COperation operation(*this, Request_Close);
    if (operation.IsOwner())
    {
        CloseDevice(IsRemoved());
    }
}

void CCameraCore::CloseDevice(bool forced)
{
    if (!IsOpen())
    {
        return;
    }
    StopSession(forced);
    Before(&CConfigurationEventHandler::OnClose, forced);
    IVelmoDevice* pDevice = IsOpen() ? GetDevice() : nullptr;
    if (pDevice == nullptr)
    {
        return; // a handler did it
    }
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
    if (pDevice->GetNumStreams() > 0)
    {
        attempt("Closing the stream", [&] { pDevice->GetStream(0)->Close(); });
    }
    attempt("Closing the device", [&] { pDevice->Close(); });
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

namespace
{

/** While this thread waits for a handler's call to end, that handler must not wait for the camera. */
class CAwaitingScope
{
public:
    explicit CAwaitingScope(COperationGate& gate) : m_gate(gate), m_isOwner(gate.IsOwner())
    {
        m_before = m_isOwner ? gate.SetAwaited(CallbackKind_Loop | CallbackKind_Removal) : 0;
    }
    ~CAwaitingScope()
    {
        if (m_isOwner)
        {
            m_gate.SetAwaited(m_before);
        }
    }
    CAwaitingScope(const CAwaitingScope&) = delete;
    CAwaitingScope& operator=(const CAwaitingScope&) = delete;

private:
    COperationGate& m_gate;
    const bool m_isOwner;
    unsigned int m_before = 0;
};

void LogHandlerFailure(const std::string& text)
{
    Log(ELogLevel::Warning, "velmo.camera", "An event handler's registration callback failed: " + text);
}

template <class Handler, class Told>
bool RemoveHandler(CHandlerList<Handler>& list, COperationGate& gate, const Handler* pHandler, const Handler* pKeep,
                   Told told)
{
    const CAwaitingScope awaiting(gate);
    return list.Remove(pHandler, pKeep,
                       [&](Handler& handler)
                       {
                           try
                           {
                               told(handler);
                           }
                           catch (...)
                           {
                               LogHandlerFailure(CurrentExceptionText());
                           }
                       });
}

template <class Handler, class Removed, class Added>
void RegisterHandler(CHandlerList<Handler>& list, COperationGate& gate, Handler* pHandler, ERegistrationMode mode,
                     ECleanup cleanup, Removed removed, Added added)
{
    if (mode == RegistrationMode_ReplaceAll)
    {
        while (RemoveHandler(list, gate, static_cast<const Handler*>(nullptr), pHandler, removed))
        {
        }
    }
    if (pHandler == nullptr)
    {
        return;
    }
    list.Append(*pHandler, cleanup);
    try
    {
        added(*pHandler);
    }
    catch (...)
    {
        LogHandlerFailure(CurrentExceptionText());
    }
}

} // namespace

void CCameraCore::RegisterConfiguration(CConfigurationEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup)
{
    RegisterHandler(
        m_configurationHandlers, *m_gate, pHandler, mode, cleanup,
        [this](CConfigurationEventHandler& handler) { handler.OnConfigurationDeregistered(m_camera); },
        [this](CConfigurationEventHandler& handler) { handler.OnConfigurationRegistered(m_camera); });
}

bool CCameraCore::DeregisterConfiguration(CConfigurationEventHandler* pHandler)
{
    return pHandler != nullptr && RemoveHandler(m_configurationHandlers, *m_gate, pHandler,
                                                static_cast<const CConfigurationEventHandler*>(nullptr),
                                                [this](CConfigurationEventHandler& handler)
                                                { handler.OnConfigurationDeregistered(m_camera); });
}

void CCameraCore::RegisterImageHandler(CImageEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup)
{
    RegisterHandler(
        m_imageHandlers, *m_gate, pHandler, mode, cleanup,
        [this](CImageEventHandler& handler) { handler.OnImageEventHandlerDeregistered(m_camera); },
        [this](CImageEventHandler& handler) { handler.OnImageEventHandlerRegistered(m_camera); });
}

bool CCameraCore::DeregisterImageHandler(CImageEventHandler* pHandler)
{
    return pHandler != nullptr &&
           RemoveHandler(m_imageHandlers, *m_gate, pHandler, static_cast<const CImageEventHandler*>(nullptr),
                         [this](CImageEventHandler& handler) { handler.OnImageEventHandlerDeregistered(m_camera); });
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
