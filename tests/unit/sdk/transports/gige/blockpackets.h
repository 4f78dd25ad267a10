// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvsp.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace Test
{

/** One Mono8 image as a camera cuts it into packets. */
struct SBlock
{
    std::uint64_t id = 1;
    bool isExtended = false;
    std::uint64_t timestamp = 0; // 0: the id times 1000
    std::uint32_t width = 40;
    std::uint32_t height = 10;
    std::size_t dataBytesPerPacket = 100;
    std::uint16_t payloadType = static_cast<std::uint16_t>(Velmo::Gvsp::EPayloadType::Image);
    std::size_t chunkBytes = 0; // behind the image
};

/** A byte of an image that is distinct enough to see where it went. */
inline std::uint8_t PayloadByte(std::uint64_t id, std::size_t position)
{
    constexpr std::size_t prime = 251;
    return static_cast<std::uint8_t>((id * 31 + position) % prime);
}

inline std::vector<std::uint8_t> PayloadOf(const SBlock& block)
{
    std::vector<std::uint8_t> payload(std::size_t{block.width} * block.height + block.chunkBytes);
    for (std::size_t i = 0; i < payload.size(); ++i)
    {
        payload[i] = PayloadByte(block.id, i);
    }
    return payload;
}

/** Leader, payload packets, trailer. */
inline std::vector<Velmo::Gvsp::Bytes> PacketsOf(const SBlock& block)
{
    constexpr std::uint32_t mono8 = 0x01080001;
    Velmo::Gvsp::SHeader header;
    header.blockId = block.id;
    header.isExtended = block.isExtended;
    Velmo::Gvsp::SLeader leader;
    leader.payloadType = block.payloadType;
    leader.timestamp = block.timestamp == 0 ? block.id * 1000 : block.timestamp;
    leader.pixelFormat = mono8;
    leader.sizeX = block.width;
    leader.sizeY = block.height;
    std::vector<Velmo::Gvsp::Bytes> packets{Velmo::Gvsp::EncodeLeader(header, leader)};
    const std::vector<std::uint8_t> payload = PayloadOf(block);
    for (std::size_t done = 0; done < payload.size(); done += block.dataBytesPerPacket)
    {
        header.packetId = static_cast<std::uint32_t>(packets.size());
        header.format = Velmo::Gvsp::EPacketFormat::Payload;
        const Velmo::Gvsp::SHeaderBytes begin = Velmo::Gvsp::EncodeHeader(header);
        Velmo::Gvsp::Bytes packet(begin.data.begin(), begin.data.begin() + static_cast<std::ptrdiff_t>(begin.bytes));
        const std::size_t end = std::min(payload.size(), done + block.dataBytesPerPacket);
        packet.insert(packet.end(), payload.begin() + static_cast<std::ptrdiff_t>(done),
                      payload.begin() + static_cast<std::ptrdiff_t>(end));
        packets.push_back(std::move(packet));
    }
    header.packetId = static_cast<std::uint32_t>(packets.size());
    Velmo::Gvsp::STrailer trailer;
    trailer.payloadType = block.payloadType;
    trailer.sizeY = block.height;
    trailer.chunkDataPayloadLength = static_cast<std::uint32_t>(payload.size());
    packets.push_back(Velmo::Gvsp::EncodeTrailer(header, trailer));
    return packets;
}

} // namespace Test
