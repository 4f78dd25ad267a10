// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "reviewmap.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using namespace GenApi;

namespace
{

std::string Knife(const std::string& kind, const std::string& variables, const std::string& formula)
{
    return "<" + kind + " Name=\"K\">" + variables + "<Formula>" + formula + "</Formula></" + kind + ">\n";
}

std::string Variable(const std::string& name, const std::string& node)
{
    return "<pVariable Name=\"" + name + "\">" + node + "</pVariable>";
}

const std::string kMode = "<Enumeration Name=\"Mode\"><EnumEntry Name=\"Slow\"><Value>4</Value></EnumEntry>"
                          "<EnumEntry Name=\"Fast\"><Value>9</Value></EnumEntry><pValue>R</pValue></Enumeration>\n";

} // namespace

TEST(EngineReviewReference, formulasReadEnumerationsBooleansAndFloats)
{
    CReviewMap map(Register("R", 0) + kMode + "<Boolean Name=\"B\"><Value>true</Value></Boolean>\n" +
                   "<Float Name=\"F\"><Value>2.5</Value></Float>\n" +
                   Knife("SwissKnife", Variable("M", "Mode") + Variable("B", "B") + Variable("F", "F"), "M*10+B+F"));
    map.Enumeration("Mode")->FromString("Fast");
    EXPECT_DOUBLE_EQ(map.Float("K")->GetValue(), 93.5);
    map.Boolean("B")->SetValue(false);
    EXPECT_DOUBLE_EQ(map.Float("K")->GetValue(), 92.5);
}

TEST(EngineReviewReference, formulasReadAnEntryOfAnEnumeration)
{
    CReviewMap map(
        Register("R", 0) + kMode +
        Knife("IntSwissKnife", Variable("M", "Mode") + Variable("M.Entry.Fast", "Mode"), "(M = M.Entry.Fast) ? 1 : 0"));
    map.Enumeration("Mode")->FromString("Fast");
    EXPECT_EQ(map.Integer("K")->GetValue(), 1);
    map.Enumeration("Mode")->FromString("Slow");
    EXPECT_EQ(map.Integer("K")->GetValue(), 0);
}

TEST(EngineReviewReference, limitsReadByAFormulaFollowTheirNode)
{
    CReviewMap map(Plain("Top", 40) +
                   "<Integer Name=\"W\"><Value>4</Value><Min>2</Min><pMax>Top</pMax><Inc>2</Inc>"
                   "</Integer>\n" +
                   Knife("IntSwissKnife", Variable("W.Min", "W") + Variable("W.Max", "W") + Variable("W.Inc", "W"),
                         "W.Max*100+W.Min*10+W.Inc"));
    EXPECT_EQ(map.Integer("K")->GetValue(), 4022);
    map.Integer("Top")->SetValue(50);
    EXPECT_EQ(map.Integer("K")->GetValue(), 5022);
}

TEST(EngineReviewReference, constantsAndNamedExpressionsOfAFormula)
{
    CReviewMap map(Plain("A", 5) + Knife("IntSwissKnife",
                                         Variable("A", "A") + "<Constant Name=\"C\">7</Constant>"
                                                              "<Expression Name=\"SUM\">A+C</Expression>",
                                         "SUM*2"));
    EXPECT_EQ(map.Integer("K")->GetValue(), 24);
}

TEST(EngineReviewReference, variableNamedLikeAConstantIsTheVariable)
{
    CReviewMap map(Plain("A", 5) + Knife("IntSwissKnife", Variable("E", "A"), "E*2"));
    EXPECT_EQ(map.Integer("K")->GetValue(), 10);
}

TEST(EngineReviewReference, nameAFormulaDoesNotKnowIsRefusedWithNodeAndName)
{
    try
    {
        CReviewMap map(Plain("A", 5) + Knife("IntSwissKnife", Variable("A", "A"), "A+B"));
        FAIL() << "the description was accepted";
    }
    catch (const GenICam::GenericException& error)
    {
        const std::string text = error.GetDescription();
        EXPECT_NE(text.find("'K'"), std::string::npos) << text;
        EXPECT_NE(text.find("B"), std::string::npos) << text;
    }
}

TEST(EngineReviewReference, formulaErrorNamesTheNodeAndTheFormula)
{
    CReviewMap map(Plain("A", 0) + Knife("IntSwissKnife", Variable("A", "A"), "10 / A"));
    try
    {
        map.Integer("K")->GetValue();
        FAIL() << "no exception";
    }
    catch (const GenICam::RuntimeException& error)
    {
        const std::string text = error.GetDescription();
        EXPECT_NE(text.find("'K'"), std::string::npos) << text;
        EXPECT_NE(text.find("10 / A"), std::string::npos) << text;
    }
}

