// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formulamath.h"

#include <cmath>
#include <stdexcept>

namespace GenApi
{
namespace Internal
{
namespace FormulaMath
{
namespace
{

constexpr double kTwoToThe63 = 9223372036854775808.0;

[[noreturn]] void Overflow()
{
    throw std::overflow_error("integer overflow");
}

SFormulaValue Finite(double value)
{
    if (!std::isfinite(value))
    {
        throw std::overflow_error("result is no finite number");
    }
    return SFormulaValue::FromFloat(value);
}

double Domain(bool isInside, double argument, const char* what)
{
    if (!isInside)
    {
        throw std::domain_error(what);
    }
    return argument;
}

std::int64_t RangeChecked(double value)
{
    if (!(value >= -kTwoToThe63 && value < kTwoToThe63))
    {
        throw std::overflow_error("value does not fit a 64-bit integer");
    }
    return static_cast<std::int64_t>(value);
}

std::int64_t IntegerPower(std::int64_t base, std::int64_t exponent)
{
    std::int64_t result = 1;
    while (exponent > 0)
    {
        if ((exponent & 1) != 0 && __builtin_mul_overflow(result, base, &result))
        {
            Overflow();
        }
        exponent >>= 1;
        if (exponent > 0 && __builtin_mul_overflow(base, base, &base))
        {
            Overflow();
        }
    }
    return result;
}

SFormulaValue IntegerArithmetic(EFormulaOp op, std::int64_t left, std::int64_t right)
{
    std::int64_t result = 0;
    bool hasOverflow = false;
    switch (op)
    {
    case EFormulaOp::Add:
        hasOverflow = __builtin_add_overflow(left, right, &result);
        break;
    case EFormulaOp::Subtract:
        hasOverflow = __builtin_sub_overflow(left, right, &result);
        break;
    case EFormulaOp::Multiply:
        hasOverflow = __builtin_mul_overflow(left, right, &result);
        break;
    case EFormulaOp::Power:
        result = IntegerPower(left, right);
        break;
    default: // Divide, Remainder
        if (right == 0)
        {
            throw std::domain_error("division by zero");
        }
        if (right == -1)
        {
            // The quotient of the smallest integer traps in the processor.
            hasOverflow = op == EFormulaOp::Divide && __builtin_sub_overflow(std::int64_t{0}, left, &result);
        }
        else
        {
            result = op == EFormulaOp::Divide ? left / right : left % right;
        }
    }
    if (hasOverflow)
    {
        Overflow();
    }
    return SFormulaValue::FromInteger(result);
}

SFormulaValue FloatArithmetic(EFormulaOp op, double left, double right)
{
    switch (op)
    {
    case EFormulaOp::Add:
        return Finite(left + right);
    case EFormulaOp::Subtract:
        return Finite(left - right);
    case EFormulaOp::Multiply:
        return Finite(left * right);
    case EFormulaOp::Power:
        Domain(left != 0.0 || right >= 0.0, left, "division by zero");
        Domain(left >= 0.0 || right == std::floor(right), left, "fractional power of a negative number");
        return Finite(std::pow(left, right));
    case EFormulaOp::Divide:
        Domain(right != 0.0, right, "division by zero");
        return Finite(left / right);
    default: // Remainder
        Domain(right != 0.0, right, "division by zero");
        return Finite(std::fmod(left, right));
    }
}

SFormulaValue Arithmetic(EFormulaOp op, EFormulaKind kind, const SFormulaValue& left, const SFormulaValue& right)
{
    bool isInteger = kind == EFormulaKind::Integer && !left.isFloat && !right.isFloat;
    // A negative power of an integer is a fraction.
    isInteger = isInteger && !(op == EFormulaOp::Power && right.integer < 0);
    return isInteger ? IntegerArithmetic(op, left.integer, right.integer)
                     : FloatArithmetic(op, ToFloat(left), ToFloat(right));
}

SFormulaValue Shift(EFormulaOp op, std::int64_t value, std::int64_t distance)
{
    if (distance < 0 || distance > 63)
    {
        throw std::domain_error("shift by a distance outside 0..63");
    }
    return SFormulaValue::FromInteger(op == EFormulaOp::ShiftLeft
                                          ? static_cast<std::int64_t>(static_cast<std::uint64_t>(value) << distance)
                                          : value >> distance);
}

/** Compares an integer with a real number without rounding the integer; -1, 0, 1. */
int CompareMixed(std::int64_t integer, double real)
{
    if (real >= kTwoToThe63)
    {
        return -1;
    }
    if (real < -kTwoToThe63)
    {
        return 1;
    }
    const auto truncated = static_cast<std::int64_t>(real);
    if (integer != truncated)
    {
        return integer < truncated ? -1 : 1;
    }
    const double rest = real - static_cast<double>(truncated);
    return rest > 0.0 ? -1 : rest < 0.0 ? 1 : 0;
}

int Compare(const SFormulaValue& left, const SFormulaValue& right)
{
    if ((left.isFloat && std::isnan(left.real)) || (right.isFloat && std::isnan(right.real)))
    {
        throw std::domain_error("comparison with what is no number");
    }
    if (left.isFloat && right.isFloat)
    {
        return left.real < right.real ? -1 : left.real > right.real ? 1 : 0;
    }
    if (left.isFloat)
    {
        return -CompareMixed(right.integer, left.real);
    }
    if (right.isFloat)
    {
        return CompareMixed(left.integer, right.real);
    }
    return left.integer < right.integer ? -1 : left.integer > right.integer ? 1 : 0;
}

bool Holds(EFormulaOp relation, int comparison)
{
    switch (relation)
    {
    case EFormulaOp::Equal:
        return comparison == 0;
    case EFormulaOp::NotEqual:
        return comparison != 0;
    case EFormulaOp::Less:
        return comparison < 0;
    case EFormulaOp::Greater:
        return comparison > 0;
    case EFormulaOp::LessEqual:
        return comparison <= 0;
    default: // GreaterEqual
        return comparison >= 0;
    }
}

SFormulaValue RoundToDigits(const SFormulaValue& value, const SFormulaValue& digits)
{
    const std::int64_t count = ToInteger(digits);
    if (!value.isFloat && count >= 0)
    {
        return value;
    }
    const double number = ToFloat(value);
    if (count >= 0)
    {
        // Beyond what a double distinguishes there is nothing left to round.
        const double scale = std::pow(10.0, static_cast<double>(count));
        const double scaled = number * scale;
        return std::isfinite(scaled) && std::isfinite(scale) ? Finite(std::round(scaled) / scale) : Finite(number);
    }
    const double scale = std::pow(10.0, -static_cast<double>(count));
    return std::isfinite(scale) ? Finite(std::round(number / scale) * scale) : SFormulaValue::FromFloat(0.0);
}

SFormulaValue Magnitude(EFormulaOp op, EFormulaKind kind, const SFormulaValue& operand)
{
    if (kind == EFormulaKind::Integer && !operand.isFloat)
    {
        if (op == EFormulaOp::Abs && operand.integer >= 0)
        {
            return operand;
        }
        return IntegerArithmetic(EFormulaOp::Subtract, 0, operand.integer);
    }
    const double value = ToFloat(operand);
    return Finite(op == EFormulaOp::Abs ? std::fabs(value) : -value);
}

SFormulaValue Whole(EFormulaOp op, const SFormulaValue& operand)
{
    if (!operand.isFloat)
    {
        return operand;
    }
    switch (op)
    {
    case EFormulaOp::Trunc:
        return Finite(std::trunc(operand.real));
    case EFormulaOp::Floor:
        return Finite(std::floor(operand.real));
    case EFormulaOp::Ceil:
        return Finite(std::ceil(operand.real));
    default: // Round
        return Finite(std::round(operand.real));
    }
}

SFormulaValue RealFunction(EFormulaOp op, double x)
{
    switch (op)
    {
    case EFormulaOp::Atan:
        return Finite(std::atan(x));
    case EFormulaOp::Cos:
        return Finite(std::cos(x));
    case EFormulaOp::Sin:
        return Finite(std::sin(x));
    case EFormulaOp::Tan:
        return Finite(std::tan(x));
    case EFormulaOp::Exp:
        return Finite(std::exp(x));
    case EFormulaOp::Ln:
        return Finite(std::log(Domain(x > 0.0, x, "logarithm of a number that is not positive")));
    case EFormulaOp::Lg:
        return Finite(std::log10(Domain(x > 0.0, x, "logarithm of a number that is not positive")));
    case EFormulaOp::Sqrt:
        return Finite(std::sqrt(Domain(x >= 0.0, x, "square root of a negative number")));
    case EFormulaOp::Asin:
        return Finite(std::asin(Domain(x >= -1.0 && x <= 1.0, x, "arc sine of a number outside -1..1")));
    default: // Acos
        return Finite(std::acos(Domain(x >= -1.0 && x <= 1.0, x, "arc cosine of a number outside -1..1")));
    }
}

} // namespace

double ToFloat(const SFormulaValue& value)
{
    return value.isFloat ? value.real : static_cast<double>(value.integer);
}

std::int64_t ToInteger(const SFormulaValue& value)
{
    return value.isFloat ? RangeChecked(std::trunc(value.real)) : value.integer;
}

std::int64_t ToNearestInteger(const SFormulaValue& value)
{
    return value.isFloat ? RangeChecked(std::round(value.real)) : value.integer;
}

bool IsTrue(const SFormulaValue& value)
{
    return value.isFloat ? value.real != 0.0 : value.integer != 0;
}

SFormulaValue Unary(EFormulaOp op, EFormulaKind kind, const SFormulaValue& operand)
{
    switch (op)
    {
    case EFormulaOp::Truth:
        return SFormulaValue::FromInteger(IsTrue(operand) ? 1 : 0);
    case EFormulaOp::BitNot:
        return SFormulaValue::FromInteger(~ToInteger(operand));
    case EFormulaOp::Sgn:
        return SFormulaValue::FromInteger(Compare(operand, SFormulaValue::FromInteger(0)));
    case EFormulaOp::Negate:
    case EFormulaOp::Abs:
        return Magnitude(op, kind, operand);
    case EFormulaOp::Trunc:
    case EFormulaOp::Floor:
    case EFormulaOp::Ceil:
    case EFormulaOp::Round:
        return Whole(op, operand);
    default:
        return RealFunction(op, ToFloat(operand));
    }
}

SFormulaValue Binary(EFormulaOp op, EFormulaKind kind, const SFormulaValue& left, const SFormulaValue& right)
{
    switch (op)
    {
    case EFormulaOp::BitAnd:
        return SFormulaValue::FromInteger(ToInteger(left) & ToInteger(right));
    case EFormulaOp::BitOr:
        return SFormulaValue::FromInteger(ToInteger(left) | ToInteger(right));
    case EFormulaOp::BitXor:
        return SFormulaValue::FromInteger(ToInteger(left) ^ ToInteger(right));
    case EFormulaOp::ShiftLeft:
    case EFormulaOp::ShiftRight:
        return Shift(op, ToInteger(left), ToInteger(right));
    case EFormulaOp::Equal:
    case EFormulaOp::NotEqual:
    case EFormulaOp::Less:
    case EFormulaOp::Greater:
    case EFormulaOp::LessEqual:
    case EFormulaOp::GreaterEqual:
        return SFormulaValue::FromInteger(Holds(op, Compare(left, right)) ? 1 : 0);
    case EFormulaOp::RoundDigits:
        return RoundToDigits(left, right);
    default:
        return Arithmetic(op, kind, left, right);
    }
}

} // namespace FormulaMath
} // namespace Internal
} // namespace GenApi
