// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace Test
{

/**
 * A camera that knows nothing but action commands to its own address and to these broadcast addresses; keys are not
 * looked at. It answers from UDP 3956 of its address. It stays in the network namespace it was made in.
 */
class CActionResponder
{
public:
    enum class EWay
    {
        Once,
        Silent,
        Twice,
        OnceAndRefused,  // then once more, as if a camera of the same address were busy
        WrongRequest,    // with another command's request identifier
        Truncated,       // all but the last byte
        FromAnotherPort, // than GVCP's
        Late             // when SendLate is called
    };
    struct SCommand
    {
        std::uint8_t flags = 0;
        std::uint16_t requestId = 0;
        Velmo::Gvcp::SAction action;
    };

    explicit CActionResponder(const std::string& address, Velmo::Gvcp::EStatus status = Velmo::Gvcp::EStatus::Success,
                              EWay way = EWay::Once, const std::vector<std::string>& broadcasts = {"127.255.255.255"});
    ~CActionResponder();
    CActionResponder(const CActionResponder&) = delete;
    CActionResponder& operator=(const CActionResponder&) = delete;

    /** What was received, in order. */
    std::vector<SCommand> GetCommands() const;
    /** Within ten seconds. */
    bool WaitForCommands(std::size_t count);
    /** Answers all commands so far. */
    void SendLate();

private:
    struct SLate
    {
        std::uint32_t ip = 0; // network byte order, as the port
        std::uint16_t port = 0;
        Velmo::Gvcp::Bytes answer;
    };

    void Run();
    void Receive(int descriptor);
    /** To a command that asks for answers. */
    std::vector<Velmo::Gvcp::Bytes> MakeAnswers(std::uint16_t requestId) const;
    void Send(int descriptor, const Velmo::Gvcp::Bytes& data, std::uint32_t ip, std::uint16_t port) const;

    const Velmo::Gvcp::EStatus m_status;
    const EWay m_way;
    int m_own = -1;
    int m_other = -1;         // another port
    std::vector<int> m_heard; // m_own, and one for each broadcast address
    std::atomic<bool> m_isStopping{false};
    mutable std::mutex m_mutex; // guards what follows
    std::condition_variable m_arrived;
    std::vector<SCommand> m_commands;
    std::vector<SLate> m_late;
    std::thread m_thread;
};

} // namespace Test
