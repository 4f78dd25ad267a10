// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_testexport.h"
#include "gigeserver/internal/controlchannel.h"
#include "gigeserver/internal/counters.h"
#include "protocols/gvcp.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>

namespace GigEServer::Internal
{

/** Where messages go and how their arrival is made sure of. */
struct SMessageTarget
{
    SPeer peer;                        // port 0: the channel is closed
    std::chrono::milliseconds timeout; // until a message that was not acknowledged is sent again; 0: none is asked for
    std::uint32_t retries = 0;         // how often it is sent again
};

/**
 * The message channel of a camera: one message after the other, each of which waits for its acknowledge.
 *
 * It has no socket and no clock: events, datagrams and times come in, datagrams go out. Threads: the control thread.
 */
class GIGESERVER_TEST_EXPORT CMessageChannel
{
public:
    using Time = CControlChannel::Time;
    using Send = std::function<void(const Velmo::Gvcp::Bytes& message, const SPeer& peer)>;

    static constexpr std::size_t MostWaiting = 256; // an application that does not answer costs the later events

    CMessageChannel(Send send, SLiveCounters& counters) : m_send(std::move(send)), m_counters(counters) {}

    /** Messages that wait are dropped when the channel is closed or goes elsewhere. */
    void SetTarget(const SMessageTarget& target);
    void Push(const Velmo::Gvcp::SEvent& event, Time now);
    /** A datagram that came in at the channel's source port. */
    void Handle(const std::uint8_t* data, std::size_t bytes, const SPeer& peer, Time now);
    /** Sends again what is due. */
    void OnTime(Time now);
    /** When OnTime is to be called; nothing while no acknowledge is missing. */
    std::optional<Time> GetDeadline() const;

private:
    struct SInFlight
    {
        std::uint16_t requestId;
        Velmo::Gvcp::ECommand answer;
        Velmo::Gvcp::Bytes message;
        Time deadline;
        std::uint32_t retries; // left
    };
    void Next(Time now);

    const Send m_send;
    SLiveCounters& m_counters;
    SMessageTarget m_target{};
    std::uint16_t m_requestId = 0; // the channel's own counter
    std::optional<SInFlight> m_inFlight;
    std::deque<Velmo::Gvcp::SEvent> m_waiting; // the oldest first
};

} // namespace GigEServer::Internal
