// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gvcpclient.h"

#include <algorithm>
#include <poll.h>
#include <random>

namespace Velmo::GigE::Internal
{

namespace
{
using Clock = std::chrono::steady_clock;
}

bool CGvcpClient::Open(std::uint32_t adapterIp, std::uint32_t deviceIp)
{
    m_deviceIp = deviceIp;
    m_requestId = static_cast<std::uint16_t>(std::random_device{}());
    return m_socket.Bind(adapterIp);
}

SRegisterAnswer CGvcpClient::ReadRegister(std::uint32_t address, std::chrono::milliseconds timeout, int attempts)
{
    SRegisterAnswer answer;
    const auto encode = [address](std::uint16_t requestId)
    {
        return Gvcp::EncodeReadRegCmd(requestId, {address});
    };
    const auto parse = [&answer](const Gvcp::SAcknowledge& ack)
    {
        std::vector<std::uint32_t> values;
        const bool isRead = Gvcp::ParseReadRegAck(ack, values) == Gvcp::EParseResult::Ok && !values.empty();
        answer.value = isRead ? values.front() : 0;
        return isRead;
    };
    answer.result = Ask({Gvcp::ECommand::ReadRegAck, encode, parse}, timeout, attempts, answer.status);
    return answer;
}

SMemoryAnswer CGvcpClient::ReadMemory(std::uint32_t address, std::size_t bytes, std::chrono::milliseconds timeout,
                                      int attempts)
{
    SMemoryAnswer answer;
    const auto encode = [address, bytes](std::uint16_t requestId)
    {
        return Gvcp::EncodeReadMemCmd(requestId, address, bytes);
    };
    const auto parse = [&answer, address, bytes](const Gvcp::SAcknowledge& ack)
    {
        Gvcp::SMemory memory;
        const bool isRead = Gvcp::ParseReadMemAck(ack, memory) == Gvcp::EParseResult::Ok && memory.address == address &&
                            memory.bytes == bytes;
        answer.data = isRead ? Gvcp::Bytes(memory.pData, memory.pData + memory.bytes) : Gvcp::Bytes();
        return isRead;
    };
    answer.result = Ask({Gvcp::ECommand::ReadMemAck, encode, parse}, timeout, attempts, answer.status);
    return answer;
}

ERequest CGvcpClient::Ask(const SRequest& request, std::chrono::milliseconds timeout, int attempts,
                          std::uint16_t& status)
{
    // One identifier for all attempts, by the standard: the answer to the first may come after the second was sent.
    m_requestId = m_requestId == 0xFFFF ? 1 : static_cast<std::uint16_t>(m_requestId + 1); // 0 is not allowed
    const Gvcp::Bytes command = request.encode(m_requestId);
    ERequest result = ERequest::Silent;
    for (int attempt = 0; attempt < attempts && result == ERequest::Silent; ++attempt)
    {
        if (!m_socket.Send(command, m_deviceIp, Gvcp::Port))
        {
            return ERequest::NotSent;
        }
        result = Await(request, timeout, status);
    }
    return result;
}

ERequest CGvcpClient::Await(const SRequest& request, std::chrono::milliseconds timeout, std::uint16_t& status)
{
    Clock::time_point deadline = Clock::now() + timeout;
    const Clock::time_point last = deadline + MostPatience;
    ERequest result = ERequest::Silent; // when the deadline has passed
    std::uint8_t data[Gvcp::HeaderBytes + Gvcp::MaxPayloadBytes];
    for (;;)
    {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd entry{m_socket.GetDescriptor(), POLLIN, 0};
        if (left.count() <= 0 || poll(&entry, 1, static_cast<int>(left.count())) == 0)
        {
            return result;
        }
        std::uint32_t senderIp = 0;
        std::uint16_t senderPort = 0;
        const std::size_t bytes = m_socket.Receive(data, sizeof data, senderIp, senderPort);
        Gvcp::SAcknowledge ack;
        if (bytes == 0 || senderIp != m_deviceIp || senderPort != Gvcp::Port ||
            Gvcp::ParseAcknowledge(data, bytes, ack) != Gvcp::EParseResult::Ok || ack.ackId != m_requestId)
        {
            continue;
        }
        std::uint16_t pendingMs = 0;
        if (ack.command == static_cast<std::uint16_t>(Gvcp::ECommand::PendingAck) &&
            Gvcp::ParsePendingAck(ack, pendingMs) == Gvcp::EParseResult::Ok)
        {
            // It works on it and says how long; it may say so again, but not for ever.
            deadline = std::min(last, Clock::now() + timeout + std::chrono::milliseconds(pendingMs));
            result = ERequest::Pending;
            continue;
        }
        if (ack.command != static_cast<std::uint16_t>(request.answer))
        {
            continue;
        }
        status = ack.status;
        if (status != 0)
        {
            return ERequest::Refused;
        }
        if (request.parse(ack))
        {
            return ERequest::Answered;
        }
    }
}

} // namespace Velmo::GigE::Internal
