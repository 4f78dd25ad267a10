// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/nodemapchunkparser.h"
#include "genapi/exceptions.h"
#include "transport/log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using namespace Velmo;
using Chunks::EByteOrder;
using GenApi::EAccessMode;
using testing::HasSubstr;
using Transport::CChunkParsers;

namespace
{

constexpr auto Description =
    "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" SchemaMajorVersion=\"1\" "
    "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\">"
    "<IntReg Name=\"ChunkOne\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>One</pPort>"
    "<Endianess>BigEndian</Endianess></IntReg>"
    "<IntReg Name=\"ChunkTwo\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Two</pPort>"
    "<Endianess>BigEndian</Endianess></IntReg>"
    "<Port Name=\"One\"><ChunkID>000000A1</ChunkID><SwapEndianess>Yes</SwapEndianess></Port>"
    "<Port Name=\"Two\"><ChunkID>A2</ChunkID></Port></RegisterDescription>";

class NodeMapChunkParser : public testing::Test
{
protected:
    using Bytes = std::vector<std::uint8_t>;

    NodeMapChunkParser() : m_map(Make(Description))
    {
        m_pParser = m_parsers.Create(m_map.get(), EByteOrder::Auto, "'C1'");
        SetLogSink([this](const SLogRecord& record) { m_log.push_back(record); });
    }
    ~NodeMapChunkParser() override { SetLogSink(nullptr); }

    static std::unique_ptr<GenApi::INodeMap> Make(const std::string& xml)
    {
        return GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap();
    }
    static Bytes Payload(std::initializer_list<std::pair<std::uint32_t, std::uint8_t>> chunks,
                         EByteOrder order = EByteOrder::Big)
    {
        Bytes payload(16, 7);
        const auto trailer = Chunks::MakeTrailer(Chunks::ImageChunkId, 16, order);
        payload.insert(payload.end(), trailer.begin(), trailer.end());
        for (const auto& [id, value] : chunks)
        {
            const std::uint8_t big[] = {0, 0, 0, value};
            const std::uint8_t little[] = {value, 0, 0, 0};
            Chunks::Append(payload, id, order == EByteOrder::Little ? little : big, 4, order);
        }
        return payload;
    }
    /** Its last chunk claims more bytes than there are. */
    static Bytes Lying()
    {
        Bytes payload = Payload({{0xA1, 6}});
        payload[payload.size() - 4] = 0x80;
        return payload;
    }
    void Attach(const Bytes& payload)
    {
        m_pParser->AttachBuffer(payload.data(), static_cast<std::int64_t>(payload.size()));
    }
    std::int64_t Value(const char* name) { return GenApi::CIntegerPtr(m_map->GetNode(name))->GetValue(); }
    EAccessMode Mode(const char* name) { return m_map->GetNode(name)->GetAccessMode(); }

    std::vector<SLogRecord> m_log;
    std::unique_ptr<GenApi::INodeMap> m_map;
    CChunkParsers m_parsers;
    IChunkParser* m_pParser = nullptr;
};

} // namespace

TEST_F(NodeMapChunkParser, chunksAreShownByTheFeaturesOfTheirIds)
{
    const Bytes payload = Payload({{0xA1, 5}, {0xA2, 6}});
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
    Attach(payload);
    EXPECT_EQ(Value("ChunkOne"), 5);
    EXPECT_EQ(Value("ChunkTwo"), 6);
}

TEST_F(NodeMapChunkParser, valuesFollowTheByteOrderOfThePayloadWhereThePortAsksForIt)
{
    const Bytes payload = Payload({{0xA1, 5}}, EByteOrder::Little);
    Attach(payload);
    EXPECT_EQ(Value("ChunkOne"), 5);
}

TEST_F(NodeMapChunkParser, aChunkThatTheNextImageLacksIsNotAvailable)
{
    const Bytes first = Payload({{0xA1, 5}, {0xA2, 6}});
    const Bytes second = Payload({{0xA2, 7}});
    Attach(first);
    Attach(second);
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
    EXPECT_EQ(Value("ChunkTwo"), 7);
}

TEST_F(NodeMapChunkParser, chunksThatNobodyKnowsAreLeftOut)
{
    const Bytes payload = Payload({{0x77, 1}, {0xA1, 5}});
    Attach(payload);
    EXPECT_EQ(Value("ChunkOne"), 5);
}

TEST_F(NodeMapChunkParser, theChunkOffsetIsTheSizeOfTheImage)
{
    const Bytes payload = Payload({{0xA1, 5}});
    std::size_t offset = 0;
    m_pParser->AttachBuffer(payload.data(), static_cast<std::int64_t>(payload.size()), 1, &offset);
    EXPECT_EQ(offset, 16U);
}

TEST_F(NodeMapChunkParser, unreadableDataLeaveNothingOfTheLastImageAndAreLoggedWithTheCamera)
{
    const Bytes good = Payload({{0xA1, 5}});
    const Bytes bad = Lying();
    Attach(good);
    std::size_t offset = 1;
    m_pParser->AttachBuffer(bad.data(), static_cast<std::int64_t>(bad.size()), 0, &offset);
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
    EXPECT_EQ(offset, 0U);
    ASSERT_EQ(m_log.size(), 1U);
    EXPECT_EQ(m_log[0].level, ELogLevel::Warning);
    EXPECT_THAT(m_log[0].text, HasSubstr("'C1'"));
    EXPECT_THAT(m_log[0].text, HasSubstr("claims"));
    Attach(good);
    EXPECT_EQ(Value("ChunkOne"), 5);
}

