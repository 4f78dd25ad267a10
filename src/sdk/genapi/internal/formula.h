// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_testexport.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace GenApi
{
namespace Internal
{

struct SFormulaCode;

/** What the formula's node is: decides how divisions, powers and sums are computed. */
enum class EFormulaKind
{
    Integer,
    Float
};

/** One number of a formula: the value of a variable, a constant, an intermediate result. */
struct SFormulaValue
{
    static SFormulaValue FromInteger(std::int64_t value) { return {value, 0.0, false}; }
    static SFormulaValue FromFloat(double value) { return {0, value, true}; }

    std::int64_t integer = 0; // the value unless isFloat
    double real = 0.0;        // the value if isFloat
    bool isFloat = false;
};

/**
 * A SwissKnife formula of the GenICam GenApi standard, compiled once and evaluated without allocation.
 *
 * Operators, loosest first: ?: || && | ^ & = <> < > <= >= << >> + - * / % unary + - ~ ** (right-associative). "=="
 * and "!=" are taken for "=" and "<>". The second operand of && and ||, and the branch of ?: that is not taken, are
 * not evaluated. Functions: SGN NEG ATAN COS SIN TAN ABS EXP LN LG SQRT TRUNC FLOOR CEIL ROUND(x[,digits]) ASIN ACOS
 * and the constants PI and E, also written PI() and E(); a variable or constant of that name comes first.
 *
 * Kind Integer: 64-bit integers, the division truncates, an overflow is an error; only what has a fractional operand or
 * a function of real numbers is computed in double, and a fractional final result is truncated. Kind Float: double;
 * & | ^ ~ << >> truncate their operands to 64-bit integers (integer operands keep all their bits), % is the remainder
 * of the truncated quotient. Hexadecimal literals are 64-bit patterns; shifts are arithmetic and work on the pattern.
 *
 * Threads: a formula is immutable, any thread may evaluate it. Copies share the code.
 */
class GENAPI_TEST_EXPORT CFormula
{
public:
    /** An empty formula; evaluating it throws LogicalErrorException. */
    CFormula() = default;

    /**
     * Compiles. namedSubExpressions are inserted where their name is used and may use each other; constants are
     * numbers by name; declaredVariables are names that are variables even if they read like a constant (E, PI).
     * Errors: LogicalErrorException for text that is no formula, with text and position; for named sub-expressions that
     * use each other in a circle, naming them; for nesting or size beyond any sensible formula.
     */
    static CFormula Parse(const std::string& text, EFormulaKind kind,
                          const std::map<std::string, std::string>& namedSubExpressions = {},
                          const std::map<std::string, SFormulaValue>& constants = {},
                          const std::set<std::string>& declaredVariables = {});

    /** Distinct names the formula reads, in the order of first use, as written: "VAR", "VAR.Max", "VAR.Entry.X". */
    const std::vector<std::string>& GetVariableNames() const;

    /**
     * Values in the order of GetVariableNames(). A Float formula's result is rounded to the nearest integer.
     * Errors: RuntimeException with text and position for a division by zero, an overflow, an argument outside a
     * function's domain, a result no 64-bit integer can hold; LogicalErrorException for too few values.
     */
    std::int64_t EvaluateInteger(const SFormulaValue* values, std::size_t count) const;
    /** As EvaluateInteger(); the result is always a finite number. */
    double EvaluateFloat(const SFormulaValue* values, std::size_t count) const;

private:
    explicit CFormula(std::shared_ptr<const SFormulaCode> code);
    SFormulaValue Evaluate(const SFormulaValue* values, std::size_t count) const;

    std::shared_ptr<const SFormulaCode> m_code;
};

} // namespace Internal
} // namespace GenApi
