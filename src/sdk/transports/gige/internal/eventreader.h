// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "transport/eventdelivery.h"
#include "transports/gige/gige_testexport.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace Velmo::GigE::Internal
{

/**
 * What arrives at an application's message channel: takes a camera's events out of datagrams and acknowledges them.
 *
 * Anybody may send anything there. It has no socket. Threads: one at a time.
 */
class GIGE_TEST_EXPORT CEventReader
{
public:
    struct SCounters
    {
        std::int64_t received = 0;   // events
        std::int64_t duplicates = 0; // messages that had come before
        std::int64_t ignored = 0;    // datagrams that are no messages of the camera
    };
    using Sink = std::function<void(Transport::SDeviceEvent event)>;

    /** Host byte order. sourcePort: from which the camera sends; 0 when it does not say. */
    CEventReader(std::uint32_t cameraIp, std::uint16_t sourcePort) : m_cameraIp(cameraIp), m_sourcePort(sourcePort) {}

    /** Returns the acknowledge to send to the sender; empty where there is none. A message that comes again, because
     * its acknowledge was lost, is acknowledged again and not given to the sink. */
    Gvcp::Bytes Handle(const std::uint8_t* data, std::size_t bytes, std::uint32_t senderIp, std::uint16_t senderPort,
                       const Sink& sink);
    const SCounters& GetCounters() const { return m_counters; }

private:
    bool IsKnown(const std::uint8_t* data, std::size_t bytes);
    bool Take(const Gvcp::SCommand& command, std::vector<Transport::SDeviceEvent>& events) const;

    const std::uint32_t m_cameraIp;
    const std::uint16_t m_sourcePort;
    SCounters m_counters;
    std::array<Gvcp::Bytes, 16> m_recent; // the latest messages, in a ring
    std::size_t m_next = 0;
};

} // namespace Velmo::GigE::Internal
