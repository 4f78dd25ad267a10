// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formula.h"

#include "genapi/exceptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

using GenApi::Internal::CFormula;
using GenApi::Internal::EFormulaKind;
using GenApi::Internal::SFormulaValue;
using GenICam::LogicalErrorException;
using GenICam::RuntimeException;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

using Names = std::map<std::string, std::string>;

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

std::vector<SFormulaValue> Values(const std::vector<std::int64_t>& values)
{
    std::vector<SFormulaValue> result;
    for (const std::int64_t value : values)
    {
        result.push_back(SFormulaValue::FromInteger(value));
    }
    return result;
}

std::int64_t Int(const std::string& text, const std::vector<std::int64_t>& values = {}, const Names& names = {})
{
    const std::vector<SFormulaValue> numbers = Values(values);
    return CFormula::Parse(text, EFormulaKind::Integer, names).EvaluateInteger(numbers.data(), numbers.size());
}

double Real(const std::string& text, const std::vector<double>& values = {})
{
    std::vector<SFormulaValue> numbers;
    for (const double value : values)
    {
        numbers.push_back(SFormulaValue::FromFloat(value));
    }
    return CFormula::Parse(text, EFormulaKind::Float).EvaluateFloat(numbers.data(), numbers.size());
}

template <class E, class F> std::string MessageOf(F function)
{
    try
    {
        function();
    }
    catch (const E& error)
    {
        return error.GetDescription();
    }
    catch (const std::exception& error)
    {
        return std::string("other exception: ") + error.what();
    }
    return "no exception";
}

std::string ParseError(const std::string& text, const Names& names = {}, EFormulaKind kind = EFormulaKind::Integer)
{
    return MessageOf<LogicalErrorException>([&] { CFormula::Parse(text, kind, names); });
}

std::string IntError(const std::string& text, const std::vector<std::int64_t>& values = {})
{
    return MessageOf<RuntimeException>([&] { Int(text, values); });
}

std::string RealError(const std::string& text, const std::vector<double>& values = {})
{
    return MessageOf<RuntimeException>([&] { Real(text, values); });
}

std::string Repeat(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
    {
        result += text;
    }
    return result;
}

} // namespace

TEST(Formula, integerArithmeticHasTheUsualPrecedence)
{
    EXPECT_EQ(Int("2+3*4"), 14);
    EXPECT_EQ(Int("(2+3)*4"), 20);
    EXPECT_EQ(Int("20-5-3"), 12);
    EXPECT_EQ(Int("100/10/5"), 2);
    EXPECT_EQ(Int("7%4*2"), 6);
    EXPECT_EQ(Int("1+2<<3"), 24);
    EXPECT_EQ(Int("1<<2>3"), 1);
    EXPECT_EQ(Int("1|2^3&2"), 1);
    EXPECT_EQ(Int("6&3=3"), 0); // comparisons bind tighter than bits, as in C
}

TEST(Formula, integerDivisionTruncatesTowardsZero)
{
    EXPECT_EQ(Int("7/2"), 3);
    EXPECT_EQ(Int("-7/2"), -3);
    EXPECT_EQ(Int("-7%2"), -1);
    EXPECT_EQ(Int("7%-2"), 1);
}

TEST(Formula, integersKeepAllSixtyFourBits)
{
    EXPECT_EQ(Int("A+1", {kMax - 1}), kMax);
    EXPECT_EQ(Int("9007199254740993*1"), 9007199254740993);
    EXPECT_EQ(Int("9223372036854775807"), kMax);
    EXPECT_EQ(Int("-9223372036854775808"), kMin);
}

TEST(Formula, hexadecimalLiteralsAreBitPatterns)
{
    EXPECT_EQ(Int("0x1F"), 31);
    EXPECT_EQ(Int("0XffFF"), 65535);
    EXPECT_EQ(Int("0xFFFFFFFFFFFFFFFF"), -1);
    EXPECT_EQ(Int("0x8000000000000000"), kMin);
}

TEST(Formula, powerIsRightAssociativeAndBindsTighterThanSigns)
{
    EXPECT_EQ(Int("2**3**2"), 512);
    EXPECT_EQ(Int("-2**2"), -4);
    EXPECT_EQ(Int("(-2)**3"), -8);
    EXPECT_EQ(Int("2*3**2"), 18);
    EXPECT_EQ(Int("2**62"), std::int64_t{1} << 62);
    EXPECT_EQ(Int("0**0"), 1);
    EXPECT_DOUBLE_EQ(Real("2**-1"), 0.5);
    EXPECT_EQ(Int("2**-1*4"), 2);
}

