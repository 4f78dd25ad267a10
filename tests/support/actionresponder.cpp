// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "support/actionresponder.h"

#include <arpa/inet.h>
#include <chrono>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace Test
{

namespace
{

int Listen(const std::string& address, std::uint16_t port)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on); // all cameras hear the broadcast
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_port = htons(port);
    inet_pton(AF_INET, address.c_str(), &local.sin_addr);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0)
    {
        close(descriptor);
        throw std::runtime_error("Cannot listen on " + address);
    }
    return descriptor;
}

} // namespace

CActionResponder::CActionResponder(const std::string& address, Velmo::Gvcp::EStatus status, EWay way,
                                   const std::vector<std::string>& broadcasts)
    : m_status(status), m_way(way), m_own(Listen(address, Velmo::Gvcp::Port)),
      m_other(Listen(address, 0)), m_heard{m_own}
{
    for (const std::string& broadcast : broadcasts)
    {
        m_heard.push_back(Listen(broadcast, Velmo::Gvcp::Port));
    }
    m_thread = std::thread([this] { Run(); });
}

CActionResponder::~CActionResponder()
{
    m_isStopping = true;
    m_thread.join();
    for (const int descriptor : m_heard)
    {
        close(descriptor);
    }
    close(m_other);
}

std::vector<CActionResponder::SCommand> CActionResponder::GetCommands() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_commands;
}

bool CActionResponder::WaitForCommands(std::size_t count)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_arrived.wait_for(lock, std::chrono::seconds(10), [&] { return m_commands.size() >= count; });
}

void CActionResponder::SendLate()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const SLate& late : m_late)
    {
        Send(m_own, late.answer, late.ip, late.port);
    }
    m_late.clear();
}

void CActionResponder::Run()
{
    while (!m_isStopping)
    {
        std::vector<pollfd> entries;
        for (const int descriptor : m_heard)
        {
            entries.push_back({descriptor, POLLIN, 0});
        }
        constexpr int stopCheckMs = 20;
        if (poll(entries.data(), entries.size(), stopCheckMs) <= 0)
        {
            continue;
        }
        for (const pollfd& entry : entries)
        {
            if ((entry.revents & POLLIN) != 0)
            {
                Receive(entry.fd);
            }
        }
    }
}

std::vector<Velmo::Gvcp::Bytes> CActionResponder::MakeAnswers(std::uint16_t requestId) const
{
    using namespace Velmo::Gvcp;
    const Bytes answer = EncodePlainAck(requestId, ECommand::ActionAck, m_status);
    switch (m_way)
    {
    case EWay::Silent:
        return {};
    case EWay::Twice:
        return {answer, answer};
    case EWay::OnceAndRefused:
        return {answer, EncodePlainAck(requestId, ECommand::ActionAck, EStatus::Busy)};
    case EWay::WrongRequest:
        return {EncodePlainAck(static_cast<std::uint16_t>(requestId + 1), ECommand::ActionAck, m_status)};
    case EWay::Truncated:
        return {Bytes(answer.begin(), answer.end() - 1)};
    case EWay::Once:
    case EWay::FromAnotherPort:
    case EWay::Late:
        break;
    }
    return {answer};
}

void CActionResponder::Receive(int descriptor)
{
    using namespace Velmo::Gvcp;
    std::uint8_t data[2048];
    sockaddr_in sender{};
    socklen_t length = sizeof sender;
    const ssize_t bytes = recvfrom(descriptor, data, sizeof data, 0, reinterpret_cast<sockaddr*>(&sender), &length);
    Velmo::Gvcp::SCommand command;
    SAction action;
    if (bytes <= 0 || ParseCommand(data, static_cast<std::size_t>(bytes), command) != EParseResult::Ok ||
        command.command != static_cast<std::uint16_t>(ECommand::ActionCmd) ||
        ParseActionCmd(command, action) != EParseResult::Ok)
    {
        return;
    }
    const bool isAsked = (command.flags & Flag::AckRequired) != 0;
    const std::vector<Bytes> answers = isAsked ? MakeAnswers(command.requestId) : std::vector<Bytes>();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_commands.push_back({command.flags, command.requestId, action});
        for (std::size_t i = 0; m_way == EWay::Late && i < answers.size(); ++i)
        {
            m_late.push_back({sender.sin_addr.s_addr, sender.sin_port, answers[i]});
        }
    }
    m_arrived.notify_all();
    const int from = m_way == EWay::FromAnotherPort ? m_other : m_own;
    for (std::size_t i = 0; m_way != EWay::Late && i < answers.size(); ++i)
    {
        Send(from, answers[i], sender.sin_addr.s_addr, sender.sin_port);
    }
}

void CActionResponder::Send(int descriptor, const Velmo::Gvcp::Bytes& data, std::uint32_t ip, std::uint16_t port) const
{
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = ip;
    to.sin_port = port;
    sendto(descriptor, data.data(), data.size(), 0, reinterpret_cast<const sockaddr*>(&to), sizeof to);
}

} // namespace Test
