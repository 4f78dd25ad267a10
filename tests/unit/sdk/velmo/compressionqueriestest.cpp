// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"
#include "velmo/imagedecompressor.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

namespace
{

using Velmo::CImageDecompressor;

constexpr int ModeAddress = 0;
constexpr int LengthAddress = 4;
constexpr int SizeAddress = 8;
constexpr int DescriptorAddress = 16;
constexpr int HashAddress = 128;

std::string At(int address, const std::string& length)
{
    return "<Address>" + std::to_string(address) + "</Address>" + length +
           "<AccessMode>RO</AccessMode><pPort>Device</pPort>";
}

std::string Integer(const std::string& name, int address)
{
    return "<IntReg Name=\"" + name + "\">" + At(address, "<Length>4</Length>") +
           "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>";
}

std::string AllFeatures()
{
    return "<Enumeration Name=\"ImageCompressionMode\">"
           "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry>"
           "<EnumEntry Name=\"Lossless\"><Value>1</Value></EnumEntry>"
           "<EnumEntry Name=\"FixedRatio\"><Value>2</Value></EnumEntry>"
           "<EnumEntry Name=\"Other\"><Value>3</Value></EnumEntry>"
           "<pValue>ModeReg</pValue></Enumeration>" +
           Integer("ModeReg", ModeAddress) + Integer("LengthReg", LengthAddress) +
           Integer("ImageCompressionDecodedSize", SizeAddress) + "<Register Name=\"ImageCompressionDescriptor\">" +
           At(DescriptorAddress, "<pLength>LengthReg</pLength>") +
           "</Register><Register Name=\"ImageCompressionDescriptorHash\">" + At(HashAddress, "<Length>16</Length>") +
           "</Register>";
}

class CompressionQueries : public ::testing::Test
{
protected:
    void Load(const std::string& nodes)
    {
        const std::string xml =
            "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" SchemaMajorVersion=\"1\" "
            "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" "
            "SubMinorVersion=\"0\">" +
            nodes + "<Port Name=\"Device\"/></RegisterDescription>";
        m_map = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap("Tested");
        m_map->Connect(&m_port);
    }

    void SetUp() override
    {
        Load(AllFeatures());
        m_port.Poke(LengthAddress, 5, 4);
        m_port.Poke(DescriptorAddress, 0x0504030201, 8);
        m_port.Poke(HashAddress, 0x1122334455667788, 8);
        m_port.Poke(SizeAddress, 4096, 4);
    }

