// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvsp.h"

#include "protocols/internal/bigendian.h"

namespace Velmo::Gvsp
{

namespace
{

using Internal::U16;
using Internal::U32;
using Internal::U64;

constexpr std::uint8_t ExtendedIdFlag = 0x80; // GVSP header, EI: bit 0 of the byte that holds packet_format
constexpr std::uint8_t FormatMask = 0x0F;
constexpr std::size_t ChunkLeaderBytes = 12; // reserved, payload_type, timestamp
constexpr std::size_t ImageLeaderBytes = 36;
constexpr std::size_t ShortTrailerBytes = 4; // reserved, payload_type
constexpr std::size_t ImageTrailerBytes = 8;
constexpr std::size_t ChunkTrailerBytes = 8;          // before version 2.0, which added chunk_layout_id
constexpr std::size_t ExtendedChunkTrailerBytes = 16; // image trailer, chunk_data_payload_length, chunk_layout_id

std::uint16_t BaseType(std::uint16_t payloadType)
{
    return static_cast<std::uint16_t>(payloadType & ~ExtendedChunkFlag);
}

/** The value's lowest bytes, big-endian. */
void Put(std::uint8_t* p, std::uint64_t value, std::size_t bytes)
{
    for (std::size_t i = 0; i < bytes; ++i)
    {
        p[i] = static_cast<std::uint8_t>(value >> 8 * (bytes - 1 - i));
    }
}

void Append(Bytes& packet, std::uint64_t value, std::size_t bytes)
{
    packet.resize(packet.size() + bytes);
    Put(packet.data() + packet.size() - bytes, value, bytes);
}

Bytes BeginPacket(SHeader header, EPacketFormat format, std::uint16_t payloadType)
{
    header.format = format;
    const SHeaderBytes begin = EncodeHeader(header);
    Bytes packet(begin.data.begin(), begin.data.begin() + static_cast<std::ptrdiff_t>(begin.bytes));
    Append(packet, 0, 2); // reserved, and of images field_id and field_count: not interlaced
    Append(packet, payloadType, 2);
    return packet;
}

bool IsChunkData(std::uint16_t payloadType)
{
    return BaseType(payloadType) == static_cast<std::uint16_t>(EPayloadType::ChunkData);
}

} // namespace

bool HasGeometry(std::uint16_t payloadType)
{
    const std::uint16_t type = BaseType(payloadType);
    return type == static_cast<std::uint16_t>(EPayloadType::Image) ||
           type == static_cast<std::uint16_t>(EPayloadType::ExtendedChunkData);
}

bool HasChunks(std::uint16_t payloadType)
{
    return (payloadType & ExtendedChunkFlag) != 0 || IsChunkData(payloadType) ||
           BaseType(payloadType) == static_cast<std::uint16_t>(EPayloadType::ExtendedChunkData);
}

SHeaderBytes EncodeHeader(const SHeader& header)
{
    SHeaderBytes bytes;
    std::uint8_t* p = bytes.data.data();
    Put(p, header.status, 2);
    if (header.isExtended)
    {
        Put(p + 2, header.flags, 2);
        p[4] = static_cast<std::uint8_t>(ExtendedIdFlag | static_cast<std::uint8_t>(header.format));
        Put(p + 8, header.blockId, 8);
        Put(p + 16, header.packetId, 4);
        bytes.bytes = ExtendedHeaderBytes;
        return bytes;
    }
    Put(p + 2, header.blockId, 2);
    p[4] = static_cast<std::uint8_t>(header.format);
    Put(p + 5, header.packetId, 3);
    bytes.bytes = HeaderBytes;
    return bytes;
}

Bytes EncodeLeader(SHeader header, const SLeader& leader)
{
    Bytes packet = BeginPacket(header, EPacketFormat::Leader, leader.payloadType);
    Append(packet, leader.timestamp, 8);
    if (HasGeometry(leader.payloadType))
    {
        for (const std::uint32_t value :
             {leader.pixelFormat, leader.sizeX, leader.sizeY, leader.offsetX, leader.offsetY})
        {
            Append(packet, value, 4);
        }
        Append(packet, leader.paddingX, 2);
        Append(packet, leader.paddingY, 2);
    }
    return packet;
}

Bytes EncodeTrailer(SHeader header, const STrailer& trailer)
{
    Bytes packet = BeginPacket(header, EPacketFormat::Trailer, trailer.payloadType);
    if (HasGeometry(trailer.payloadType))
    {
        Append(packet, trailer.sizeY, 4);
    }
    if (HasChunks(trailer.payloadType))
    {
        Append(packet, trailer.chunkDataPayloadLength, 4);
        Append(packet, trailer.chunkLayoutId, 4);
    }
    return packet;
}

EParseResult ParsePacket(const std::uint8_t* data, std::size_t bytes, SPacket& packet)
{
    if (bytes < HeaderBytes)
    {
        return EParseResult::TooShort;
    }
    const bool isExtended = (data[4] & ExtendedIdFlag) != 0;
    const std::size_t headerBytes = isExtended ? ExtendedHeaderBytes : HeaderBytes;
    if (bytes < headerBytes)
    {
        return EParseResult::TooShort;
    }
    const std::uint8_t format = data[4] & FormatMask;
    if (format < static_cast<std::uint8_t>(EPacketFormat::Leader) ||
        format > static_cast<std::uint8_t>(EPacketFormat::AllIn))
    {
        return EParseResult::UnknownFormat;
    }
    packet.header.status = U16(data);
    packet.header.format = static_cast<EPacketFormat>(format);
    packet.header.isExtended = isExtended;
    packet.header.flags = isExtended ? U16(data + 2) : std::uint16_t{0};
    packet.header.blockId = isExtended ? U64(data + 8) : U16(data + 2);
    packet.header.packetId = isExtended ? U32(data + 16) : U32(data + 4) & MaxPacketId;
    packet.pPayload = data + headerBytes;
    packet.payloadBytes = bytes - headerBytes;
    return EParseResult::Ok;
}

EParseResult ParseLeader(const SPacket& packet, SLeader& leader)
{
    if (packet.header.format != EPacketFormat::Leader)
    {
        return EParseResult::WrongFormat;
    }
    if (packet.payloadBytes < ChunkLeaderBytes)
    {
        return EParseResult::TooShort;
    }
    const std::uint8_t* p = packet.pPayload;
    SLeader read;
    read.payloadType = U16(p + 2);
    read.timestamp = U64(p + 4);
    if (HasGeometry(read.payloadType))
    {
        if (packet.payloadBytes < ImageLeaderBytes)
        {
            return EParseResult::TooShort;
        }
        read.pixelFormat = U32(p + 12);
        read.sizeX = U32(p + 16);
        read.sizeY = U32(p + 20);
        read.offsetX = U32(p + 24);
        read.offsetY = U32(p + 28);
        read.paddingX = U16(p + 32);
        read.paddingY = U16(p + 34);
    }
    leader = read;
    return EParseResult::Ok;
}

EParseResult ParseTrailer(const SPacket& packet, STrailer& trailer)
{
    if (packet.header.format != EPacketFormat::Trailer)
    {
        return EParseResult::WrongFormat;
    }
    if (packet.payloadBytes < ShortTrailerBytes)
    {
        return EParseResult::TooShort;
    }
    const std::uint8_t* p = packet.pPayload;
    STrailer read;
    read.payloadType = U16(p + 2);
    const bool hasGeometry = HasGeometry(read.payloadType);
    const bool hasChunks = HasChunks(read.payloadType);
    const std::size_t needed = hasGeometry && hasChunks ? ExtendedChunkTrailerBytes
                               : hasChunks              ? ChunkTrailerBytes
                               : hasGeometry            ? ImageTrailerBytes
                                                        : ShortTrailerBytes;
    if (packet.payloadBytes < needed)
    {
        return EParseResult::TooShort;
    }
    const std::uint8_t* pChunkFields = p + (hasGeometry ? ImageTrailerBytes : ShortTrailerBytes);
    read.sizeY = hasGeometry ? U32(p + 4) : 0;
    read.chunkDataPayloadLength = hasChunks ? U32(pChunkFields) : 0;
    // Cameras of version 1 end their chunk data trailer here.
    const bool hasLayout = hasChunks && packet.payloadBytes >= static_cast<std::size_t>(pChunkFields - p) + 8;
    read.chunkLayoutId = hasLayout ? U32(pChunkFields + 4) : 0;
    trailer = read;
    return EParseResult::Ok;
}

} // namespace Velmo::Gvsp
