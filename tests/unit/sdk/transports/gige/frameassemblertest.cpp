// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/frameassembler.h"
#include "blockpackets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace Velmo;
using namespace Velmo::GigE::Internal;
using namespace std::chrono_literals;
using Test::PacketsOf;
using Test::PayloadOf;
using Test::SBlock;
using ::testing::HasSubstr;
using Transport::EResultStatus;
using Transport::SStreamResult;

namespace
{

constexpr std::size_t BufferBytes = 400; // of the usual image
constexpr std::size_t PacketBytes = 136; // 100 bytes of data each
constexpr std::uint16_t ChunkData = static_cast<std::uint16_t>(Gvsp::EPayloadType::ChunkData);
constexpr std::uint16_t ImageWithChunks =
    static_cast<std::uint16_t>(Gvsp::EPayloadType::Image) | Gvsp::ExtendedChunkFlag;

class FrameAssembler : public ::testing::Test
{
protected:
    void Give(std::size_t count, std::size_t bytes = BufferBytes)
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            m_memory.emplace_back(bytes);
            m_assembler.AddBuffer(&m_memory.back(), m_memory.back().data(), bytes);
        }
    }
    void Push(const Gvsp::Bytes& packet) { m_assembler.Push(packet.data(), packet.size(), m_now); }
    void Push(const std::vector<Gvsp::Bytes>& packets)
    {
        for (const Gvsp::Bytes& packet : packets)
        {
            Push(packet);
        }
    }
    SStreamResult Take()
    {
        SStreamResult result;
        EXPECT_TRUE(m_assembler.TakeResult(result)) << "no result";
        return result;
    }
    bool HasNone()
    {
        SStreamResult result;
        return !m_assembler.TakeResult(result);
    }
    void Pass(std::chrono::milliseconds time)
    {
        m_now += time;
        m_assembler.Expire(m_now);
    }
    void ExpectImage(const SBlock& block)
    {
        const SStreamResult result = Take();
        EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
        EXPECT_EQ(result.timestamp, block.timestamp == 0 ? block.id * 1000 : block.timestamp);
        EXPECT_EQ(Bytes(result), PayloadOf(block));
    }
    static std::vector<std::uint8_t> Bytes(const SStreamResult& result)
    {
        if (result.pContext == nullptr)
        {
            return {};
        }
        const auto& memory = *static_cast<std::vector<std::uint8_t>*>(result.pContext);
        return {memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(result.payloadBytes)};
    }

    std::deque<std::vector<std::uint8_t>> m_memory;
    CFrameAssembler::Time m_now{1s};
    CFrameAssembler m_assembler{PacketBytes, 200ms};
};

TEST_F(FrameAssembler, anImageInOrderFillsTheBuffer)
{
    Give(1);
    Push(PacketsOf({}));
    const SStreamResult result = Take();
    EXPECT_EQ(result.status, EResultStatus::Ok);
    EXPECT_EQ(result.payloadType, EPayloadType::Image);
    EXPECT_EQ(result.pixelType, 0x01080001U);
    EXPECT_EQ(result.width, 40U);
    EXPECT_EQ(result.height, 10U);
    EXPECT_EQ(result.blockId, 1U);
    EXPECT_EQ(result.timestamp, 1000U);
    EXPECT_EQ(Bytes(result), PayloadOf({}));
    EXPECT_EQ(m_assembler.GetCounters().delivered, 1U);
    EXPECT_FALSE(m_assembler.GetDeadline());
}

TEST_F(FrameAssembler, extendedIdsAreUnderstood)
{
    Give(1);
    SBlock block;
    block.isExtended = true;
    block.id = 0x100000001;
    Push(PacketsOf(block));
    ExpectImage(block);
}

TEST_F(FrameAssembler, theLastPacketMayBeShorter)
{
    Give(1);
    SBlock block;
    block.dataBytesPerPacket = 150;
    Push(PacketsOf(block));
    ExpectImage(block);
}

