// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "reviewmap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace GenApi;

namespace
{

std::string Imposed(const std::string& registerAccess, const std::string& imposed)
{
    return Register("R", 0, "", registerAccess) + "<Integer Name=\"I\"><ImposedAccessMode>" + imposed +
           "</ImposedAccessMode><pValue>R</pValue></Integer>\n";
}

std::string Switched(const std::string& element, const std::string& access = "RW")
{
    return Plain("Switch", 1) + Register("R", 0, "<" + element + ">Switch</" + element + ">", access);
}

} // namespace

TEST(EngineReview, imposedAccessModeNarrowsTheRegisters)
{
    EXPECT_EQ(CReviewMap(Imposed("RW", "RW")).Access("I"), EAccessMode::RW);
    EXPECT_EQ(CReviewMap(Imposed("RW", "RO")).Access("I"), EAccessMode::RO);
    EXPECT_EQ(CReviewMap(Imposed("RW", "WO")).Access("I"), EAccessMode::WO);
    EXPECT_EQ(CReviewMap(Imposed("RO", "RW")).Access("I"), EAccessMode::RO);
    EXPECT_EQ(CReviewMap(Imposed("WO", "RW")).Access("I"), EAccessMode::WO);
}

TEST(EngineReview, readOnlyAndWriteOnlyTogetherAreNotAvailable)
{
    EXPECT_EQ(CReviewMap(Imposed("RO", "WO")).Access("I"), EAccessMode::NA);
    EXPECT_EQ(CReviewMap(Imposed("WO", "RO")).Access("I"), EAccessMode::NA);
}

TEST(EngineReview, lockTakesTheRightToWriteOnly)
{
    CReviewMap map(Switched("pIsLocked"));
    EXPECT_EQ(map.Access("R"), EAccessMode::RO);
    EXPECT_THROW(map.Integer("R")->SetValue(1), GenICam::AccessException);
    map.Integer("Switch")->SetValue(0);
    EXPECT_EQ(map.Access("R"), EAccessMode::RW);
    EXPECT_NO_THROW(map.Integer("R")->SetValue(1));
}

TEST(EngineReview, lockedWriteOnlyNodeIsNotAvailable)
{
    EXPECT_EQ(CReviewMap(Switched("pIsLocked", "WO")).Access("R"), EAccessMode::NA);
}

TEST(EngineReview, availabilityAndImplementation)
{
    CReviewMap available(Switched("pIsAvailable"));
    EXPECT_EQ(available.Access("R"), EAccessMode::RW);
    available.Integer("Switch")->SetValue(0);
    EXPECT_EQ(available.Access("R"), EAccessMode::NA);
    EXPECT_THROW(available.Integer("R")->GetValue(), GenICam::AccessException);

    CReviewMap implemented(Switched("pIsImplemented"));
    implemented.Integer("Switch")->SetValue(0);
    EXPECT_EQ(implemented.Access("R"), EAccessMode::NI);
}

TEST(EngineReview, notImplementedIsInheritedByTheNodeAbove)
{
    CReviewMap map(Switched("pIsImplemented") + "<Integer Name=\"I\"><pValue>R</pValue></Integer>\n");
    EXPECT_EQ(map.Access("I"), EAccessMode::RW);
    map.Integer("Switch")->SetValue(0);
    EXPECT_EQ(map.Access("I"), EAccessMode::NI);
}

TEST(EngineReview, withoutAPortRegistersAreNotAvailable)
{
    CReviewMap map(Register("R", 0) + "<Integer Name=\"I\"><pValue>R</pValue></Integer>\n", false);
    EXPECT_EQ(map.Access("R"), EAccessMode::NA);
    EXPECT_EQ(map.Access("I"), EAccessMode::NA);
    map.map->Connect(&map.port);
    EXPECT_EQ(map.Access("I"), EAccessMode::RW);
    map.map->Disconnect(&map.port);
    EXPECT_EQ(map.Access("I"), EAccessMode::NA);
}

TEST(EngineReview, swissKnifeIsReadOnlyAndNotAvailableWithItsVariables)
{
    CReviewMap map(Switched("pIsAvailable") + "<IntSwissKnife Name=\"S\"><pVariable Name=\"X\">R</pVariable>"
                                              "<Formula>X+1</Formula></IntSwissKnife>\n");
    EXPECT_EQ(map.Access("S"), EAccessMode::RO);
    map.Integer("Switch")->SetValue(0);
    EXPECT_EQ(map.Access("S"), EAccessMode::NA);
}

TEST(EngineReview, writeThroughCacheAnswersAfterTheFirstRead)
{
    CReviewMap map(Register("R", 0, "<Cachable>WriteThrough</Cachable>"));
    map.Integer("R")->GetValue();
    map.Integer("R")->GetValue();
    EXPECT_EQ(map.port.reads, 1);
    map.Integer("R")->SetValue(5);
    const int before = map.port.reads;
    EXPECT_EQ(map.Integer("R")->GetValue(), 5);
    EXPECT_EQ(map.port.reads, before);
}

TEST(EngineReview, writeAroundCacheReadsOnceAfterAWrite)
{
    CReviewMap map(Register("R", 0, "<Cachable>WriteAround</Cachable>"));
    map.Integer("R")->SetValue(5);
    map.port.memory[0] = 6; // the device rounds
    EXPECT_EQ(map.Integer("R")->GetValue(), 6);
    const int before = map.port.reads;
    EXPECT_EQ(map.Integer("R")->GetValue(), 6);
    EXPECT_EQ(map.port.reads, before);
}

