// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "reviewmap.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace GenApi;

namespace
{

const std::string kModes = "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry>"
                           "<EnumEntry Name=\"On\"><Value>1</Value></EnumEntry>";

std::string FloatOver(const std::string& slope, const std::string& to, const std::string& from)
{
    return "<Integer Name=\"Raw\"><Value>10</Value><Min>2</Min><Max>50</Max></Integer>\n"
           "<Converter Name=\"C\"><FormulaTo>" +
           to + "</FormulaTo><FormulaFrom>" + from + "</FormulaFrom><pValue>Raw</pValue><Slope>" + slope +
           "</Slope></Converter>\n";
}

} // namespace

TEST(EngineReviewValue, limitsOfRegistersFollowLengthAndSign)
{
    CReviewMap map(Register("U", 0) +
                   "<IntReg Name=\"S\"><Address>0</Address><Length>2</Length><AccessMode>RW</AccessMode>"
                   "<pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>\n"
                   "<MaskedIntReg Name=\"M\"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                   "<pPort>Device</pPort><LSB>3</LSB><MSB>5</MSB><Sign>Unsigned</Sign>"
                   "<Endianess>LittleEndian</Endianess></MaskedIntReg>\n");
    EXPECT_EQ(map.Integer("U")->GetMin(), 0);
    EXPECT_EQ(map.Integer("U")->GetMax(), 0xFFFFFFFF);
    EXPECT_EQ(map.Integer("S")->GetMin(), -32768);
    EXPECT_EQ(map.Integer("S")->GetMax(), 32767);
    EXPECT_EQ(map.Integer("M")->GetMin(), 0);
    EXPECT_EQ(map.Integer("M")->GetMax(), 7);
    EXPECT_THROW(map.Integer("M")->SetValue(8), GenICam::OutOfRangeException);
}

TEST(EngineReviewValue, incrementCountsFromTheMinimum)
{
    CReviewMap map("<Integer Name=\"I\"><Value>3</Value><Min>3</Min><Max>20</Max><Inc>4</Inc></Integer>\n");
    EXPECT_NO_THROW(map.Integer("I")->SetValue(11));
    EXPECT_THROW(map.Integer("I")->SetValue(12), GenICam::OutOfRangeException);
    EXPECT_THROW(map.Integer("I")->SetValue(2), GenICam::OutOfRangeException);
    EXPECT_EQ(map.Integer("I")->GetValue(), 11);
}

TEST(EngineReviewValue, converterLimitsOfARisingFormula)
{
    CReviewMap map(FloatOver("Increasing", "FROM*2", "TO/2"));
    EXPECT_DOUBLE_EQ(map.Float("C")->GetValue(), 5.0);
    EXPECT_DOUBLE_EQ(map.Float("C")->GetMin(), 1.0);
    EXPECT_DOUBLE_EQ(map.Float("C")->GetMax(), 25.0);
    map.Float("C")->SetValue(7.0);
    EXPECT_EQ(map.Integer("Raw")->GetValue(), 14);
    EXPECT_THROW(map.Float("C")->SetValue(26.0), GenICam::OutOfRangeException);
}

TEST(EngineReviewValue, converterLimitsOfAFallingFormulaAreSwapped)
{
    CReviewMap map(FloatOver("Decreasing", "100/FROM", "100/TO"));
    EXPECT_DOUBLE_EQ(map.Float("C")->GetValue(), 10.0);
    EXPECT_DOUBLE_EQ(map.Float("C")->GetMin(), 2.0);
    EXPECT_DOUBLE_EQ(map.Float("C")->GetMax(), 50.0);
}

TEST(EngineReviewValue, formulaThatRunsAgainstItsSlopeLimitsNothing)
{
    CReviewMap map("<Integer Name=\"Raw\"><Value>10</Value><Min>-50</Min><Max>50</Max></Integer>\n"
                   "<Converter Name=\"C\"><FormulaTo>100/FROM</FormulaTo><FormulaFrom>100/TO</FormulaFrom>"
                   "<pValue>Raw</pValue><Slope>Decreasing</Slope></Converter>\n");
    EXPECT_LE(map.Float("C")->GetMin(), -1e300);
    EXPECT_GE(map.Float("C")->GetMax(), 1e300);
    map.Float("C")->SetValue(4.0);
    EXPECT_EQ(map.Integer("Raw")->GetValue(), 25);
}

TEST(EngineReviewValue, endWithoutAValueLeavesTheOtherLimit)
{
    CReviewMap map("<Integer Name=\"Raw\"><Value>10</Value><Min>0</Min><Max>50</Max></Integer>\n"
                   "<Converter Name=\"C\"><FormulaTo>100/FROM</FormulaTo><FormulaFrom>100/TO</FormulaFrom>"
                   "<pValue>Raw</pValue><Slope>Decreasing</Slope></Converter>\n");
    EXPECT_DOUBLE_EQ(map.Float("C")->GetMin(), 2.0);
    EXPECT_GE(map.Float("C")->GetMax(), 1e300);
    EXPECT_THROW(map.Float("C")->SetValue(1.0), GenICam::OutOfRangeException);
}

