// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/sdk/genapi/nodemapfixture.h"

#include <gmock/gmock.h>

namespace GenApi
{
namespace
{

using ::testing::AllOf;
using ::testing::HasSubstr;

struct SRefusal
{
    const char* name;
    const char* nodes;
    const char* node;   // the node the text must name
    const char* reason; // and what it must say
};

std::ostream& operator<<(std::ostream& stream, const SRefusal& refusal)
{
    return stream << refusal.name;
}

class DescriptionRefusal : public CNodeMapTest, public ::testing::WithParamInterface<SRefusal>
{
};

TEST_P(DescriptionRefusal, namesTheNodeAndTheReason)
{
    EXPECT_THAT(Refusal(GetParam().nodes), AllOf(HasSubstr(GetParam().node), HasSubstr(GetParam().reason)));
}

const SRefusal References[] = {
    {"danglingValue", "<Integer Name=\"A\"><pValue>Nowhere</pValue></Integer>", "'A'", "'Nowhere'"},
    {"danglingFeature", "<Category Name=\"A\"><pFeature>Nowhere</pFeature></Category>", "'A'", "'Nowhere'"},
    {"danglingSelected", "<Integer Name=\"A\"><Value>1</Value><pSelected>Nowhere</pSelected></Integer>", "'A'",
     "'Nowhere'"},
    {"danglingInvalidator", "<Integer Name=\"A\"><Value>1</Value><pInvalidator>Nowhere</pInvalidator></Integer>", "'A'",
     "'Nowhere'"},
    {"danglingPort", "<IntReg Name=\"A\"><Address>0</Address><Length>4</Length><pPort>Nowhere</pPort></IntReg>", "'A'",
     "'Nowhere'"},
    {"danglingVariable",
     "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">Nowhere</pVariable><Formula>X</Formula></IntSwissKnife>", "'A'",
     "'Nowhere'"},
    {"danglingOffset",
     "<IntReg Name=\"A\"><pIndex pOffset=\"Nowhere\">B</pIndex><Length>4</Length><pPort>Device</pPort></IntReg>"
     "<Integer Name=\"B\"><Value>1</Value></Integer>",
     "'A'", "'Nowhere'"},
    {"valueOfACategory", "<Integer Name=\"A\"><pValue>C</pValue></Integer><Category Name=\"C\"/>", "'A'", "'C'"},
    {"valueOfAText", "<Integer Name=\"A\"><pValue>S</pValue></Integer><String Name=\"S\"><Value>x</Value></String>",
     "'A'", "no number"},
    {"textOfANumber", "<String Name=\"A\"><pValue>N</pValue></String><Integer Name=\"N\"><Value>1</Value></Integer>",
     "'A'", "no text"},
    {"portThatIsNone",
     "<IntReg Name=\"A\"><Address>0</Address><Length>4</Length><pPort>N</pPort></IntReg>"
     "<Integer Name=\"N\"><Value>1</Value></Integer>",
     "'A'", "no port"},
    {"conditionThatIsNoNumber",
     "<Integer Name=\"A\"><Value>1</Value><pIsAvailable>S</pIsAvailable></Integer>"
     "<String Name=\"S\"><Value>x</Value></String>",
     "'A'", "'S'"},
    {"addressOfNoRegister",
     "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">N</pVariable><Formula>X.Address</Formula></IntSwissKnife>"
     "<Integer Name=\"N\"><Value>1</Value></Integer>",
     "'A'", "no address"},
    {"entryOfNoEnumeration",
     "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">N</pVariable><Formula>X.Entry.Y</Formula></IntSwissKnife>"
     "<Integer Name=\"N\"><Value>1</Value></Integer>",
     "'A'", "no enumeration"},
    {"entryThatIsNotThere",
     "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">E</pVariable><Formula>X.Entry.Y</Formula></IntSwissKnife>"
     "<Enumeration Name=\"E\"><EnumEntry Name=\"Z\"><Value>1</Value></EnumEntry><Value>1</Value></Enumeration>",
     "'A'", "'Y'"},
    {"selectedPort", "<Integer Name=\"A\"><Value>1</Value><pSelected>Device</pSelected></Integer>", "'A'",
     "no feature"},
};

const SRefusal Circles[] = {
    {"valueOfItself", "<Integer Name=\"A\"><pValue>A</pValue></Integer>", "'A'", "circular"},
    {"valueInACircle",
     "<Integer Name=\"A\"><pValue>B</pValue></Integer><Integer Name=\"B\"><pValue>A</pValue></Integer>", "'A'",
     "A -> B -> A"},
    {"limitInACircle",
     "<Integer Name=\"A\"><pValue>B</pValue></Integer><IntSwissKnife Name=\"B\"><pVariable Name=\"X\">A</pVariable>"
     "<Formula>X + 1</Formula></IntSwissKnife>",
     "'A'", "circular"},
    {"addressOfItself", "<IntReg Name=\"A\"><pAddress>A</pAddress><Length>4</Length><pPort>Device</pPort></IntReg>",
     "'A'", "circular"},
    {"availabilityOfItself", "<Integer Name=\"A\"><Value>1</Value><pIsAvailable>A</pIsAvailable></Integer>", "'A'",
     "circular"},
    {"maximaOfEachOther",
     "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">V</pVariable><Formula>X.Max</Formula></IntSwissKnife>"
     "<Integer Name=\"V\"><Value>1</Value><pMax>A</pMax></Integer>"
     "<Integer Name=\"W\"><pValue>A</pValue><pMax>W2</pMax></Integer><Integer Name=\"W2\"><pValue>W3</pValue></Integer>"
     "<Integer Name=\"W3\"><pValue>W2</pValue></Integer>",
     "'", "circular"},
    {"textInACircle", "<String Name=\"A\"><pValue>B</pValue></String><String Name=\"B\"><pValue>A</pValue></String>",
     "'A'", "circular"},
    {"categoriesInACircle",
     "<Category Name=\"A\"><pFeature>B</pFeature></Category><Category Name=\"B\"><pFeature>A</pFeature></Category>",
     "'B'", "'A'"},
};

const SRefusal Contents[] = {
    {"duplicateName", "<Integer Name=\"A\"><Value>1</Value></Integer><Integer Name=\"A\"><Value>1</Value></Integer>",
     "'A'", "more than one"},
    {"duplicateEntry",
     "<Enumeration Name=\"A\"><EnumEntry Name=\"X\"><Value>1</Value></EnumEntry>"
     "<EnumEntry Name=\"X\"><Value>2</Value></EnumEntry><Value>1</Value></Enumeration>",
     "EnumEntry_A_X", "more than one"},
    {"noName", "<Integer><Value>1</Value></Integer>", "<Integer>", "no Name"},
    {"noValue", "<Integer Name=\"A\"/>", "'A'", "missing"},
    {"noAddress", "<IntReg Name=\"A\"><Length>4</Length><pPort>Device</pPort></IntReg>", "'A'", "<Address>"},
    {"noLength", "<IntReg Name=\"A\"><Address>4</Address><pPort>Device</pPort></IntReg>", "'A'", "<Length>"},
    {"noPort", "<IntReg Name=\"A\"><Address>4</Address><Length>4</Length></IntReg>", "'A'", "<pPort>"},
    {"noBits", "<MaskedIntReg Name=\"A\"><Address>4</Address><Length>4</Length><pPort>Device</pPort></MaskedIntReg>",
     "'A'", "<LSB>"},
    {"noCommandValue", "<Command Name=\"A\"><Value>1</Value></Command>", "'A'", "<CommandValue>"},
    {"noBooleanValue", "<Boolean Name=\"A\"/>", "'A'", "missing"},
    {"noFloatValue", "<Float Name=\"A\"/>", "'A'", "missing"},
    {"noText", "<String Name=\"A\"/>", "'A'", "missing"},
    {"noEnumerationValue", "<Enumeration Name=\"A\"/>", "'A'", "missing"},
    {"noEntryValue", "<Enumeration Name=\"A\"><EnumEntry Name=\"X\"/><Value>1</Value></Enumeration>", "EnumEntry_A_X",
     "<Value>"},
    {"noFormula", "<SwissKnife Name=\"A\"/>", "'A'", "<Formula>"},
    {"noFormulaTo",
     "<Converter Name=\"A\"><FormulaFrom>TO</FormulaFrom><pValue>B</pValue></Converter>"
     "<Integer Name=\"B\"><Value>1</Value></Integer>",
     "'A'", "<FormulaTo>"},
    {"noConvertedValue", "<Converter Name=\"A\"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom></Converter>",
     "'A'", "<pValue>"},
    {"badFormula", "<SwissKnife Name=\"A\"><Formula>1 +</Formula></SwissKnife>", "'A'", "1 +"},
    {"undeclaredVariable", "<SwissKnife Name=\"A\"><Formula>X</Formula></SwissKnife>", "'A'", "'X'"},
    {"unknownSuffix",
     "<SwissKnife Name=\"A\"><pVariable Name=\"X\">B</pVariable><Formula>X.Foo</Formula></SwissKnife>"
     "<Integer Name=\"B\"><Value>1</Value></Integer>",
     "'A'", "Foo"},
    {"badConstant", "<SwissKnife Name=\"A\"><Constant Name=\"C\">x</Constant><Formula>C</Formula></SwissKnife>", "'A'",
     "'x'"},
    {"badInteger", "<Integer Name=\"A\"><Value>12x</Value></Integer>", "'A'", "'12x'"},
    {"integerBeyond64Bits", "<Integer Name=\"A\"><Value>9223372036854775808</Value></Integer>", "'A'", "no integer"},
    {"emptyInteger", "<Integer Name=\"A\"><Value></Value></Integer>", "'A'", "no integer"},
    {"badFloat", "<Float Name=\"A\"><Value>1,5</Value></Float>", "'A'", "'1,5'"},
    {"badBoolean", "<Boolean Name=\"A\"><Value>perhaps</Value></Boolean>", "'A'", "'perhaps'"},
    {"badVisibility", "<Integer Name=\"A\"><Visibility>All</Visibility><Value>1</Value></Integer>", "'A'", "'All'"},
    {"badAccessMode", "<Integer Name=\"A\"><ImposedAccessMode>R</ImposedAccessMode><Value>1</Value></Integer>", "'A'",
     "'R'"},
    {"badValidValues", "<Integer Name=\"A\"><Value>1</Value><ValidValueSet>1;x</ValidValueSet></Integer>", "'A'",
     "1;x"},
    {"badIndex",
     "<Integer Name=\"A\"><pIndex>B</pIndex><ValueIndexed Index=\"q\">1</ValueIndexed></Integer>"
     "<Integer Name=\"B\"><Value>1</Value></Integer>",
     "'A'", "'q'"},
    {"badChunkId", "<Port Name=\"A\"><ChunkID>xyz</ChunkID></Port>", "'A'", "'xyz'"},
    {"integerOfNineBytes", "<IntReg Name=\"A\"><Address>4</Address><Length>9</Length><pPort>Device</pPort></IntReg>",
     "'A'", "8 bytes"},
    {"floatOfTwoBytes", "<FloatReg Name=\"A\"><Address>4</Address><Length>2</Length><pPort>Device</pPort></FloatReg>",
     "'A'", "4 nor 8"},
    {"registerOfNoBytes", "<Register Name=\"A\"><Address>4</Address><Length>0</Length><pPort>Device</pPort></Register>",
     "'A'", "<Length>"},
    {"bitOutsideTheRegister",
     "<MaskedIntReg Name=\"A\"><Address>4</Address><Length>4</Length><pPort>Device</pPort><Bit>32</Bit>"
     "</MaskedIntReg>",
     "'A'", "outside"},
    {"pIndexWithoutValues",
     "<Integer Name=\"A\"><pIndex>B</pIndex></Integer><Integer Name=\"B\"><Value>1</Value></Integer>", "'A'",
     "<pIndex>"},
};

const auto NameOf = [](const ::testing::TestParamInfo<SRefusal>& info)
{
    return std::string(info.param.name);
};

INSTANTIATE_TEST_SUITE_P(References, DescriptionRefusal, ::testing::ValuesIn(References), NameOf);
INSTANTIATE_TEST_SUITE_P(Circles, DescriptionRefusal, ::testing::ValuesIn(Circles), NameOf);
INSTANTIATE_TEST_SUITE_P(Contents, DescriptionRefusal, ::testing::ValuesIn(Contents), NameOf);

class DescriptionLimits : public CNodeMapTest
{
};

TEST_F(DescriptionLimits, limitsThatUseEachOthersValuesAreNoCircle)
{
    Load("<Integer Name=\"Width\"><Value>10</Value><Min>1</Min><pMax>WidthMax</pMax></Integer>"
         "<Integer Name=\"OffsetX\"><Value>5</Value><Min>0</Min><pMax>OffsetMax</pMax></Integer>"
         "<IntSwissKnife Name=\"WidthMax\"><pVariable Name=\"O\">OffsetX</pVariable><Formula>100 - O</Formula>"
         "</IntSwissKnife><IntSwissKnife Name=\"OffsetMax\"><pVariable Name=\"W\">Width</pVariable>"
         "<Formula>100 - W</Formula></IntSwissKnife>");
    EXPECT_EQ(Integer("Width").GetMax(), 95);
    Integer("OffsetX").SetValue(90);
    EXPECT_EQ(Integer("Width").GetMax(), 10);
    EXPECT_THROW(Integer("Width").SetValue(11), GenICam::OutOfRangeException);
}

TEST_F(DescriptionLimits, aChainTooLongForTheStackIsRefused)
{
    std::string nodes;
    for (int i = 0; i < 20000; ++i)
    {
        nodes +=
            "<Integer Name=\"N" + std::to_string(i) + "\"><pValue>N" + std::to_string(i + 1) + "</pValue></Integer>";
    }
    EXPECT_THAT(Refusal(nodes + "<Integer Name=\"N20000\"><Value>1</Value></Integer>"), HasSubstr("too long a chain"));
}

TEST_F(DescriptionLimits, evaluationThatDoublesWithEveryNodeIsRefused)
{
    std::string nodes = "<Integer Name=\"N60\"><Value>1</Value></Integer>";
    for (int i = 0; i < 60; ++i)
    {
        const std::string next = "N" + std::to_string(i + 1);
        nodes += "<IntSwissKnife Name=\"N" + std::to_string(i) + "\"><pVariable Name=\"A\">" + next +
                 "</pVariable><pVariable Name=\"B\">" + next + "</pVariable><Formula>A + B</Formula></IntSwissKnife>";
    }
    EXPECT_THAT(Refusal(nodes), HasSubstr("too many nodes"));
}

} // namespace
} // namespace GenApi
