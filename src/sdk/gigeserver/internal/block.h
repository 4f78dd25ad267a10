// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_testexport.h"
#include "protocols/gvsp.h"
#include "simulator/framesink.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace GigEServer::Internal
{

/** Where a stream goes and in which form. Host byte order. */
struct STarget
{
    std::uint32_t ip = 0;
    std::uint16_t port = 0;         // 0: nowhere
    std::size_t packetBytes = 0;    // with the headers of IP and UDP
    std::int64_t delayNs = 0;       // pause after a packet
    bool isExtended = false;        // 64-bit block and 32-bit packet identifiers
    bool hasExtendedChunks = false; // payloads with chunks describe their image's geometry
    bool isFragmented = true;       // packets beyond the network's limit are cut up instead of lost
};

/**
 * One image as the packets of a block, kept for requests to send some of them again.
 *
 * Threads: made by the sender thread; once it is, read by any.
 */
class GIGESERVER_TEST_EXPORT CBlock
{
public:
    /** Copies the frame; reuses the memory. */
    void Assign(const Simulator::SFrame& frame, const STarget& target);

    const STarget& GetTarget() const { return m_target; }
    std::uint64_t GetId() const { return m_header.blockId; }
    /** Of the payload. */
    std::size_t GetBytes() const { return m_payload.size(); }
    /** Leader, payload packets and trailer; 0 when packets of the target's size cannot hold data. */
    std::uint32_t CountPackets() const { return m_packets; }
    /** Packets that exist: of a failed image the trailer and half of the payload do not. */
    std::uint32_t CountAvailable() const { return m_available; }

    struct SPacket
    {
        Velmo::Gvsp::SHeaderBytes header;
        const std::uint8_t* pData = nullptr; // valid as long as the block
        std::size_t bytes = 0;
    };
    /** id must be available. */
    SPacket GetPacket(std::uint32_t id, std::uint16_t status) const;

    std::atomic<std::uint32_t> sent{0}; // packets that left so far

private:
    STarget m_target;
    Velmo::Gvsp::SHeader m_header;
    Velmo::Gvsp::Bytes m_leader;
    Velmo::Gvsp::Bytes m_trailer;
    std::vector<std::uint8_t> m_payload;
    std::size_t m_dataBytes = 0; // per payload packet
    std::uint32_t m_packets = 0;
    std::uint32_t m_available = 0;
};

} // namespace GigEServer::Internal