TEST(Formula, bitOperatorsOfIntegers)
{
    EXPECT_EQ(Int("0xF0|0x0F"), 0xFF);
    EXPECT_EQ(Int("0xFF&0x3C"), 0x3C);
    EXPECT_EQ(Int("0xFF^0x0F"), 0xF0);
    EXPECT_EQ(Int("~0"), -1);
    EXPECT_EQ(Int("~5&0xFF"), 0xFA);
    EXPECT_EQ(Int("--5"), 5);
    EXPECT_EQ(Int("+-5"), -5);
}

TEST(Formula, shiftsWorkOnThePatternAndKeepTheSignToTheRight)
{
    EXPECT_EQ(Int("1<<63"), kMin);
    EXPECT_EQ(Int("-8>>1"), -4);
    EXPECT_EQ(Int("A<<0", {-5}), -5);
    EXPECT_THAT(IntError("1<<64"), HasSubstr("0..63"));
    EXPECT_THAT(IntError("1>>-1"), HasSubstr("0..63"));
}

TEST(Formula, comparisonsGiveZeroOrOne)
{
    EXPECT_EQ(Int("3=3"), 1);
    EXPECT_EQ(Int("3<>3"), 0);
    EXPECT_EQ(Int("2<3"), 1);
    EXPECT_EQ(Int("2>3"), 0);
    EXPECT_EQ(Int("3<=3"), 1);
    EXPECT_EQ(Int("2>=3"), 0);
}

TEST(Formula, equalityAsInCIsTolerated)
{
    EXPECT_EQ(Int("3==3"), 1);
    EXPECT_EQ(Int("3!=3"), 0);
}

TEST(Formula, integerAndFloatAreComparedWithoutRounding)
{
    const SFormulaValue values[] = {SFormulaValue::FromInteger(9007199254740993),
                                    SFormulaValue::FromFloat(9007199254740992.0)};
    EXPECT_EQ(CFormula::Parse("A=B", EFormulaKind::Float).EvaluateInteger(values, 2), 0);
    EXPECT_EQ(CFormula::Parse("A>B", EFormulaKind::Float).EvaluateInteger(values, 2), 1);
    EXPECT_EQ(CFormula::Parse("B<A", EFormulaKind::Integer)
                  .EvaluateInteger(std::vector<SFormulaValue>{values[1], values[0]}.data(), 2),
              1);
}

TEST(Formula, logicalOperatorsGiveZeroOrOne)
{
    EXPECT_EQ(Int("5&&7"), 1);
    EXPECT_EQ(Int("5&&0"), 0);
    EXPECT_EQ(Int("0||7"), 1);
    EXPECT_EQ(Int("0||0"), 0);
    EXPECT_EQ(Int("1||0&&0"), 1);
    EXPECT_DOUBLE_EQ(Real("0.5&&0.25"), 1.0);
}

TEST(Formula, logicalOperatorsDoNotEvaluateWhatIsDecided)
{
    EXPECT_EQ(Int("A<>0&&10/A>1", {0}), 0);
    EXPECT_EQ(Int("A=0||10/A>1", {0}), 1);
}

TEST(Formula, conditionalTakesOneBranchOnly)
{
    EXPECT_EQ(Int("A?10/A:-1", {0}), -1);
    EXPECT_EQ(Int("A?10/A:-1", {5}), 2);
    EXPECT_EQ(Int("1?2:1/0"), 2);
}

TEST(Formula, conditionalsNestToTheRight)
{
    const std::string text = "(A=0)?10:(A=1)?20:(A=2)?30:40";
    EXPECT_EQ(Int(text, {0}), 10);
    EXPECT_EQ(Int(text, {1}), 20);
    EXPECT_EQ(Int(text, {2}), 30);
    EXPECT_EQ(Int(text, {3}), 40);
    EXPECT_EQ(Int("1?0?1:2:3"), 2);
}

TEST(Formula, floatDivisionKeepsTheFraction)
{
    EXPECT_DOUBLE_EQ(Real("1/2"), 0.5);
    const SFormulaValue values[] = {SFormulaValue::FromInteger(1), SFormulaValue::FromInteger(4)};
    EXPECT_DOUBLE_EQ(CFormula::Parse("A/B", EFormulaKind::Float).EvaluateFloat(values, 2), 0.25);
}

