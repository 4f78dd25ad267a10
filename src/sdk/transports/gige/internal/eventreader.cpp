// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/eventreader.h"

#include <algorithm>

namespace Velmo::GigE::Internal
{

using Gvcp::ECommand;
using Transport::SDeviceEvent;

namespace
{

constexpr std::size_t EventBytes = 16; // GVCP, EVENT_CMD: of one event
constexpr std::size_t ExtendedEventBytes = 24;

bool IsCommand(const Gvcp::SCommand& command, ECommand kind)
{
    return command.command == static_cast<std::uint16_t>(kind);
}

} // namespace

bool CEventReader::IsKnown(const std::uint8_t* data, std::size_t bytes)
{
    // Whole messages are compared: cameras that want no acknowledges need not count their requests.
    const auto isSame = [&](const Gvcp::Bytes& message)
    {
        return std::equal(message.begin(), message.end(), data, data + bytes);
    };
    if (std::any_of(m_recent.begin(), m_recent.end(), isSame))
    {
        return true;
    }
    m_recent[m_next].assign(data, data + bytes);
    m_next = (m_next + 1) % m_recent.size();
    return false;
}

bool CEventReader::Take(const Gvcp::SCommand& command, std::vector<SDeviceEvent>& events) const
{
    Gvcp::SEvent event;
    if (IsCommand(command, ECommand::EventDataCmd))
    {
        if (Gvcp::ParseEventDataCmd(command, event) != Gvcp::EParseResult::Ok)
        {
            return false;
        }
        events.push_back({event.id, {command.pPayload, command.pPayload + command.payloadBytes}});
        return true;
    }
    const bool isExtended = (command.flags & Gvcp::Flag::ExtendedIds) != 0;
    const std::size_t eventBytes = isExtended ? ExtendedEventBytes : EventBytes;
    if (command.payloadBytes == 0 || command.payloadBytes % eventBytes != 0)
    {
        return false;
    }
    Gvcp::SCommand one = command; // earlier versions of the standard put several events into one message
    one.payloadBytes = eventBytes;
    for (const std::uint8_t* const pEnd = command.pPayload + command.payloadBytes; one.pPayload != pEnd;
         one.pPayload += eventBytes)
    {
        if (Gvcp::ParseEventCmd(one, event) != Gvcp::EParseResult::Ok)
        {
            return false;
        }
        events.push_back({event.id, {one.pPayload, one.pPayload + eventBytes}});
    }
    return true;
}

Gvcp::Bytes CEventReader::Handle(const std::uint8_t* data, std::size_t bytes, std::uint32_t senderIp,
                                 std::uint16_t senderPort, const Sink& sink)
{
    Gvcp::SCommand command;
    std::vector<SDeviceEvent> events;
    const bool isOurs = senderIp == m_cameraIp && (m_sourcePort == 0 || senderPort == m_sourcePort) &&
                        Gvcp::ParseCommand(data, bytes, command) == Gvcp::EParseResult::Ok &&
                        (IsCommand(command, ECommand::EventCmd) || IsCommand(command, ECommand::EventDataCmd)) &&
                        Take(command, events);
    if (!isOurs)
    {
        ++m_counters.ignored;
        return {};
    }
    if (IsKnown(data, bytes))
    {
        ++m_counters.duplicates;
    }
    else
    {
        m_counters.received += static_cast<std::int64_t>(events.size());
        std::for_each(events.begin(), events.end(), [&](SDeviceEvent& event) { sink(std::move(event)); });
    }
    const auto answer = static_cast<ECommand>(command.command + 1);
    return (command.flags & Gvcp::Flag::AckRequired) != 0
               ? Gvcp::EncodePlainAck(command.requestId, answer, Gvcp::EStatus::Success)
               : Gvcp::Bytes();
}

} // namespace Velmo::GigE::Internal
