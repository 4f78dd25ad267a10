// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "transport/transport_export.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Velmo
{

enum class EPayloadType
{
    Undefined = -1,
    Image = 0,
    RawData = 1,
    File = 2,
    ChunkData = 3
};

namespace Transport
{

enum class EResultStatus
{
    Ok,
    Failed,
    Canceled
};

/** What became of one queued buffer. */
struct SStreamResult
{
    void* pContext = nullptr; // as given to QueueBuffer
    EResultStatus status = EResultStatus::Failed;
    EPayloadType payloadType = EPayloadType::Undefined;
    std::uint32_t pixelType = 0; // PFNC value
    std::uint32_t width = 0;     // pixels
    std::uint32_t height = 0;    // pixels
    std::uint32_t offsetX = 0;
    std::uint32_t offsetY = 0;
    std::uint32_t paddingX = 0; // bytes at the end of each line
    std::size_t payloadBytes = 0;
    std::uint64_t blockId = 0;   // the camera's frame number; the first of a stream is 1
    std::uint64_t timestamp = 0; // ticks of the camera's clock
    std::uint32_t errorCode = 0;
    std::string errorDescription;
};

/**
 * One stream of a device: takes announced buffers and delivers filled ones, in order.
 *
 * Life: Open -> AnnounceBuffer... -> Start -> Queue/Retrieve... -> Stop -> RevokeBuffer... -> Close.
 * The stream never owns buffer memory. Between QueueBuffer and its result the memory belongs to the stream.
 * Threads: QueueBuffer, RetrieveResult and WakeUp from any thread at any time while started; the rest from one
 * thread at a time.
 * Errors: GenICam exceptions; after the device was removed Start and QueueBuffer throw RuntimeException, while
 * RetrieveResult still delivers what was queued as Canceled or Failed, and Stop, RevokeBuffer, Close do not throw.
 */
class TRANSPORT_EXPORT IStream
{
public:
    virtual ~IStream();
    virtual void Open() = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    /** The stream grabber's own parameters (PayloadSize, TransmissionType where there is one, ...); never null while
     *  open. */
    virtual GenApi::INodeMap* GetNodeMap() = 0;
    /** Bytes a buffer must hold under the device's present settings. */
    virtual std::size_t GetPayloadBytes() = 0;
    virtual void AnnounceBuffer(void* pMemory, std::size_t bytes, void* pContext) = 0;
    /** Buffers must not be queued any more. */
    virtual void RevokeBuffer(void* pContext) = 0;
    /** Hands an announced buffer to the stream; allowed before Start. */
    virtual void QueueBuffer(void* pContext) = 0;
    /** Ready to receive; the caller starts the device's acquisition afterwards. */
    virtual void Start() = 0;
    /** Ends receiving; every queued buffer is then delivered by RetrieveResult as Canceled. Also without a Start. */
    virtual void Stop() = 0;
    /** Waits up to timeoutMs for a result (0: looks only). False: none, or woken up. */
    virtual bool RetrieveResult(SStreamResult& result, unsigned int timeoutMs) = 0;
    /** Makes a RetrieveResult that waits, or else the next one, return at once. */
    virtual void WakeUp() = 0;
};

} // namespace Transport
} // namespace Velmo
