// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/sdk/genapi/nodemapfixture.h"

#include <gmock/gmock.h>

namespace GenApi
{
namespace
{

using ::testing::HasSubstr;

class NodeTypes : public CNodeMapTest
{
};

TEST_F(NodeTypes, integerWithValueHoldsWhatWasWritten)
{
    Load("<Integer Name=\"A\"><Value>5</Value><Min>0</Min><Max>10</Max></Integer>");
    EXPECT_EQ(Integer("A").GetValue(), 5);
    Integer("A").SetValue(7);
    EXPECT_EQ(Integer("A").GetValue(), 7);
    EXPECT_EQ(Integer("A").GetMin(), 0);
    EXPECT_EQ(Integer("A").GetMax(), 10);
    EXPECT_EQ(Integer("A").GetIncMode(), EIncMode::NoIncrement);
}

TEST_F(NodeTypes, integerOverARegisterReadsAndWritesTheDevice)
{
    Load("<Integer Name=\"A\"><pValue>R</pValue></Integer>" + IntReg("R", 16));
    m_port.Poke(16, 0x12345678, 4);
    EXPECT_EQ(Integer("A").GetValue(), 0x12345678);
    Integer("A").SetValue(99);
    EXPECT_EQ(m_port.Peek(16, 4), 99U);
}

TEST_F(NodeTypes, integerWritesItsCopies)
{
    Load("<Integer Name=\"A\"><pValue>R</pValue><pValueCopy>S</pValueCopy></Integer>" + IntReg("R", 0) +
         IntReg("S", 8));
    Integer("A").SetValue(42);
    EXPECT_EQ(m_port.Peek(0, 4), 42U);
    EXPECT_EQ(m_port.Peek(8, 4), 42U);
}

TEST_F(NodeTypes, integerChoosesItsValueByIndex)
{
    Load("<Integer Name=\"A\"><pIndex>I</pIndex><ValueIndexed Index=\"0\">10</ValueIndexed>"
         "<pValueIndexed Index=\"1\">R</pValueIndexed><ValueDefault>-1</ValueDefault></Integer>"
         "<Integer Name=\"I\"><Value>0</Value></Integer>" +
         IntReg("R", 0));
    m_port.Poke(0, 77, 4);
    EXPECT_EQ(Integer("A").GetValue(), 10);
    Integer("A").SetValue(11);
    Integer("I").SetValue(1);
    EXPECT_EQ(Integer("A").GetValue(), 77);
    Integer("I").SetValue(2);
    EXPECT_EQ(Integer("A").GetValue(), -1);
    Integer("I").SetValue(0);
    EXPECT_EQ(Integer("A").GetValue(), 11);
}

TEST_F(NodeTypes, indexedIntegerWithoutValueForTheIndexIsNotAvailable)
{
    Load("<Integer Name=\"A\"><pIndex>I</pIndex><ValueIndexed Index=\"0\">10</ValueIndexed></Integer>"
         "<Integer Name=\"I\"><Value>3</Value></Integer>");
    EXPECT_EQ(Mode("A"), EAccessMode::NA);
    EXPECT_THROW(Integer("A").GetValue(), GenICam::AccessException);
}

TEST_F(NodeTypes, integerRegisterHonoursSignAndByteOrder)
{
    Load("<IntReg Name=\"L\">" + At(0, 2) + "<Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>" +
         "<IntReg Name=\"B\">" + At(0, 2) + "<Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>");
    m_port.Poke(0, 0xFF80, 2);
    EXPECT_EQ(Integer("L").GetValue(), -128);
    EXPECT_EQ(Integer("B").GetValue(), 0x80FF);
    EXPECT_EQ(Integer("L").GetMin(), -32768);
    EXPECT_EQ(Integer("L").GetMax(), 32767);
    EXPECT_EQ(Integer("B").GetMin(), 0);
    EXPECT_EQ(Integer("B").GetMax(), 65535);
    Integer("B").SetValue(0x1234);
    EXPECT_EQ(m_port.Peek(0, 2), 0x3412U);
}

TEST_F(NodeTypes, integerRegisterTakesOddLengths)
{
    Load("<IntReg Name=\"A\">" + At(0, 3) + "<Sign>Signed</Sign></IntReg>");
    Integer("A").SetValue(-2);
    EXPECT_EQ(m_port.Peek(0, 4), 0x00FFFFFEU);
    EXPECT_EQ(Integer("A").GetValue(), -2);
}

TEST_F(NodeTypes, sixtyFourBitRegisterHoldsTheExtremes)
{
    Load("<IntReg Name=\"A\">" + At(0, 8) + "<Sign>Signed</Sign></IntReg>");
    for (const std::int64_t value :
         {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1}, std::numeric_limits<std::int64_t>::max()})
    {
        Integer("A").SetValue(value);
        EXPECT_EQ(Integer("A").GetValue(false, true), value);
    }
}

TEST_F(NodeTypes, maskedRegisterCountsLittleEndianBitsFromTheLeastSignificant)
{
    Load("<MaskedIntReg Name=\"A\">" + At(0, 4) + "<LSB>4</LSB><MSB>11</MSB></MaskedIntReg>");
    m_port.Poke(0, 0xFFFFFABF, 4);
    EXPECT_EQ(Integer("A").GetValue(), 0xAB);
    Integer("A").SetValue(0x12);
    EXPECT_EQ(m_port.Peek(0, 4), 0xFFFFF12FU);
    EXPECT_EQ(Integer("A").GetMax(), 255);
}

TEST_F(NodeTypes, maskedRegisterCountsBigEndianBitsFromTheMostSignificant)
{
    Load("<MaskedIntReg Name=\"Top\">" + At(0, 4) +
         "<LSB>7</LSB><MSB>0</MSB><Endianess>BigEndian</Endianess></MaskedIntReg>"
         "<MaskedIntReg Name=\"Last\">" +
         At(0, 4) + "<Bit>31</Bit><Endianess>BigEndian</Endianess></MaskedIntReg>");
    m_port.Poke(0, 0x010000AB, 4); // bytes AB 00 00 01
    EXPECT_EQ(Integer("Top").GetValue(), 0xAB);
    EXPECT_EQ(Integer("Last").GetValue(), 1);
    Integer("Last").SetValue(0);
    EXPECT_EQ(m_port.Peek(0, 4), 0x000000ABU);
}

TEST_F(NodeTypes, maskedRegisterExtendsTheSignOfManyBits)
{
    Load("<MaskedIntReg Name=\"A\">" + At(0, 8) + "<LSB>0</LSB><MSB>40</MSB><Sign>Signed</Sign></MaskedIntReg>");
    m_port.Poke(0, 0x1FFFFFFFFFFULL, 8);
    EXPECT_EQ(Integer("A").GetValue(), -1);
    EXPECT_EQ(Integer("A").GetMin(), -(std::int64_t{1} << 40));
    EXPECT_EQ(Integer("A").GetMax(), (std::int64_t{1} << 40) - 1);
    Integer("A").SetValue(-5);
    EXPECT_EQ(m_port.Peek(0, 8), 0x1FFFFFFFFFBULL);
}

TEST_F(NodeTypes, structEntriesShareTheRegisterOfTheirStructure)
{
    Load("<StructReg Comment=\"bits\">" + At(4, 4) +
         "<Endianess>LittleEndian</Endianess><StructEntry Name=\"Low\"><LSB>0</LSB><MSB>7</MSB></StructEntry>"
         "<StructEntry Name=\"Flag\"><Bit>31</Bit><AccessMode>RO</AccessMode></StructEntry></StructReg>");
    m_port.Poke(4, 0x80000012, 4);
    EXPECT_EQ(Integer("Low").GetValue(), 0x12);
    EXPECT_EQ(Integer("Flag").GetValue(), 1);
    EXPECT_EQ(Mode("Flag"), EAccessMode::RO);
    Integer("Low").SetValue(0x34);
    EXPECT_EQ(m_port.Peek(4, 4), 0x80000034U);
}

TEST_F(NodeTypes, booleanMapsItsOnAndOffValues)
{
    Load("<Boolean Name=\"A\"><pValue>R</pValue><OnValue>5</OnValue><OffValue>2</OffValue></Boolean>" + IntReg("R", 0));
    auto& boolean = Get<IBoolean>("A");
    boolean.SetValue(true);
    EXPECT_EQ(m_port.Peek(0, 4), 5U);
    EXPECT_TRUE(boolean.GetValue());
    boolean.SetValue(false);
    EXPECT_EQ(m_port.Peek(0, 4), 2U);
    EXPECT_FALSE(boolean.GetValue());
}

TEST_F(NodeTypes, booleanWithAValueThatIsNeitherOnNorOffIsAnError)
{
    Load("<Boolean Name=\"A\"><pValue>R</pValue><OnValue>5</OnValue><OffValue>2</OffValue></Boolean>" + IntReg("R", 0));
    EXPECT_THROW(Get<IBoolean>("A").GetValue(), GenICam::RuntimeException);
}

TEST_F(NodeTypes, booleanWithOwnValueAndTexts)
{
    Load("<Boolean Name=\"A\"><Value>true</Value></Boolean>");
    auto& boolean = Get<IBoolean>("A");
    EXPECT_EQ(boolean.ToString(), "true");
    boolean.FromString("0");
    EXPECT_FALSE(boolean.GetValue());
    EXPECT_THROW(boolean.FromString("maybe"), GenICam::InvalidArgumentException);
}

TEST_F(NodeTypes, commandWritesItsValueAndIsDoneWhenTheDeviceClearsIt)
{
    Load("<Command Name=\"A\"><pValue>R</pValue><CommandValue>3</CommandValue></Command>" +
         IntReg("R", 0, "<Cachable>NoCache</Cachable>"));
    auto& command = Get<ICommand>("A");
    EXPECT_TRUE(command.IsDone());
    command.Execute();
    EXPECT_EQ(m_port.Peek(0, 4), 3U);
    EXPECT_FALSE(command.IsDone());
    EXPECT_EQ(command.ToString(), "1");
    m_port.Poke(0, 0, 4);
    EXPECT_TRUE(command.IsDone());
}

TEST_F(NodeTypes, commandOverAWriteOnlyRegisterIsDoneAtOnce)
{
    Load("<Command Name=\"A\"><pValue>R</pValue><pCommandValue>V</pCommandValue></Command>"
         "<Integer Name=\"V\"><Value>9</Value></Integer><IntReg Name=\"R\">" +
         At(0, 4, "WO") + "</IntReg>");
    Get<ICommand>("A").Execute();
    EXPECT_EQ(m_port.Peek(0, 4), 9U);
    EXPECT_TRUE(Get<ICommand>("A").IsDone());
    Get<ICommand>("A").FromString("1");
    EXPECT_THROW(Get<ICommand>("A").FromString("x"), GenICam::InvalidArgumentException);
}

constexpr const char* Enumeration =
    "<Enumeration Name=\"E\"><EnumEntry Name=\"One\"><DisplayName>The first</DisplayName><Value>1</Value></EnumEntry>"
    "<EnumEntry Name=\"Two\"><Value>2</Value><NumericValue>2.5</NumericValue></EnumEntry>"
    "<pValue>R</pValue></Enumeration>";

TEST_F(NodeTypes, enumerationIsReadAndWrittenByNameAndByNumber)
{
    Load(Enumeration + IntReg("R", 0));
    auto& enumeration = Get<IEnumeration>("E");
    enumeration.FromString("Two");
    EXPECT_EQ(m_port.Peek(0, 4), 2U);
    EXPECT_EQ(enumeration.ToString(), "Two");
    EXPECT_EQ(enumeration.GetIntValue(), 2);
    enumeration.SetIntValue(1);
    EXPECT_EQ(enumeration.GetCurrentEntry()->GetSymbolic(), "One");
    EXPECT_DOUBLE_EQ(enumeration.GetEntryByName("Two")->GetNumericValue(), 2.5);
    EXPECT_EQ(enumeration.GetEntry(7), nullptr);
    EXPECT_EQ(enumeration.GetEntryByName("Seven"), nullptr);
}

TEST_F(NodeTypes, enumerationRefusesUnknownEntries)
{
    Load(Enumeration + IntReg("R", 0));
    EXPECT_THROW(Get<IEnumeration>("E").FromString("Three"), GenICam::InvalidArgumentException);
    EXPECT_THROW(Get<IEnumeration>("E").SetIntValue(3), GenICam::InvalidArgumentException);
}

TEST_F(NodeTypes, enumerationWithAnUnknownValueOnTheDeviceHasNoCurrentEntry)
{
    Load(Enumeration + IntReg("R", 0));
    m_port.Poke(0, 9, 4);
    EXPECT_EQ(Get<IEnumeration>("E").GetCurrentEntry(), nullptr);
    EXPECT_THROW(Get<IEnumeration>("E").ToString(), GenICam::RuntimeException);
}

TEST_F(NodeTypes, enumerationListsEntriesInOrderAndEntriesAreNodes)
{
    Load(Enumeration + IntReg("R", 0));
    GenICam::gcstring_vector symbolics;
    Get<IEnumeration>("E").GetSymbolics(symbolics);
    EXPECT_EQ(symbolics, (GenICam::gcstring_vector{"One", "Two"}));
    EXPECT_EQ(Get<INode>("EnumEntry_E_One").GetDisplayName(), "The first");
    EXPECT_EQ(Get<INode>("EnumEntry_E_Two").GetDisplayName(), "Two");
}

TEST_F(NodeTypes, enumerationEntryThatIsNotAvailableIsRefused)
{
    Load("<Enumeration Name=\"E\"><EnumEntry Name=\"One\"><Value>1</Value></EnumEntry>"
         "<EnumEntry Name=\"Two\"><Value>2</Value><pIsAvailable>C</pIsAvailable></EnumEntry><Value>1</Value>"
         "</Enumeration><Integer Name=\"C\"><Value>0</Value></Integer>");
    EXPECT_THROW(Get<IEnumeration>("E").FromString("Two"), GenICam::AccessException);
    EXPECT_FALSE(IsAvailable(Get<IEnumeration>("E").GetEntryByName("Two")));
    Integer("C").SetValue(1);
    Get<IEnumeration>("E").FromString("Two");
    EXPECT_EQ(Get<IEnumeration>("E").GetIntValue(), 2);
}

TEST_F(NodeTypes, enumerationWithoutAnyAvailableEntryIsNotAvailable)
{
    Load("<Enumeration Name=\"E\"><EnumEntry Name=\"One\"><Value>1</Value><pIsAvailable>C</pIsAvailable></EnumEntry>"
         "<Value>1</Value></Enumeration><Integer Name=\"C\"><Value>0</Value></Integer>");
    EXPECT_EQ(Mode("E"), EAccessMode::NA);
}

TEST_F(NodeTypes, floatHoldsItsValueWithinItsLimits)
{
    Load("<Float Name=\"A\"><Value>1.5</Value><Min>-1</Min><Max>2.5e1</Max><Unit>ms</Unit>"
         "<Representation>Logarithmic</Representation><DisplayNotation>Fixed</DisplayNotation>"
         "<DisplayPrecision>2</DisplayPrecision></Float>");
    EXPECT_DOUBLE_EQ(Float("A").GetValue(), 1.5);
    EXPECT_DOUBLE_EQ(Float("A").GetMax(), 25.0);
    EXPECT_EQ(Float("A").GetUnit(), "ms");
    EXPECT_EQ(Float("A").GetRepresentation(), ERepresentation::Logarithmic);
    EXPECT_EQ(Float("A").ToString(), "1.50");
    EXPECT_THROW(Float("A").SetValue(25.1), GenICam::OutOfRangeException);
    EXPECT_THROW(Float("A").SetValue(std::nan("")), GenICam::OutOfRangeException);
    EXPECT_FALSE(Float("A").HasInc());
    EXPECT_THROW(Float("A").GetInc(), GenICam::LogicalErrorException);
}

TEST_F(NodeTypes, floatOverAnIntegerRoundsToTheNearest)
{
    Load("<Float Name=\"A\"><pValue>R</pValue></Float>" + IntReg("R", 0));
    Float("A").SetValue(2.6);
    EXPECT_EQ(m_port.Peek(0, 4), 3U);
    EXPECT_DOUBLE_EQ(Float("A").GetValue(), 3.0);
    EXPECT_DOUBLE_EQ(Float("A").GetMax(), 4294967295.0);
}

TEST_F(NodeTypes, floatRegistersHaveFourOrEightBytes)
{
    Load("<FloatReg Name=\"S\">" + At(0, 4) + "</FloatReg><FloatReg Name=\"D\">" + At(8, 8) +
         "<Endianess>BigEndian</Endianess></FloatReg>");
    Float("S").SetValue(1.0);
    EXPECT_EQ(m_port.Peek(0, 4), 0x3F800000U);
    Float("D").SetValue(1.0);
    EXPECT_EQ(m_port.Peek(8, 8), 0x000000000000F03FULL);
    EXPECT_DOUBLE_EQ(Float("D").GetValue(false, true), 1.0);
    EXPECT_THROW(Float("S").SetValue(1e300), GenICam::OutOfRangeException);
    EXPECT_THROW(Float("S").SetValue(1e300, false), GenICam::OutOfRangeException);
}

TEST_F(NodeTypes, stringWithValueAndOverARegister)
{
    Load("<String Name=\"A\"><Value>abc</Value></String><String Name=\"B\"><pValue>R</pValue></String>"
         "<StringReg Name=\"R\">" +
         At(0, 8) + "</StringReg>");
    EXPECT_EQ(Get<IString>("A").GetValue(), "abc");
    Get<IString>("A").SetValue("other");
    EXPECT_EQ(Get<IString>("A").GetValue(), "other");
    Get<IString>("B").SetValue("12345678");
    EXPECT_EQ(m_port.PeekText(0, 8), "12345678");
    Get<IString>("B").SetValue("xy");
    EXPECT_EQ(m_port.Peek(0, 8), 0x7978U);
    EXPECT_EQ(Get<IString>("R").GetValue(), "xy");
    EXPECT_EQ(Get<IString>("B").GetMaxLength(), 8);
    EXPECT_THROW(Get<IString>("B").SetValue("123456789"), GenICam::OutOfRangeException);
}

TEST_F(NodeTypes, registerIsReadAndWrittenAsBytes)
{
    Load("<Register Name=\"A\">" + At(4, 4) + "</Register>");
    const std::uint8_t bytes[] = {1, 2, 0xAB, 4};
    Get<IRegister>("A").Set(bytes, 4);
    EXPECT_EQ(m_port.Peek(4, 4), 0x04AB0201U);
    EXPECT_EQ(Get<IRegister>("A").ToString(), "0x0102AB04");
    Get<IRegister>("A").FromString("0xFFEE");
    std::uint8_t back[4] = {};
    Get<IRegister>("A").Get(back, 4);
    EXPECT_EQ(back[0], 0xFF);
    EXPECT_EQ(back[2], 0xAB);
    EXPECT_EQ(Get<IRegister>("A").GetAddress(), 4);
    EXPECT_EQ(Get<IRegister>("A").GetLength(), 4);
    EXPECT_THROW(Get<IRegister>("A").Set(bytes, 5), GenICam::OutOfRangeException);
    EXPECT_THROW(Get<IRegister>("A").FromString("0xABC"), GenICam::InvalidArgumentException);
}

TEST_F(NodeTypes, integerRegisterIsARegisterToo)
{
    Load(IntReg("R", 12));
    const std::uint8_t bytes[] = {1, 1, 0, 0};
    Get<IRegister>("R").Set(bytes, 4);
    EXPECT_EQ(Integer("R").GetValue(), 257);
    EXPECT_EQ(Get<IRegister>("R").GetAddress(), 12);
}

TEST_F(NodeTypes, registerAddressIsTheSumOfItsTerms)
{
    Load("<IntReg Name=\"A\"><Address>0x10</Address><pAddress>B</pAddress>"
         "<IntSwissKnife Name=\"K\"><pVariable Name=\"I\">I</pVariable><Formula>I * 0x20</Formula></IntSwissKnife>"
         "<pIndex Offset=\"4\">I</pIndex><pIndex pOffset=\"O\">I</pIndex><pIndex>I</pIndex><Length>4</Length>"
         "<pPort>Device</pPort></IntReg><Integer Name=\"B\"><Value>256</Value></Integer>"
         "<Integer Name=\"I\"><Value>2</Value></Integer><Integer Name=\"O\"><Value>100</Value></Integer>");
    EXPECT_EQ(Get<IRegister>("A").GetAddress(), 16 + 256 + 64 + 8 + 200 + 8);
    m_port.Poke(552, 31, 4);
    EXPECT_EQ(Integer("A").GetValue(), 31);
    EXPECT_EQ(Integer("K").GetValue(), 64);
}

TEST_F(NodeTypes, registerLengthCanBeAnotherNode)
{
    Load("<Register Name=\"A\"><Address>0</Address><pLength>L</pLength><pPort>Device</pPort></Register>"
         "<Integer Name=\"L\"><Value>6</Value></Integer>");
    EXPECT_EQ(Get<IRegister>("A").GetLength(), 6);
    Integer("L").SetValue(-1);
    EXPECT_THROW(Get<IRegister>("A").GetLength(), GenICam::RuntimeException);
}

TEST_F(NodeTypes, converterConvertsBothWaysAndItsLimits)
{
    Load("<Converter Name=\"A\"><pVariable Name=\"S\">S</pVariable><FormulaTo>FROM / S</FormulaTo>"
         "<FormulaFrom>TO * S</FormulaFrom><pValue>R</pValue><Unit>us</Unit></Converter>"
         "<Float Name=\"S\"><Value>0.5</Value></Float><IntReg Name=\"R\">" +
         At(0, 1) + "</IntReg>");
    m_port.Poke(0, 10, 1);
    EXPECT_DOUBLE_EQ(Float("A").GetValue(), 5.0);
    Float("A").SetValue(20.0);
    EXPECT_EQ(m_port.Peek(0, 1), 40U);
    EXPECT_DOUBLE_EQ(Float("A").GetMin(), 0.0);
    EXPECT_DOUBLE_EQ(Float("A").GetMax(), 127.5);
    EXPECT_EQ(Float("A").GetUnit(), "us");
    Float("S").SetValue(2.0);
    EXPECT_DOUBLE_EQ(Float("A").GetValue(), 80.0);
}

TEST_F(NodeTypes, converterWithFallingSlopeSwapsTheLimits)
{
    Load(
        "<Converter Name=\"A\"><FormulaTo>100 - FROM</FormulaTo><FormulaFrom>100 - TO</FormulaFrom><pValue>V</pValue>"
        "<Slope>Decreasing</Slope></Converter><Integer Name=\"V\"><Value>1</Value><Min>0</Min><Max>60</Max></Integer>");
    EXPECT_DOUBLE_EQ(Float("A").GetMin(), 40.0);
    EXPECT_DOUBLE_EQ(Float("A").GetMax(), 100.0);
    EXPECT_THROW(Float("A").SetValue(39.0), GenICam::OutOfRangeException);
}

TEST_F(NodeTypes, converterWithoutAValueForALimitHasTheWidest)
{
    Load("<Converter Name=\"A\"><FormulaTo>1000 / FROM</FormulaTo><FormulaFrom>1000 / TO</FormulaFrom>"
         "<pValue>V</pValue><Slope>Decreasing</Slope></Converter>"
         "<Integer Name=\"V\"><Value>100</Value><Min>0</Min><Max>1000</Max></Integer>");
    EXPECT_DOUBLE_EQ(Float("A").GetValue(), 10.0);
    EXPECT_DOUBLE_EQ(Float("A").GetMin(), 1.0);
    EXPECT_DOUBLE_EQ(Float("A").GetMax(), std::numeric_limits<double>::max());
}

TEST_F(NodeTypes, integerConverterComputesInIntegers)
{
    Load("<IntConverter Name=\"A\"><FormulaTo>FROM &lt;&lt; 4</FormulaTo><FormulaFrom>TO &gt;&gt; 4</FormulaFrom>"
         "<pValue>R</pValue></IntConverter>" +
         IntReg("R", 0));
    Integer("A").SetValue(5);
    EXPECT_EQ(m_port.Peek(0, 4), 80U);
    EXPECT_EQ(Integer("A").GetValue(), 5);
}

TEST_F(NodeTypes, swissKnifeComputesFromItsVariablesConstantsAndExpressions)
{
    Load("<SwissKnife Name=\"A\"><pVariable Name=\"X\">V</pVariable><Constant Name=\"C\">2.5</Constant>"
         "<Expression Name=\"E\">X + 1</Expression><Formula>E * C</Formula></SwissKnife>"
         "<Integer Name=\"V\"><Value>3</Value></Integer>");
    EXPECT_DOUBLE_EQ(Float("A").GetValue(), 10.0);
    EXPECT_EQ(Mode("A"), EAccessMode::RO);
    EXPECT_THROW(Float("A").SetValue(1.0), GenICam::AccessException);
    Integer("V").SetValue(7);
    EXPECT_DOUBLE_EQ(Float("A").GetValue(), 20.0);
}

TEST_F(NodeTypes, swissKnifeThatDividesByZeroIsAnErrorWithItsName)
{
    Load("<IntSwissKnife Name=\"Quotient\"><pVariable Name=\"X\">V</pVariable><Formula>1 / X</Formula></IntSwissKnife>"
         "<Integer Name=\"V\"><Value>0</Value></Integer>");
    try
    {
        Integer("Quotient").GetValue();
        FAIL() << "no exception";
    }
    catch (const GenICam::RuntimeException& e)
    {
        EXPECT_THAT(e.GetDescription(), HasSubstr("'Quotient'"));
    }
}

TEST_F(NodeTypes, formulasAskVariablesForMoreThanTheirValue)
{
    Load("<IntSwissKnife Name=\"A\"><pVariable Name=\"V\">V</pVariable><pVariable Name=\"W.Max\">V</pVariable>"
         "<pVariable Name=\"E\">E</pVariable><pVariable Name=\"R\">R</pVariable>"
         "<Formula>V.Min + 10 * V.Max + 1000 * V.Inc + V.Value * 10000 + W.Max * 100000 + E.Entry.Two * 10000000 + "
         "R.Address * 100000000</Formula></IntSwissKnife>"
         "<Integer Name=\"V\"><Value>5</Value><Min>1</Min><Max>7</Max><Inc>2</Inc></Integer>" +
         std::string(Enumeration) + IntReg("R", 3));
    EXPECT_EQ(Integer("A").GetValue(), 1 + 70 + 2000 + 50000 + 700000 + 20000000 + 300000000);
}

TEST_F(NodeTypes, categoryListsImplementedFeaturesInOrder)
{
    Load("<Category Name=\"Root\"><pFeature>B</pFeature><pFeature>A</pFeature><pFeature>C</pFeature></Category>"
         "<Integer Name=\"A\"><Value>1</Value></Integer><Integer Name=\"B\"><Value>1</Value></Integer>"
         "<Integer Name=\"C\"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Integer>"
         "<Integer Name=\"Zero\"><Value>0</Value></Integer>");
    FeatureList features;
    Get<ICategory>("Root").GetFeatures(features);
    ASSERT_EQ(features.size(), 2U);
    EXPECT_EQ(features[0]->GetName(), "B");
    EXPECT_EQ(features[1]->GetName(), "A");
    EXPECT_TRUE(features[0]->IsFeature());
    EXPECT_FALSE(Get<INode>("Zero").IsFeature());
}

TEST_F(NodeTypes, categoryOfNothingImplementedIsNotImplemented)
{
    Load("<Category Name=\"Root\"><pFeature>C</pFeature></Category>"
         "<Integer Name=\"C\"><pIsImplemented>Zero</pIsImplemented><Value>1</Value></Integer>"
         "<Integer Name=\"Zero\"><Value>0</Value></Integer>");
    EXPECT_EQ(Mode("Root"), EAccessMode::NI);
}

TEST_F(NodeTypes, groupsAreTransparent)
{
    Load("<Group Comment=\"outer\"><Group Comment=\"inner\"><Integer Name=\"A\"><Value>4</Value></Integer></Group>"
         "</Group>");
    EXPECT_EQ(Integer("A").GetValue(), 4);
}

TEST_F(NodeTypes, extensionsAreIgnored)
{
    Load("<Integer Name=\"A\"><Extension><Value>x</Value></Extension><Value>4</Value></Integer>"
         "<Extension><Integer Name=\"B\"/></Extension>");
    EXPECT_EQ(Integer("A").GetValue(), 4);
    EXPECT_EQ(m_map->GetNode("B"), nullptr);
}

TEST_F(NodeTypes, portNodeReadsAndWritesWhatItIsConnectedTo)
{
    Load(IntReg("R", 0));
    const std::uint8_t byte = 0x5A;
    EXPECT_EQ(Integer("R").GetValue(), 0);
    Get<IPort>("Device").Write(&byte, 0, 1);
    EXPECT_EQ(m_port.Peek(0, 1), 0x5AU);
    EXPECT_EQ(Integer("R").GetValue(), 0x5A);
}

TEST_F(NodeTypes, portThatSwapsByteOrderTurnsItsRegistersAround)
{
    Load("<IntReg Name=\"R\"><Address>0</Address><Length>2</Length><pPort>Swapped</pPort></IntReg>"
         "<Port Name=\"Swapped\"><SwapEndianess>Yes</SwapEndianess></Port>");
    m_map->Connect(&m_port, "Swapped");
    m_port.Poke(0, 0x1234, 2);
    EXPECT_EQ(Integer("R").GetValue(), 0x3412);
}

} // namespace
} // namespace GenApi
