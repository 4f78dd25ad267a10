// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "barecameras.h"

#include "protocols/gvbsregisters.h"
#include "support/figures.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace Benchmarks
{

namespace Gvbs = Velmo::Gvbs;
namespace Gvcp = Velmo::Gvcp;

namespace
{

constexpr std::uint32_t FirstCamera = 0x7F000001;
constexpr std::uint32_t LoopbackBroadcast = 0x7FFFFFFF;
constexpr int PatienceMs = 5000;

} // namespace

CBareClient::CBareClient() : m_socket(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = htonl(FirstCamera);
    const int on = 1;
    if (m_socket < 0 || bind(m_socket, reinterpret_cast<const sockaddr*>(&own), sizeof own) != 0 ||
        setsockopt(m_socket, SOL_SOCKET, SO_BROADCAST, &on, sizeof on) != 0)
    {
        throw std::runtime_error("no socket for the bare client");
    }
}

CBareClient::~CBareClient()
{
    close(m_socket);
}

void CBareClient::send(const Gvcp::Bytes& packet, std::uint32_t ip)
{
    sockaddr_in camera{};
    camera.sin_family = AF_INET;
    camera.sin_addr.s_addr = htonl(ip);
    camera.sin_port = htons(Gvcp::Port);
    if (sendto(m_socket, packet.data(), packet.size(), 0, reinterpret_cast<const sockaddr*>(&camera), sizeof camera) <
        0)
    {
        throw std::runtime_error("the bare client cannot send");
    }
}

SBareAnswers CBareClient::receive(int cameras, double start)
{
    SBareAnswers answers;
    std::uint8_t data[2048];
    pollfd entry{m_socket, POLLIN, 0};
    while (answers.answers < cameras && poll(&entry, 1, PatienceMs) > 0)
    {
        const ssize_t bytes = recv(m_socket, data, sizeof data, MSG_DONTWAIT);
        Gvcp::SAcknowledge ack;
        if (bytes <= 0 ||
            Gvcp::ParseAcknowledge(data, static_cast<std::size_t>(bytes), ack) != Gvcp::EParseResult::Ok ||
            ack.ackId != m_requestId)
        {
            continue;
        }
        answers.last = nowMicroseconds() - start;
        answers.first = answers.answers++ == 0 ? answers.last : answers.first;
    }
    if (answers.answers < cameras)
    {
        throw std::runtime_error("not every camera answers the bare client");
    }
    return answers;
}

SBareAnswers CBareClient::discover(int cameras)
{
    ++m_requestId;
    const double start = nowMicroseconds();
    for (int i = 0; i < cameras; ++i)
    {
        send(Gvcp::EncodeDiscoveryCmd(m_requestId, false), FirstCamera + static_cast<std::uint32_t>(i));
    }
    return receive(cameras, start);
}

SBareAnswers CBareClient::act(int cameras, const Gvcp::SAction& action)
{
    ++m_requestId;
    const double start = nowMicroseconds();
    send(Gvcp::EncodeActionCmd(m_requestId, action, true), LoopbackBroadcast);
    return receive(cameras, start);
}

void CBareClient::control(int cameras)
{
    for (int i = 0; i < cameras; ++i)
    {
        ++m_requestId;
        send(Gvcp::EncodeWriteRegCmd(m_requestId, {{Gvbs::ControlChannelPrivilege, Gvbs::CcpControlAccess},
                                                   {Gvbs::GvcpConfiguration, Gvbs::GvcpConfigurationHeartbeatDisable},
                                                   {Gvbs::ActionDeviceKey, 1},
                                                   {Gvbs::ActionGroupKey, 1},
                                                   {Gvbs::ActionGroupMask, 1}}),
             FirstCamera + static_cast<std::uint32_t>(i));
        receive(1, nowMicroseconds());
    }
}

} // namespace Benchmarks
