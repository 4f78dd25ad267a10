// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gvcpresponder.h"

#include <arpa/inet.h>
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
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_port = htons(port);
    inet_pton(AF_INET, address.c_str(), &local.sin_addr);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0)
    {
        close(descriptor);
        throw std::runtime_error("Cannot listen on " + address + ":" + std::to_string(port));
    }
    return descriptor;
}

} // namespace

CGvcpResponder::CGvcpResponder(const std::string& address, Answer answer)
    : m_answer(std::move(answer)), m_socket(Listen(address, Velmo::Gvcp::Port)), m_from(m_socket)
{
    m_thread = std::thread([this] { Run(); });
}

CGvcpResponder::CGvcpResponder(const std::string& address, Answer answer, const std::string& fromAddress,
                               std::uint16_t fromPort)
    : m_answer(std::move(answer)), m_socket(Listen(address, Velmo::Gvcp::Port)), m_from(Listen(fromAddress, fromPort))
{
    m_thread = std::thread([this] { Run(); });
}

CGvcpResponder::~CGvcpResponder()
{
    m_isStopping = true;
    m_thread.join();
    close(m_socket);
    if (m_from != m_socket)
    {
        close(m_from);
    }
}

void CGvcpResponder::Run()
{
    while (!m_isStopping)
    {
        pollfd entry{m_socket, POLLIN, 0};
        if (poll(&entry, 1, 20) <= 0)
        {
            continue;
        }
        std::uint8_t data[2048];
        sockaddr_in sender{};
        socklen_t length = sizeof sender;
        const ssize_t bytes = recvfrom(m_socket, data, sizeof data, 0, reinterpret_cast<sockaddr*>(&sender), &length);
        Velmo::Gvcp::SCommand command;
        if (bytes <= 0 ||
            Velmo::Gvcp::ParseCommand(data, static_cast<std::size_t>(bytes), command) != Velmo::Gvcp::EParseResult::Ok)
        {
            continue;
        }
        for (const Velmo::Gvcp::Bytes& answer : m_answer(command))
        {
            sendto(m_from, answer.data(), answer.size(), 0, reinterpret_cast<const sockaddr*>(&sender), length);
        }
    }
}

} // namespace Test
