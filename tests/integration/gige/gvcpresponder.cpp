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

CGvcpResponder::CGvcpResponder(const std::string& address, Answer answer) : m_answer(std::move(answer))
{
    m_socket = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_port = htons(Velmo::Gvcp::Port);
    inet_pton(AF_INET, address.c_str(), &local.sin_addr);
    if (bind(m_socket, reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0)
    {
        close(m_socket);
        throw std::runtime_error("Cannot listen on " + address + ":3956");
    }
    m_thread = std::thread([this] { Run(); });
}

CGvcpResponder::~CGvcpResponder()
{
    m_isStopping = true;
    m_thread.join();
    close(m_socket);
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
            sendto(m_socket, answer.data(), answer.size(), 0, reinterpret_cast<const sockaddr*>(&sender), length);
        }
    }
}

} // namespace Test
