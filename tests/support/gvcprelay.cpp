// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/gvcprelay.h"

#include <arpa/inet.h>
#include <chrono>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace Test
{

namespace Gvcp = Velmo::Gvcp;

namespace
{

constexpr const char* OwnAddress = "127.0.0.1";
constexpr std::uint32_t OwnIp = 0x7F000001;
constexpr std::size_t MostBytes = 0x1000; // GVCP itself ends at 576

sockaddr_in At(const std::string& address, std::uint16_t port)
{
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    inet_pton(AF_INET, address.c_str(), &result.sin_addr);
    return result;
}

int OpenSocket(const std::string& address, std::uint16_t port, bool isListening)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const sockaddr_in at = At(address, port);
    const auto* const pAt = reinterpret_cast<const sockaddr*>(&at);
    if ((isListening ? bind(descriptor, pAt, sizeof at) : connect(descriptor, pAt, sizeof at)) != 0)
    {
        close(descriptor);
        throw std::runtime_error("The relay cannot use " + address + ":" + std::to_string(port));
    }
    return descriptor;
}

/** The camera's own address in its discovery acknowledge would lead past the relay. */
Gvcp::Bytes WithOwnAddress(const Gvcp::Bytes& datagram)
{
    Gvcp::SAcknowledge ack;
    Gvcp::SDiscoveryAck discovery;
    if (Gvcp::ParseAcknowledge(datagram.data(), datagram.size(), ack) != Gvcp::EParseResult::Ok ||
        ack.command != static_cast<std::uint16_t>(Gvcp::ECommand::DiscoveryAck) ||
        Gvcp::ParseDiscoveryAck(ack, discovery) != Gvcp::EParseResult::Ok)
    {
        return datagram;
    }
    discovery.currentIp = OwnIp;
    return Gvcp::EncodeDiscoveryAck(ack.ackId, discovery);
}

} // namespace

CGvcpRelay::CGvcpRelay(const std::string& cameraAddress, Judge judge)
    : m_cameraAddress(cameraAddress), m_judge(std::move(judge)), m_near(OpenSocket(OwnAddress, Gvcp::Port, true)),
      m_thread([this] { Run(); })
{
}

CGvcpRelay::~CGvcpRelay()
{
    m_isStopping = true;
    m_thread.join();
    close(m_near);
    for (const auto& [port, descriptor] : m_far)
    {
        close(descriptor);
    }
}

void CGvcpRelay::SendBack(const Gvcp::Bytes& datagram, std::uint16_t applicationPort)
{
    const sockaddr_in to = At(OwnAddress, applicationPort);
    sendto(m_near, datagram.data(), datagram.size(), 0, reinterpret_cast<const sockaddr*>(&to), sizeof to);
}

void CGvcpRelay::SendPending(std::uint16_t applicationPort, std::uint16_t requestId)
{
    constexpr std::uint16_t moreMs = 2000;
    SendBack(Gvcp::EncodePendingAck(requestId, moreMs), applicationPort);
}

void CGvcpRelay::TakeCommand()
{
    Gvcp::Bytes datagram(MostBytes);
    sockaddr_in from{};
    socklen_t fromBytes = sizeof from;
    const ssize_t bytes =
        recvfrom(m_near, datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr*>(&from), &fromBytes);
    Gvcp::SCommand command;
    datagram.resize(bytes < 0 ? 0 : static_cast<std::size_t>(bytes));
    if (Gvcp::ParseCommand(datagram.data(), datagram.size(), command) != Gvcp::EParseResult::Ok)
    {
        return;
    }
    const std::uint16_t port = ntohs(from.sin_port);
    switch (m_isPassing ? EFate::Carried : m_judge(command, port))
    {
    case EFate::Pending:
        m_pendingCount += m_pending.emplace(port, command.requestId).second ? 1 : 0;
        SendPending(port, command.requestId);
        return;
    case EFate::Denied:
        // The answer's number is the command's and one.
        SendBack(Gvcp::EncodeErrorAck(command.requestId, static_cast<Gvcp::ECommand>(command.command + 1),
                                      Gvcp::EStatus::AccessDenied),
                 port);
        return;
    case EFate::Carried:
        break;
    }
    if (m_far.count(port) == 0)
    {
        m_far[port] = OpenSocket(m_cameraAddress, Gvcp::Port, false);
    }
    send(m_far[port], datagram.data(), datagram.size(), 0);
}

void CGvcpRelay::TakeAnswer(std::uint16_t applicationPort, int socket)
{
    Gvcp::Bytes datagram(MostBytes);
    const ssize_t bytes = recv(socket, datagram.data(), datagram.size(), 0);
    if (bytes > 0)
    {
        datagram.resize(static_cast<std::size_t>(bytes));
        SendBack(WithOwnAddress(datagram), applicationPort);
    }
}

void CGvcpRelay::Run()
{
    constexpr std::chrono::milliseconds repetition{500};
    constexpr int checkMs = 20; // how soon the end of the relay is seen
    auto next = std::chrono::steady_clock::now() + repetition;
    while (!m_isStopping)
    {
        std::vector<pollfd> entries{{m_near, POLLIN, 0}};
        std::vector<std::uint16_t> ports;
        for (const auto& [port, descriptor] : m_far)
        {
            entries.push_back({descriptor, POLLIN, 0});
            ports.push_back(port);
        }
        poll(entries.data(), entries.size(), checkMs);
        for (std::size_t i = 0; i < ports.size(); ++i)
        {
            if (entries[i + 1].revents != 0)
            {
                TakeAnswer(ports[i], entries[i + 1].fd);
            }
        }
        if (entries[0].revents != 0)
        {
            TakeCommand();
        }
        if (std::chrono::steady_clock::now() >= next && !m_isPassing)
        {
            next += repetition;
            for (const auto& [port, requestId] : m_pending)
            {
                SendPending(port, requestId);
            }
        }
    }
}

} // namespace Test