TEST_F(NodeMapChunkParser, onlyTheFirstUnreadableImageOfAGrabIsAWarning)
{
    const Bytes bad = Lying();
    Attach(bad);
    Attach(bad);
    m_pParser->DetachBuffer(); // the next grab
    Attach(bad);
    ASSERT_EQ(m_log.size(), 3U);
    EXPECT_EQ(m_log[0].level, ELogLevel::Warning);
    EXPECT_EQ(m_log[1].level, ELogLevel::Debug);
    EXPECT_EQ(m_log[2].level, ELogLevel::Warning);
}

TEST_F(NodeMapChunkParser, aReceiverThatThrowsIsLoggedAndCostsNobodyTheValues)
{
    const Bytes payload = Payload({{0xA1, 5}, {0xA2, 6}});
    int others = 0;
    m_map->GetNode("ChunkOne")->RegisterCallback([](GenApi::INode*) { throw std::runtime_error("receiver"); });
    m_map->GetNode("ChunkTwo")->RegisterCallback([&](GenApi::INode*) { ++others; });
    std::size_t offset = 0;
    m_pParser->AttachBuffer(payload.data(), static_cast<std::int64_t>(payload.size()), 0, &offset);
    EXPECT_EQ(Value("ChunkOne"), 5);
    EXPECT_EQ(Value("ChunkTwo"), 6);
    EXPECT_EQ(offset, 16U);
    EXPECT_EQ(others, 1);
    Attach(payload);
    m_pParser->DetachBuffer();
    EXPECT_EQ(others, 3);
    ASSERT_EQ(m_log.size(), 3U);
    EXPECT_EQ(m_log[0].level, ELogLevel::Warning);
    EXPECT_THAT(m_log[0].text, HasSubstr("receiver"));
    EXPECT_EQ(m_log[1].level, ELogLevel::Debug);
}

TEST_F(NodeMapChunkParser, noBufferIsRefused)
{
    const Bytes good = Payload({{0xA1, 5}});
    Attach(good);
    EXPECT_THROW(m_pParser->AttachBuffer(nullptr, 8), GenICam::InvalidArgumentException);
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
    EXPECT_THROW(m_pParser->AttachBuffer(good.data(), -1), GenICam::InvalidArgumentException);
}

TEST_F(NodeMapChunkParser, anEmptyPayloadHasNoValues)
{
    const Bytes good = Payload({{0xA1, 5}});
    Attach(good);
    m_pParser->AttachBuffer(good.data(), 0);
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
}

TEST_F(NodeMapChunkParser, nothingIsAvailableAfterDetaching)
{
    const Bytes payload = Payload({{0xA1, 5}});
    Attach(payload);
    m_pParser->DetachBuffer();
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
    m_pParser->DetachBuffer();
}

TEST_F(NodeMapChunkParser, destroyingDetaches)
{
    const Bytes payload = Payload({{0xA1, 5}});
    Attach(payload);
    m_parsers.Destroy(m_pParser);
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
}

TEST_F(NodeMapChunkParser, afterTheNodeMapWentAttachingIsRefusedAndDetachingHarmless)
{
    const Bytes payload = Payload({{0xA1, 5}});
    Attach(payload);
    m_parsers.Disconnect();
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
    m_map.reset();
    EXPECT_THROW(Attach(payload), GenICam::LogicalErrorException);
    m_pParser->DetachBuffer();
    m_parsers.Destroy(m_pParser);
}

TEST_F(NodeMapChunkParser, changesAreReportedOncePerImage)
{
    int fired = 0;
    m_map->GetNode("ChunkOne")->RegisterCallback([&](GenApi::INode*) { ++fired; });
    const Bytes first = Payload({{0xA1, 5}, {0xA2, 6}});
    const Bytes second = Payload({{0xA1, 8}, {0xA2, 6}});
    const Bytes without = Payload({{0xA2, 6}});
    Attach(first);
    EXPECT_EQ(fired, 1);
    Attach(second);
    EXPECT_EQ(fired, 2);
    Attach(without);
    EXPECT_EQ(fired, 3);
    Attach(without);
    EXPECT_EQ(fired, 3); // was not there before either
}

TEST_F(NodeMapChunkParser, aReceiverThatThrowsAtTheEndIsLogged)
{
    const Bytes payload = Payload({{0xA1, 5}});
    Attach(payload);
    m_map->GetNode("ChunkOne")->RegisterCallback([](GenApi::INode*) { throw std::runtime_error("receiver"); });
    m_parsers.Disconnect();
    ASSERT_EQ(m_log.size(), 1U);
    EXPECT_THAT(m_log[0].text, HasSubstr("receiver"));
    EXPECT_EQ(Mode("ChunkOne"), EAccessMode::NA);
}

TEST_F(NodeMapChunkParser, thereIsNoneWithoutNodeMapOrChunks)
{
    EXPECT_EQ(m_parsers.Create(nullptr, EByteOrder::Big, "C"), nullptr);
    const auto plain = Make("<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" "
                            "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
                            "MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\">"
                            "<Port Name=\"Device\"/></RegisterDescription>");
    EXPECT_EQ(m_parsers.Create(plain.get(), EByteOrder::Big, "C"), nullptr);
}

TEST_F(NodeMapChunkParser, onlyOnesOwnCanBeDestroyed)
{
    CChunkParsers others;
    IChunkParser* const pOther = others.Create(m_map.get(), EByteOrder::Big, "C");
    EXPECT_THROW(m_parsers.Destroy(pOther), GenICam::InvalidArgumentException);
    m_parsers.Destroy(nullptr);
}
