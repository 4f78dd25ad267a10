// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "peer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace GenApi;

namespace
{

/** A big-endian 32-bit register that is read anew each time. */
std::string Register(const std::string& name, int address, const std::string& more = "")
{
    return "<IntReg Name=\"" + name + "\"><Address>" + std::to_string(address) +
           "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable>" +
           more + "<Sign>Signed</Sign><Endianess>BigEndian</Endianess></IntReg>\n";
}

std::string Converter(const std::string& name, const std::string& to, const std::string& from, const std::string& slope)
{
    return "<Converter Name=\"" + name + "\"><FormulaTo>" + to + "</FormulaTo><FormulaFrom>" + from +
           "</FormulaFrom><pValue>Raw</pValue><Slope>" + slope + "</Slope></Converter>\n";
}

const std::vector<std::uint8_t> kSeven = {0, 0, 0, 7};

} // namespace

TEST(ArvComparisonValue, swissKnifesHaveTheSameValue)
{
    const std::vector<std::string> formulas = {"A+B*2",      "(A&gt;B)?A:B", "A&amp;0xF", "A*A-B", "(A&lt;&lt;3)|B",
                                               "A&gt;&gt;1", "A%3",          "~A",        "A=7",   "A&lt;&gt;B"};
    std::string nodes = Register("A", 0x4000) + Register("B", 0x4004);
    for (std::size_t i = 0; i < formulas.size(); ++i)
    {
        for (const char* kind : {"SwissKnife", "IntSwissKnife"})
        {
            nodes += std::string("<") + kind + " Name=\"" + kind + std::to_string(i) +
                     "\"><pVariable Name=\"A\">A</pVariable><pVariable Name=\"B\">B</pVariable><Formula>" +
                     formulas[i] + "</Formula></" + kind + ">\n";
        }
    }
    CPeer peer(nodes);
    for (const std::uint8_t b : {0, 1, 5, 200})
    {
        peer.Poke(0x4000, {0, 0, 0, 7, 0, 0, 0, b});
        for (std::size_t i = 0; i < formulas.size(); ++i)
        {
            const std::string number = std::to_string(i);
            EXPECT_EQ(peer.Own<CIntegerPtr>("IntSwissKnife" + number)->GetValue(),
                      peer.OtherInteger("IntSwissKnife" + number))
                << formulas[i];
            EXPECT_EQ(peer.Own<CFloatPtr>("SwissKnife" + number)->GetValue(), peer.OtherFloat("SwissKnife" + number))
                << formulas[i];
        }
    }
}

TEST(ArvComparisonValue, convertersReadAndWriteTheSame)
{
    CPeer peer(Register("Raw", 0x4000) + Converter("Half", "FROM*2", "TO/2", "Increasing") +
               Converter("Falling", "100-FROM", "100-TO", "Decreasing") +
               Converter("Period", "1000000/FROM", "1000000/TO", "Decreasing"));
    for (const std::string name : {"Half", "Falling", "Period"})
    {
        for (const std::uint8_t raw : {1, 8, 50, 64})
        {
            peer.Poke(0x4000, {0, 0, 0, raw});
            EXPECT_DOUBLE_EQ(peer.Own<CFloatPtr>(name)->GetValue(), peer.OtherFloat(name).value()) << name;
        }
        for (const double value : {4.0, 20.0, 50.0})
        {
            ASSERT_TRUE(peer.SetOtherFloat(name, value));
            const auto expected = peer.Peek(0x4000, 4);
            peer.Poke(0x4000, {0, 0, 0, 1});
            peer.Own<CFloatPtr>(name)->SetValue(value);
            EXPECT_EQ(peer.Peek(0x4000, 4), expected) << name << " = " << value;
        }
    }
}

