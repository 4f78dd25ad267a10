// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/exceptions.h"
#include "genapi/internal/formula.h"
#include "support/seed.h"

#include <arv.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

using GenApi::Internal::CFormula;
using GenApi::Internal::EFormulaKind;
using GenApi::Internal::SFormulaValue;

namespace
{

struct SUnref
{
    void operator()(ArvEvaluator* evaluator) const { g_object_unref(evaluator); }
};

/** The formula with A and B given, computed by the independent evaluator; empty where it reports an error. */
class CPeer
{
public:
    CPeer(const std::string& formula, std::int64_t a, std::int64_t b) : m_evaluator(arv_evaluator_new(formula.c_str()))
    {
        arv_evaluator_set_int64_variable(m_evaluator.get(), "A", a);
        arv_evaluator_set_int64_variable(m_evaluator.get(), "B", b);
    }
    CPeer(const std::string& formula, double a, double b) : m_evaluator(arv_evaluator_new(formula.c_str()))
    {
        arv_evaluator_set_double_variable(m_evaluator.get(), "A", a);
        arv_evaluator_set_double_variable(m_evaluator.get(), "B", b);
    }

    std::optional<std::int64_t> Integer() { return Ask<std::int64_t>(arv_evaluator_evaluate_as_int64); }
    std::optional<double> Real() { return Ask<double>(arv_evaluator_evaluate_as_double); }

private:
    template <class T, class F> std::optional<T> Ask(F function)
    {
        GError* error = nullptr;
        const T value = static_cast<T>(function(m_evaluator.get(), &error));
        if (error != nullptr)
        {
            g_error_free(error);
            return std::nullopt;
        }
        return value;
    }

    std::unique_ptr<ArvEvaluator, SUnref> m_evaluator;
};

template <class T> std::vector<SFormulaValue> ValuesFor(const CFormula& formula, T a, T b)
{
    std::vector<SFormulaValue> values;
    for (const std::string& name : formula.GetVariableNames())
    {
        const T value = name == "A" ? a : b;
        values.push_back(std::is_same_v<T, double> ? SFormulaValue::FromFloat(static_cast<double>(value))
                                                   : SFormulaValue::FromInteger(static_cast<std::int64_t>(value)));
    }
    return values;
}

std::optional<std::int64_t> OwnInteger(const std::string& text, std::int64_t a, std::int64_t b)
{
    const CFormula formula = CFormula::Parse(text, EFormulaKind::Integer);
    const auto values = ValuesFor(formula, a, b);
    try
    {
        return formula.EvaluateInteger(values.data(), values.size());
    }
    catch (const GenICam::RuntimeException&)
    {
        return std::nullopt;
    }
}

std::optional<double> OwnReal(const std::string& text, double a, double b)
{
    const CFormula formula = CFormula::Parse(text, EFormulaKind::Float);
    const auto values = ValuesFor(formula, a, b);
    try
    {
        return formula.EvaluateFloat(values.data(), values.size());
    }
    catch (const GenICam::RuntimeException&)
    {
        return std::nullopt;
    }
}

/** Random formulas over A, B and small numbers. */
class CGenerator
{
public:
    CGenerator(std::uint64_t seed, bool isReal) : m_random(seed), m_isReal(isReal) {}

    std::string Expression(int depth)
    {
        if (depth == 0 || Below(6) == 0)
        {
            return Leaf();
        }
        switch (Below(m_isReal ? 9 : 8))
        {
        case 0:
            return "(" + Expression(depth - 1) + ")";
        case 1:
            return "(-(" + Expression(depth - 1) + "))";
        case 2:
            return "((" + Condition(depth - 1) + ")?(" + Expression(depth - 1) + "):(" + Expression(depth - 1) + "))";
        case 3:
            return "(~(" + Expression(depth - 1) + "))";
        case 8:
            return Function() + "(" + Expression(depth - 1) + ")";
        default:
            return Expression(depth - 1) + Operator() + Expression(depth - 1);
        }
    }

    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(m_random() % limit); }

private:
    /** The peer truncates a real condition, so that 0.5 would be false there: real conditions are comparisons. */
    std::string Condition(int depth)
    {
        return m_isReal ? "(" + Expression(depth) + ")<(" + Expression(depth) + ")" : Expression(depth);
    }

