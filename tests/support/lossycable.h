// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/networknamespace.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace Test
{

/**
 * A cable to a GigE Vision camera that loses stream packets on purpose, and a memory of the sent ones as most cameras
 * have it: what is asked for again comes out of that memory. For tests with cameras that cannot send again themselves.
 *
 * A third namespace lies between the test and the camera; a thread carries the Ethernet frames across it.
 */
class CLossyCable
{
public:
    /** Is that packet lost? Blocks and packets as GVSP numbers them; attempt 0 is the first time it is sent. Runs on
     * the cable's thread. */
    using Loses = std::function<bool(unsigned int block, unsigned int packet, int attempt)>;

    /** The test's adapter, and the camera's in its namespace, each with an address such as "192.168.77.1/24". */
    CLossyCable(const std::string& adapter, const std::string& address, CPeerNamespace& cameraNamespace,
                const std::string& cameraAdapter, const std::string& cameraAddress, Loses loses);
    ~CLossyCable();

    /** How many packets were lost, and how many were asked for again, so far. Threads: any. */
    unsigned int CountLost() const { return m_lost; }
    unsigned int CountAskedFor() const { return m_askedFor; }

private:
    using Frame = std::vector<std::uint8_t>;
    struct SSent
    {
        Frame frame;
        int attempts = 0;
    };

    void Run();
    void Carry(int from, int to);
    bool IsLost(const Frame& frame);
    bool Decide(unsigned int block, unsigned int packet, SSent& sent);
    bool SendAgain(const Frame& frame);

    CPeerNamespace m_middle;
    Loses m_loses;
    int m_near = -1;
    int m_far = -1;
    Frame m_received = Frame(0x10000); // room for one, kept: a frame is far smaller, and there are thousands a second
    std::map<std::pair<unsigned int, unsigned int>, SSent> m_memory;
    std::atomic<unsigned int> m_lost{0};
    std::atomic<unsigned int> m_askedFor{0};
    std::atomic<bool> m_isStopping{false};
    std::thread m_thread;
};

} // namespace Test
