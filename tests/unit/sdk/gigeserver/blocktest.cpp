// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/block.h"

#include <gtest/gtest.h>

#include <numeric>

using namespace GigEServer::Internal;
namespace Gvsp = Velmo::Gvsp;
using Simulator::EFramePayload;

namespace
{

class Block : public ::testing::Test
{
protected:
    void SetUp() override
    {
        std::iota(m_image.begin(), m_image.end(), std::uint8_t{0});
        m_frame.blockId = 65537;
        m_frame.timestamp = 77;
        m_frame.pfnc = 0x01080001;
        m_frame.width = 50;
        m_frame.height = 5;
        m_frame.data = m_image.data();
        m_frame.bytes = m_image.size();
        m_target.packetBytes = 136; // 100 bytes of data
        m_target.port = 1;
    }
    void AddTail()
    {
        m_frame.payload = EFramePayload::ChunkData;
        m_frame.tail = m_tail;
        m_frame.tailBytes = sizeof m_tail;
    }
    Gvsp::SPacket Parsed(std::uint32_t id, std::uint16_t status = 0)
    {
        const CBlock::SPacket packet = m_block.GetPacket(id, status);
        m_datagram.assign(packet.header.data.begin(),
                          packet.header.data.begin() + static_cast<std::ptrdiff_t>(packet.header.bytes));
        m_datagram.insert(m_datagram.end(), packet.pData, packet.pData + packet.bytes);
        EXPECT_LE(m_datagram.size() + Gvsp::IpAndUdpBytes, m_target.packetBytes);
        Gvsp::SPacket parsed;
        EXPECT_EQ(Gvsp::ParsePacket(m_datagram.data(), m_datagram.size(), parsed), Gvsp::EParseResult::Ok);
        EXPECT_EQ(parsed.header.packetId, id);
        return parsed;
    }
    std::vector<std::uint8_t> Payload()
    {
        std::vector<std::uint8_t> payload;
        for (std::uint32_t id = 1; id + 1 < m_block.CountPackets(); ++id)
        {
            const Gvsp::SPacket packet = Parsed(id);
            EXPECT_EQ(packet.header.format, Gvsp::EPacketFormat::Payload);
            payload.insert(payload.end(), packet.pPayload, packet.pPayload + packet.payloadBytes);
        }
        return payload;
    }

    std::vector<std::uint8_t> m_image = std::vector<std::uint8_t>(250);
    std::uint8_t m_tail[16] = {9, 8, 7};
    Simulator::SFrame m_frame;
    STarget m_target;
    CBlock m_block;
    Gvsp::Bytes m_datagram;
};

} // namespace

TEST_F(Block, imageIsLeaderPayloadAndTrailer)
{
    m_block.Assign(m_frame, m_target);
    ASSERT_EQ(m_block.CountPackets(), 5u);
    EXPECT_EQ(m_block.GetId(), 2u); // 16 bits without 0
    Gvsp::SLeader leader;
    ASSERT_EQ(Gvsp::ParseLeader(Parsed(0), leader), Gvsp::EParseResult::Ok);
    EXPECT_EQ(leader.payloadType, 1);
    EXPECT_EQ(leader.timestamp, 77u);
    EXPECT_EQ(leader.sizeX, 50u);
    EXPECT_EQ(Payload(), m_image);
    Gvsp::STrailer trailer;
    ASSERT_EQ(Gvsp::ParseTrailer(Parsed(4), trailer), Gvsp::EParseResult::Ok);
    EXPECT_EQ(trailer.sizeY, 5u);
}

TEST_F(Block, extendedIdentifiersAreNotCut)
{
    m_target.isExtended = true;
    m_block.Assign(m_frame, m_target);
    EXPECT_EQ(Parsed(1).header.blockId, 65537u);
    EXPECT_EQ(Payload(), m_image);
}

TEST_F(Block, chunksAreBareUnlessTheApplicationKnowsExtendedOnes)
{
    AddTail();
    m_block.Assign(m_frame, m_target);
    Gvsp::SLeader leader;
    ASSERT_EQ(Gvsp::ParseLeader(Parsed(0), leader), Gvsp::EParseResult::Ok);
    EXPECT_EQ(leader.payloadType, 4);
    EXPECT_EQ(leader.sizeX, 0u);
    m_target.hasExtendedChunks = true;
    m_block.Assign(m_frame, m_target);
    ASSERT_EQ(Gvsp::ParseLeader(Parsed(0), leader), Gvsp::EParseResult::Ok);
    EXPECT_EQ(leader.payloadType, 0x4001);
    EXPECT_EQ(leader.sizeX, 50u);
    Gvsp::STrailer trailer;
    ASSERT_EQ(Gvsp::ParseTrailer(Parsed(m_block.CountPackets() - 1), trailer), Gvsp::EParseResult::Ok);
    EXPECT_EQ(trailer.chunkDataPayloadLength, 266u);
    std::vector<std::uint8_t> whole = m_image;
    whole.insert(whole.end(), m_tail, m_tail + sizeof m_tail);
    EXPECT_EQ(Payload(), whole);
}

TEST_F(Block, packetsSentAgainSaySo)
{
    for (const bool isExtended : {false, true})
    {
        m_target.isExtended = isExtended;
        m_block.Assign(m_frame, m_target);
        for (std::uint32_t id = 0; id < m_block.CountPackets(); ++id)
        {
            EXPECT_EQ(Parsed(id, 0x0100).header.status, 0x0100);
            EXPECT_EQ(Parsed(id, 0x0100).header.flags, isExtended ? 1 : 0); // "packet_resend"
            EXPECT_EQ(Parsed(id).header.flags, 0);
        }
    }
}

TEST_F(Block, failedImageLacksItsTrailer)
{
    m_frame.isFailed = true;
    m_block.Assign(m_frame, m_target);
    EXPECT_EQ(m_block.CountAvailable(), m_block.CountPackets() - 1);
}

TEST_F(Block, packetsWithoutRoomForDataAreNone)
{
    m_target.packetBytes = 36;
    m_block.Assign(m_frame, m_target);
    EXPECT_EQ(m_block.CountPackets(), 0u);
}
