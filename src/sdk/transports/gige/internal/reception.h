// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/stream.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace Velmo::GigE::Internal
{

/** Counted since the start of a stream. */
struct SStreamStatistics
{
    std::uint64_t delivered = 0;  // images received completely
    std::uint64_t lost = 0;       // images of which nothing was received or for which there was no buffer
    std::uint64_t incomplete = 0; // images received incompletely
    std::uint64_t askedFor = 0;   // packets that the camera was asked for again
    std::uint64_t resent = 0;     // packets that came again
    std::uint64_t missing = 0;    // packets that never came
};

/** Takes over one result; called without a lock held, by one thread at a time. */
using Deliver = std::function<void(Transport::SStreamResult)>;

/**
 * One run of a stream, from its start to its stop: makes images of what the camera sends.
 *
 * Ownership: buffer memory stays the caller's; it is written from AddBuffer until the buffer is delivered or End
 * returned. Threads: AddBuffer and GetStatistics from any, and with the stream's lock held; the rest on one at a time.
 */
class IReception
{
public:
    virtual ~IReception() = default;
    /** The buffers that were queued before are there: to receive from now on. */
    virtual void Begin() = 0;
    virtual void AddBuffer(void* pContext, std::uint8_t* pMemory, std::size_t bytes) = 0;
    virtual SStreamStatistics GetStatistics() = 0;
    /** Nothing is written or delivered afterwards; to be called once. */
    virtual SStreamStatistics End() = 0;
};

} // namespace Velmo::GigE::Internal