    std::string Leaf()
    {
        switch (Below(m_isReal ? 5 : 4))
        {
        case 0:
            return "A";
        case 1:
            return "B";
        case 2:
            return "0x" + std::string(1, "123456789abcdefABCDEF"[Below(21)]) + "7";
        case 4:
            return std::to_string(Below(50)) + std::string(Below(2) == 0 ? ".5" : ".25");
        default:
            return std::to_string(Below(20));
        }
    }

    std::string Operator()
    {
        // The last three are for integers: the peer truncates real operands there.
        static const std::vector<std::string> operators = {"+",    "-",    "*",   "/", "&",  "|",  "^",
                                                           "=",    "<>",   "<",   ">", "<=", ">=", " + ",
                                                           " << ", " >> ", " - ", "%", "&&", "||"};
        return operators[Below(operators.size() - (m_isReal ? 3 : 0))];
    }

    std::string Function()
    {
        static const std::vector<std::string> functions = {"SGN", "NEG", "ABS",   "SIN",   "COS",  "ATAN",
                                                           "EXP", "TAN", "TRUNC", "FLOOR", "CEIL", "ROUND"};
        return functions[Below(functions.size())];
    }

    std::mt19937_64 m_random;
    bool m_isReal;
};

constexpr int kFormulas = 3000;

} // namespace

TEST(ArvComparisonFormula, randomIntegerFormulasHaveTheSameValue)
{
    const std::uint64_t seed = ::Test::randomSeed();
    RecordProperty("seed", std::to_string(seed));
    SCOPED_TRACE("seed " + std::to_string(seed));
    CGenerator generator(seed, false);
    int compared = 0;
    for (int i = 0; i < kFormulas; ++i)
    {
        const std::string text = generator.Expression(4);
        const auto a = static_cast<std::int64_t>(generator.Below(2000)) - 1000;
        const auto b = static_cast<std::int64_t>(generator.Below(20));
        const std::optional<std::int64_t> own = OwnInteger(text, a, b);
        const std::optional<std::int64_t> peer = CPeer(text, a, b).Integer();
        // Ours refuses overflows and wild shifts, and leaves out what is decided already; then one side has no value.
        if (own && peer)
        {
            ASSERT_EQ(*own, *peer) << text << " with A=" << a << " B=" << b;
            ++compared;
        }
    }
    EXPECT_GT(compared, kFormulas / 2);
}

TEST(ArvComparisonFormula, generatedRealFormulasHaveTheSameValue)
{
    // Always the same formulas: a last digit more or less before a comparison or a bit operation makes another value,
    // and the peer reads decimal fractions less exactly.
    constexpr std::uint64_t seed = 20260101;
    CGenerator generator(seed, true);
    int compared = 0;
    for (int i = 0; i < kFormulas; ++i)
    {
        const std::string text = generator.Expression(3);
        const double a = static_cast<double>(generator.Below(20000)) / 16.0 - 500.0;
        const double b = static_cast<double>(generator.Below(200)) / 8.0;
        const std::optional<double> own = OwnReal(text, a, b);
        const std::optional<double> peer = CPeer(text, a, b).Real();
        if (own && peer)
        {
            const double tolerance = 1e-9 * std::max(1.0, std::fabs(*peer));
            ASSERT_NEAR(*own, *peer, tolerance) << text << " with A=" << a << " B=" << b;
            ++compared;
        }
    }
    EXPECT_GT(compared, kFormulas / 2);
}