TEST(Formula, floatLiteralsOfEveryForm)
{
    EXPECT_DOUBLE_EQ(Real("1.5"), 1.5);
    EXPECT_DOUBLE_EQ(Real(".25"), 0.25);
    EXPECT_DOUBLE_EQ(Real("5."), 5.0);
    EXPECT_DOUBLE_EQ(Real("1e3"), 1000.0);
    EXPECT_DOUBLE_EQ(Real("1.5E-3"), 0.0015);
    EXPECT_DOUBLE_EQ(Real("2e+2"), 200.0);
    EXPECT_DOUBLE_EQ(Real("18446744073709551616"), 18446744073709551616.0);
}

TEST(Formula, numbersAreReadIndependentlyOfTheLocale)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "C"})
    {
        if (std::setlocale(LC_NUMERIC, name) != nullptr)
        {
            EXPECT_DOUBLE_EQ(Real("1.5+0.25"), 1.75) << name;
        }
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(Formula, floatBitOperatorsTruncateToIntegers)
{
    EXPECT_DOUBLE_EQ(Real("7.9&3.9"), 3.0);
    EXPECT_DOUBLE_EQ(Real("1.0<<4"), 16.0);
    EXPECT_DOUBLE_EQ(Real("~0.5"), -1.0);
    EXPECT_THAT(RealError("1e30&1"), HasSubstr("64-bit integer"));
}

TEST(Formula, integerOperandsOfFloatBitOperatorsKeepAllBits)
{
    const SFormulaValue value = SFormulaValue::FromInteger(0x7FFFFFFFFFFFFFFF);
    EXPECT_DOUBLE_EQ(CFormula::Parse("A&0xFF", EFormulaKind::Float).EvaluateFloat(&value, 1), 255.0);
}

TEST(Formula, remainderOfFloats)
{
    EXPECT_DOUBLE_EQ(Real("7.5%2"), 1.5);
    EXPECT_DOUBLE_EQ(Real("-7.5%2"), -1.5);
    EXPECT_THAT(RealError("1%0"), HasSubstr("division by zero"));
}

TEST(Formula, functionsOfRealNumbers)
{
    EXPECT_DOUBLE_EQ(Real("SIN(X)", {0.5}), std::sin(0.5));
    EXPECT_DOUBLE_EQ(Real("COS(X)", {0.5}), std::cos(0.5));
    EXPECT_DOUBLE_EQ(Real("TAN(X)", {0.5}), std::tan(0.5));
    EXPECT_DOUBLE_EQ(Real("ASIN(X)", {0.5}), std::asin(0.5));
    EXPECT_DOUBLE_EQ(Real("ACOS(X)", {0.5}), std::acos(0.5));
    EXPECT_DOUBLE_EQ(Real("ATAN(X)", {0.5}), std::atan(0.5));
    EXPECT_DOUBLE_EQ(Real("EXP(X)", {0.5}), std::exp(0.5));
    EXPECT_DOUBLE_EQ(Real("LN(X)", {0.5}), std::log(0.5));
    EXPECT_DOUBLE_EQ(Real("LG(X)", {1000}), 3.0);
    EXPECT_DOUBLE_EQ(Real("SQRT(X)", {2}), std::sqrt(2.0));
}

TEST(Formula, signFunctionsKeepIntegersInAnIntegerFormula)
{
    EXPECT_EQ(Int("ABS(A)", {-9007199254740993}), 9007199254740993);
    EXPECT_EQ(Int("NEG(A)", {9007199254740993}), -9007199254740993);
    EXPECT_EQ(Int("SGN(-7)+10*SGN(0)+100*SGN(7)"), 99);
    EXPECT_DOUBLE_EQ(Real("SGN(-0.5)"), -1.0);
    EXPECT_DOUBLE_EQ(Real("ABS(-0.5)"), 0.5);
    EXPECT_DOUBLE_EQ(Real("NEG(0.5)"), -0.5);
}

TEST(Formula, roundingFunctions)
{
    EXPECT_DOUBLE_EQ(Real("TRUNC(-1.7)"), -1.0);
    EXPECT_DOUBLE_EQ(Real("FLOOR(-1.2)"), -2.0);
    EXPECT_DOUBLE_EQ(Real("CEIL(-1.7)"), -1.0);
    EXPECT_DOUBLE_EQ(Real("CEIL(1.2)"), 2.0);
    EXPECT_DOUBLE_EQ(Real("ROUND(2.5)"), 3.0);
    EXPECT_DOUBLE_EQ(Real("ROUND(-2.5)"), -3.0);
}

TEST(Formula, roundTakesDigits)
{
    EXPECT_DOUBLE_EQ(Real("ROUND(3.14159,2)"), 3.14);
    EXPECT_DOUBLE_EQ(Real("ROUND(1234.5,-2)"), 1200.0);
    EXPECT_DOUBLE_EQ(Real("ROUND(1.25,400)"), 1.25);
    EXPECT_DOUBLE_EQ(Real("ROUND(1.25,-400)"), 0.0);
    EXPECT_DOUBLE_EQ(Real("ROUND(2.5,0)"), 3.0);
}

TEST(Formula, constantsPiAndE)
{
    EXPECT_DOUBLE_EQ(Real("PI"), std::acos(-1.0));
    EXPECT_DOUBLE_EQ(Real("2*PI()"), 2 * std::acos(-1.0));
    EXPECT_DOUBLE_EQ(Real("LN(E)+LN(E())"), 2.0);
}

TEST(Formula, declaredVariablesHidePiAndE)
{
    const CFormula formula = CFormula::Parse("E+PI", EFormulaKind::Float, {}, {}, {"E"});
    EXPECT_THAT(formula.GetVariableNames(), ElementsAre("E"));
}

TEST(Formula, fractionInAnIntegerFormulaIsTruncatedAtTheEnd)
{
    EXPECT_EQ(Int("A*0.5", {7}), 3);
    EXPECT_EQ(Int("A*0.5*2", {7}), 7);
    EXPECT_EQ(Int("SQRT(17)"), 4);
    EXPECT_EQ(Int("-3.7"), -3);
}

TEST(Formula, integerResultOfAFloatFormulaIsRounded)
{
    const SFormulaValue value = SFormulaValue::FromFloat(0.57);
    EXPECT_EQ(CFormula::Parse("A*100", EFormulaKind::Float).EvaluateInteger(&value, 1), 57);
}

TEST(Formula, variablesAreListedOnceInTheOrderOfUse)
{
    const CFormula formula = CFormula::Parse("B+A*B-VAR.Max+VAR.Entry.X+VAR", EFormulaKind::Integer);
    EXPECT_THAT(formula.GetVariableNames(), ElementsAre("B", "A", "VAR.Max", "VAR.Entry.X", "VAR"));
    const auto values = Values({3, 5, 100, 1000, 10000});
    EXPECT_EQ(formula.EvaluateInteger(values.data(), values.size()), 3 + 15 - 100 + 1000 + 10000);
}

TEST(Formula, variableMayBeCalledAsAFunction)
{
    EXPECT_EQ(Int("ABS+1", {4}), 5);
}

TEST(Formula, namedSubExpressionsAreInsertedAsAWhole)
{
    EXPECT_EQ(Int("SUM*2", {3, 4}, {{"SUM", "A+B"}}), 14);
    EXPECT_EQ(Int("X-X", {7}, {{"X", "Y?A:1"}, {"Y", "A>5"}}), 0);
    EXPECT_EQ(Int("1+X*2", {7}, {{"X", "A&&1||0"}}), 3);
}

TEST(Formula, constantsByName)
{
    const CFormula formula = CFormula::Parse("K*X", EFormulaKind::Float, {}, {{"K", SFormulaValue::FromFloat(2.5)}});
    EXPECT_THAT(formula.GetVariableNames(), ElementsAre("X"));
    const SFormulaValue value = SFormulaValue::FromInteger(4);
    EXPECT_DOUBLE_EQ(formula.EvaluateFloat(&value, 1), 10.0);
}

TEST(Formula, circularSubExpressionsAreRefusedWithTheirNames)
{
    EXPECT_THAT(ParseError("A", {{"A", "B+1"}, {"B", "C"}, {"C", "B"}}), HasSubstr("\"B\" -> \"C\" -> \"B\""));
    EXPECT_THAT(ParseError("A", {{"A", "A"}}), HasSubstr("\"A\" -> \"A\""));
}

TEST(Formula, longChainOfSubExpressionsIsRefused)
{
    Names names;
    for (int i = 0; i < 2000; ++i)
    {
        names["N" + std::to_string(i)] = "N" + std::to_string(i + 1);
    }
    EXPECT_THAT(ParseError("N0", names), HasSubstr("nested deeper"));
}

TEST(Formula, subExpressionsThatMultiplyBeyondMeasureAreRefused)
{
    Names names;
    for (int i = 0; i < 60; ++i)
    {
        const std::string next = "N" + std::to_string(i + 1);
        names["N" + std::to_string(i)] = next + "+" + next;
    }
    EXPECT_THAT(ParseError("N0", names), HasSubstr("operations"));
}

TEST(Formula, errorInASubExpressionNamesIt)
{
    EXPECT_THAT(ParseError("1+X", {{"X", "2*"}}), HasSubstr("named sub-expression \"X\""));
}

TEST(Formula, deepNestingIsRefused)
{
    EXPECT_EQ(Int(Repeat("(", 150) + "1" + Repeat(")", 150)), 1);
    EXPECT_THAT(ParseError(Repeat("(", 100000) + "1"), HasSubstr("nested deeper"));
    EXPECT_THAT(ParseError(Repeat("-", 100000) + "1"), HasSubstr("nested deeper"));
    EXPECT_THAT(ParseError(Repeat("1?", 100000)), HasSubstr("nested deeper"));
    EXPECT_THAT(ParseError(Repeat("1**", 100000)), HasSubstr("nested deeper"));
    EXPECT_THAT(ParseError(Repeat("ABS(", 100000)), HasSubstr("nested deeper"));
}

TEST(Formula, longChainsOfOneOperatorAreNoNesting)
{
    EXPECT_EQ(Int("0" + Repeat("+1", 5000)), 5000);
    EXPECT_EQ(Int("0" + Repeat("||0", 5000)), 0);
    EXPECT_THAT(ParseError("0" + Repeat("+1", 50000)), HasSubstr("operations"));
}

TEST(Formula, intermediateResultsBeyondTheSmallStackAreRight)
{
    EXPECT_EQ(Int(Repeat("1+(", 100) + "0" + Repeat(")", 100)), 100);
    EXPECT_THAT(ParseError(Repeat("1|1^1&1=1<1<<1+1*(", 100) + "0" + Repeat(")", 100)), HasSubstr("intermediate"));
}

TEST(Formula, divisionByZeroIsAnErrorWithTextAndPosition)
{
    EXPECT_THAT(IntError("A / B", {1, 0}), HasSubstr("division by zero at character 3 of the formula \"A / B\""));
    EXPECT_THAT(IntError("1%0"), HasSubstr("division by zero"));
    EXPECT_THAT(RealError("1/0"), HasSubstr("division by zero"));
    EXPECT_THAT(RealError("0**-1"), HasSubstr("division by zero"));
}

TEST(Formula, errorInASubExpressionAtEvaluationShowsItsText)
{
    EXPECT_THAT(MessageOf<RuntimeException>([] { Int("1+X", {0}, {{"X", "5/A"}}); }), HasSubstr("\"5/A\""));
}

TEST(Formula, integerOverflowIsAnError)
{
    EXPECT_THAT(IntError("A+1", {kMax}), HasSubstr("integer overflow"));
    EXPECT_THAT(IntError("A-1", {kMin}), HasSubstr("integer overflow"));
    EXPECT_THAT(IntError("A*2", {kMax}), HasSubstr("integer overflow"));
    EXPECT_THAT(IntError("A/-1", {kMin}), HasSubstr("integer overflow"));
    EXPECT_THAT(IntError("-A", {kMin}), HasSubstr("integer overflow"));
    EXPECT_THAT(IntError("ABS(A)", {kMin}), HasSubstr("integer overflow"));
    EXPECT_THAT(IntError("2**63"), HasSubstr("integer overflow"));
    EXPECT_EQ(Int("A%-1", {kMin}), 0);
}

TEST(Formula, resultBeyondSixtyFourBitsIsAnError)
{
    EXPECT_THAT(IntError("1e30"), HasSubstr("64-bit integer"));
    EXPECT_THAT(IntError("9.3e18*1"), HasSubstr("64-bit integer"));
}

TEST(Formula, floatOverflowIsAnError)
{
    EXPECT_THAT(RealError("1e300*1e300"), HasSubstr("no finite number"));
    EXPECT_THAT(RealError("EXP(1000)"), HasSubstr("no finite number"));
    EXPECT_THAT(RealError("10**400"), HasSubstr("no finite number"));
    EXPECT_THAT(ParseError("1e400", {}, EFormulaKind::Float), HasSubstr("out of range"));
}

TEST(Formula, argumentsOutsideTheDomainAreErrors)
{
    EXPECT_THAT(RealError("SQRT(-1)"), HasSubstr("square root"));
    EXPECT_THAT(RealError("LN(0)"), HasSubstr("logarithm"));
    EXPECT_THAT(RealError("LG(-1)"), HasSubstr("logarithm"));
    EXPECT_THAT(RealError("ASIN(1.5)"), HasSubstr("arc sine"));
    EXPECT_THAT(RealError("ACOS(-1.5)"), HasSubstr("arc cosine"));
    EXPECT_THAT(RealError("(-8)**0.5"), HasSubstr("power"));
}

TEST(Formula, valuesThatAreNoNumbersNeverComeThrough)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_THAT(RealError("X", {nan}), HasSubstr("no finite number"));
    EXPECT_THAT(RealError("X", {inf}), HasSubstr("no finite number"));
    EXPECT_THAT(RealError("X>1", {nan}), HasSubstr("no number"));
    EXPECT_THAT(RealError("X&1", {nan}), HasSubstr("64-bit integer"));
    EXPECT_THAT(RealError("SQRT(X)", {nan}), HasSubstr("square root"));
    EXPECT_THAT(RealError("X+1", {inf}), HasSubstr("no finite number"));
}

