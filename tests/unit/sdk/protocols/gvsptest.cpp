// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/gvsp.h"

#include <gtest/gtest.h>

using namespace Velmo::Gvsp;

namespace
{

constexpr std::uint16_t Image = static_cast<std::uint16_t>(EPayloadType::Image);
constexpr std::uint16_t ImageWithChunks = Image | ExtendedChunkFlag;
constexpr std::uint16_t ChunkData = static_cast<std::uint16_t>(EPayloadType::ChunkData);

SHeader Header(bool isExtended, std::uint64_t blockId, std::uint32_t packetId)
{
    SHeader header;
    header.isExtended = isExtended;
    header.blockId = blockId;
    header.packetId = packetId;
    return header;
}

Bytes BytesOf(const SHeaderBytes& header)
{
    return Bytes(header.data.begin(), header.data.begin() + static_cast<std::ptrdiff_t>(header.bytes));
}

SPacket Parsed(const Bytes& packet)
{
    SPacket parsed;
    EXPECT_EQ(ParsePacket(packet.data(), packet.size(), parsed), EParseResult::Ok);
    return parsed;
}

} // namespace

TEST(Gvsp, standardHeaderHasEightBytes)
{
    SHeader header = Header(false, 0x1234, 0x56789A);
    header.status = 0x0100;
    EXPECT_EQ(BytesOf(EncodeHeader(header)), (Bytes{0x01, 0x00, 0x12, 0x34, 0x03, 0x56, 0x78, 0x9A}));
}

TEST(Gvsp, extendedHeaderHasTwentyBytes)
{
    EXPECT_EQ(BytesOf(EncodeHeader(Header(true, 0x0102030405060708, 0x0A0B0C0D))),
              (Bytes{0, 0, 0, 0, 0x83, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 0x0A, 0x0B, 0x0C, 0x0D}));
}

TEST(Gvsp, imageLeaderHasItsFieldsAtTheStandardsOffsets)
{
    SLeader leader;
    leader.timestamp = 0x1122334455667788;
    leader.pixelFormat = 0x01080001;
    leader.sizeX = 640;
    leader.sizeY = 480;
    leader.offsetX = 1;
    leader.offsetY = 2;
    leader.paddingX = 3;
    EXPECT_EQ(EncodeLeader(Header(false, 1, 0), leader),
              (Bytes{0,    0,    0,    1,    1,    0,    0,    0,    0,    0, 0, 1, 0x11, 0x22, 0x33,
                     0x44, 0x55, 0x66, 0x77, 0x88, 0x01, 0x08, 0x00, 0x01, 0, 0, 2, 0x80, 0,    0,
                     1,    0xE0, 0,    0,    0,    1,    0,    0,    0,    2, 0, 3, 0,    0}));
}

TEST(Gvsp, chunkDataLeaderHasNoGeometry)
{
    SLeader leader;
    leader.payloadType = ChunkData;
    leader.timestamp = 5;
    leader.sizeX = 640;
    EXPECT_EQ(EncodeLeader(Header(false, 1, 0), leader),
              (Bytes{0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0, 5}));
}

TEST(Gvsp, trailersOfEveryPayloadComeBackAsTheyWere)
{
    for (const std::uint16_t type : {Image, ImageWithChunks, ChunkData})
    {
        STrailer trailer;
        trailer.payloadType = type;
        trailer.sizeY = HasGeometry(type) ? 480 : 0;
        trailer.chunkDataPayloadLength = HasChunks(type) ? 12345 : 0;
        trailer.chunkLayoutId = HasChunks(type) ? 9 : 0;
        const Bytes packet = EncodeTrailer(Header(true, 0x100000001, 77), trailer);
        const SPacket parsed = Parsed(packet);
        EXPECT_EQ(parsed.header.format, EPacketFormat::Trailer);
        EXPECT_EQ(parsed.header.blockId, 0x100000001u);
        EXPECT_EQ(parsed.header.packetId, 77u);
        STrailer read;
        ASSERT_EQ(ParseTrailer(parsed, read), EParseResult::Ok) << type;
        EXPECT_EQ(read.payloadType, type);
        EXPECT_EQ(read.sizeY, trailer.sizeY);
        EXPECT_EQ(read.chunkDataPayloadLength, trailer.chunkDataPayloadLength);
        EXPECT_EQ(read.chunkLayoutId, trailer.chunkLayoutId);
    }
}

TEST(Gvsp, leaderComesBackAsItWas)
{
    SLeader leader;
    leader.payloadType = ImageWithChunks;
    leader.timestamp = 99;
    leader.sizeX = 1280;
    leader.offsetY = 8;
    leader.paddingY = 4;
    const Bytes packet = EncodeLeader(Header(false, 65535, 0), leader);
    SLeader read;
    ASSERT_EQ(ParseLeader(Parsed(packet), read), EParseResult::Ok);
    EXPECT_EQ(read.payloadType, ImageWithChunks);
    EXPECT_EQ(read.timestamp, 99u);
    EXPECT_EQ(read.sizeX, 1280u);
    EXPECT_EQ(read.offsetY, 8u);
    EXPECT_EQ(read.paddingY, 4u);
}

TEST(Gvsp, everyCutPacketIsRefusedAndTouchesNothing)
{
    const Bytes packet = EncodeLeader(Header(true, 1, 0), SLeader());
    for (std::size_t bytes = 0; bytes < packet.size(); ++bytes)
    {
        SPacket parsed;
        SLeader leader;
        leader.sizeX = 4711;
        if (ParsePacket(packet.data(), bytes, parsed) == EParseResult::Ok)
        {
            EXPECT_EQ(ParseLeader(parsed, leader), EParseResult::TooShort) << bytes;
        }
        EXPECT_EQ(leader.sizeX, 4711u);
    }
}

TEST(Gvsp, packetOfAnotherKindIsRefused)
{
    const Bytes leader = EncodeLeader(Header(false, 1, 0), SLeader());
    STrailer trailer;
    EXPECT_EQ(ParseTrailer(Parsed(leader), trailer), EParseResult::WrongFormat);
    const Bytes unknown{0, 0, 0, 1, 9, 0, 0, 0};
    SPacket packet;
    EXPECT_EQ(ParsePacket(unknown.data(), unknown.size(), packet), EParseResult::UnknownFormat);
}

TEST(Gvsp, blockIdsOfTheStandardModeLeaveOutZero)
{
    EXPECT_EQ(BlockIdOf(1, false), 1u);
    EXPECT_EQ(BlockIdOf(65535, false), 65535u);
    EXPECT_EQ(BlockIdOf(65536, false), 1u);
    EXPECT_EQ(BlockIdOf(65536, true), 65536u);
}

TEST(Gvsp, packetSizeCountsTheHeadersBelow)
{
    EXPECT_EQ(DataBytesPerPacket(1500, false), 1464u);
    EXPECT_EQ(DataBytesPerPacket(1500, true), 1452u);
    EXPECT_EQ(DataBytesPerPacket(36, false), 0u);
}
