// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/servedcamera.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace GigEServer
{

/** What a camera sent so far; each counts from the start of the server. */
struct SCounters
{
    std::uint64_t blocks = 0;         // images that were sent, also incompletely
    std::uint64_t packets = 0;        // stream packets given to the network, also those sent again
    std::uint64_t resentPackets = 0;  // stream packets sent again on request
    std::uint64_t lostPackets = 0;    // stream packets left out on purpose
    std::uint64_t refusedPackets = 0; // stream packets that the operating system did not take
    std::uint64_t missedRequests = 0; // packets asked for again that were gone
    std::uint64_t events = 0;         // messages of the message channel, without those sent again
    std::uint64_t lostEvents = 0;     // messages that nobody acknowledged, or for which there was no room
};

/**
 * GigE Vision cameras on this computer's network: the camera model behind the control and the stream protocol.
 *
 * Ownership: the server owns its cameras, sockets and threads.
 * Threads: any function from any thread. It runs one control thread for all cameras and one sender thread per camera.
 */
class GIGESERVER_EXPORT CServer
{
public:
    /** All cameras answer when it returns. Throws GenICam::RuntimeException, naming address and reason, when one cannot
     *  be reached under its address, and what the camera model throws on a configuration that does not fit. */
    explicit CServer(const std::vector<SServedCamera>& cameras);
    /** Ends streams and threads; clients see the cameras vanish. */
    ~CServer();
    CServer(const CServer&) = delete;
    CServer& operator=(const CServer&) = delete;

    SCounters GetCounters(std::size_t camera) const;

private:
    struct SPrivate;
    const std::unique_ptr<SPrivate> m_p;
};

} // namespace GigEServer