TEST_F(FrameAssembler, packetsBehindTheLeaderMayComeInAnyOrder)
{
    std::mt19937 random(4711);
    Give(100);
    for (std::uint64_t id = 1; id <= 100; ++id)
    {
        SBlock block;
        block.id = id;
        block.dataBytesPerPacket = 30; // the last one has 10
        std::vector<Gvsp::Bytes> packets = PacketsOf(block);
        if (id > 1)
        {
            std::shuffle(packets.begin(), packets.end(), random);
        }
        Push(packets);
        ExpectImage(block);
    }
}

TEST_F(FrameAssembler, theFirstImageMayComeInAnyOrderBehindItsLeader)
{
    Give(1);
    std::vector<Gvsp::Bytes> packets = PacketsOf({});
    std::reverse(packets.begin() + 1, packets.end());
    Push(packets);
    ExpectImage({});
}

TEST_F(FrameAssembler, packetsOfNeighbouringImagesMayMix)
{
    Give(2);
    SBlock second;
    second.id = 2;
    const auto first = PacketsOf({});
    const auto next = PacketsOf(second);
    Push({first[0], first[1], next[0], next[1], first[2], next[2], next[3], next[4], next[5]});
    EXPECT_TRUE(HasNone()) << "the second image is complete, but comes behind the first";
    Push({first[3], first[4], first[5]});
    ExpectImage({});
    ExpectImage(second);
}

TEST_F(FrameAssembler, duplicatesChangeNothing)
{
    Give(2);
    for (const Gvsp::Bytes& packet : PacketsOf({}))
    {
        Push({packet, packet});
    }
    ExpectImage({});
    EXPECT_TRUE(HasNone());
    EXPECT_EQ(m_assembler.GetCounters().ignored, 6U);
    EXPECT_EQ(m_assembler.GetCounters().delivered, 1U);
}

TEST_F(FrameAssembler, aMissingPacketFailsTheImageAfterTheRetentionTime)
{
    Give(1);
    auto packets = PacketsOf({});
    packets.erase(packets.begin() + 2);
    Push(packets);
    EXPECT_TRUE(HasNone());
    EXPECT_EQ(m_assembler.GetDeadline(), m_now + 200ms);
    Pass(199ms);
    EXPECT_TRUE(HasNone());
    Pass(1ms);
    const SStreamResult result = Take();
    EXPECT_EQ(result.status, EResultStatus::Failed);
    EXPECT_NE(result.errorCode, 0U);
    EXPECT_THAT(result.errorDescription, HasSubstr("1 packets are missing"));
    EXPECT_EQ(result.width, 40U);
    EXPECT_EQ(m_assembler.GetCounters().incomplete, 1U);
    EXPECT_EQ(m_assembler.GetCounters().missing, 1U);
}

TEST_F(FrameAssembler, missingLeaderOrTrailerFailsTheImage)
{
    Give(3);
    Push(PacketsOf({}));
    ExpectImage({});
    for (std::uint64_t id = 2; id <= 3; ++id)
    {
        SBlock block;
        block.id = id;
        auto packets = PacketsOf(block);
        packets.erase(id == 2 ? packets.begin() : packets.end() - 1);
        Push(packets);
    }
    Pass(200ms);
    EXPECT_EQ(Take().status, EResultStatus::Failed);
    EXPECT_EQ(Take().status, EResultStatus::Failed);
    EXPECT_EQ(m_assembler.GetCounters().missing, 2U);
}

TEST_F(FrameAssembler, anIncompleteImageHoldsBackTheNextOnlyUntilItsTimeIsOver)
{
    Give(2);
    auto packets = PacketsOf({});
    packets.erase(packets.begin() + 1);
    Push(packets);
    SBlock second;
    second.id = 2;
    Push(PacketsOf(second));
    EXPECT_TRUE(HasNone());
    Pass(200ms);
    EXPECT_EQ(Take().status, EResultStatus::Failed);
    ExpectImage(second);
}

