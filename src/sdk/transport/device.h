// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/infos.h"
#include "transport/stream.h"

#include <functional>

namespace Velmo
{

class IChunkParser;

enum class EDeviceAccess
{
    Control,
    Monitor
};

/**
 * A camera as a transport offers it.
 *
 * Made by CTlFactory::CreateDevice, destroyed by CTlFactory::DestroyDevice or the instant camera that owns it.
 * Errors: GenICam exceptions. A busy camera is an AccessException whose text names its owner where known; an
 * unreachable one a RuntimeException.
 * Threads: Open, Close from one thread at a time; node maps from any; the removal callback comes on a thread of the
 * transport, at most once per Open, never with a lock held, and not after SetRemovalCallback(nullptr) returned.
 * The callback may itself call Close, SetRemovalCallback and destroy the device; called on another thread while the
 * callback runs, those may wait for it to return.
 */
class TRANSPORT_EXPORT IVelmoDevice
{
public:
    virtual ~IVelmoDevice();
    virtual const CDeviceInfo& GetDeviceInfo() const = 0;
    virtual void Open(EDeviceAccess access) = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    /** True from the moment the loss was noticed until the device object is destroyed. */
    virtual bool IsRemoved() const = 0;
    /** The camera's own node map; valid while open, null otherwise. */
    virtual GenApi::INodeMap* GetNodeMap() = 0;
    /** The transport layer's parameters for this device (heartbeat ...); null when there are none. */
    virtual GenApi::INodeMap* GetTLNodeMap() = 0;
    /** The event channel's parameters, while open with control; null when the camera or the transport has none. */
    virtual GenApi::INodeMap* GetEventGrabberNodeMap() = 0;
    /** Receives the camera's events until Close: they are attached to the node map on a thread of the transport, on
     *  which the callbacks of its nodes then run; those must not close the device. Nothing where there are no events:
     *  for a monitor, and for cameras and transports without. Errors: RuntimeException, or what the camera's registers
     *  throw, when the channel cannot be opened; the device stays open without events. */
    virtual void StartEvents();
    virtual unsigned int GetNumStreams() const = 0;
    /** Valid as long as the device; null beyond GetNumStreams(). */
    virtual Transport::IStream* GetStream(unsigned int index) = 0;
    virtual void SetRemovalCallback(std::function<void()> callback) = 0;
    /** Null when the transport or camera has no chunk data, which it may know only while open. The device keeps it;
     * closing the device detaches its buffer. */
    virtual IChunkParser* CreateChunkParser() = 0;
    virtual void DestroyChunkParser(IChunkParser* pParser) = 0;
};

} // namespace Velmo
