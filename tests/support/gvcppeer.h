// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvcp.h"
#include "protocols/gvsp.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace Test
{

/** A datagram and where it went. Host byte order. */
struct SDatagram
{
    std::uint32_t sourceIp = 0;
    std::uint16_t sourcePort = 0;
    std::uint32_t destinationIp = 0;
    std::uint16_t destinationPort = 0;
    std::vector<std::uint8_t> data;
};

/** An application that sends what it is told to one camera and keeps every datagram. Threads: one at a time. */
class CGvcpPeer
{
public:
    /** Host byte order. multicastIp: the stream is received there, if it is not 0. */
    explicit CGvcpPeer(std::uint32_t cameraIp = 0x7F000001, std::uint32_t multicastIp = 0);
    ~CGvcpPeer();
    CGvcpPeer(const CGvcpPeer&) = delete;
    CGvcpPeer& operator=(const CGvcpPeer&) = delete;

    /** The next answer to that command; nothing when none came in time. Valid until the next call. */
    std::optional<Velmo::Gvcp::SAcknowledge> Ask(const Velmo::Gvcp::Bytes& command);
    void Send(const Velmo::Gvcp::Bytes& command);
    /** The next answer to anything, as Ask. */
    std::optional<Velmo::Gvcp::SAcknowledge> Receive(std::chrono::milliseconds limit);
    /** A failure and EStatus::Error when there is no answer. */
    Velmo::Gvcp::EStatus Write(std::uint32_t address, std::uint32_t value);
    std::uint32_t Read(std::uint32_t address);
    std::uint16_t NextId() { return ++m_requestId; }

    /** Takes control and says where the stream goes. */
    void OpenStream(std::uint32_t packetBytes);
    /** The next datagram of the stream, whatever it holds; nothing when none came in time. */
    std::optional<std::vector<std::uint8_t>> ReceiveStreamDatagram(std::chrono::milliseconds limit);
    /** The next stream packet; nothing when none came in time. Valid until the next call. */
    std::optional<Velmo::Gvsp::SPacket> ReceivePacket(std::chrono::milliseconds limit);
    /** Packets of that block by their identifiers, until its trailer or the time is over. */
    std::map<std::uint32_t, std::vector<std::uint8_t>> ReceiveBlock(std::chrono::milliseconds limit);

    const std::vector<SDatagram>& GetDatagrams() const { return m_datagrams; }

private:
    std::optional<std::vector<std::uint8_t>> ReceiveAt(int socket, std::chrono::milliseconds limit);

    const std::uint32_t m_cameraIp;
    const std::uint32_t m_streamIp;
    int m_control = -1;
    int m_stream = -1;
    std::uint16_t m_requestId = 0;
    std::vector<std::uint8_t> m_received = std::vector<std::uint8_t>(65536); // room for any datagram
    std::vector<std::uint8_t> m_answer;
    std::vector<std::uint8_t> m_packet;
    std::vector<SDatagram> m_datagrams;
};

} // namespace Test
