// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/messagechannel.h"

#include <limits>

namespace GigEServer::Internal
{

namespace Gvcp = Velmo::Gvcp;

void CMessageChannel::SetTarget(const SMessageTarget& target)
{
    if (target.peer.port == 0 || !(target.peer == m_target.peer))
    {
        m_counters.lostEvents += m_waiting.size() + (m_inFlight.has_value() ? 1 : 0);
        m_waiting.clear();
        m_inFlight.reset();
    }
    m_target = target;
}

void CMessageChannel::Push(const Gvcp::SEvent& event, Time now)
{
    if (m_target.peer.port == 0)
    {
        return;
    }
    if (m_waiting.size() >= MostWaiting)
    {
        ++m_counters.lostEvents;
        return;
    }
    m_waiting.push_back(event);
    Next(now);
}

void CMessageChannel::Next(Time now)
{
    while (!m_inFlight.has_value() && !m_waiting.empty())
    {
        const Gvcp::SEvent event = std::move(m_waiting.front());
        m_waiting.pop_front();
        // By the standard no request has the number 0.
        m_requestId = m_requestId == std::numeric_limits<std::uint16_t>::max() ? 1 : m_requestId + 1;
        const bool isAckRequired = m_target.timeout.count() != 0;
        const Gvcp::Bytes message = event.data.empty() ? Gvcp::EncodeEventCmd(m_requestId, event, isAckRequired)
                                                       : Gvcp::EncodeEventDataCmd(m_requestId, event, isAckRequired);
        ++m_counters.events;
        m_send(message, m_target.peer);
        if (isAckRequired)
        {
            const Gvcp::ECommand answer = event.data.empty() ? Gvcp::ECommand::EventAck : Gvcp::ECommand::EventDataAck;
            m_inFlight = SInFlight{m_requestId, answer, message, now + m_target.timeout, m_target.retries};
        }
    }
}

void CMessageChannel::Handle(const std::uint8_t* data, std::size_t bytes, const SPeer& peer, Time now)
{
    Gvcp::SAcknowledge ack;
    if (m_inFlight.has_value() && peer == m_target.peer &&
        Gvcp::ParseAcknowledge(data, bytes, ack) == Gvcp::EParseResult::Ok &&
        Gvcp::IsAnswer(ack, m_inFlight->answer, m_inFlight->requestId))
    {
        m_inFlight.reset();
        Next(now);
    }
}

void CMessageChannel::OnTime(Time now)
{
    if (!m_inFlight.has_value() || now < m_inFlight->deadline)
    {
        return;
    }
    if (m_inFlight->retries == 0)
    {
        ++m_counters.lostEvents;
        m_inFlight.reset();
        Next(now);
        return;
    }
    --m_inFlight->retries;
    m_inFlight->deadline = now + m_target.timeout;
    m_send(m_inFlight->message, m_target.peer);
}

std::optional<CMessageChannel::Time> CMessageChannel::GetDeadline() const
{
    return m_inFlight.has_value() ? std::optional<Time>(m_inFlight->deadline) : std::nullopt;
}

} // namespace GigEServer::Internal
