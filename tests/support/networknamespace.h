// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Test
{

/**
 * Moves the calling thread, and every thread and process it starts from then on, into a network namespace of its own
 * that has nothing but a loopback adapter. To be called before any other thread exists.
 * Throws std::runtime_error, which says what is missing, when the system does not allow that.
 */
void EnterOwnNetworkNamespace();

/** Runs a program to its end. Throws std::runtime_error when it cannot be started or fails. */
void RunProgram(const std::vector<std::string>& programAndArguments);

/** RunProgram("ip", ...) with the words of the text, for the calling thread's namespace: "link set va down". */
void RunIp(const std::string& arguments);

/** Changes a setting of the calling thread's namespace, "ipv4/ip_forward"; what it was. Throws std::runtime_error. */
std::string SetNetworkSetting(const std::string& name, const std::string& value);

/**
 * A further network namespace with a loopback adapter, where the far ends of cables are. Its cables end with the
 * object. To be used once the test is in a namespace of its own. Threads: one at a time.
 */
class CPeerNamespace
{
public:
    CPeerNamespace();
    ~CPeerNamespace();
    CPeerNamespace(const CPeerNamespace&) = delete;
    CPeerNamespace& operator=(const CPeerNamespace&) = delete;

    /** Calls the function while the calling thread is in there: the sockets and processes it makes stay there. */
    void Visit(const std::function<void()>& function) const;
    /**
     * A veth pair, both ends up: an adapter in the calling thread's namespace and its far end in there, with addresses
     * such as "192.168.77.1/24" or none.
     */
    void Connect(const std::string& adapter, const std::string& address, const std::string& farAdapter,
                 const std::string& farAddress);

    /** Lets it pass packets on between its cables, as a router does. */
    void ForwardPackets() const;

private:
    int m_descriptor = -1;
    std::vector<std::string> m_farAdapters;
};

} // namespace Test
