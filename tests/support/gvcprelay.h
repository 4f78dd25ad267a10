// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <utility>

namespace Test
{

/**
 * Stands at UDP 3956 of 127.0.0.1 for a camera at another address of loopback and carries its control channel, but lets
 * the test keep single commands back.
 */
class CGvcpRelay
{
public:
    enum class EFate
    {
        Carried,
        Pending, // the application is told again and again that the camera needs more time
        Denied   // "access denied"
    };
    /** Of a command from that port of an application. Runs on the relay's thread. */
    using Judge = std::function<EFate(const Velmo::Gvcp::SCommand& command, std::uint16_t applicationPort)>;

    /** Throws std::runtime_error when the address is taken. */
    CGvcpRelay(const std::string& cameraAddress, Judge judge);
    ~CGvcpRelay();
    CGvcpRelay(const CGvcpRelay&) = delete;
    CGvcpRelay& operator=(const CGvcpRelay&) = delete;

    /** How many requests were kept waiting; a repetition does not count. */
    int CountPending() const { return m_pendingCount; }
    /** Nothing is kept back any more; what waits is not answered. */
    void LetPass() { m_isPassing = true; }

private:
    void Run();
    void TakeCommand();
    void TakeAnswer(std::uint16_t applicationPort, int socket);
    void SendPending(std::uint16_t applicationPort, std::uint16_t requestId);
    void SendBack(const Velmo::Gvcp::Bytes& datagram, std::uint16_t applicationPort);

    const std::string m_cameraAddress;
    const Judge m_judge;
    int m_near = -1;                                             // towards the applications
    std::map<std::uint16_t, int> m_far;                          // towards the camera, by the application's port
    std::set<std::pair<std::uint16_t, std::uint16_t>> m_pending; // application's port and request
    std::atomic<int> m_pendingCount{0};
    std::atomic<bool> m_isPassing{false};
    std::atomic<bool> m_isStopping{false};
    std::thread m_thread;
};

} // namespace Test
