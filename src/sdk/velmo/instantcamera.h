// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/device.h"
#include "velmo/eventhandlers.h"
#include "velmo/grabresult.h"
#include "velmo/setting.h"

#include <memory>

namespace Velmo
{

enum EGrabStrategy
{
    GrabStrategy_OneByOne,        // every image, in order
    GrabStrategy_LatestImageOnly, // the newest; older ones are skipped
    GrabStrategy_LatestImages,    // the newest OutputQueueSize
    GrabStrategy_UpcomingImage    // the first that arrives after it was asked for
};

enum EGrabLoop
{
    GrabLoop_ProvidedByUser,
    GrabLoop_ProvidedByInstantCamera
};
enum ETimeoutHandling
{
    TimeoutHandling_Return,
    TimeoutHandling_ThrowException
};

/**
 * One camera, ready to use: owns its device, its buffers and its grab loop.
 *
 * States: no device -> attached -> open -> grabbing -> open -> attached -> no device; a removal is possible from any
 * state with a device and leaves a device that only Close, DetachDevice and DestroyDevice accept.
 * Threads: every function from any thread, serialised by the camera; handlers are called with no lock held, so they
 * may call back (StopGrabbing from OnImageGrabbed included). See eventhandlers.h for the threads of the callbacks.
 * Where a handler calls StopGrabbing, Close or DestroyDevice while another thread stops, closes or destroys the camera
 * and waits for that very handler, the call returns at once and the other thread does what was asked. It must not be
 * destroyed from within its handlers.
 * Errors: GenICam exceptions; LogicalErrorException for a call in the wrong state. Close and DestroyDevice log what
 * fails on the device instead of throwing it.
 */
class VELMO_EXPORT CInstantCamera
{
public:
    CInstantCamera();
    explicit CInstantCamera(IVelmoDevice* pDevice, ECleanup cleanup = Cleanup_Delete);
    /** Stops, closes and destroys or detaches the device; deregisters all handlers. Grab results stay valid. */
    virtual ~CInstantCamera();
    CInstantCamera(const CInstantCamera&) = delete;
    CInstantCamera& operator=(const CInstantCamera&) = delete;

    /** Replaces (and, if owned, destroys) the device attached before. */
    void Attach(IVelmoDevice* pDevice, ECleanup cleanup = Cleanup_Delete);
    bool IsVelmoDeviceAttached() const;
    bool HasOwnership() const;
    /** Gives the device back without destroying it; null when none. Closes nothing: an open device stays open. */
    IVelmoDevice* DetachDevice();
    /** Stops, closes and destroys the device, owned or not; nothing when there is none. */
    void DestroyDevice();
    IVelmoDevice* GetDevice() const;
    bool IsCameraDeviceRemoved() const;
    /** An empty record without a device. */
    CDeviceInfo GetDeviceInfo() const;

    /** With the access that MonitorModeActive asks for. Nothing when open already. */
    void Open();
    bool IsOpen() const;
    /** Stops grabbing first. Nothing when not open. */
    void Close();

    void StartGrabbing(EGrabStrategy strategy = GrabStrategy_OneByOne, EGrabLoop loop = GrabLoop_ProvidedByUser);
    /** Stops by itself after that many images (failed ones count). */
    void StartGrabbing(std::size_t maxImages, EGrabStrategy strategy = GrabStrategy_OneByOne,
                       EGrabLoop loop = GrabLoop_ProvidedByUser);
    void StopGrabbing();
    bool IsGrabbing() const;
    /** True when a result was taken (a failed grab is a result). Only with GrabLoop_ProvidedByUser; false when nothing
     *  is grabbed or the grab is stopped meanwhile. After a removal, or when the stream takes no buffer any more, what
     * has arrived is still given out, then RuntimeException is thrown and the grab ends. */
    bool RetrieveResult(unsigned int timeoutMs, CGrabResultPtr& result,
                        ETimeoutHandling timeoutHandling = TimeoutHandling_ThrowException);

    /** A null handler registers none; with RegistrationMode_ReplaceAll it only takes away all. */
    void RegisterConfiguration(CConfigurationEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup);
    /** False when it was not registered. Waits for calls of the handler on other threads to end; but not from within
     *  the handler itself, nor for a call that itself waits for the calling handler to end: by deregistering it, or by
     *  stopping, closing or destroying the camera. Only then may the handler still be running on return. */
    bool DeregisterConfiguration(CConfigurationEventHandler* pHandler);
    void RegisterImageEventHandler(CImageEventHandler* pHandler, ERegistrationMode mode, ECleanup cleanup);
    bool DeregisterImageEventHandler(CImageEventHandler* pHandler);

    /** Of the camera; throws LogicalErrorException when not open. Where the camera has no such node map the answer is
     * one without features. */
    GenApi::INodeMap& GetNodeMap();
    GenApi::INodeMap& GetTLNodeMap();
    GenApi::INodeMap& GetStreamGrabberNodeMap();
    GenApi::INodeMap& GetEventGrabberNodeMap();
    /** Of this object; always there. */
    GenApi::INodeMap& GetInstantCameraNodeMap();

private:
    struct SPrivate;
    std::unique_ptr<SPrivate> m_p;

public:
    /** A grab of more than one image with a loop of the camera's own makes at least 2, so that a handler may keep the
     *  latest result. */
    CIntegerSetting MaxNumBuffer;                   // default 10
    CIntegerSetting MaxNumQueuedBuffer;             // default 10
    CIntegerSetting OutputQueueSize;                // default 1
    CBooleanSetting MonitorModeActive;              // default false
    CBooleanSetting GrabCameraEvents;               // default false
    CBooleanSetting GrabLoopThreadUseTimeout;       // default false
    CIntegerSetting GrabLoopThreadTimeout;          // milliseconds, default 5000; ends the grab with OnGrabError
    CBooleanSetting GrabLoopThreadPriorityOverride; // default false
    CIntegerSetting GrabLoopThreadPriority;         // default 15
    /** Applied when a grab starts, to the thread that takes buffers from the stream. Where the system does not permit
     *  the priority the grab goes on at the ordinary one and one line is logged. */
    CBooleanSetting InternalGrabEngineThreadPriorityOverride; // default false
    CIntegerSetting InternalGrabEngineThreadPriority;         // default 25
};

} // namespace Velmo
