// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "protocols/chunks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>

using namespace Velmo::Chunks;

namespace
{

using Bytes = std::vector<std::uint8_t>;

// An image of four bytes and a value of two, laid out by hand.
const Bytes Big{10, 11, 12, 13, 0, 0, 0, 1, 0, 0, 0, 4, 20, 21, 0xA5, 0, 0, 2, 0, 0, 0, 2};
const Bytes Little{10, 11, 12, 13, 1, 0, 0, 0, 4, 0, 0, 0, 20, 21, 2, 0, 0, 0xA5, 2, 0, 0, 0};

std::vector<SChunk> ReadAll(const Bytes& payload, EByteOrder order, CReader::EState state = CReader::EState::Ok)
{
    CReader reader(payload.data(), payload.size(), order);
    std::vector<SChunk> chunks;
    SChunk chunk;
    while (reader.Next(chunk))
    {
        chunks.push_back(chunk);
    }
    EXPECT_EQ(reader.GetState(), state);
    EXPECT_EQ(reader.GetErrorText().empty(), state == CReader::EState::Ok);
    return chunks;
}

Bytes DataOf(const SChunk& chunk)
{
    return {chunk.pData, chunk.pData + chunk.bytes};
}

void ExpectTheTwo(const std::vector<SChunk>& chunks)
{
    ASSERT_EQ(chunks.size(), 2U);
    EXPECT_EQ(chunks[0].id, 0xA5000002U);
    EXPECT_EQ(DataOf(chunks[0]), (Bytes{20, 21}));
    EXPECT_EQ(chunks[1].id, 1U);
    EXPECT_EQ(DataOf(chunks[1]), (Bytes{10, 11, 12, 13}));
}

} // namespace

TEST(Chunks, bigEndianChunksAreReadFromTheEnd)
{
    ExpectTheTwo(ReadAll(Big, EByteOrder::Big));
}

TEST(Chunks, littleEndianChunksAreReadFromTheEnd)
{
    ExpectTheTwo(ReadAll(Little, EByteOrder::Little));
}

TEST(Chunks, theByteOrderIsFoundByReadingAll)
{
    ExpectTheTwo(ReadAll(Big, EByteOrder::Auto));
    ExpectTheTwo(ReadAll(Little, EByteOrder::Auto));
    EXPECT_EQ(CReader(Little.data(), Little.size(), EByteOrder::Auto).GetByteOrder(), EByteOrder::Little);
}