    GenApi::CMemoryPort m_port{256};
    std::unique_ptr<GenApi::INodeMap> m_map;
};

TEST_F(CompressionQueries, modeIsTheEntrysValueAlsoWhenThisSdkDoesNotKnowIt)
{
    for (const int value : {0, 1, 2, 3})
    {
        m_port.Poke(ModeAddress, static_cast<std::uint64_t>(value), 4);
        EXPECT_EQ(CImageDecompressor::GetCompressionMode(*m_map), value);
    }
}

TEST_F(CompressionQueries, modeOfNoEntryIsPassedOn)
{
    m_port.Poke(ModeAddress, 77, 4);
    EXPECT_EQ(static_cast<int>(CImageDecompressor::GetCompressionMode(*m_map)), 77);
}

TEST_F(CompressionQueries, modeBeyondAnIntIsNoneThatThisSdkKnows)
{
    for (const auto* value : {"4294967296", "4294967297", "-4294967294"}) // cut off to 32 bits: 0, 1 and 2
    {
        Load(std::string("<Enumeration Name=\"ImageCompressionMode\"><EnumEntry Name=\"Strange\"><Value>") + value +
             "</Value></EnumEntry><Value>" + value + "</Value></Enumeration>");
        const int mode = CImageDecompressor::GetCompressionMode(*m_map);
        EXPECT_EQ(mode, *value == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max()) << value;
    }
}

TEST_F(CompressionQueries, withoutABufferOnlyTheSizeIsTold)
{
    std::size_t bytes = 0;
    CImageDecompressor::GetCompressionDescriptor(nullptr, &bytes, *m_map);
    EXPECT_EQ(bytes, 5U);
    CImageDecompressor::GetCompressionDescriptorHash(nullptr, &bytes, *m_map);
    EXPECT_EQ(bytes, 16U);
}

TEST_F(CompressionQueries, descriptorIsCopiedAndItsSizeTold)
{
    std::array<std::uint8_t, 8> buffer{9, 9, 9, 9, 9, 9, 9, 9};
    std::size_t bytes = buffer.size();
    CImageDecompressor::GetCompressionDescriptor(buffer.data(), &bytes, *m_map);
    EXPECT_EQ(bytes, 5U);
    EXPECT_EQ(buffer, (std::array<std::uint8_t, 8>{1, 2, 3, 4, 5, 9, 9, 9}));
}

TEST_F(CompressionQueries, hashIsCopied)
{
    std::array<std::uint8_t, 16> buffer{};
    std::size_t bytes = buffer.size();
    CImageDecompressor::GetCompressionDescriptorHash(buffer.data(), &bytes, *m_map);
    EXPECT_EQ(bytes, 16U);
    EXPECT_EQ(buffer[0], 0x88);
    EXPECT_EQ(buffer[7], 0x11);
}

TEST_F(CompressionQueries, aBufferThatIsTooSmallIsRefusedAndTheSizeNeededTold)
{
    std::array<std::uint8_t, 4> buffer{9, 9, 9, 9};
    std::size_t bytes = buffer.size();
    EXPECT_THROW(CImageDecompressor::GetCompressionDescriptor(buffer.data(), &bytes, *m_map),
                 GenICam::OutOfRangeException);
    EXPECT_EQ(bytes, 5U);
    EXPECT_EQ(buffer, (std::array<std::uint8_t, 4>{9, 9, 9, 9}));
    EXPECT_THROW(CImageDecompressor::GetCompressionDescriptor(buffer.data(), nullptr, *m_map),
                 GenICam::InvalidArgumentException);
}

TEST_F(CompressionQueries, aLengthOfZeroIsToldAndNothingRead)
{
    m_port.Poke(LengthAddress, 0, 4);
    std::array<std::uint8_t, 1> buffer{9};
    std::size_t bytes = 1;
    CImageDecompressor::GetCompressionDescriptor(buffer.data(), &bytes, *m_map);
    EXPECT_EQ(bytes, 0U);
    EXPECT_EQ(buffer[0], 9);
}

TEST_F(CompressionQueries, theDecodedSizeIsReadFromTheCamera)
{
    EXPECT_EQ(CImageDecompressor::GetImageSizeForDecompression(*m_map), 4096U);
    m_port.Poke(SizeAddress, 0, 4);
    EXPECT_EQ(CImageDecompressor::GetImageSizeForDecompression(*m_map), 0U);
}

TEST_F(CompressionQueries, aCameraWithoutTheFeaturesIsALogicalError)
{
    Load("");
    std::size_t bytes = 0;
    EXPECT_THROW(CImageDecompressor::GetCompressionMode(*m_map), GenICam::LogicalErrorException);
    EXPECT_THROW(CImageDecompressor::GetCompressionDescriptor(nullptr, &bytes, *m_map), GenICam::LogicalErrorException);
    EXPECT_THROW(CImageDecompressor::GetCompressionDescriptorHash(nullptr, &bytes, *m_map),
                 GenICam::LogicalErrorException);
    EXPECT_THROW(CImageDecompressor::GetImageSizeForDecompression(*m_map), GenICam::LogicalErrorException);
}

TEST_F(CompressionQueries, aFeatureOfAnotherKindIsALogicalErrorThatNamesIt)
{
    Load(Integer("ImageCompressionDescriptor", 0));
    std::size_t bytes = 0;
    try
    {
        CImageDecompressor::GetImageSizeForDecompression(*m_map);
        FAIL() << "no exception";
    }
    catch (const GenICam::LogicalErrorException& error)
    {
        EXPECT_NE(std::string(error.GetDescription()).find("ImageCompressionDecodedSize"), std::string::npos);
    }
    EXPECT_NO_THROW(CImageDecompressor::GetCompressionDescriptor(nullptr, &bytes, *m_map)); // an IntReg is a register
    Load("<Category Name=\"ImageCompressionMode\"/>");
    EXPECT_THROW(CImageDecompressor::GetCompressionMode(*m_map), GenICam::LogicalErrorException);
}

TEST_F(CompressionQueries, aFeatureThatCannotBeReadNowIsAnAccessError)
{
    m_map->Disconnect(&m_port);
    std::array<std::uint8_t, 16> buffer{};
    std::size_t bytes = buffer.size();
    EXPECT_THROW(CImageDecompressor::GetCompressionMode(*m_map), GenICam::AccessException);
    EXPECT_THROW(CImageDecompressor::GetCompressionDescriptorHash(buffer.data(), &bytes, *m_map),
                 GenICam::AccessException);
}

} // namespace
