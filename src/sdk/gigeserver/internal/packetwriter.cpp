// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/packetwriter.h"

#include "protocols/gvcp.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <netinet/in.h>
#include <random>
#include <sys/socket.h>
#include <utility>

namespace GigEServer::Internal
{

namespace Gvsp = Velmo::Gvsp;

namespace
{
constexpr std::size_t Thousand = 1000;
}

struct CPacketWriter::SBatch
{
    explicit SBatch(std::uint32_t seed) : random(seed) {}

    bool Happens(std::uint32_t perThousand) { return perThousand != 0 && random() % Thousand < perThousand; }

    std::minstd_rand random;
    std::size_t count = 0;
    std::array<CBlock::SPacket, 2 * MostPackets> packets; // all may be duplicated
    std::vector<std::vector<std::uint8_t>> corrupted;     // data of packets that are not the block's any more
    std::array<std::array<iovec, 2>, 2 * MostPackets> parts{};
    std::array<mmsghdr, 2 * MostPackets> messages{};
};

CPacketWriter::CPacketWriter(int socket, const SNetworkFaults& faults, std::uint32_t seed, SLiveCounters& counters)
    : m_socket(socket), m_faults(faults), m_counters(counters), m_pBatch(std::make_unique<SBatch>(seed))
{
}

CPacketWriter::~CPacketWriter() = default;

bool CPacketWriter::Arrives(const CBlock::SPacket& packet) const
{
    const std::size_t datagramBytes = Gvsp::IpAndUdpBytes + packet.header.bytes + packet.bytes;
    return !m_faults.isStreamBlocked && (m_faults.pathMtu == 0 || datagramBytes <= m_faults.pathMtu);
}

void CPacketWriter::Add(const CBlock::SPacket& packet)
{
    SBatch& batch = *m_pBatch;
    if (!Arrives(packet) || batch.Happens(m_faults.lostPerThousand))
    {
        ++m_counters.lostPackets;
        return;
    }
    batch.packets[batch.count++] = packet;
    if (batch.Happens(m_faults.corruptedPerThousand))
    {
        Corrupt(batch.packets[batch.count - 1]);
    }
    if (batch.Happens(m_faults.duplicatedPerThousand))
    {
        batch.packets[batch.count++] = packet;
    }
}

void CPacketWriter::Corrupt(CBlock::SPacket& packet)
{
    SBatch& batch = *m_pBatch;
    const auto flip = [&batch](std::uint8_t* data, std::size_t bytes)
    {
        constexpr std::size_t bits = 8;
        const std::size_t bit = batch.random() % (bits * bytes);
        data[bit / bits] = static_cast<std::uint8_t>(data[bit / bits] ^ 1U << bit % bits);
    };
    if (packet.bytes == 0 || batch.random() % 2 == 0)
    {
        flip(packet.header.data.data(), packet.header.bytes);
        return;
    }
    batch.corrupted.emplace_back(packet.pData, packet.pData + packet.bytes);
    flip(batch.corrupted.back().data(), packet.bytes);
    packet.pData = batch.corrupted.back().data();
}

void CPacketWriter::Write(const CBlock& block, std::uint32_t first, std::uint32_t count, bool isResent)
{
    SBatch& batch = *m_pBatch;
    const auto status = isResent ? static_cast<std::uint16_t>(Velmo::Gvcp::EStatus::PacketResend) : Gvsp::StatusSuccess;
    batch.count = 0;
    batch.corrupted.clear();
    for (std::uint32_t id = first; id < first + count; ++id)
    {
        Add(block.GetPacket(id, status));
    }
    for (std::size_t i = 1; i < batch.count; ++i)
    {
        if (batch.Happens(m_faults.reorderedPerThousand))
        {
            std::swap(batch.packets[i - 1], batch.packets[i]);
            ++i; // not once more with the next: a packet would wander through the whole batch
        }
    }
    if (isResent)
    {
        m_counters.resentPackets += batch.count;
    }
    Send(block.GetTarget());
}

void CPacketWriter::WriteUnavailable(const STarget& target, std::uint64_t blockId, std::uint32_t packetId,
                                     std::uint16_t status)
{
    Gvsp::SHeader header;
    header.isExtended = target.isExtended;
    header.blockId = blockId;
    header.packetId = packetId;
    header.status = status;
    m_pBatch->count = 0;
    CBlock::SPacket packet;
    packet.header = EncodeHeader(header);
    if (Arrives(packet))
    {
        m_pBatch->packets[m_pBatch->count++] = packet;
    }
    Send(target);
}

void CPacketWriter::WriteTestPacket(const STarget& target)
{
    // Without the capability for test data the content is free; block identifier 0 is the test packet's.
    const std::size_t bytes = Gvsp::DataBytesPerPacket(target.packetBytes, target.isExtended);
    const std::vector<std::uint8_t> zeros(bytes);
    Gvsp::SHeader header;
    header.isExtended = target.isExtended;
    m_pBatch->count = 0;
    CBlock::SPacket packet;
    packet.header = EncodeHeader(header);
    packet.pData = zeros.data();
    packet.bytes = zeros.size();
    if (!Arrives(packet))
    {
        ++m_counters.lostPackets;
        return;
    }
    m_pBatch->packets[m_pBatch->count++] = packet;
    Send(target);
}

void CPacketWriter::Send(const STarget& target)
{
    SBatch& batch = *m_pBatch;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(target.ip);
    address.sin_port = htons(target.port);
    for (std::size_t i = 0; i < batch.count; ++i)
    {
        CBlock::SPacket& packet = batch.packets[i];
        batch.parts[i] = {iovec{packet.header.data.data(), packet.header.bytes},
                          iovec{const_cast<std::uint8_t*>(packet.pData), packet.bytes}};
        msghdr& message = batch.messages[i].msg_hdr;
        message = msghdr();
        message.msg_name = &address;
        message.msg_namelen = sizeof address;
        message.msg_iov = batch.parts[i].data();
        message.msg_iovlen = batch.parts[i].size();
    }
    std::size_t done = 0;
    int refusals = 0;
    while (done < batch.count)
    {
        const int sent = sendmmsg(m_socket, batch.messages.data() + done, static_cast<unsigned int>(batch.count - done),
                                  MSG_NOSIGNAL);
        if (sent > 0)
        {
            done += static_cast<std::size_t>(sent);
            m_counters.packets += static_cast<std::uint64_t>(sent);
            refusals = 0;
        }
        else if (++refusals > 1 || (errno != ECONNREFUSED && errno != EINTR))
        {
            // An earlier packet's refusal is reported by the next call; the second one is this packet's.
            ++m_counters.refusedPackets;
            ++done;
            refusals = 0;
        }
    }
}

} // namespace GigEServer::Internal
