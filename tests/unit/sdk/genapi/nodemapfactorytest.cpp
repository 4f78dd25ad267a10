// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/sdk/genapi/nodemapfixture.h"

#include <gmock/gmock.h>
#include <zip.h>

#include <cstdio>
#include <fstream>
#include <thread>
#include <vector>

namespace GenApi
{
namespace
{

using ::testing::HasSubstr;

/** A ZIP archive in memory that holds one file. */
std::string Zip(const std::string& name, const std::string& contents)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(target);
    zip_t* const archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
    zip_file_add(archive, name.c_str(), zip_source_buffer(archive, contents.data(), contents.size(), 0), 0);
    zip_close(archive);
    zip_source_open(target);
    zip_source_seek(target, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(zip_source_tell(target)), '\0');
    zip_source_seek(target, 0, SEEK_SET);
    zip_source_read(target, bytes.data(), bytes.size());
    zip_source_close(target);
    zip_source_free(target);
    zip_error_fini(&error);
    return bytes;
}

class NodeMapFactory : public CNodeMapTest
{
protected:
    static CNodeMapFactory Make(const std::string& bytes)
    {
        return CNodeMapFactory::FromData(bytes.data(), bytes.size());
    }
    static std::string FailureOf(const std::string& bytes)
    {
        try
        {
            Make(bytes);
        }
        catch (const GenICam::RuntimeException& e)
        {
            return e.GetDescription();
        }
        return {};
    }
    const std::string m_xml = Describe("<Integer Name=\"A\"><Value>5</Value></Integer>");
};

TEST_F(NodeMapFactory, readsAZippedDescription)
{
    const auto map = Make(Zip("camera.XML", m_xml)).CreateNodeMap();
    EXPECT_EQ(CIntegerPtr(map->GetNode("A"))->GetValue(), 5);
}

TEST_F(NodeMapFactory, refusesAnArchiveWithoutXml)
{
    EXPECT_THAT(FailureOf(Zip("readme.txt", m_xml)), HasSubstr("no XML file"));
}

TEST_F(NodeMapFactory, refusesATruncatedArchive)
{
    const std::string bytes = Zip("camera.xml", m_xml);
    EXPECT_THAT(FailureOf(bytes.substr(0, bytes.size() / 2)), HasSubstr("zipped"));
}

TEST_F(NodeMapFactory, refusesAnArchiveThatInflatesBeyondAnySense)
{
    const std::string bomb = Zip("camera.xml", std::string(std::size_t{65} << 20, ' '));
    ASSERT_LT(bomb.size(), std::size_t{1} << 20);
    EXPECT_THAT(FailureOf(bomb), HasSubstr("larger than"));
}

TEST_F(NodeMapFactory, refusesADocumentType)
{
    EXPECT_THAT(FailureOf("<?xml version=\"1.0\"?><!DOCTYPE x [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;&a;\">]>"
                          "<RegisterDescription>&b;</RegisterDescription>"),
                HasSubstr("document type"));
}

TEST_F(NodeMapFactory, refusesBrokenXmlWithThePlace)
{
    EXPECT_THAT(FailureOf("<RegisterDescription><Integer Name=\"A\">"), HasSubstr("offset"));
}

TEST_F(NodeMapFactory, refusesXmlThatIsNoDescription)
{
    EXPECT_THAT(FailureOf("<html/>"), HasSubstr("RegisterDescription"));
}

TEST_F(NodeMapFactory, refusesNoData)
{
    EXPECT_THROW(CNodeMapFactory::FromData(nullptr, 0), GenICam::InvalidArgumentException);
    EXPECT_THROW(CNodeMapFactory::FromData("", 0), GenICam::InvalidArgumentException);
}

TEST_F(NodeMapFactory, readsAFileAndReportsAMissingOne)
{
    const std::string name = ::testing::TempDir() + "genapi_nodemapfactorytest.xml";
    std::ofstream(name) << m_xml;
    const auto map = CNodeMapFactory::FromFile(name.c_str()).CreateNodeMap();
    EXPECT_EQ(CIntegerPtr(map->GetNode("A"))->GetValue(), 5);
    std::remove(name.c_str());
    EXPECT_THROW(CNodeMapFactory::FromFile(name.c_str()), GenICam::FileNotFoundException);
}

TEST_F(NodeMapFactory, keepsEachDescriptionOnceUntilTheCacheIsCleared)
{
    CNodeMapFactory::ClearCache();
    EXPECT_EQ(CNodeMapFactory::CacheSize(), 0U);
    const CNodeMapFactory first = Make(m_xml);
    Make(m_xml);
    EXPECT_EQ(CNodeMapFactory::CacheSize(), 1U);
    Make(Describe(""));
    EXPECT_EQ(CNodeMapFactory::CacheSize(), 2U);
    CNodeMapFactory::ClearCache();
    EXPECT_EQ(CNodeMapFactory::CacheSize(), 0U);
    EXPECT_EQ(CIntegerPtr(first.CreateNodeMap()->GetNode("A"))->GetValue(), 5);
}

TEST_F(NodeMapFactory, aRefusedDescriptionIsNotKept)
{
    CNodeMapFactory::ClearCache();
    EXPECT_THROW(Make("<html/>"), GenICam::RuntimeException);
    EXPECT_EQ(CNodeMapFactory::CacheSize(), 0U);
}

TEST_F(NodeMapFactory, nodeMapsOfOneDescriptionAreIndependent)
{
    const CNodeMapFactory factory = Make(m_xml);
    const auto first = factory.CreateNodeMap();
    const auto second = factory.CreateNodeMap();
    CIntegerPtr(first->GetNode("A"))->SetValue(9);
    EXPECT_EQ(CIntegerPtr(second->GetNode("A"))->GetValue(), 5);
}

TEST_F(NodeMapFactory, manyThreadsMayLoadTheSameDescription)
{
    CNodeMapFactory::ClearCache();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
    {
        threads.emplace_back([this] { EXPECT_NE(Make(m_xml).CreateNodeMap()->GetNode("A"), nullptr); });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(CNodeMapFactory::CacheSize(), 1U);
}

TEST_F(NodeMapFactory, nodeMapTellsWhatTheDescriptionSaysOfItself)
{
    const auto map = Make(m_xml).CreateNodeMap("Left");
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t subMinor = 0;
    map->GetSchemaVersion(major, minor, subMinor);
    EXPECT_EQ(major * 100 + minor * 10 + subMinor, 112);
    map->GetDeviceVersion(major, minor, subMinor);
    EXPECT_EQ(major * 100 + minor * 10 + subMinor, 345);
    EXPECT_EQ(map->GetModelName(), "Model");
    EXPECT_EQ(map->GetVendorName(), "Vendor");
    EXPECT_EQ(map->GetDeviceName(), "Left");
    EXPECT_EQ(map->GetNumNodes(), 2U);
    NodeList nodes;
    map->GetNodes(nodes);
    EXPECT_EQ(nodes.size(), 2U);
}

} // namespace
} // namespace GenApi
