// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace Test
{

/**
 * Answers every datagram that comes to UDP 3956 of an address with what the test's function makes of it: nothing,
 * one or many datagrams. The function runs on the responder's thread.
 */
class CGvcpResponder
{
public:
    using Answer = std::function<std::vector<Velmo::Gvcp::Bytes>(const Velmo::Gvcp::SCommand& command)>;
    CGvcpResponder(const std::string& address, Answer answer);
    /** One that answers from another address or port than it was asked at. */
    CGvcpResponder(const std::string& address, Answer answer, const std::string& fromAddress, std::uint16_t fromPort);
    ~CGvcpResponder();

private:
    void Run();

    Answer m_answer;
    int m_socket = -1;
    int m_from = -1; // what answers are sent through; m_socket unless another was asked for
    std::atomic<bool> m_isStopping{false};
    std::thread m_thread;
};

} // namespace Test
