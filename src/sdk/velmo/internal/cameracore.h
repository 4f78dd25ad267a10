// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/instantcamera.h"
#include "velmo/internal/camerasettings.h"
#include "velmo/internal/grabsession.h"
#include "velmo/internal/handlerlist.h"
#include "velmo/internal/operationgate.h"
#include "velmo/internal/removallink.h"
#include "velmo/internal/waitgraph.h"

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace Velmo::Internal
{

/** What an instant camera does; its public face is CInstantCamera. */
class CCameraCore
{
public:
    explicit CCameraCore(CInstantCamera& camera);
    ~CCameraCore();

    void Attach(IVelmoDevice* pDevice, ECleanup cleanup);
    IVelmoDevice* Detach();
    void Destroy();
    void Open();
    void Close();
    void StartGrabbing(std::size_t maxImages, EGrabStrategy strategy, EGrabLoop loop);
    void StopGrabbing();
    bool RetrieveResult(unsigned int timeoutMs, CGrabResultPtr& result, ETimeoutHandling timeoutHandling);
    /** Ends everything, for the destructor. Never throws. */
    void End();

    IVelmoDevice* GetDevice() const;
    bool HasOwnership() const;
    bool IsRemoved() const;
    bool IsOpen() const;
    bool IsGrabbing() const;
    CDeviceInfo GetDeviceInfo() const;
    CCameraSettings& GetSettings() { return m_settings; }
    /** The node map that the getter finds, or one without features when it finds none. Throws LogicalErrorException
     *  when the camera is not open. */
    GenApi::INodeMap& GetNodeMap(const std::function<GenApi::INodeMap*(IVelmoDevice&)>& getter);

    void RegisterConfiguration(CConfigurationEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup);
    bool DeregisterConfiguration(CConfigurationEventHandler* pHandler);
    void RegisterImageHandler(CImageEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup);
    bool DeregisterImageHandler(CImageEventHandler* pHandler);

private:
    using Event = void (CConfigurationEventHandler::*)(CInstantCamera&);
    class COperation;

    /** Events before an act: exceptions go to the caller unless the act has to be done anyway. */
    void Before(Event event, bool forced);
    /** Events after an act: exceptions are logged. */
    void After(Event event);
    void ReportGrabError(const std::string& text);
    void CarryOut(unsigned int requests);

    // Owner only, from here.
    IVelmoDevice& RequireDevice() const;
    bool IsMonitorAsked();
    void StartEvents(IVelmoDevice& device);
    void CloseDevice(bool forced);
    void CloseStreamAndDevice(IVelmoDevice& device);
    void LeaveDevice(bool destroy, bool forced);
    void StopSession(bool forced);
    /** Between the announcement of a stop and its end nothing of the device may be taken away. */
    bool IsEndingGrab() const;
    void RefuseWhileEnding() const;
    void EndAcquisition();
    void JoinLoops();
    SGrabConfig ReadConfig(std::size_t maxImages, EGrabStrategy strategy, EGrabLoop loop);
    void BeginAcquisition(const SGrabConfig& config);
    std::shared_ptr<CGrabSession> GetSession() const;
    void SetSession(std::shared_ptr<CGrabSession> session);

    // The grab loop.
    void RunLoop(const std::shared_ptr<CGrabSession>& session);
    void Deliver(const CGrabResultPtr& result);
    void StopFromLoop(const std::shared_ptr<CGrabSession>& session);

    void OnRemoved();
    std::int64_t ReadStatus(CCameraSettings::EStatus status) const;

    CInstantCamera& m_camera;
    const std::shared_ptr<CWaitGraph> m_waits = std::make_shared<CWaitGraph>();
    const std::shared_ptr<COperationGate> m_gate = std::make_shared<COperationGate>(m_waits);
    CCameraSettings m_settings;
    const std::unique_ptr<Transport::CSoftwareNodeMap> m_emptyNodeMap;
    CHandlerList<CConfigurationEventHandler> m_configurationHandlers{m_waits};
    CHandlerList<CImageEventHandler> m_imageHandlers{m_waits};
    std::thread m_loop;                      // owner only
    std::vector<std::thread> m_retiredLoops; // owner only: ended from within themselves
    std::shared_ptr<CRemovalLink> m_removal; // owner only
    // Owner only: what is under way, for handlers that call back.
    enum class EStopping
    {
        No,
        Announcing, // OnGrabStop
        Ending
    };
    EStopping m_stopping = EStopping::No;
    bool m_announcingClose = false;
    bool m_announcingLeave = false;
    std::vector<std::shared_ptr<CGrabSession>> m_keptSessions; // owner only: their memory is still with the stream

    mutable std::mutex m_mutex; // guards the members below; never held while a handler or stream is called
    IVelmoDevice* m_pDevice = nullptr;
    ECleanup m_cleanup = Cleanup_None;
    bool m_open = false;
    bool m_monitor = false;
    bool m_grabbing = false;
    bool m_removed = false;
    std::shared_ptr<CGrabSession> m_session;
    std::shared_ptr<CGrabSession> m_lastSession; // for the statistics
};

} // namespace Velmo::Internal
