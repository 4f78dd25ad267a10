// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/instantcamera.h"

#include "velmo/internal/cameracore.h"
#include "velmo/internal/continuousconfiguration.h"

namespace Velmo
{

struct CInstantCamera::SPrivate
{
    explicit SPrivate(CInstantCamera& camera) : core(camera) {}
    Internal::CCameraCore core;
};

CInstantCamera::CInstantCamera() : m_p(std::make_unique<SPrivate>(*this))
{
    Internal::CCameraSettings& settings = m_p->core.GetSettings();
    MaxNumBuffer.Attach(settings.GetNode("MaxNumBuffer"));
    MaxNumQueuedBuffer.Attach(settings.GetNode("MaxNumQueuedBuffer"));
    OutputQueueSize.Attach(settings.GetNode("OutputQueueSize"));
    MonitorModeActive.Attach(settings.GetNode("MonitorModeActive"));
    GrabCameraEvents.Attach(settings.GetNode("GrabCameraEvents"));
    GrabLoopThreadUseTimeout.Attach(settings.GetNode("GrabLoopThreadUseTimeout"));
    GrabLoopThreadTimeout.Attach(settings.GetNode("GrabLoopThreadTimeout"));
    GrabLoopThreadPriorityOverride.Attach(settings.GetNode("GrabLoopThreadPriorityOverride"));
    GrabLoopThreadPriority.Attach(settings.GetNode("GrabLoopThreadPriority"));
    InternalGrabEngineThreadPriorityOverride.Attach(settings.GetNode("InternalGrabEngineThreadPriorityOverride"));
    InternalGrabEngineThreadPriority.Attach(settings.GetNode("InternalGrabEngineThreadPriority"));
    RegisterConfiguration(new Internal::CContinuousConfiguration, RegistrationMode_ReplaceAll, Cleanup_Delete);
}

CInstantCamera::CInstantCamera(IVelmoDevice* pDevice, ECleanup cleanup) : CInstantCamera()
{
    Attach(pDevice, cleanup);
}

CInstantCamera::~CInstantCamera()
{
    m_p->core.End();
}

void CInstantCamera::Attach(IVelmoDevice* pDevice, ECleanup cleanup)
{
    m_p->core.Attach(pDevice, cleanup);
}

bool CInstantCamera::IsVelmoDeviceAttached() const
{
    return m_p->core.GetDevice() != nullptr;
}

bool CInstantCamera::HasOwnership() const
{
    return m_p->core.HasOwnership();
}

IVelmoDevice* CInstantCamera::DetachDevice()
{
    return m_p->core.Detach();
}

void CInstantCamera::DestroyDevice()
{
    m_p->core.Destroy();
}

IVelmoDevice* CInstantCamera::GetDevice() const
{
    return m_p->core.GetDevice();
}

bool CInstantCamera::IsCameraDeviceRemoved() const
{
    return m_p->core.IsRemoved();
}

CDeviceInfo CInstantCamera::GetDeviceInfo() const
{
    return m_p->core.GetDeviceInfo();
}

void CInstantCamera::Open()
{
    m_p->core.Open();
}

bool CInstantCamera::IsOpen() const
{
    return m_p->core.IsOpen();
}

void CInstantCamera::Close()
{
    m_p->core.Close();
}

void CInstantCamera::StartGrabbing(EGrabStrategy strategy, EGrabLoop loop)
{
    m_p->core.StartGrabbing(0, strategy, loop);
}

void CInstantCamera::StartGrabbing(std::size_t maxImages, EGrabStrategy strategy, EGrabLoop loop)
{
    if (maxImages == 0)
    {
        GENICAM_THROW(InvalidArgumentException, "A grab of 0 images cannot be started.");
    }
    m_p->core.StartGrabbing(maxImages, strategy, loop);
}

void CInstantCamera::StopGrabbing()
{
    m_p->core.StopGrabbing();
}

bool CInstantCamera::IsGrabbing() const
{
    return m_p->core.IsGrabbing();
}

bool CInstantCamera::RetrieveResult(unsigned int timeoutMs, CGrabResultPtr& result, ETimeoutHandling timeoutHandling)
{
    return m_p->core.RetrieveResult(timeoutMs, result, timeoutHandling);
}

void CInstantCamera::RegisterConfiguration(CConfigurationEventHandler* pHandler, ERegistrationMode mode,
                                           ECleanup cleanup)
{
    m_p->core.RegisterConfiguration(pHandler, mode, cleanup);
}

bool CInstantCamera::DeregisterConfiguration(CConfigurationEventHandler* pHandler)
{
    return m_p->core.DeregisterConfiguration(pHandler);
}

void CInstantCamera::RegisterImageEventHandler(CImageEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup)
{
    m_p->core.RegisterImageHandler(pHandler, mode, cleanup);
}

bool CInstantCamera::DeregisterImageEventHandler(CImageEventHandler* pHandler)
{
    return m_p->core.DeregisterImageHandler(pHandler);
}

GenApi::INodeMap& CInstantCamera::GetNodeMap()
{
    return m_p->core.GetNodeMap([](IVelmoDevice& device) { return device.GetNodeMap(); });
}

GenApi::INodeMap& CInstantCamera::GetTLNodeMap()
{
    return m_p->core.GetNodeMap([](IVelmoDevice& device) { return device.GetTLNodeMap(); });
}

GenApi::INodeMap& CInstantCamera::GetStreamGrabberNodeMap()
{
    return m_p->core.GetNodeMap([](IVelmoDevice& device)
                                { return device.GetNumStreams() == 0 ? nullptr : device.GetStream(0)->GetNodeMap(); });
}

GenApi::INodeMap& CInstantCamera::GetEventGrabberNodeMap()
{
    return m_p->core.GetNodeMap([](IVelmoDevice& device) { return device.GetEventGrabberNodeMap(); });
}

GenApi::INodeMap& CInstantCamera::GetInstantCameraNodeMap()
{
    return m_p->core.GetSettings().GetNodeMap();
}

} // namespace Velmo
