// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/textparse.h"

#include <gtest/gtest.h>

#include <limits>

namespace GenApi
{
namespace Internal
{
namespace
{

std::int64_t IntegerOf(const char* text)
{
    std::int64_t value = -999;
    EXPECT_TRUE(ParseInteger(text, value)) << text;
    return value;
}

TEST(TextParse, integersAreDecimalOrHexadecimal)
{
    EXPECT_EQ(IntegerOf(" 42 "), 42);
    EXPECT_EQ(IntegerOf("-0x10"), -16);
    EXPECT_EQ(IntegerOf("+7"), 7);
    EXPECT_EQ(IntegerOf("0xFFFFFFFFFFFFFFFF"), -1);
    EXPECT_EQ(IntegerOf("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(IntegerOf("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
}

TEST(TextParse, whatIsNoIntegerIsRefused)
{
    std::int64_t value = 0;
    for (const char* text : {"", "-", "0x", "1.5", "12a", "9223372036854775808", "0x10000000000000000", "--1"})
    {
        EXPECT_FALSE(ParseInteger(text, value)) << text;
    }
}

TEST(TextParse, integersAreShownAsTheirRepresentationWants)
{
    EXPECT_EQ(FormatInteger(255, ERepresentation::HexNumber), "0xFF");
    EXPECT_EQ(FormatInteger(0xC0A80001, ERepresentation::IPV4Address), "192.168.0.1");
    EXPECT_EQ(FormatInteger(0x001122AABBCC, ERepresentation::MACAddress), "00:11:22:aa:bb:cc");
    EXPECT_EQ(FormatInteger(-5, ERepresentation::Linear), "-5");
}

TEST(TextParse, representedIntegersAreReadBack)
{
    std::int64_t value = 0;
    EXPECT_TRUE(ParseRepresented("192.168.0.1", ERepresentation::IPV4Address, value));
    EXPECT_EQ(value, 0xC0A80001);
    EXPECT_TRUE(ParseRepresented("00:11:22:AA:bb:cc", ERepresentation::MACAddress, value));
    EXPECT_EQ(value, 0x001122AABBCC);
    EXPECT_TRUE(ParseRepresented("fe", ERepresentation::HexNumber, value));
    EXPECT_EQ(value, 254);
    for (const char* text : {"192.168.0", "192.168.0.256", "192.168.0.1.2", "1..2.3", "192.168.0."})
    {
        EXPECT_FALSE(ParseRepresented(text, ERepresentation::IPV4Address, value)) << text;
    }
    EXPECT_FALSE(ParseRepresented("fe", ERepresentation::PureNumber, value));
}

TEST(TextParse, realNumbersHaveAPointAndSurviveTheRoundTrip)
{
    double value = 0.0;
    EXPECT_TRUE(ParseFloat(" +1.25e2 ", value));
    EXPECT_DOUBLE_EQ(value, 125.0);
    EXPECT_TRUE(ParseFloat("0x10", value));
    EXPECT_DOUBLE_EQ(value, 16.0);
    EXPECT_FALSE(ParseFloat("1,5", value));
    EXPECT_FALSE(ParseFloat("", value));
    EXPECT_TRUE(ParseFloat(FormatFloat(0.1 + 0.2, EDisplayNotation::Automatic, -1), value));
    EXPECT_EQ(value, 0.1 + 0.2);
    EXPECT_EQ(FormatFloat(1234.5, EDisplayNotation::Scientific, 2), "1.23e+03");
    EXPECT_EQ(FormatFloat(2.0, EDisplayNotation::Fixed, 3), "2.000");
}

} // namespace
} // namespace Internal
} // namespace GenApi