TEST(EngineReviewReference, lockOfTheRegisterLocksTheFeatureAboveAndItsConverter)
{
    CReviewMap map(Plain("Lock", 1) + Register("R", 0, "<pIsLocked>Lock</pIsLocked>") +
                   "<Integer Name=\"I\"><pValue>R</pValue></Integer>\n"
                   "<Converter Name=\"C\"><FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom>"
                   "<pValue>R</pValue></Converter>\n<Float Name=\"F\"><pValue>C</pValue></Float>\n");
    for (const char* name : {"R", "I", "C", "F"})
    {
        EXPECT_EQ(map.Access(name), EAccessMode::RO) << name;
    }
    map.Integer("Lock")->SetValue(0);
    for (const char* name : {"R", "I", "C", "F"})
    {
        EXPECT_EQ(map.Access(name), EAccessMode::RW) << name;
    }
}

TEST(EngineReviewReference, converterOverAnIntegerWritesTheNearest)
{
    CReviewMap map(Register("R", 0) +
                   "<Converter Name=\"C\"><FormulaTo>FROM*100</FormulaTo><FormulaFrom>TO/100</FormulaFrom>"
                   "<pValue>R</pValue></Converter>\n");
    map.Float("C")->SetValue(0.57); // 56.99999999999999 hundredths
    EXPECT_EQ(map.port.memory[0], 57);
}

TEST(EngineReviewReference, oneBitRegister)
{
    CReviewMap map("<MaskedIntReg Name=\"M\"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                   "<pPort>Device</pPort><Bit>31</Bit><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess>"
                   "</MaskedIntReg>\n");
    map.port.memory[3] = 0x01;
    EXPECT_EQ(map.Integer("M")->GetValue(), 1);
    EXPECT_EQ(map.Integer("M")->GetMax(), 1);
    map.port.memory[3] = 0xF0;
    map.map->InvalidateNodes();
    map.Integer("M")->SetValue(1);
    EXPECT_EQ(map.port.memory[3], 0xF1);
}

TEST(EngineReviewReference, verifyOffWritesWhatTheLimitsForbid)
{
    CReviewMap map(Register("R", 0) + "<Integer Name=\"I\"><pValue>R</pValue><Max>10</Max></Integer>\n");
    EXPECT_THROW(map.Integer("I")->SetValue(11), GenICam::OutOfRangeException);
    EXPECT_NO_THROW(map.Integer("I")->SetValue(11, false));
    EXPECT_EQ(map.port.memory[0], 11);
}

TEST(EngineReviewReference, registersTakeAndGiveBytes)
{
    CReviewMap map("<Register Name=\"B\"><Address>4</Address><Length>3</Length><AccessMode>RW</AccessMode>"
                   "<pPort>Device</pPort></Register>\n");
    CRegisterPtr node(map.map->GetNode("B"));
    const std::uint8_t bytes[] = {1, 2, 3, 4};
    node->Set(bytes, 3);
    std::uint8_t read[3] = {};
    node->Get(read, 3);
    EXPECT_EQ(std::vector<std::uint8_t>(read, read + 3), (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_EQ(map.port.memory[4], 1);
    EXPECT_THROW(node->Set(bytes, 4), GenICam::GenericException);
    EXPECT_EQ(node->GetLength(), 3);
}

TEST(EngineReviewReference, callbacksRunWithoutTheLockOfTheMap)
{
    CReviewMap map(Register("R", 0));
    bool isFree = false;
    map.map->GetNode("R")->RegisterCallback(
        [&](INode*)
        {
            std::thread other([&] { isFree = map.Integer("R")->GetValue() == 7; });
            other.join();
        });
    map.Integer("R")->SetValue(7);
    EXPECT_TRUE(isFree);
}

TEST(EngineReviewReference, threadsSeeWholeValues)
{
    CReviewMap map("<IntReg Name=\"R\"><Address>0</Address><Length>8</Length><AccessMode>RW</AccessMode>"
                   "<pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>\n" +
                   Knife("IntSwissKnife", Variable("R", "R"), "(R &gt;&gt; 32) - (R &amp; 0xFFFFFFFF)"));
    constexpr int kRounds = 2000;
    std::atomic<int> wrong{0};
    std::atomic<int> calls{0};
    const CallbackHandle handle = map.map->GetNode("K")->RegisterCallback([&calls](INode*) { ++calls; });
    std::vector<std::thread> threads;
    for (int t = 0; t < 2; ++t)
    {
        threads.emplace_back(
            [&, t]
            {
                for (std::int64_t i = 0; i < kRounds; ++i)
                {
                    const std::int64_t number = i * 2 + t;
                    map.Integer("R")->SetValue((number << 32) | number);
                    wrong += map.Integer("K")->GetValue() == 0 ? 0 : 1;
                }
            });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(calls, 2 * kRounds);
    map.map->GetNode("K")->DeregisterCallback(handle);
}
