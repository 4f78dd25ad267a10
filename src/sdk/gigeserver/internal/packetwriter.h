// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/internal/block.h"
#include "gigeserver/internal/counters.h"
#include "gigeserver/servedcamera.h"

#include <cstdint>
#include <memory>

namespace GigEServer::Internal
{

/** Gives packets to the network, many at a time, with the losses that were asked for. Threads: one at a time. */
class CPacketWriter
{
public:
    static constexpr std::uint32_t MostPackets = 64;

    /** The socket is the caller's. The same seed loses the same packets. */
    CPacketWriter(int socket, const SNetworkFaults& faults, std::uint32_t seed, SLiveCounters& counters);
    ~CPacketWriter();

    /** Available packets of the block; at most MostPackets. */
    void Write(const CBlock& block, std::uint32_t first, std::uint32_t count, bool isResent);
    /** A packet without data that says why another one does not come. */
    void WriteUnavailable(const STarget& target, std::uint64_t blockId, std::uint32_t packetId, std::uint16_t status);
    void WriteTestPacket(const STarget& target);

private:
    struct SBatch;
    void Add(const CBlock::SPacket& packet);
    void Corrupt(CBlock::SPacket& packet);
    bool Arrives(const CBlock::SPacket& packet) const;
    void Send(const STarget& target);

    const int m_socket;
    const SNetworkFaults m_faults;
    SLiveCounters& m_counters;
    const std::unique_ptr<SBatch> m_pBatch;
};

} // namespace GigEServer::Internal
