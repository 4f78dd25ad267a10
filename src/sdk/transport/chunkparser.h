// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport_export.h"

#include <cstddef>
#include <cstdint>

namespace Velmo
{

/** Makes the chunk values of one buffer readable through the device's node map. */
class TRANSPORT_EXPORT IChunkParser
{
public:
    virtual ~IChunkParser();
    /**
     * The chunks of this buffer, and no others, are now what the node map's chunk features show; features whose chunk
     * is not in it are not available. The buffer must stay valid until it is replaced or detached.
     *
     * layoutId: buffers of one layout may be given one number; 0 is no hint. pChunkOffset: receives where the first
     * chunk's data end, which is the size of the image where the payload holds one; 0 when nothing is attached.
     * Chunk data that cannot be read are the camera's fault, not the caller's: nothing is attached, and the log tells
     * why (a warning for the first since DetachBuffer, debug level for the others). So does it when a callback of a
     * node throws; the buffer is attached all the same.
     * Errors: GenICam exceptions; InvalidArgumentException without a buffer, LogicalErrorException when the device was
     * closed. Nothing is attached then.
     * Threads: one at a time, and not while the device closes; features may be read on any other thread meanwhile.
     */
    virtual void AttachBuffer(const void* pBuffer, std::int64_t bytes, std::int64_t layoutId = 0,
                              std::size_t* pChunkOffset = nullptr) = 0;
    /** Chunk features are not available afterwards. Nothing when no buffer is attached or the device was closed. A
     *  callback of a node that throws is logged. */
    virtual void DetachBuffer() = 0;
};

} // namespace Velmo
