// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Velmo::GigE::Internal
{

/** Where a stream is sent to. Addresses in host byte order. */
struct SMulticastGroup
{
    std::uint32_t ip = 0;
    std::uint16_t port = 0;
};
inline bool operator==(const SMulticastGroup& left, const SMulticastGroup& right)
{
    return left.ip == right.ip && left.port == right.port;
}

constexpr bool IsMulticast(std::uint32_t ip)
{
    return ip >> 28 == 0xE; // 224.0.0.0 to 239.255.255.255
}

/**
 * Receives the datagrams that one camera sends to a multicast group, on a thread of its own.
 *
 * Several receivers on one host, also of other programs, get every datagram. The group is left with the object.
 * Threads: the functions of the sink are called on the receiver's thread, the rest is one thread's.
 */
class GIGE_TEST_EXPORT CGvspReceiver
{
public:
    using Time = std::chrono::steady_clock::time_point;

    struct SDatagram
    {
        const std::uint8_t* data = nullptr; // valid during the call
        std::size_t bytes = 0;
    };
    struct SSink
    {
        /** What has arrived, in that order; also none, when the time that the last call returned has come. Returns when
         *  to be called at the latest. */
        std::function<std::optional<Time>(const std::vector<SDatagram>&, Time now)> take;
        /** Called once a second while nothing arrives: the group in case it is another one now. */
        std::function<std::optional<SMulticastGroup>()> lookAgain;
    };
    struct SConfig
    {
        SMulticastGroup group; // port 0: one that is free
        std::uint32_t adapterIp = 0;
        std::uint32_t cameraIp = 0;  // datagrams of others are dropped
        std::size_t packetBytes = 0; // expected at most; larger ones are learnt, at the price of the first of them
        std::size_t socketBufferBytes = 0;
        std::string cameraName; // for texts
    };

    /** Throws RuntimeException, naming group, adapter and reason, when the group cannot be joined. */
    CGvspReceiver(SConfig config, SSink sink);
    ~CGvspReceiver();
    CGvspReceiver(const CGvspReceiver&) = delete;
    CGvspReceiver& operator=(const CGvspReceiver&) = delete;

    /** The group as it was joined at first, with the port that the system chose where none was given. */
    const SMulticastGroup& GetJoined() const { return m_joined; }

private:
    void Run();
    void Wait(Time deadline) const;
    bool ReceiveBatch();
    void LookAgain();

    SConfig m_config;
    const SSink m_sink;
    int m_socket = -1;
    const SMulticastGroup m_joined;
    int m_stopDescriptor = -1;
    std::size_t m_slotBytes = 0; // of one datagram
    std::vector<std::uint8_t> m_memory;
    std::vector<SDatagram> m_batch;
    std::thread m_thread;
};

} // namespace Velmo::GigE::Internal