TEST(EngineReview, noCacheReadsEveryTime)
{
    CReviewMap map(Register("R", 0, "<Cachable>NoCache</Cachable>"));
    map.Integer("R")->GetValue();
    map.port.memory[0] = 3;
    EXPECT_EQ(map.Integer("R")->GetValue(), 3);
    EXPECT_FALSE(map.Integer("R")->IsValueCacheValid());
}

TEST(EngineReview, ignoreCacheGoesToThePort)
{
    CReviewMap map(Register("R", 0));
    map.Integer("R")->GetValue();
    map.port.memory[0] = 9;
    EXPECT_EQ(map.Integer("R")->GetValue(), 0);
    EXPECT_EQ(map.Integer("R")->GetValue(false, true), 9);
    EXPECT_EQ(map.Integer("R")->GetValue(), 9);
}

TEST(EngineReview, failedWriteLeavesNoStaleCache)
{
    CReviewMap map(Plain("Index", 0) + Register("R", 0, "<pIndex Offset=\"1000\">Index</pIndex>"));
    map.port.memory[0] = 4;
    EXPECT_EQ(map.Integer("R")->GetValue(), 4);
    map.Integer("Index")->SetValue(1);
    EXPECT_THROW(map.Integer("R")->SetValue(7), GenICam::AccessException);
    map.Integer("Index")->SetValue(0);
    EXPECT_EQ(map.Integer("R")->GetValue(), 4);
}

TEST(EngineReview, indexChangesInvalidateTheCachedValue)
{
    CReviewMap map(Plain("Index", 0) + Register("R", 0, "<pIndex Offset=\"4\">Index</pIndex>"));
    map.port.memory = std::vector<std::uint8_t>(256);
    map.port.memory[0] = 10;
    map.port.memory[4] = 20;
    EXPECT_EQ(map.Integer("R")->GetValue(), 10);
    map.Integer("Index")->SetValue(1);
    EXPECT_EQ(map.Integer("R")->GetValue(), 20);
    map.Integer("Index")->SetValue(0);
    EXPECT_EQ(map.Integer("R")->GetValue(), 10);
}

TEST(EngineReview, indexWithoutOffsetCountsRegisterLengths)
{
    CReviewMap map(Plain("Index", 3) + Register("R", 0, "<pIndex>Index</pIndex>"));
    map.port.memory[12] = 77;
    EXPECT_EQ(map.Integer("R")->GetValue(), 77);
}

TEST(EngineReview, invalidatorDropsTheCache)
{
    CReviewMap map(Register("Trigger", 8) + Register("R", 0, "<pInvalidator>Trigger</pInvalidator>"));
    EXPECT_EQ(map.Integer("R")->GetValue(), 0);
    map.port.memory[0] = 5;
    EXPECT_EQ(map.Integer("R")->GetValue(), 0);
    map.Integer("Trigger")->SetValue(1);
    EXPECT_EQ(map.Integer("R")->GetValue(), 5);
}

TEST(EngineReview, selectorDropsTheCacheOfTheSelectedAndTellsThem)
{
    CReviewMap map("<Integer Name=\"Selector\"><pValue>S</pValue><pSelected>Selected</pSelected></Integer>\n" +
                   Register("S", 8) + Register("R", 0) + "<Integer Name=\"Selected\"><pValue>R</pValue></Integer>\n");
    int calls = 0;
    map.map->GetNode("Selected")->RegisterCallback([&calls](INode*) { ++calls; });
    map.Integer("Selected")->GetValue();
    map.port.memory[0] = 42; // another register is behind the selector now
    map.Integer("Selector")->SetValue(1);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(map.Integer("Selected")->GetValue(), 42);
}

TEST(EngineReview, registersThatOverlapSeeEachOthersWrites)
{
    CReviewMap map(Register("Whole", 0) +
                   "<MaskedIntReg Name=\"Low\"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                   "<pPort>Device</pPort><LSB>0</LSB><MSB>7</MSB><Sign>Unsigned</Sign>"
                   "<Endianess>LittleEndian</Endianess></MaskedIntReg>\n");
    EXPECT_EQ(map.Integer("Whole")->GetValue(), 0);
    map.Integer("Low")->SetValue(5);
    EXPECT_EQ(map.Integer("Whole")->GetValue(), 5);
    map.Integer("Whole")->SetValue(0x109);
    EXPECT_EQ(map.Integer("Low")->GetValue(), 9);
    map.Integer("Low")->SetValue(1);
    EXPECT_EQ(map.Integer("Whole")->GetValue(), 0x101);
}

TEST(EngineReview, pollingInvalidatesWhenItsTimeIsUp)
{
    CReviewMap map(Register("R", 0, "<PollingTime>1000</PollingTime>"));
    int calls = 0;
    map.map->GetNode("R")->RegisterCallback([&calls](INode*) { ++calls; });
    EXPECT_EQ(map.Integer("R")->GetValue(), 0);
    map.port.memory[0] = 8;
    map.map->Poll(999);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(map.Integer("R")->GetValue(), 0);
    map.map->Poll(1);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(map.Integer("R")->GetValue(), 8);
}

TEST(EngineReview, categoriesLeaveOutWhatIsNotImplemented)
{
    CReviewMap map("<Category Name=\"Root\"><pFeature>R</pFeature><pFeature>Switch</pFeature></Category>\n" +
                   Switched("pIsImplemented"));
    FeatureList features;
    CCategoryPtr(map.map->GetNode("Root"))->GetFeatures(features);
    EXPECT_EQ(features.size(), 2U);
    map.Integer("Switch")->SetValue(0);
    features.clear();
    CCategoryPtr(map.map->GetNode("Root"))->GetFeatures(features);
    ASSERT_EQ(features.size(), 1U);
    EXPECT_EQ(features[0]->GetName(), "Switch");
}