TEST_F(FrameAssembler, anIncompleteImageIsGivenUpWhenThereIsNoBufferForANewOne)
{
    Give(2);
    auto packets = PacketsOf({});
    packets.erase(packets.begin() + 1);
    Push(packets);
    SBlock second;
    second.id = 2;
    Push(PacketsOf(second));
    SBlock third;
    third.id = 3;
    Push(PacketsOf(third));
    EXPECT_EQ(Take().status, EResultStatus::Failed);
    ExpectImage(second);
    EXPECT_TRUE(HasNone());
}

TEST_F(FrameAssembler, imagesWithoutABufferAreLostAsAWhole)
{
    const auto packets = PacketsOf({});
    Push({packets[0], packets[1]});
    Give(2);
    Push({packets[2], packets[3], packets[4], packets[5]});
    SBlock second;
    second.id = 2;
    Push(PacketsOf(second));
    ExpectImage(second);
    EXPECT_TRUE(HasNone());
    EXPECT_EQ(m_assembler.GetCounters().lost, 1U);
}

TEST_F(FrameAssembler, gapsInTheIdsAreLostImages)
{
    Give(2);
    SBlock later;
    later.id = 5;
    Push(PacketsOf({}));
    Push(PacketsOf(later));
    ExpectImage({});
    ExpectImage(later);
    EXPECT_EQ(m_assembler.GetCounters().lost, 3U);
}

TEST_F(FrameAssembler, packetsOfAnImageThatIsOutAreIgnored)
{
    Give(3);
    auto packets = PacketsOf({});
    const Gvsp::Bytes late = packets[2];
    packets.erase(packets.begin() + 2);
    Push(packets);
    Pass(200ms);
    EXPECT_EQ(Take().status, EResultStatus::Failed);
    Push(late);
    EXPECT_FALSE(m_assembler.GetDeadline());
    EXPECT_EQ(m_assembler.GetCounters().ignored, 1U);
}

TEST_F(FrameAssembler, aWholeLateImageIsTakenInItsPlace)
{
    Give(3);
    SBlock second;
    second.id = 2;
    SBlock third;
    third.id = 3;
    Push(PacketsOf({}));
    const auto thirdPackets = PacketsOf(third);
    Push({thirdPackets[0], thirdPackets[1]});
    Push(PacketsOf(second));
    Push({thirdPackets[2], thirdPackets[3], thirdPackets[4], thirdPackets[5]});
    ExpectImage({});
    ExpectImage(second);
    ExpectImage(third);
    EXPECT_EQ(m_assembler.GetCounters().lost, 0U);
}

TEST_F(FrameAssembler, whatIsUnderWayAtTheStartIsLeftOut)
{
    Give(1);
    SBlock seventh;
    seventh.id = 7;
    SBlock eighth;
    eighth.id = 8;
    const auto packets = PacketsOf(seventh);
    Push({packets[3], packets[4], packets[5]});
    Push(PacketsOf(eighth));
    ExpectImage(eighth);
    EXPECT_EQ(m_assembler.GetCounters().lost, 0U);
    EXPECT_EQ(m_assembler.GetCounters().incomplete, 0U);
}

TEST_F(FrameAssembler, idsOfSixteenBitsGoOnBehindTheirWrap)
{
    Give(3);
    for (const std::uint64_t id : {65534U, 65535U, 1U})
    {
        SBlock block;
        block.id = id;
        block.timestamp = id < 10 ? 70000000 : id * 1000;
        Push(PacketsOf(block));
    }
    EXPECT_EQ(Take().blockId, 65534U);
    EXPECT_EQ(Take().blockId, 65535U);
    EXPECT_EQ(Take().blockId, 65536U);
    EXPECT_EQ(m_assembler.GetCounters().lost, 0U);
}

class FrameAssemblerRestart : public FrameAssembler, public ::testing::WithParamInterface<std::uint64_t>
{
};

