// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/grabresult.h"

#include <atomic>

namespace Velmo
{

class CInstantCamera;

namespace Internal
{
class CHandlerRegistration;
}

enum ERegistrationMode
{
    RegistrationMode_Append = 0,
    RegistrationMode_ReplaceAll = 1
};
enum ECleanup
{
    Cleanup_None = 0,
    Cleanup_Delete = 1
};

/** Counts where a handler is registered; destroying a registered one is a programming error (asserted). */
class VELMO_EXPORT CEventHandlerBase
{
public:
    CEventHandlerBase() = default;
    CEventHandlerBase(const CEventHandlerBase&) = delete;
    CEventHandlerBase& operator=(const CEventHandlerBase&) = delete;
    int DebugGetEventHandlerRegistrationCount() const { return m_registrations.load(); }

protected:
    virtual ~CEventHandlerBase();

private:
    friend class Internal::CHandlerRegistration;
    std::atomic<int> m_registrations{0};
};

/** Told of images. All calls on the grab loop thread (the caller of RetrieveResult with a loop of the user's own), in
 *  registration order of the handlers. An exception thrown here is reported to OnGrabError. */
class VELMO_EXPORT CImageEventHandler : public virtual CEventHandlerBase
{
public:
    ~CImageEventHandler() override;
    virtual void OnImagesSkipped(CInstantCamera& camera, std::size_t count);
    virtual void OnImageGrabbed(CInstantCamera& camera, const CGrabResultPtr& result);
    virtual void OnImageEventHandlerRegistered(CInstantCamera& camera);
    virtual void OnImageEventHandlerDeregistered(CInstantCamera& camera);
};

/**
 * Told of what happens to the camera. Calls come on the thread that caused them: attach, open, close and grab start
 * on the caller's; OnGrabStopped on the stopping caller's or the grab loop thread; OnGrabError on the grab loop
 * thread; OnCameraDeviceRemoved on a thread of the transport.
 * An exception thrown by a handler before the act (OnAttach, OnOpen, OnGrabStart ...) is passed on to the caller, and
 * the act is not done; but after the device was removed, and where the camera acts by itself, it is only logged. One
 * thrown after the act is logged.
 * OnDetach and OnDetached come whenever a device leaves the camera; between OnDestroy and OnDestroyed, too.
 * When the device is removed during a grab with a loop of the camera's own, OnGrabError is called once, then
 * OnGrabStop and OnGrabStopped. Results cancelled by the removal are not delivered.
 */
class VELMO_EXPORT CConfigurationEventHandler : public virtual CEventHandlerBase
{
public:
    ~CConfigurationEventHandler() override;
    virtual void OnAttach(CInstantCamera& camera);
    virtual void OnAttached(CInstantCamera& camera);
    virtual void OnDetach(CInstantCamera& camera);
    virtual void OnDetached(CInstantCamera& camera);
    virtual void OnDestroy(CInstantCamera& camera);
    virtual void OnDestroyed(CInstantCamera& camera);
    virtual void OnOpen(CInstantCamera& camera);
    virtual void OnOpened(CInstantCamera& camera);
    virtual void OnClose(CInstantCamera& camera);
    virtual void OnClosed(CInstantCamera& camera);
    virtual void OnGrabStart(CInstantCamera& camera);
    virtual void OnGrabStarted(CInstantCamera& camera);
    virtual void OnGrabStop(CInstantCamera& camera);
    virtual void OnGrabStopped(CInstantCamera& camera);
    virtual void OnGrabError(CInstantCamera& camera, const char* errorMessage);
    virtual void OnCameraDeviceRemoved(CInstantCamera& camera);
    virtual void OnConfigurationRegistered(CInstantCamera& camera);
    virtual void OnConfigurationDeregistered(CInstantCamera& camera);
};

} // namespace Velmo