TEST(EngineReviewValue, automaticSlopeFindsTheDirection)
{
    CReviewMap map(FloatOver("Automatic", "0-FROM", "0-TO"));
    EXPECT_DOUBLE_EQ(map.Float("C")->GetMin(), -50.0);
    EXPECT_DOUBLE_EQ(map.Float("C")->GetMax(), -2.0);
}

TEST(EngineReviewValue, integerConverterLimitsOfAFallingFormulaAreSwapped)
{
    CReviewMap map("<Integer Name=\"Raw\"><Value>10</Value><Min>2</Min><Max>50</Max></Integer>\n"
                   "<IntConverter Name=\"C\"><FormulaTo>100-FROM</FormulaTo><FormulaFrom>100-TO</FormulaFrom>"
                   "<pValue>Raw</pValue><Slope>Decreasing</Slope></IntConverter>\n");
    EXPECT_EQ(map.Integer("C")->GetValue(), 90);
    EXPECT_EQ(map.Integer("C")->GetMin(), 50);
    EXPECT_EQ(map.Integer("C")->GetMax(), 98);
    map.Integer("C")->SetValue(60);
    EXPECT_EQ(map.Integer("Raw")->GetValue(), 40);
}

TEST(EngineReviewValue, booleanHasItsOwnValues)
{
    CReviewMap map(Register("R", 0) + "<Boolean Name=\"B\"><pValue>R</pValue><OnValue>5</OnValue><OffValue>9</OffValue>"
                                      "</Boolean>\n<Boolean Name=\"D\"><pValue>R</pValue></Boolean>\n");
    map.Boolean("B")->SetValue(true);
    EXPECT_EQ(map.port.memory[0], 5);
    EXPECT_TRUE(map.Boolean("B")->GetValue());
    map.Boolean("B")->SetValue(false);
    EXPECT_EQ(map.port.memory[0], 9);
    EXPECT_FALSE(map.Boolean("B")->GetValue());
    map.Boolean("D")->SetValue(true);
    EXPECT_EQ(map.port.memory[0], 1);
}

TEST(EngineReviewValue, booleanReadsAndWritesText)
{
    CReviewMap map(Register("R", 0) + "<Boolean Name=\"B\"><pValue>R</pValue></Boolean>\n");
    for (const char* text : {"true", "1"})
    {
        map.Value("B")->FromString(text);
        EXPECT_EQ(map.Value("B")->ToString(), "true") << text;
        map.Boolean("B")->SetValue(false);
    }
    for (const char* text : {"false", "0"})
    {
        map.Boolean("B")->SetValue(true);
        map.Value("B")->FromString(text);
        EXPECT_EQ(map.Value("B")->ToString(), "false") << text;
    }
    EXPECT_THROW(map.Value("B")->FromString("maybe"), GenICam::InvalidArgumentException);
}

TEST(EngineReviewValue, entryThatIsNotAvailableIsRefused)
{
    CReviewMap map(Plain("Has", 1) + Register("R", 0) +
                   "<Enumeration Name=\"E\"><EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry>"
                   "<EnumEntry Name=\"On\"><pIsAvailable>Has</pIsAvailable><Value>1</Value></EnumEntry>"
                   "<pValue>R</pValue></Enumeration>\n");
    map.Enumeration("E")->FromString("On");
    map.Enumeration("E")->FromString("Off");
    map.Integer("Has")->SetValue(0);
    EXPECT_FALSE(IsAvailable(map.Enumeration("E")->GetEntryByName("On")));
    EXPECT_THROW(map.Enumeration("E")->FromString("On"), GenICam::GenericException);
    EXPECT_THROW(map.Enumeration("E")->SetIntValue(1), GenICam::GenericException);
    EXPECT_EQ(map.port.memory[0], 0);
}