TEST(Chunks, ofTwoPossibleByteOrdersBigIsTaken)
{
    const Bytes payload{7, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(ReadAll(payload, EByteOrder::Auto).at(0).id, 0x07000000U);
}

TEST(Chunks, ofTwoImpossibleByteOrdersBigIsReported)
{
    const Bytes payload{0, 0, 0, 1, 1, 0, 0, 1};
    EXPECT_TRUE(ReadAll(payload, EByteOrder::Auto, CReader::EState::BeyondBegin).empty());
    EXPECT_EQ(CReader(payload.data(), payload.size(), EByteOrder::Auto).GetByteOrder(), EByteOrder::Big);
}

TEST(Chunks, anEmptyPayloadHasNoChunks)
{
    EXPECT_TRUE(ReadAll({}, EByteOrder::Big).empty());
    CReader reader(nullptr, 100, EByteOrder::Auto);
    SChunk chunk;
    EXPECT_FALSE(reader.Next(chunk));
    EXPECT_EQ(reader.GetState(), CReader::EState::Ok);
}

TEST(Chunks, anEmptyChunkIsAChunk)
{
    const auto chunks = ReadAll({0, 0, 0, 5, 0, 0, 0, 0}, EByteOrder::Big);
    ASSERT_EQ(chunks.size(), 1U);
    EXPECT_EQ(chunks[0].bytes, 0U);
    EXPECT_NE(chunks[0].pData, nullptr);
}

TEST(Chunks, bytesBeforeTheFirstTrailerAreRefused)
{
    for (std::size_t extra = 1; extra < TrailerBytes; ++extra)
    {
        Bytes payload(extra, 9);
        payload.insert(payload.end(), {0, 0, 0, 5, 0, 0, 0, 0});
        EXPECT_EQ(ReadAll(payload, EByteOrder::Big, CReader::EState::NoTrailer).size(), 1U) << extra;
    }
}

TEST(Chunks, aLengthBeyondTheBeginIsRefusedAndNamed)
{
    const Bytes payload{1, 2, 3, 4, 0, 0, 0, 7, 0, 0, 0, 5};
    CReader reader(payload.data(), payload.size(), EByteOrder::Big);
    SChunk chunk;
    EXPECT_FALSE(reader.Next(chunk));
    EXPECT_EQ(reader.GetState(), CReader::EState::BeyondBegin);
    EXPECT_EQ(reader.GetErrorText(), "The chunk with ID 7 claims 5 bytes, but only 4 lie before its trailer.");
    EXPECT_EQ(chunk.pData, nullptr);
    EXPECT_FALSE(reader.Next(chunk)); // a faulty walk stays ended
}

TEST(Chunks, theLargestLengthDoesNotOverflow)
{
    EXPECT_TRUE(ReadAll({0, 0, 0, 7, 0xFF, 0xFF, 0xFF, 0xFF}, EByteOrder::Big, CReader::EState::BeyondBegin).empty());
    EXPECT_TRUE(
        ReadAll({1, 0, 0, 0, 7, 0xFF, 0xFF, 0xFF, 0xF8}, EByteOrder::Big, CReader::EState::BeyondBegin).empty());
}

TEST(Chunks, theFirstChunkMayFillThePayloadExactly)
{
    const Bytes payload{1, 2, 3, 4, 0, 0, 0, 7, 0, 0, 0, 4};
    const auto chunks = ReadAll(payload, EByteOrder::Big);
    ASSERT_EQ(chunks.size(), 1U);
    EXPECT_EQ(DataOf(chunks[0]), (Bytes{1, 2, 3, 4}));
}

TEST(Chunks, lengthsThatAreNoMultipleOfFourAreRead)
{
    const auto chunks = ReadAll({1, 2, 3, 0, 0, 0, 7, 0, 0, 0, 3}, EByteOrder::Big);
    ASSERT_EQ(chunks.size(), 1U);
    EXPECT_EQ(chunks[0].bytes, 3U);
}

TEST(Chunks, findTakesTheLastOfSeveralWithOneId)
{
    Bytes payload;
    Append(payload, 9, "aaaa", 4, EByteOrder::Big);
    Append(payload, 9, "bbbb", 4, EByteOrder::Big);
    SChunk chunk;
    ASSERT_TRUE(Find(payload.data(), payload.size(), EByteOrder::Big, 9, chunk));
    EXPECT_EQ(DataOf(chunk), Bytes(4, 'b'));
}

TEST(Chunks, findRefusesAPayloadThatIsFaultyBeforeTheChunk)
{
    Bytes payload{1, 2, 3};
    Append(payload, 9, "bbbb", 4, EByteOrder::Big);
    SChunk chunk;
    EXPECT_FALSE(Find(payload.data(), payload.size(), EByteOrder::Big, 9, chunk));
    EXPECT_EQ(chunk.pData, nullptr);
}

TEST(Chunks, findOfAnUnknownIdIsFalse)
{
    SChunk chunk;
    EXPECT_FALSE(Find(Little.data(), Little.size(), EByteOrder::Little, 3, chunk));
}

TEST(Chunks, aWrittenChunkIsAlignedWithZeros)
{
    Bytes payload;
    Append(payload, 0x01020304, "abc", 3, EByteOrder::Big);
    EXPECT_EQ(payload, (Bytes{'a', 'b', 'c', 0, 1, 2, 3, 4, 0, 0, 0, 4}));
}

TEST(Chunks, dataTooLongForTheTrailersThirtyTwoBitsAreRefused)
{
    Bytes payload{1, 2};
    const std::uint8_t byte = 0;
    for (const std::size_t bytes : {MaxChunkBytes + 1, std::size_t{1} << 32, SIZE_MAX - 2, SIZE_MAX})
    {
        EXPECT_THROW(Append(payload, 1, &byte, bytes, EByteOrder::Big), std::length_error) << bytes;
    }
    EXPECT_EQ(payload, (Bytes{1, 2}));
}

TEST(Chunks, aLittleEndianTrailerIsWrittenTheOtherWayRound)
{
    EXPECT_EQ(MakeTrailer(0x01020304, 5, EByteOrder::Little),
              (std::array<std::uint8_t, TrailerBytes>{4, 3, 2, 1, 5, 0, 0, 0}));
    EXPECT_EQ(MakeTrailer(0x01020304, 5, EByteOrder::Auto), MakeTrailer(0x01020304, 5, EByteOrder::Big));
}