TEST(ArvComparisonValue, indexedAddressesAreTheSame)
{
    CPeer peer("<Integer Name=\"Index\"><Value>0</Value></Integer>\n" + Register("Base", 0x4100) +
               Register("Fixed", 0x4000, "<pIndex Offset=\"8\">Index</pIndex>") +
               Register("Plain", 0x4000, "<pIndex>Index</pIndex>") +
               Register("Added", 0x10, "<pAddress>Base</pAddress>"));
    peer.Poke(0x4000, {0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 6});
    peer.Poke(0x4100, {0, 0, 0x40, 0});
    peer.Poke(0x4010, {0, 0, 0, 99});
    for (const std::int64_t index : {0, 1, 2})
    {
        peer.Own<CIntegerPtr>("Index")->SetValue(index);
        ASSERT_TRUE(peer.SetOtherInteger("Index", index));
        for (const std::string name : {"Fixed", "Plain", "Added"})
        {
            EXPECT_EQ(peer.Own<CIntegerPtr>(name)->GetValue(), peer.OtherInteger(name)) << name << " at " << index;
            EXPECT_EQ(peer.Own<CRegisterPtr>(name)->GetAddress(), static_cast<std::int64_t>(arv_gc_register_get_address(
                                                                      ARV_GC_REGISTER(peer.Other(name)), nullptr)))
                << name << " at " << index;
        }
    }
}

TEST(ArvComparisonValue, deviationPropertyOfAVariableIsThatProperty)
{
    CPeer peer("<Integer Name=\"Width\"><Value>7</Value><Min>0</Min><Max>640</Max></Integer>\n"
               "<IntSwissKnife Name=\"Rest\"><pVariable Name=\"VAR.Max\">Width</pVariable>"
               "<pVariable Name=\"VAR\">Width</pVariable><Formula>VAR.Max - VAR</Formula></IntSwissKnife>\n");
    EXPECT_EQ(peer.Own<CIntegerPtr>("Rest")->GetValue(), 633);
    EXPECT_NE(peer.OtherInteger("Rest"), 633);
}

TEST(ArvComparisonValue, deviationDivisionByZeroIsAnError)
{
    CPeer peer(Register("A", 0x4000) + "<IntSwissKnife Name=\"Quotient\"><pVariable Name=\"A\">A</pVariable>"
                                       "<Formula>10 / A</Formula></IntSwissKnife>\n");
    peer.Poke(0x4000, {0, 0, 0, 0});
    EXPECT_THROW(peer.Own<CIntegerPtr>("Quotient")->GetValue(), GenICam::RuntimeException);
    peer.Poke(0x4000, {0, 0, 0, 5});
    EXPECT_EQ(peer.Own<CIntegerPtr>("Quotient")->GetValue(), 2);
    EXPECT_EQ(peer.OtherInteger("Quotient"), 2);
}

TEST(ArvComparisonValue, deviationDanglingReferenceIsRefusedWithTheName)
{
    const std::string text = "<Integer Name=\"Loose\"><pValue>Nowhere</pValue></Integer>\n";
    try
    {
        CPeer peer(text);
        FAIL() << "the description was accepted";
    }
    catch (const GenICam::GenericException& error)
    {
        EXPECT_NE(std::string(error.GetDescription()).find("Nowhere"), std::string::npos) << error.GetDescription();
        EXPECT_NE(std::string(error.GetDescription()).find("Loose"), std::string::npos) << error.GetDescription();
    }
}

TEST(ArvComparisonValue, deviationValueOfNoEntryIsNoEntryButStillAValue)
{
    CPeer peer(Register("A", 0x4000) +
               "<Enumeration Name=\"Mode\"><EnumEntry Name=\"One\"><Value>1</Value></EnumEntry>"
               "<EnumEntry Name=\"Two\"><Value>2</Value></EnumEntry><pValue>A</pValue></Enumeration>\n");
    peer.Poke(0x4000, kSeven);
    EXPECT_EQ(peer.Own<CEnumerationPtr>("Mode")->GetIntValue(), 7);
    EXPECT_EQ(peer.Own<CEnumerationPtr>("Mode")->GetCurrentEntry(), nullptr);
    EXPECT_THROW(peer.Own<CEnumerationPtr>("Mode")->ToString(), GenICam::GenericException);
}

TEST(ArvComparisonValue, deviationValuesOffTheIncrementAreRefused)
{
    CPeer peer(Register("A", 0x4000) + "<Integer Name=\"Step\"><pValue>A</pValue><Min>0</Min><Max>100</Max>"
                                       "<Inc>4</Inc></Integer>\n");
    peer.Poke(0x4000, {0, 0, 0, 4});
    EXPECT_THROW(peer.Own<CIntegerPtr>("Step")->SetValue(6), GenICam::OutOfRangeException);
    EXPECT_EQ(peer.Peek(0x4000, 4), (std::vector<std::uint8_t>{0, 0, 0, 4}));
    EXPECT_TRUE(peer.SetOtherInteger("Step", 6));
}
