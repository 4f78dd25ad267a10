// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/udpsocket.h"

#include <chrono>
#include <functional>

namespace Velmo::GigE::Internal
{

enum class ERequest
{
    Answered, // with the value
    Refused,  // with a status
    Silent,   // no answer in time
    Pending,  // it said again and again that it needs more time, and never came to an end
    NotSent   // the system refused to send
};

struct SRegisterAnswer
{
    ERequest result = ERequest::Silent;
    std::uint32_t value = 0;
    std::uint16_t status = 0;
};

struct SMemoryAnswer
{
    ERequest result = ERequest::Silent;
    Gvcp::Bytes data;
    std::uint16_t status = 0;
};

/**
 * Asks one camera without taking control of it: what the engine cannot do, or does only after it took control.
 * Threads: one at a time.
 */
class GIGE_TEST_EXPORT CGvcpClient
{
public:
    /** How long a camera may go on saying that it needs more time. */
    static constexpr std::chrono::milliseconds MostPatience{5000};

    /** False when the adapter's address cannot be bound; GetError() says why. */
    bool Open(std::uint32_t adapterIp, std::uint32_t deviceIp);
    const std::string& GetError() const { return m_socket.GetError(); }
    /** Up to attempts datagrams of one request, each awaited for the time-out; longer where the camera says that it
     *  needs it, but not beyond MostPatience. Only answers of the camera, from GVCP's port, to this request count. */
    SRegisterAnswer ReadRegister(std::uint32_t address, std::chrono::milliseconds timeout, int attempts);
    /** As above; the address and the bytes are multiples of four, the bytes at most Gvcp::MaxMemoryBytes. */
    SMemoryAnswer ReadMemory(std::uint32_t address, std::size_t bytes, std::chrono::milliseconds timeout, int attempts);

private:
    struct SRequest
    {
        Gvcp::ECommand answer;
        std::function<Gvcp::Bytes(std::uint16_t requestId)> encode;
        std::function<bool(const Gvcp::SAcknowledge&)> parse; // false: it is no answer to this
    };
    ERequest Ask(const SRequest& request, std::chrono::milliseconds timeout, int attempts, std::uint16_t& status);
    ERequest Await(const SRequest& request, std::chrono::milliseconds timeout, std::uint16_t& status);

    CUdpSocket m_socket;
    std::uint32_t m_deviceIp = 0;
    std::uint16_t m_requestId = 0;
};

} // namespace Velmo::GigE::Internal
