// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"

#include <cstdint>
#include <vector>

namespace Benchmarks
{

/** What an application that does nothing else hears of a number of cameras. Microseconds from the first command. */
struct SBareAnswers
{
    int answers = 0;
    double first = 0;
    double last = 0;
};

/** One socket that speaks to the cameras at 127.0.0.1 and behind. Throws std::runtime_error. Threads: one. */
class CBareClient
{
public:
    CBareClient();
    ~CBareClient();
    CBareClient(const CBareClient&) = delete;
    CBareClient& operator=(const CBareClient&) = delete;

    /** Sends a discovery command to each camera's address and takes the time of the answers. */
    SBareAnswers discover(int cameras);
    /** Sends one action command to the loopback network and takes the time of the answers. */
    SBareAnswers act(int cameras, const Velmo::Gvcp::SAction& action);
    /** Takes the control of each camera, for good. */
    void control(int cameras);

private:
    void send(const Velmo::Gvcp::Bytes& packet, std::uint32_t ip);
    SBareAnswers receive(int cameras, double start);

    int m_socket = -1;
    std::uint16_t m_requestId = 0;
};

} // namespace Benchmarks
