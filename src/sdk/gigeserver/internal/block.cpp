// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/block.h"

#include "protocols/gvcp.h"

#include <algorithm>

namespace GigEServer::Internal
{

namespace Gvsp = Velmo::Gvsp;

namespace
{

std::uint16_t PayloadTypeOf(const Simulator::SFrame& frame, const STarget& target)
{
    const auto image = static_cast<std::uint16_t>(Gvsp::EPayloadType::Image);
    if (frame.payload == Simulator::EFramePayload::Image)
    {
        return image;
    }
    return target.hasExtendedChunks ? static_cast<std::uint16_t>(image | Gvsp::ExtendedChunkFlag)
                                    : static_cast<std::uint16_t>(Gvsp::EPayloadType::ChunkData);
}

} // namespace

void CBlock::Assign(const Simulator::SFrame& frame, const STarget& target)
{
    m_target = target;
    m_header = Gvsp::SHeader();
    m_header.isExtended = target.isExtended;
    m_header.blockId = Gvsp::BlockIdOf(frame.blockId, target.isExtended);
    m_payload.resize(frame.bytes + frame.tailBytes);
    std::copy_n(frame.data, frame.bytes, m_payload.begin());
    std::copy_n(frame.tail, frame.tailBytes, m_payload.begin() + static_cast<std::ptrdiff_t>(frame.bytes));
    m_dataBytes = Gvsp::DataBytesPerPacket(target.packetBytes, target.isExtended);
    const std::size_t payloadPackets = m_dataBytes == 0 ? 0 : (m_payload.size() + m_dataBytes - 1) / m_dataBytes;
    constexpr std::size_t leaderAndTrailer = 2;
    m_packets = m_dataBytes == 0 ? 0 : static_cast<std::uint32_t>(payloadPackets + leaderAndTrailer);
    m_available = frame.isFailed && m_packets != 0 ? m_packets - 1 : m_packets;
    sent = 0;

    Gvsp::SLeader leader;
    leader.payloadType = PayloadTypeOf(frame, target);
    leader.timestamp = frame.timestamp;
    leader.pixelFormat = frame.pfnc;
    leader.sizeX = frame.width;
    leader.sizeY = frame.height;
    leader.offsetX = frame.offsetX;
    leader.offsetY = frame.offsetY;
    m_leader = EncodeLeader(m_header, leader);
    Gvsp::STrailer trailer;
    trailer.payloadType = leader.payloadType;
    trailer.sizeY = frame.height;
    trailer.chunkDataPayloadLength = static_cast<std::uint32_t>(m_payload.size());
    Gvsp::SHeader last = m_header;
    last.packetId = m_packets == 0 ? 0 : m_packets - 1;
    m_trailer = EncodeTrailer(last, trailer);
}

CBlock::SPacket CBlock::GetPacket(std::uint32_t id, std::uint16_t status) const
{
    Gvsp::SHeader header = m_header;
    header.status = status;
    header.flags = status == static_cast<std::uint16_t>(Velmo::Gvcp::EStatus::PacketResend) ? Gvsp::Flag::PacketResend
                                                                                            : std::uint16_t{0};
    header.packetId = id;
    SPacket packet;
    const bool isLeader = id == 0;
    if (isLeader || id == m_packets - 1)
    {
        const Gvsp::Bytes& whole = isLeader ? m_leader : m_trailer;
        header.format = isLeader ? Gvsp::EPacketFormat::Leader : Gvsp::EPacketFormat::Trailer;
        packet.header = EncodeHeader(header); // with the status, which the stored one does not have
        packet.pData = whole.data() + packet.header.bytes;
        packet.bytes = whole.size() - packet.header.bytes;
        return packet;
    }
    const std::size_t begin = (id - 1) * m_dataBytes;
    packet.header = EncodeHeader(header);
    packet.pData = m_payload.data() + begin;
    packet.bytes = std::min(m_dataBytes, m_payload.size() - begin);
    return packet;
}

} // namespace GigEServer::Internal