TEST_P(FrameAssemblerRestart, aStreamThatBeginsAgainIsFollowed)
{
    Give(3);
    SBlock last;
    last.id = GetParam();
    SBlock first;
    first.timestamp = 900000000;
    SBlock second;
    second.id = 2;
    second.timestamp = 900001000;
    Push(PacketsOf(last));
    Push(PacketsOf(first));
    Push(PacketsOf(second));
    ExpectImage(last);
    ExpectImage(first);
    ExpectImage(second);
    EXPECT_EQ(m_assembler.GetCounters().lost, 0U);
}

INSTANTIATE_TEST_SUITE_P(AfterSoManyImages, FrameAssemblerRestart,
                         ::testing::Values(1, 2, 10, 500, 30000, 40000, 65000));

TEST_F(FrameAssembler, aRestartGivesUpTheImageUnderWay)
{
    Give(2);
    SBlock old;
    old.id = 3;
    const auto packets = PacketsOf(old);
    Push({packets[0], packets[1]});
    SBlock first;
    first.timestamp = 900000000;
    Push(PacketsOf(first));
    EXPECT_EQ(Take().status, EResultStatus::Failed);
    ExpectImage(first);
}

TEST_F(FrameAssembler, anImageLargerThanItsBufferFailsAndWritesNothingBehindIt)
{
    Give(1, 250);
    Push(PacketsOf({}));
    const SStreamResult result = Take();
    EXPECT_EQ(result.status, EResultStatus::Failed);
    EXPECT_THAT(result.errorDescription, HasSubstr("does not fit the buffer"));
    EXPECT_EQ(result.payloadBytes, 250U);
}

TEST_F(FrameAssembler, anImageShorterThanItsGeometryFails)
{
    Give(1);
    SBlock block;
    auto packets = PacketsOf(block);
    SBlock shorter;
    shorter.height = 5;
    auto few = PacketsOf(shorter); // 2 payload packets
    few.front() = packets.front();
    Gvsp::SHeader header;
    header.blockId = 1;
    header.packetId = 3;
    Gvsp::STrailer trailer;
    trailer.sizeY = 10;
    few.back() = Gvsp::EncodeTrailer(header, trailer);
    Push(few);
    EXPECT_EQ(Take().status, EResultStatus::Failed);
}

TEST_F(FrameAssembler, aLineScanThatEndedEarlyHasTheLinesThatWereSent)
{
    Give(1);
    SBlock shorter;
    shorter.height = 5;
    auto packets = PacketsOf(shorter);
    packets.front() = PacketsOf({}).front(); // announces 10 lines
    Push(packets);
    const SStreamResult result = Take();
    EXPECT_EQ(result.status, EResultStatus::Ok);
    EXPECT_EQ(result.height, 5U);
    EXPECT_EQ(result.payloadBytes, 200U);
}

TEST_F(FrameAssembler, packetsOfDifferentSizesInOneImageFailIt)
{
    Give(2);
    SBlock block;
    auto packets = PacketsOf(block);
    packets[2].resize(packets[2].size() - 10);
    Push(packets);
    EXPECT_EQ(Take().status, EResultStatus::Failed);
    packets = PacketsOf({2});
    packets[2].resize(packets[2].size() + 10);
    Push(packets);
    EXPECT_EQ(Take().status, EResultStatus::Failed);
}

TEST_F(FrameAssembler, anotherPacketSizeFromOneImageToTheNextIsLearnt)
{
    Give(3);
    std::uint64_t id = 0;
    for (const std::size_t bytes : {100U, 60U, 200U})
    {
        SBlock block;
        block.id = ++id;
        block.dataBytesPerPacket = bytes;
        Push(PacketsOf(block));
        ExpectImage(block);
    }
}

TEST_F(FrameAssembler, packetsBehindTheTrailerFailTheImage)
{
    Give(1);
    auto packets = PacketsOf({});
    SBlock larger;
    larger.height = 20;
    const auto further = PacketsOf(larger);
    Push({packets[0], packets[1], further[7], packets[5]});
    EXPECT_EQ(Take().status, EResultStatus::Failed);
}