TEST(EngineReviewValue, ofTwoEntriesWithOneValueTheAvailableOneCounts)
{
    CReviewMap map(Plain("IsNew", 1) + Plain("IsOld", 0) + Register("R", 0) +
                   "<Enumeration Name=\"E\"><EnumEntry Name=\"OldName\"><pIsImplemented>IsOld</pIsImplemented>"
                   "<Value>1</Value></EnumEntry><EnumEntry Name=\"NewName\"><pIsImplemented>IsNew</pIsImplemented>"
                   "<Value>1</Value></EnumEntry><pValue>R</pValue></Enumeration>\n");
    EXPECT_NO_THROW(map.Enumeration("E")->FromString("NewName"));
    EXPECT_EQ(map.port.memory[0], 1);
    EXPECT_EQ(map.Enumeration("E")->ToString(), "NewName");
    EXPECT_EQ(map.Enumeration("E")->GetCurrentEntry()->GetSymbolic(), "NewName");
    EXPECT_NO_THROW(map.Enumeration("E")->SetIntValue(1));
    EXPECT_THROW(map.Enumeration("E")->FromString("OldName"), GenICam::AccessException);
    map.Integer("IsOld")->SetValue(1);
    map.Integer("IsNew")->SetValue(0);
    EXPECT_EQ(map.Enumeration("E")->ToString(), "OldName");
    EXPECT_THROW(map.Enumeration("E")->FromString("NewName"), GenICam::AccessException);
}

TEST(EngineReviewValue, unknownEntriesAreRefused)
{
    CReviewMap map(Register("R", 0) + "<Enumeration Name=\"E\">" + kModes + "<pValue>R</pValue></Enumeration>\n");
    EXPECT_THROW(map.Enumeration("E")->FromString("Maybe"), GenICam::InvalidArgumentException);
    EXPECT_THROW(map.Enumeration("E")->SetIntValue(7), GenICam::InvalidArgumentException);
    EXPECT_EQ(map.Enumeration("E")->GetEntry(7), nullptr);
    EXPECT_EQ(map.Enumeration("E")->GetEntryByName("Maybe"), nullptr);
}

TEST(EngineReviewValue, commandIsDoneWhenItsRegisterNoLongerHoldsTheCommand)
{
    CReviewMap map(Register("R", 0, "<Cachable>NoCache</Cachable>") +
                   "<Command Name=\"C\"><pValue>R</pValue><CommandValue>3</CommandValue></Command>\n");
    map.Command("C")->Execute();
    EXPECT_EQ(map.port.memory[0], 3);
    EXPECT_FALSE(map.Command("C")->IsDone());
    map.port.memory[0] = 0;
    EXPECT_TRUE(map.Command("C")->IsDone());
}

TEST(EngineReviewValue, commandIsDoneEvenIfItsRegisterIsCached)
{
    CReviewMap map(Register("R", 0) +
                   "<Command Name=\"C\"><pValue>R</pValue><CommandValue>3</CommandValue></Command>\n");
    map.Command("C")->Execute();
    EXPECT_FALSE(map.Command("C")->IsDone());
    map.port.memory[0] = 0;
    EXPECT_TRUE(map.Command("C")->IsDone());
}

TEST(EngineReviewValue, writeOnlyCommandIsDoneAtOnce)
{
    CReviewMap map(Register("R", 0, "", "WO") +
                   "<Command Name=\"C\"><pValue>R</pValue><CommandValue>1</CommandValue></Command>\n");
    map.Command("C")->Execute();
    EXPECT_TRUE(map.Command("C")->IsDone());
}

TEST(EngineReviewValue, commandExecutedTwiceWritesTwice)
{
    CReviewMap map(Register("R", 0) +
                   "<Command Name=\"C\"><pValue>R</pValue><CommandValue>1</CommandValue></Command>\n");
    map.Command("C")->Execute();
    map.Command("C")->Execute();
    EXPECT_EQ(map.port.writes, 2);
}

TEST(EngineReviewValue, aliasesAreReported)
{
    CReviewMap map(Plain("Old", 1) + "<Integer Name=\"New\"><pAlias>Old</pAlias><Value>2</Value></Integer>\n"
                                     "<Float Name=\"Cast\"><pCastAlias>Old</pCastAlias><Value>2</Value></Float>\n");
    EXPECT_EQ(map.map->GetNode("New")->GetAlias(), map.map->GetNode("Old"));
    EXPECT_EQ(map.map->GetNode("Cast")->GetCastAlias(), map.map->GetNode("Old"));
    EXPECT_EQ(map.map->GetNode("Old")->GetAlias(), nullptr);
}

TEST(EngineReviewValue, addressIsTheSumOfItsParts)
{
    CReviewMap map(Plain("Base", 16) +
                   "<IntReg Name=\"R\"><Address>4</Address><Address>8</Address><pAddress>Base</pAddress>"
                   "<IntSwissKnife Name=\"RAddress\"><pVariable Name=\"B\">Base</pVariable><Formula>B*2</Formula>"
                   "</IntSwissKnife><Length>1</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
                   "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n");
    EXPECT_EQ(CRegisterPtr(map.map->GetNode("R"))->GetAddress(), 4 + 8 + 16 + 32);
    map.port.memory[60] = 200;
    EXPECT_EQ(map.Integer("R")->GetValue(), 200);
}

