// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/server.h"

#include <atomic>

namespace GigEServer::Internal
{

/** SCounters while threads count. */
struct SLiveCounters
{
    std::atomic<std::uint64_t> blocks{0};
    std::atomic<std::uint64_t> packets{0};
    std::atomic<std::uint64_t> resentPackets{0};
    std::atomic<std::uint64_t> lostPackets{0};
    std::atomic<std::uint64_t> refusedPackets{0};
    std::atomic<std::uint64_t> missedRequests{0};
    std::atomic<std::uint64_t> events{0};
    std::atomic<std::uint64_t> lostEvents{0};

    SCounters Get() const
    {
        return {blocks, packets, resentPackets, lostPackets, refusedPackets, missedRequests, events, lostEvents};
    }
};

} // namespace GigEServer::Internal