TEST(ArvComparisonFormula, roundingToDigitsGivesTheSameNumber)
{
    for (const char* text : {"ROUND(A,0)", "ROUND(A,1)", "ROUND(A,2)", "ROUND(A*B,3)"})
    {
        for (const double a : {3.14159, -2.71828, 1234.5678, 0.0, 99.999})
        {
            EXPECT_NEAR(OwnReal(text, a, 1.5).value(), CPeer(text, a, 1.5).Real().value(), 1e-9) << text << " of " << a;
        }
    }
}

// Where the two differ, ours is what the formula says.

TEST(ArvComparisonFormula, deviationLargeIntegersKeepAllBits)
{
    EXPECT_EQ(OwnInteger("9007199254740993*1", 0, 0), 9007199254740993);
    EXPECT_NE(CPeer("9007199254740993*1", 0.0, 0.0).Integer(), 9007199254740993);
}

TEST(ArvComparisonFormula, deviationHexadecimalLiteralOfSixtyFourBitsIsAPattern)
{
    EXPECT_EQ(OwnInteger("0xFFFFFFFFFFFFFFFF", 0, 0), -1);
    EXPECT_NE(CPeer("0xFFFFFFFFFFFFFFFF", 0.0, 0.0).Integer(), -1);
}

TEST(ArvComparisonFormula, deviationOverflowIsAnError)
{
    EXPECT_EQ(OwnInteger("9223372036854775807+1", 0, 0), std::nullopt);
    EXPECT_TRUE(CPeer("9223372036854775807+1", 0.0, 0.0).Integer().has_value());
}

TEST(ArvComparisonFormula, deviationRootOfANegativeNumberIsAnError)
{
    EXPECT_EQ(OwnReal("SQRT(A)", -1.0, 0.0), std::nullopt);
    EXPECT_TRUE(CPeer("SQRT(A)", -1.0, 0.0).Real().has_value());
}

TEST(ArvComparisonFormula, deviationBranchNotTakenIsNotEvaluated)
{
    EXPECT_EQ(OwnInteger("B=0?-1:A/B", 7, 0), -1);
    EXPECT_EQ(CPeer("B=0?-1:A/B", std::int64_t{7}, std::int64_t{0}).Integer(), std::nullopt);
}

TEST(ArvComparisonFormula, deviationConditionalInsideABranchNeedsNoBrackets)
{
    EXPECT_EQ(OwnInteger("A>5?B>9?1:2:3", 7, 2), 2);
    EXPECT_NE(CPeer("A>5?B>9?1:2:3", std::int64_t{7}, std::int64_t{2}).Integer(), 2);
}

TEST(ArvComparisonFormula, deviationRemainderOfRealNumbersKeepsTheFraction)
{
    EXPECT_EQ(OwnReal("A%B", 7.5, 2.0), 1.5);
    EXPECT_NE(CPeer("A%B", 7.5, 2.0).Real(), 1.5);
}

TEST(ArvComparisonFormula, deviationFractionIsATrueCondition)
{
    EXPECT_EQ(OwnReal("A?1:2", 0.5, 0.0), 1.0);
    EXPECT_NE(CPeer("A?1:2", 0.5, 0.0).Real(), 1.0);
}

TEST(ArvComparisonFormula, deviationPowerBindsTighterThanTheSign)
{
    EXPECT_EQ(OwnInteger("-A**2", 3, 0), -9);
    EXPECT_EQ(CPeer("-A**2", std::int64_t{3}, std::int64_t{0}).Integer(), 9);
}

TEST(ArvComparisonFormula, deviationPropertiesOfVariablesAreNamesOfTheirOwn)
{
    const std::vector<std::string> names = CFormula::Parse("A.Max-A", EFormulaKind::Integer).GetVariableNames();
    EXPECT_EQ(names, (std::vector<std::string>{"A.Max", "A"}));
    EXPECT_EQ(CPeer("A.Max", std::int64_t{3}, std::int64_t{0}).Integer(), std::nullopt);
}