TEST(Formula, textThatIsNoFormulaIsRefusedWithThePosition)
{
    EXPECT_THAT(ParseError(""), HasSubstr("unexpected end at character 1"));
    EXPECT_THAT(ParseError("   "), HasSubstr("unexpected end"));
    EXPECT_THAT(ParseError("1+"), HasSubstr("unexpected end at character 3 of the formula \"1+\""));
    EXPECT_THAT(ParseError("1 2"), HasSubstr("unexpected \"2\" at character 3"));
    EXPECT_THAT(ParseError("(1"), HasSubstr("expected \")\" but found the end"));
    EXPECT_THAT(ParseError("1)"), HasSubstr("unexpected \")\""));
    EXPECT_THAT(ParseError("1?2"), HasSubstr("expected \":\""));
    EXPECT_THAT(ParseError("*2"), HasSubstr("expected a value instead of \"*\" at character 1"));
    EXPECT_THAT(ParseError("1#2"), HasSubstr("unexpected character at character 2"));
    EXPECT_THAT(ParseError("A.+1"), HasSubstr("unexpected character"));
}

TEST(Formula, malformedNumbersAreRefused)
{
    EXPECT_THAT(ParseError("0x"), HasSubstr("hexadecimal"));
    EXPECT_THAT(ParseError("0x1G"), HasSubstr("hexadecimal"));
    EXPECT_THAT(ParseError("0x10000000000000000"), HasSubstr("64 bits"));
    EXPECT_THAT(ParseError("12abc"), HasSubstr("malformed"));
    EXPECT_THAT(ParseError("1.2.3"), HasSubstr("malformed"));
    EXPECT_THAT(ParseError("1e"), HasSubstr("exponent"));
    EXPECT_THAT(ParseError("9223372036854775808"), HasSubstr("out of range"));
    EXPECT_THAT(ParseError("99999999999999999999"), HasSubstr("out of range"));
}

