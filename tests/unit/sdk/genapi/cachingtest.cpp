// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/sdk/genapi/nodemapfixture.h"

#include <gmock/gmock.h>

#include <future>

namespace GenApi
{
namespace
{

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class Caching : public CNodeMapTest
{
protected:
    void CountReads(int address)
    {
        m_port.SetReadHook(address, 4, [this](std::int64_t, std::int64_t) { ++m_reads; });
    }
    void Record(const std::string& name)
    {
        Get<INode>(name).RegisterCallback([this](INode* node) { m_fired.push_back(node->GetName().str()); });
    }

    int m_reads = 0;
    std::vector<std::string> m_fired;
};

TEST_F(Caching, aCachedValueIsReadFromTheDeviceOnce)
{
    Load("<Integer Name=\"A\"><pValue>R</pValue></Integer>" + IntReg("R", 0));
    CountReads(0);
    EXPECT_FALSE(Get<IValue>("A").IsValueCacheValid());
    Integer("A").GetValue();
    Integer("A").GetValue();
    EXPECT_EQ(m_reads, 1);
    EXPECT_TRUE(Get<IValue>("A").IsValueCacheValid());
    Integer("A").GetValue(false, true);
    EXPECT_EQ(m_reads, 2);
}

TEST_F(Caching, writeThroughKeepsTheWrittenValue)
{
    Load(IntReg("R", 0, "<Cachable>WriteThrough</Cachable>"));
    CountReads(0);
    Integer("R").SetValue(5);
    EXPECT_EQ(Integer("R").GetValue(), 5);
    EXPECT_EQ(m_reads, 0);
}

TEST_F(Caching, writeAroundReadsBackAfterAWrite)
{
    Load(IntReg("R", 0, "<Cachable>WriteAround</Cachable>"));
    CountReads(0);
    Integer("R").SetValue(5);
    m_port.Poke(0, 6, 4);
    EXPECT_EQ(Integer("R").GetValue(), 6);
    EXPECT_EQ(Integer("R").GetValue(), 6);
    EXPECT_EQ(m_reads, 1);
}

TEST_F(Caching, noCacheAlwaysReadsAlsoThroughFormulas)
{
    Load("<IntSwissKnife Name=\"K\"><pVariable Name=\"X\">R</pVariable><Formula>X * 2</Formula></IntSwissKnife>" +
         IntReg("R", 0, "<Cachable>NoCache</Cachable>"));
    EXPECT_FALSE(Get<INode>("R").IsCachable());
    EXPECT_EQ(Get<INode>("K").GetCachingMode(), ECachingMode::NoCache);
    m_port.Poke(0, 4, 4);
    EXPECT_EQ(Integer("K").GetValue(), 8);
    m_port.Poke(0, 5, 4);
    EXPECT_EQ(Integer("K").GetValue(), 10);
}

TEST_F(Caching, aFailedWriteForgetsTheCache)
{
    Load(IntReg("R", 0));
    Integer("R").SetValue(1);
    m_port.SetWriteHook(0, 4, [](std::int64_t, std::int64_t) { GENICAM_THROW(TimeoutException, "slow"); });
    EXPECT_THROW(Integer("R").SetValue(2), GenICam::TimeoutException);
    EXPECT_EQ(Integer("R").GetValue(), 1);
}

TEST_F(Caching, whatAPortThrowsBecomesARuntimeErrorWithTheNodesName)
{
    Load(IntReg("R", 0));
    m_port.SetReadHook(0, 4, [](std::int64_t, std::int64_t) { throw std::logic_error("broken"); });
    try
    {
        Integer("R").GetValue();
        FAIL() << "no exception";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_THAT(e.GetDescription(), ::testing::AllOf(::testing::HasSubstr("'R'"), ::testing::HasSubstr("broken")));
    }
}

TEST_F(Caching, aSelectorChangeInvalidatesSelectedFeaturesDownToTheirRegisters)
{
    Load("<Integer Name=\"Selector\"><pValue>S</pValue><pSelected>Gain</pSelected></Integer>"
         "<Integer Name=\"Gain\"><pValue>G</pValue></Integer>" +
         IntReg("S", 0) + IntReg("G", 4));
    m_port.SetWriteHook(0, 4, [this](std::int64_t, std::int64_t) { m_port.Poke(4, m_port.Peek(0, 4) * 100, 4); });
    Integer("Selector").SetValue(1);
    EXPECT_EQ(Integer("Gain").GetValue(), 100);
    Integer("Selector").SetValue(2);
    EXPECT_EQ(Integer("Gain").GetValue(), 200);
}

TEST_F(Caching, aSelectorInTheAddressChoosesTheRegister)
{
    Load("<Integer Name=\"Selector\"><Value>0</Value><pSelected>G</pSelected></Integer>"
         "<IntReg Name=\"G\"><Address>0</Address><pIndex Offset=\"8\">Selector</pIndex><Length>4</Length>"
         "<AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>");
    Integer("G").SetValue(1);
    Integer("Selector").SetValue(1);
    EXPECT_EQ(Integer("G").GetValue(), 0);
    Integer("G").SetValue(2);
    EXPECT_EQ(m_port.Peek(8, 4), 2U);
    Integer("Selector").SetValue(0);
    EXPECT_EQ(Integer("G").GetValue(), 1);
}

TEST_F(Caching, anInvalidatorMakesANodeBeReadAgain)
{
    Load("<Integer Name=\"A\"><pInvalidator>T</pInvalidator><pValue>R</pValue></Integer>"
         "<Integer Name=\"T\"><Value>0</Value></Integer>" +
         IntReg("R", 0));
    EXPECT_EQ(Integer("A").GetValue(), 0);
    m_port.Poke(0, 7, 4);
    EXPECT_EQ(Integer("A").GetValue(), 0);
    Integer("T").SetValue(1);
    EXPECT_EQ(Integer("A").GetValue(), 7);
}

TEST_F(Caching, registersOverTheSameBytesSeeEachOthersWrites)
{
    Load(IntReg("Whole", 0) + "<MaskedIntReg Name=\"Part\">" + At(0, 4) + "<LSB>8</LSB><MSB>15</MSB></MaskedIntReg>");
    EXPECT_EQ(Integer("Part").GetValue(), 0);
    Integer("Whole").SetValue(0xABCD);
    EXPECT_EQ(Integer("Part").GetValue(), 0xAB);
    Integer("Part").SetValue(1);
    EXPECT_EQ(Integer("Whole").GetValue(), 0x1CD);
}

TEST_F(Caching, invalidateNodesForgetsEverything)
{
    Load("<Integer Name=\"A\"><pValue>R</pValue></Integer>" + IntReg("R", 0));
    Record("A");
    Integer("A").GetValue();
    m_port.Poke(0, 3, 4);
    m_map->InvalidateNodes();
    EXPECT_THAT(m_fired, ElementsAre("A"));
    EXPECT_EQ(Integer("A").GetValue(), 3);
}

TEST_F(Caching, invalidatingAFeatureReachesItsRegister)
{
    Load("<Integer Name=\"A\"><pValue>B</pValue></Integer><Integer Name=\"B\"><pValue>R</pValue></Integer>" +
         IntReg("R", 0));
    Integer("A").GetValue();
    m_port.Poke(0, 3, 4);
    Get<INode>("A").InvalidateNode();
    EXPECT_EQ(Integer("A").GetValue(), 3);
}

TEST_F(Caching, pollingInvalidatesWhatIsDueUnlessBlocked)
{
    Load("<Integer Name=\"A\"><PollingTime>100</PollingTime><pBlockPolling>Block</pBlockPolling><pValue>R</pValue>"
         "</Integer><Integer Name=\"Block\"><Value>0</Value></Integer>" +
         IntReg("R", 0));
    Record("A");
    Integer("A").GetValue();
    m_port.Poke(0, 3, 4);
    m_map->Poll(60);
    EXPECT_EQ(Integer("A").GetValue(), 0);
    m_map->Poll(60);
    EXPECT_EQ(Integer("A").GetValue(), 3);
    EXPECT_THAT(m_fired, ElementsAre("A"));
    Integer("Block").SetValue(1);
    m_fired.clear();
    m_map->Poll(1000);
    EXPECT_TRUE(m_fired.empty());
}

TEST_F(Caching, pollingNoticesThatACommandIsDone)
{
    Load("<Command Name=\"C\"><PollingTime>10</PollingTime><pValue>R</pValue><CommandValue>1</CommandValue></Command>" +
         IntReg("R", 0, "<Cachable>NoCache</Cachable>"));
    Get<ICommand>("C").Execute();
    Record("C");
    m_map->Poll(10);
    EXPECT_TRUE(m_fired.empty());
    m_port.Poke(0, 0, 4);
    m_map->Poll(10);
    EXPECT_THAT(m_fired, ElementsAre("C"));
}

TEST_F(Caching, callbacksFireOncePerNodeAndChangeForAllThatDepend)
{
    Load("<Integer Name=\"A\"><pValue>R</pValue></Integer><Integer Name=\"Other\"><Value>1</Value></Integer>"
         "<IntSwissKnife Name=\"K\"><pVariable Name=\"X\">A</pVariable><pVariable Name=\"Y\">R</pVariable>"
         "<Formula>X + Y</Formula></IntSwissKnife>"
         "<Integer Name=\"Limited\"><Value>1</Value><pMax>K</pMax></Integer>" +
         IntReg("R", 0));
    for (const char* name : {"A", "Other", "K", "Limited", "R"})
    {
        Record(name);
    }
    Integer("A").SetValue(2);
    EXPECT_THAT(m_fired, UnorderedElementsAre("A", "K", "Limited", "R"));
}

TEST_F(Caching, callbacksRunWithoutTheLockSoThatOthersMayUseTheNodeMap)
{
    Load("<Integer Name=\"A\"><Value>1</Value></Integer>");
    std::int64_t seen = 0;
    Get<INode>("A").RegisterCallback(
        [&](INode*) { seen = std::async(std::launch::async, [this] { return Integer("A").GetValue(); }).get(); });
    Integer("A").SetValue(5);
    EXPECT_EQ(seen, 5);
}

TEST_F(Caching, aCallbackMayChangeOtherNodesAndRemoveItself)
{
    Load("<Integer Name=\"A\"><Value>1</Value></Integer><Integer Name=\"B\"><Value>1</Value></Integer>");
    CallbackHandle handle = 0;
    handle = Get<INode>("A").RegisterCallback(
        [&](INode* node)
        {
            Integer("B").SetValue(Integer("A").GetValue() + 1);
            EXPECT_TRUE(node->DeregisterCallback(handle));
        });
    Record("B");
    Integer("A").SetValue(5);
    Integer("A").SetValue(9);
    EXPECT_EQ(Integer("B").GetValue(), 6);
    EXPECT_THAT(m_fired, ElementsAre("B"));
    EXPECT_FALSE(Get<INode>("A").DeregisterCallback(handle));
}

TEST_F(Caching, aCallbackThatThrowsDoesNotKeepOthersFromRunning)
{
    Load("<Integer Name=\"A\"><Value>1</Value></Integer>");
    Get<INode>("A").RegisterCallback([](INode*) { GENICAM_THROW(RuntimeException, "first"); });
    Record("A");
    EXPECT_THROW(Integer("A").SetValue(5), GenICam::RuntimeException);
    EXPECT_EQ(Integer("A").GetValue(), 5);
    EXPECT_THAT(m_fired, ElementsAre("A"));
}

TEST_F(Caching, emptyCallbacksAreNotRegistered)
{
    Load("<Integer Name=\"A\"><Value>1</Value></Integer>");
    EXPECT_EQ(Get<INode>("A").RegisterCallback({}), 0U);
}

TEST_F(Caching, aWriteHookMaySetNodesOfTheSameMap)
{
    Load("<Integer Name=\"A\"><pValue>R</pValue></Integer><Integer Name=\"B\"><Value>0</Value></Integer>" +
         IntReg("R", 0));
    Record("A");
    Record("B");
    m_port.SetWriteHook(0, 4, [this](std::int64_t, std::int64_t) { Integer("B").SetValue(7); });
    Integer("A").SetValue(1);
    EXPECT_EQ(Integer("B").GetValue(), 7);
    EXPECT_THAT(m_fired, UnorderedElementsAre("A", "B"));
}

TEST_F(Caching, aSelfClearingEntryIsReadBack)
{
    Load("<Enumeration Name=\"E\"><EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry><EnumEntry Name=\"Once\">"
         "<Value>1</Value><IsSelfClearing>Yes</IsSelfClearing></EnumEntry><pValue>R</pValue></Enumeration>" +
         IntReg("R", 0));
    m_port.SetWriteHook(0, 4, [this](std::int64_t, std::int64_t) { m_port.Poke(0, 0, 4); });
    Get<IEnumeration>("E").FromString("Once");
    EXPECT_EQ(Get<IEnumeration>("E").ToString(), "Off");
}

TEST_F(Caching, chunkNodesShowTheAttachedBytesAndAreGoneAfterwards)
{
    Load("<IntReg Name=\"R\"><Address>2</Address><Length>2</Length><pPort>Chunk</pPort></IntReg>"
         "<Port Name=\"Chunk\"><ChunkID>00AB</ChunkID></Port>");
    Record("R");
    EXPECT_EQ(Mode("R"), EAccessMode::NA);
    const std::uint8_t first[] = {0, 0, 1, 2};
    m_map->AttachChunk("ab", first, sizeof(first), EEndianness::Little);
    EXPECT_EQ(Integer("R").GetValue(), 0x0201);
    EXPECT_EQ(Mode("R"), EAccessMode::RO);
    const std::uint8_t second[] = {0, 0, 9};
    m_map->AttachChunk("0xAB", second, sizeof(second), EEndianness::Little);
    EXPECT_THROW(Integer("R").GetValue(), GenICam::AccessException);
    m_map->AttachChunk("CD", first, sizeof(first), EEndianness::Little);
    m_map->DetachChunks();
    EXPECT_EQ(Mode("R"), EAccessMode::NA);
    EXPECT_EQ(m_fired.size(), 3U);
    EXPECT_THROW(m_map->AttachChunk("no", first, 1, EEndianness::Little), GenICam::InvalidArgumentException);
}

TEST_F(Caching, chunksOfOneBufferReplaceThoseOfTheLast)
{
    Load("<IntReg Name=\"A\"><Address>0</Address><Length>1</Length><pPort>PortA</pPort></IntReg>"
         "<IntReg Name=\"B\"><Address>0</Address><Length>1</Length><pPort>PortB</pPort></IntReg>"
         "<Port Name=\"PortA\"><ChunkID>A</ChunkID></Port><Port Name=\"PortB\"><ChunkID>B</ChunkID></Port>");
    EXPECT_TRUE(m_map->HasChunks());
    const std::uint8_t bytes[] = {1, 2, 3};
    const SChunkData both[] = {{0xA, bytes, 1}, {0xB, bytes + 1, 1}, {0xA, bytes + 2, 1}, {0xF, bytes, 3}};
    m_map->AttachChunks(both, 4, EEndianness::Big);
    EXPECT_EQ(Integer("A").GetValue(), 1); // the first of two
    EXPECT_EQ(Integer("B").GetValue(), 2);
    const SChunkData one[] = {{0xB, bytes + 2, 1}};
    m_map->AttachChunks(one, 1, EEndianness::Big);
    EXPECT_EQ(Mode("A"), EAccessMode::NA);
    EXPECT_EQ(Integer("B").GetValue(), 3);
    m_map->AttachChunks(nullptr, 0, EEndianness::Big);
    EXPECT_EQ(Mode("B"), EAccessMode::NA);
}

TEST_F(Caching, chunksOfOneBufferFireOnceWhenAllAreThere)
{
    Load("<IntReg Name=\"A\"><Address>0</Address><Length>1</Length><pPort>PortA</pPort></IntReg>"
         "<IntReg Name=\"B\"><Address>0</Address><Length>1</Length><pPort>PortB</pPort></IntReg>"
         "<IntReg Name=\"Absent\"><Address>0</Address><Length>1</Length><pPort>PortC</pPort></IntReg>"
         "<IntSwissKnife Name=\"Sum\"><pVariable Name=\"X\">A</pVariable><pVariable Name=\"Y\">B</pVariable>"
         "<Formula>X + Y</Formula></IntSwissKnife>"
         "<Port Name=\"PortA\"><ChunkID>A</ChunkID></Port><Port Name=\"PortB\"><ChunkID>B</ChunkID></Port>"
         "<Port Name=\"PortC\"><ChunkID>C</ChunkID></Port>");
    Record("Sum");
    Record("Absent");
    std::int64_t seen = 0;
    Get<INode>("Sum").RegisterCallback([&](INode*) { seen = Integer("Sum").GetValue(); });
    const std::uint8_t bytes[] = {1, 2};
    const SChunkData both[] = {{0xA, bytes, 1}, {0xB, bytes + 1, 1}};
    m_map->AttachChunks(both, 2, EEndianness::Big);
    EXPECT_THAT(m_fired, UnorderedElementsAre("Sum"));
    EXPECT_EQ(seen, 3);
}

TEST_F(Caching, aDescriptionWithoutChunkPortsHasNoChunks)
{
    Load(IntReg("R", 0));
    EXPECT_FALSE(m_map->HasChunks());
    const std::uint8_t byte = 1;
    const SChunkData chunk{1, &byte, 1};
    m_map->AttachChunks(&chunk, 1, EEndianness::Big);
}

TEST_F(Caching, eventNodesShowACopyOfTheEventsBytesAndFire)
{
    Load("<Integer Name=\"Line\"><pValue>R</pValue></Integer>"
         "<IntReg Name=\"R\"><Address>0</Address><Length>1</Length><pPort>Event</pPort></IntReg>"
         "<Integer Name=\"Named\"><EventID>9002</EventID><Value>1</Value></Integer>"
         "<Port Name=\"Event\"><EventID>9001</EventID></Port>");
    Record("Line");
    Record("Named");
    {
        std::vector<std::uint8_t> data{42};
        m_map->AttachEvent("9001", data.data(), data.size());
    }
    EXPECT_EQ(Integer("Line").GetValue(), 42);
    EXPECT_THAT(m_fired, ElementsAre("Line"));
    m_map->AttachEvent("0x9002", nullptr, 0);
    EXPECT_THAT(m_fired, ElementsAre("Line", "Named"));
}

} // namespace
} // namespace GenApi