TEST(EngineReviewValue, textRegisterWithoutZeroUsesItsWholeLength)
{
    CReviewMap map("<StringReg Name=\"T\"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                   "<pPort>Device</pPort></StringReg>\n");
    const char* const text = "ABCDE";
    std::copy(text, text + 5, map.port.memory.begin());
    EXPECT_EQ(map.String("T")->GetValue(), "ABCD");
    map.String("T")->SetValue("x");
    EXPECT_EQ(map.String("T")->GetValue(), "x");
    EXPECT_EQ(map.port.memory[1], 0);
    EXPECT_EQ(map.port.memory[4], 'E');
    EXPECT_THROW(map.String("T")->SetValue("ABCDE"), GenICam::GenericException);
}

TEST(EngineReviewValue, writtenCopiesFollowTheValue)
{
    CReviewMap map(Register("A", 0) + Register("B", 4) +
                   "<Integer Name=\"I\"><pValue>A</pValue><pValueCopy>B</pValueCopy></Integer>\n");
    map.Integer("I")->SetValue(6);
    EXPECT_EQ(map.port.memory[0], 6);
    EXPECT_EQ(map.port.memory[4], 6);
}

TEST(EngineReviewValue, indexedValuesAreChosenByTheIndex)
{
    CReviewMap map(Plain("Index", 0) +
                   "<Integer Name=\"I\"><pIndex>Index</pIndex><ValueIndexed Index=\"0\">10</ValueIndexed>"
                   "<ValueIndexed Index=\"2\">30</ValueIndexed><ValueDefault>99</ValueDefault></Integer>\n");
    EXPECT_EQ(map.Integer("I")->GetValue(), 10);
    map.Integer("Index")->SetValue(2);
    EXPECT_EQ(map.Integer("I")->GetValue(), 30);
    map.Integer("Index")->SetValue(1);
    EXPECT_EQ(map.Integer("I")->GetValue(), 99);
}

TEST(EngineReviewValue, floatOverAnIntegerWritesTheNearestInteger)
{
    CReviewMap map(Register("R", 0) + "<Float Name=\"F\"><pValue>R</pValue></Float>\n");
    map.Float("F")->SetValue(6.7);
    EXPECT_EQ(map.port.memory[0], 7);
    EXPECT_DOUBLE_EQ(map.Float("F")->GetValue(), 7.0);
}

TEST(EngineReviewValue, integersReadHexadecimalText)
{
    CReviewMap map("<Integer Name=\"I\"><Value>0</Value><Representation>HexNumber</Representation></Integer>\n");
    map.Value("I")->FromString("0x1F");
    EXPECT_EQ(map.Integer("I")->GetValue(), 31);
    map.Value("I")->FromString("32");
    EXPECT_EQ(map.Integer("I")->GetValue(), 32);
    EXPECT_EQ(map.Value("I")->ToString(), "0x20");
    EXPECT_THROW(map.Value("I")->FromString("3x"), GenICam::InvalidArgumentException);
}

TEST(EngineReviewValue, changeOfAVariableReachesTheFormulaAndItsLimits)
{
    CReviewMap map("<Integer Name=\"Max\"><Value>100</Value></Integer>\n"
                   "<Integer Name=\"I\"><Value>1</Value><pMax>S</pMax></Integer>\n"
                   "<IntSwissKnife Name=\"S\"><pVariable Name=\"M\">Max</pVariable><Formula>M/2</Formula>"
                   "</IntSwissKnife>\n");
    int calls = 0;
    map.map->GetNode("I")->RegisterCallback([&calls](INode*) { ++calls; });
    EXPECT_EQ(map.Integer("I")->GetMax(), 50);
    map.Integer("Max")->SetValue(10);
    EXPECT_EQ(map.Integer("I")->GetMax(), 5);
    EXPECT_EQ(calls, 1);
}

TEST(EngineReviewValue, callbackMaySetTheNodeAgain)
{
    CReviewMap map(Register("R", 0));
    CIntegerPtr node = map.Integer("R");
    map.map->GetNode("R")->RegisterCallback(
        [&node](INode*)
        {
            if (node->GetValue() < 3)
            {
                node->SetValue(node->GetValue() + 1);
            }
        });
    node->SetValue(1);
    EXPECT_EQ(map.port.memory[0], 3);
}

TEST(EngineReviewValue, deregisteredCallbackIsNotCalled)
{
    CReviewMap map(Register("R", 0));
    int calls = 0;
    const CallbackHandle handle = map.map->GetNode("R")->RegisterCallback([&calls](INode*) { ++calls; });
    map.Integer("R")->SetValue(1);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(map.map->GetNode("R")->DeregisterCallback(handle));
    EXPECT_FALSE(map.map->GetNode("R")->DeregisterCallback(handle));
    map.Integer("R")->SetValue(2);
    EXPECT_EQ(calls, 1);
}