TEST(Formula, wrongFunctionCallsAreRefused)
{
    EXPECT_THAT(ParseError("FOO(1)"), HasSubstr("unknown function \"FOO\""));
    EXPECT_THAT(ParseError("ABS()"), HasSubstr("expected a value"));
    EXPECT_THAT(ParseError("ABS(1,2)"), HasSubstr("expected \")\""));
    EXPECT_THAT(ParseError("PI(1)"), HasSubstr("expected \")\""));
}

TEST(Formula, longTextIsShortenedAroundThePlaceOfTheError)
{
    const std::string message = ParseError("1" + Repeat("+1", 500) + "+#" + Repeat("+1", 500));
    EXPECT_THAT(message, HasSubstr("character 1003"));
    EXPECT_LT(message.size(), 200U);
}

TEST(Formula, missingValuesAreAnError)
{
    const CFormula formula = CFormula::Parse("A+B", EFormulaKind::Integer);
    const SFormulaValue value = SFormulaValue::FromInteger(1);
    EXPECT_THAT(MessageOf<LogicalErrorException>([&] { formula.EvaluateInteger(&value, 1); }), HasSubstr("\"B\""));
}

TEST(Formula, emptyFormulaRefusesEvaluation)
{
    const CFormula formula;
    EXPECT_TRUE(formula.GetVariableNames().empty());
    EXPECT_THROW(formula.EvaluateInteger(nullptr, 0), LogicalErrorException);
}