TEST_F(FrameAssembler, aPacketThatTheCameraCannotSendAgainIsNoData)
{
    Give(1);
    const auto packets = PacketsOf({});
    Gvsp::SHeader header;
    header.status = static_cast<std::uint16_t>(0x800C); // packet unavailable
    header.blockId = 1;
    header.packetId = 2;
    const Gvsp::SHeaderBytes begin = Gvsp::EncodeHeader(header);
    Push({packets[0], packets[1], Gvsp::Bytes(begin.data.begin(), begin.data.begin() + 8)});
    Push({packets[2], packets[3], packets[4], packets[5]});
    ExpectImage({});
}

TEST_F(FrameAssembler, packetsSentAgainForTheControllerCompleteTheImage)
{
    Give(1);
    auto packets = PacketsOf({});
    Gvsp::Bytes again = packets[2];
    again[0] = 0x01; // status 0x0100: it was asked for again
    packets.erase(packets.begin() + 2);
    Push(packets);
    Push(again);
    ExpectImage({});
    EXPECT_EQ(m_assembler.GetCounters().resent, 1U);
}

TEST_F(FrameAssembler, packetsSentAgainAreCountedByTheFlagOfExtendedIdentifiersToo)
{
    Give(1);
    Gvsp::SHeader header;
    header.isExtended = true;
    header.blockId = 1;
    Gvsp::SLeader leader;
    leader.sizeX = leader.sizeY = 1;
    Push(Gvsp::EncodeLeader(header, leader));
    EXPECT_EQ(m_assembler.GetCounters().resent, 0U);
    header.flags = Gvsp::Flag::PacketResend;
    Push(Gvsp::EncodeLeader(header, leader));
    EXPECT_EQ(m_assembler.GetCounters().resent, 1U);
}

TEST_F(FrameAssembler, chunkDataHasNoGeometry)
{
    Give(1, 500);
    SBlock block;
    block.payloadType = ChunkData;
    block.chunkBytes = 60;
    Push(PacketsOf(block));
    const SStreamResult result = Take();
    EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
    EXPECT_EQ(result.payloadType, EPayloadType::ChunkData);
    EXPECT_EQ(result.width, 0U);
    EXPECT_EQ(Bytes(result), PayloadOf(block));
}

TEST_F(FrameAssembler, anImageWithTheExtendedChunkFlagHasGeometryAndChunks)
{
    Give(1, 500);
    SBlock block;
    block.payloadType = ImageWithChunks;
    block.chunkBytes = 60;
    Push(PacketsOf(block));
    const SStreamResult result = Take();
    EXPECT_EQ(result.status, EResultStatus::Ok) << result.errorDescription;
    EXPECT_EQ(result.payloadType, EPayloadType::ChunkData);
    EXPECT_EQ(result.width, 40U);
    EXPECT_EQ(result.height, 10U);
    EXPECT_EQ(Bytes(result), PayloadOf(block));
}

TEST_F(FrameAssembler, cancellingGivesEveryBufferBackOnce)
{
    Give(3);
    Push(PacketsOf({}));
    const auto packets = PacketsOf({2});
    Push({packets[0], packets[1]});
    m_assembler.CancelAll();
    ExpectImage({});
    EXPECT_EQ(Take().status, EResultStatus::Canceled);
    EXPECT_EQ(Take().status, EResultStatus::Canceled);
    EXPECT_TRUE(HasNone());
    EXPECT_FALSE(m_assembler.GetDeadline());
}

TEST_F(FrameAssembler, testPacketsAndRubbishAreIgnored)
{
    Give(1);
    Push(PacketsOf({}));
    ExpectImage({});
    SBlock test;
    test.id = 0;
    const auto packets = PacketsOf(test);
    Push(packets);
    Push(Gvsp::Bytes{});
    Push(Gvsp::Bytes(8, 0xFF));
    EXPECT_EQ(m_assembler.GetCounters().ignored, packets.size() + 2);
    EXPECT_TRUE(HasNone());
}

} // namespace
