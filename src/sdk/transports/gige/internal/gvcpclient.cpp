// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/gvcpclient.h"

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
    for (int attempt = 0; attempt < attempts; ++attempt)
    {
        m_requestId = m_requestId == 0xFFFF ? 1 : static_cast<std::uint16_t>(m_requestId + 1); // 0 is not allowed
        if (!m_socket.Send(Gvcp::EncodeReadRegCmd(m_requestId, {address}), m_deviceIp, Gvcp::Port))
        {
            answer.result = ERequest::NotSent;
            return answer;
        }
        if (Await(m_requestId, timeout, answer))
        {
            break;
        }
    }
    return answer;
}

bool CGvcpClient::Await(std::uint16_t requestId, std::chrono::milliseconds timeout, SRegisterAnswer& answer)
{
    const Clock::time_point deadline = Clock::now() + timeout;
    std::uint8_t data[Gvcp::HeaderBytes + Gvcp::MaxPayloadBytes];
    for (;;)
    {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd entry{m_socket.GetDescriptor(), POLLIN, 0};
        if (left.count() <= 0 || poll(&entry, 1, static_cast<int>(left.count())) == 0)
        {
            return false;
        }
        std::uint32_t senderIp = 0;
        std::uint16_t senderPort = 0;
        const std::size_t bytes = m_socket.Receive(data, sizeof data, senderIp, senderPort);
        Gvcp::SAcknowledge ack;
        if (bytes == 0 || senderIp != m_deviceIp ||
            Gvcp::ParseAcknowledge(data, bytes, ack) != Gvcp::EParseResult::Ok || ack.ackId != requestId ||
            ack.command != static_cast<std::uint16_t>(Gvcp::ECommand::ReadRegAck))
        {
            continue;
        }
        std::vector<std::uint32_t> values;
        if (ack.status == 0 && Gvcp::ParseReadRegAck(ack, values) == Gvcp::EParseResult::Ok)
        {
            answer = {ERequest::Answered, values.front(), 0};
            return true;
        }
        answer = {ERequest::Refused, 0, ack.status};
        return true;
    }
}

} // namespace Velmo::GigE::Internal
