// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/softwarenodemap.h"

#include "genapi/exceptions.h"

#include <gtest/gtest.h>

using Velmo::Transport::CSoftwareNodeMap;
using Velmo::Transport::SSoftwareParameter;

namespace
{

SSoftwareParameter Named(const char* name)
{
    SSoftwareParameter parameter;
    parameter.name = name;
    return parameter;
}

class SoftwareNodeMap : public ::testing::Test
{
protected:
    GenApi::CIntegerPtr Integer(const char* name) { return GenApi::CIntegerPtr(m_map.Get()->GetNode(name)); }
    GenApi::INode* Node(const char* name) { return m_map.Get()->GetNode(name); }

    CSoftwareNodeMap m_map{"Test"};
};

} // namespace

TEST_F(SoftwareNodeMap, integerReadsItsGetterEachTimeAndWritesItsSetter)
{
    std::int64_t value = 5;
    auto parameter = Named("Number");
    parameter.max = 100;
    parameter.getter = [&]
    {
        return value;
    };
    parameter.setter = [&](std::int64_t v)
    {
        value = v;
    };
    m_map.AddInteger(std::move(parameter));
    m_map.Build();
    EXPECT_EQ(Integer("Number")->GetValue(), 5);
    value = 6;
    EXPECT_EQ(Integer("Number")->GetValue(), 6);
    Integer("Number")->SetValue(7);
    EXPECT_EQ(value, 7);
    EXPECT_THROW(Integer("Number")->SetValue(101), GenICam::OutOfRangeException);
}

TEST_F(SoftwareNodeMap, withoutAGetterTheValueIsKept)
{
    auto parameter = Named("Kept");
    parameter.value = 3;
    parameter.isWritable = true;
    m_map.AddInteger(std::move(parameter));
    m_map.AddInteger(Named("ReadOnly"));
    m_map.Build();
    EXPECT_EQ(Integer("Kept")->GetValue(), 3);
    Integer("Kept")->SetValue(4);
    EXPECT_EQ(Integer("Kept")->GetValue(), 4);
    EXPECT_FALSE(GenApi::IsWritable(Node("ReadOnly")));
}

TEST_F(SoftwareNodeMap, setterThatThrowsLeavesTheValue)
{
    auto parameter = Named("Picky");
    parameter.value = 1;
    parameter.setter = [](std::int64_t)
    {
        GENICAM_THROW(AccessException, "not now");
    };
    m_map.AddInteger(std::move(parameter));
    m_map.Build();
    EXPECT_THROW(Integer("Picky")->SetValue(2), GenICam::AccessException);
    EXPECT_EQ(Integer("Picky")->GetValue(), 1);
}

TEST_F(SoftwareNodeMap, textIsLiveAndCutBetweenCharacters)
{
    std::string text = "first";
    auto parameter = Named("Text");
    parameter.textGetter = [&]
    {
        return text;
    };
    m_map.AddText(std::move(parameter));
    m_map.Build();
    const GenApi::CStringPtr node(Node("Text"));
    EXPECT_EQ(node->GetValue(), "first");
    text =
        std::string(CSoftwareNodeMap::TextBytes - 1, 'x') + "\xC3\xA4"; // the character's second byte is one too many
    EXPECT_EQ(node->GetValue(), std::string(CSoftwareNodeMap::TextBytes - 1, 'x'));
}

TEST_F(SoftwareNodeMap, commandRunsItsSetterOnceAndIsDone)
{
    int runs = 0;
    auto parameter = Named("Go");
    parameter.setter = [&](std::int64_t)
    {
        ++runs;
    };
    m_map.AddCommand(std::move(parameter));
    m_map.Build();
    const GenApi::CCommandPtr command(Node("Go"));
    command->Execute();
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(command->IsDone());
}

TEST_F(SoftwareNodeMap, enumerationShowsItsEntries)
{
    auto parameter = Named("Mode");
    parameter.entries = {{"Off", 0}, {"On", 5}};
    parameter.value = 5;
    parameter.isWritable = true;
    m_map.AddEnumeration(std::move(parameter));
    m_map.Build();
    const GenApi::CValuePtr mode(Node("Mode"));
    EXPECT_EQ(mode->ToString(), "On");
    mode->FromString("Off");
    EXPECT_EQ(mode->ToString(), "Off");
}

TEST_F(SoftwareNodeMap, whatIsSetFromInsideLocksAndTells)
{
    m_map.AddBoolean(Named("Busy"));
    auto parameter = Named("Setting");
    parameter.isWritable = true;
    parameter.lockedBy = "Busy";
    m_map.AddInteger(std::move(parameter));
    m_map.Build();
    int told = 0;
    const auto handle = Node("Setting")->RegisterCallback([&](GenApi::INode*) { ++told; });
    EXPECT_TRUE(GenApi::IsWritable(Node("Setting")));
    m_map.Set("Busy", 1);
    EXPECT_FALSE(GenApi::IsWritable(Node("Setting")));
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(GenApi::CBooleanPtr(Node("Busy"))->GetValue());
    EXPECT_THROW(m_map.Set("Nobody", 1), GenICam::InvalidArgumentException);
    Node("Setting")->DeregisterCallback(handle);
}

TEST_F(SoftwareNodeMap, hiddenNumberDecidesOnAvailabilityAndMaximum)
{
    std::int64_t known = 0;
    auto hidden = Named("Known");
    hidden.getter = [&]
    {
        return known;
    };
    m_map.AddHidden(std::move(hidden));
    auto parameter = Named("Speed");
    parameter.availableBy = "Known";
    parameter.maxFrom = "Known";
    m_map.AddInteger(std::move(parameter));
    m_map.Build();
    EXPECT_FALSE(GenApi::IsAvailable(Node("Speed")));
    known = 7;
    EXPECT_TRUE(GenApi::IsAvailable(Node("Speed")));
    EXPECT_EQ(Integer("Speed")->GetMax(), 7);
}

TEST_F(SoftwareNodeMap, categoriesHoldWhatIsAddedAfterThem)
{
    m_map.AddInteger(Named("Outside"));
    m_map.BeginCategory("First", "");
    m_map.AddInteger(Named("InFirst"));
    m_map.BeginCategory("Second", "");
    m_map.AddInteger(Named("InSecond"));
    m_map.Build();
    const auto names = [this](const char* category)
    {
        GenApi::FeatureList features;
        GenApi::CCategoryPtr(Node(category))->GetFeatures(features);
        std::vector<std::string> result;
        for (const auto* pFeature : features)
        {
            result.push_back(pFeature->GetName().str());
        }
        return result;
    };
    EXPECT_EQ(names("Root"), (std::vector<std::string>{"Outside", "First", "Second"}));
    EXPECT_EQ(names("First"), (std::vector<std::string>{"InFirst"}));
    EXPECT_EQ(names("Second"), (std::vector<std::string>{"InSecond"}));
}

TEST_F(SoftwareNodeMap, parameterThatNamesAnUnknownOneIsRefusedWhenBuilt)
{
    auto parameter = Named("Setting");
    parameter.lockedBy = "Nobody";
    m_map.AddInteger(std::move(parameter));
    EXPECT_THROW(m_map.Build(), GenICam::GenericException);
    EXPECT_EQ(m_map.Get(), nullptr);
}
