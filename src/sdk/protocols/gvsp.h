// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/protocols_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/**
 * The GigE Vision Streaming Protocol as bytes: the packets of which a block (an image) consists.
 *
 * A block is a leader (packet 0), payload packets of the same size (the last may be shorter) and a trailer. Pure
 * functions without sockets or state, for both ends of a stream. Everything that is parsed may come from a stranger: a
 * parser answers with an EParseResult and leaves its output untouched unless it answers Ok.
 * Threads: any.
 */
namespace Velmo::Gvsp
{

constexpr std::size_t HeaderBytes = 8;          // GVSP header, standard ID mode
constexpr std::size_t ExtendedHeaderBytes = 20; // GVSP header, extended ID mode
constexpr std::size_t IpAndUdpBytes = 28;       // headers below GVSP; a stream channel's packet size counts them too
constexpr std::uint32_t MaxPacketId = 0xFFFFFF; // standard ID mode: packet_id has 24 bits
constexpr std::uint32_t MaxBlockId = 0xFFFF;    // standard ID mode; 0 is kept for test packets

/** GVSP header, "packet_format". */
enum class EPacketFormat : std::uint8_t
{
    Leader = 1,
    Trailer = 2,
    Payload = 3,
    AllIn = 4
};

/** Data leader, "payload_type". */
enum class EPayloadType : std::uint16_t
{
    Image = 0x0001,
    RawData = 0x0002,
    File = 0x0003,
    ChunkData = 0x0004,
    ExtendedChunkData = 0x0005 // deprecated since version 2.0, which has ExtendedChunkFlag
};
constexpr std::uint16_t ExtendedChunkFlag = 0x4000; // of payload_type: chunks follow the payload; bit 1 of the field

/** GVSP header, "status"; the others are Gvcp::EStatus. */
constexpr std::uint16_t StatusSuccess = 0x0000;

/** GVSP header, "flags"; extended ID mode only. */
namespace Flag
{
constexpr std::uint16_t PacketResend = 0x0001; // the packet was asked for again
} // namespace Flag

enum class EParseResult
{
    Ok,
    TooShort,     // fewer bytes than the header, the leader or the trailer has
    WrongFormat,  // not a packet of the kind that was asked for
    UnknownFormat // a packet_format that is not known here
};

using Bytes = std::vector<std::uint8_t>;

/** GVSP header. */
struct SHeader
{
    std::uint16_t status = StatusSuccess; // a Gvcp::EStatus
    std::uint16_t flags = 0;              // of Flag; extended ID mode only
    EPacketFormat format = EPacketFormat::Payload;
    bool isExtended = false;    // 64-bit block and 32-bit packet identifiers
    std::uint64_t blockId = 0;  // standard ID mode: 16 bits
    std::uint32_t packetId = 0; // standard ID mode: 24 bits
};

/** A header's bytes, for senders that put the payload behind them themselves. */
struct SHeaderBytes
{
    std::array<std::uint8_t, ExtendedHeaderBytes> data{};
    std::size_t bytes = 0;
};

/** A packet's header and where the rest is; valid as long as the datagram. */
struct SPacket
{
    SHeader header;
    const std::uint8_t* pPayload = nullptr;
    std::size_t payloadBytes = 0;
};

/** Data leader of images, with or without chunks, and of chunk data, which have payload type and timestamp only. */
struct SLeader
{
    std::uint16_t payloadType = static_cast<std::uint16_t>(EPayloadType::Image); // an EPayloadType, or not known here
    std::uint64_t timestamp = 0;                                                 // ticks of the camera's clock
    std::uint32_t pixelFormat = 0;
    std::uint32_t sizeX = 0;
    std::uint32_t sizeY = 0;
    std::uint32_t offsetX = 0;
    std::uint32_t offsetY = 0;
    std::uint16_t paddingX = 0;
    std::uint16_t paddingY = 0;
};

/** Data trailer. sizeY is of images, the chunk fields of payloads with chunks. */
struct STrailer
{
    std::uint16_t payloadType = static_cast<std::uint16_t>(EPayloadType::Image);
    std::uint32_t sizeY = 0;                  // lines that were sent
    std::uint32_t chunkDataPayloadLength = 0; // bytes of the whole payload
    std::uint32_t chunkLayoutId = 0;          // changes when the layout of the chunks does
};

/** Whether a leader of that type describes an image's geometry. */
PROTOCOLS_EXPORT bool HasGeometry(std::uint16_t payloadType);
/** Whether the payload ends with chunks. */
PROTOCOLS_EXPORT bool HasChunks(std::uint16_t payloadType);

PROTOCOLS_EXPORT SHeaderBytes EncodeHeader(const SHeader& header);
/** The whole datagram; the header's format is set. */
PROTOCOLS_EXPORT Bytes EncodeLeader(SHeader header, const SLeader& leader);
PROTOCOLS_EXPORT Bytes EncodeTrailer(SHeader header, const STrailer& trailer);

PROTOCOLS_EXPORT EParseResult ParsePacket(const std::uint8_t* data, std::size_t bytes, SPacket& packet);
PROTOCOLS_EXPORT EParseResult ParseLeader(const SPacket& packet, SLeader& leader);
PROTOCOLS_EXPORT EParseResult ParseTrailer(const SPacket& packet, STrailer& trailer);

/** Bytes of a block in one payload packet of a stream channel whose packet size is that; 0 when it is too small. */
constexpr std::size_t DataBytesPerPacket(std::size_t packetBytes, bool isExtended)
{
    const std::size_t overhead = IpAndUdpBytes + (isExtended ? ExtendedHeaderBytes : HeaderBytes);
    return packetBytes > overhead ? packetBytes - overhead : 0;
}
/** The block identifier of the n-th block of a stream, from 1 on: 0 is left out where the numbers wrap. */
constexpr std::uint64_t BlockIdOf(std::uint64_t number, bool isExtended)
{
    return isExtended || number == 0 ? number : (number - 1) % MaxBlockId + 1;
}

} // namespace Velmo::Gvsp
