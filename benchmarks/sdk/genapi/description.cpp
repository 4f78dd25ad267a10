// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "description.h"

namespace Benchmarks
{
namespace
{

std::string Frame(const std::string& nodes)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<RegisterDescription ModelName=\"Benchmark\" VendorName=\"Test\" StandardNameSpace=\"None\" "
           "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
           "MinorVersion=\"0\" SubMinorVersion=\"0\" ToolTip=\"\" ProductGuid=\"0\" VersionGuid=\"0\" "
           "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n" +
           nodes + "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
}

std::string Register(const std::string& name, std::size_t address, const std::string& caching)
{
    return "<IntReg Name=\"" + name + "\"><Address>" + std::to_string(address) +
           "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>" + caching +
           "</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

std::string Feature(const std::string& name, const std::string& reg, const std::string& more = "")
{
    return "<Integer Name=\"" + name +
           "\"><ToolTip>A tool tip of some length</ToolTip><Description>A description of "
           "the feature as cameras have it.</Description><DisplayName>" +
           name + "</DisplayName>" + more + "<pValue>" + reg + "</pValue><Min>0</Min><Max>1000000</Max></Integer>\n";
}

/** Eight nodes: a group of a camera's features that depend on each other. */
std::string Group(std::size_t index)
{
    const std::string n = std::to_string(index);
    const std::size_t address = 0x1000 + index * 16;
    return Register("RegA" + n, address, "WriteThrough") + Register("RegB" + n, address + 4, "WriteThrough") +
           Register("RegMode" + n, address + 8, "WriteThrough") + Feature("FeatureA" + n, "RegA" + n) +
           Feature("FeatureB" + n, "RegB" + n, "<pIsLocked>RegMode" + n + "</pIsLocked>") +
           "<IntSwissKnife Name=\"Knife" + n + "\"><pVariable Name=\"A\">FeatureA" + n +
           "</pVariable><pVariable Name=\"B\">FeatureB" + n +
           "</pVariable><Formula>(A&gt;B) ? (A-B)*2 : ((B&lt;&lt;1)|1)</Formula></IntSwissKnife>\n"
           "<Converter Name=\"Converter" +
           n +
           "\"><FormulaTo>FROM*1000/8</FormulaTo><FormulaFrom>TO*8/1000</FormulaFrom>"
           "<pValue>RegA" +
           n +
           "</pValue></Converter>\n"
           "<Enumeration Name=\"Mode" +
           n +
           "\"><EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry>"
           "<EnumEntry Name=\"On\"><Value>1</Value></EnumEntry><pValue>RegMode" +
           n + "</pValue></Enumeration>\n";
}

constexpr std::size_t kNodesOfAGroup = 10; // with the two entries of the enumeration

} // namespace

std::string SmallDescription()
{
    return Frame(Register("Cached", 16, "WriteThrough") + Register("Uncached", 20, "NoCache") +
                 Register("Other", 24, "WriteThrough") + Feature("Feature", "Other") +
                 "<IntSwissKnife Name=\"Formula\"><pVariable Name=\"A\">Cached</pVariable><pVariable Name=\"B\">Other"
                 "</pVariable><Formula>(A&gt;B) ? (A-B)*2 : ((B&lt;&lt;1)|1)</Formula></IntSwissKnife>\n"
                 "<Converter Name=\"Converter\"><FormulaTo>FROM*1000/8</FormulaTo><FormulaFrom>TO*8/1000</FormulaFrom>"
                 "<pValue>Other</pValue></Converter>\n");
}

std::string LargeDescription(std::size_t nodes)
{
    std::string features = "<Category Name=\"Root\">";
    std::string groups;
    for (std::size_t i = 0; i < (nodes + kNodesOfAGroup - 1) / kNodesOfAGroup; ++i)
    {
        const std::string n = std::to_string(i);
        for (const char* name : {"FeatureA", "FeatureB", "Knife", "Converter", "Mode"})
        {
            features += "<pFeature>" + (name + n) + "</pFeature>";
        }
        groups += Group(i);
    }
    return Frame(features + "</Category>\n" + groups);
}

} // namespace Benchmarks
