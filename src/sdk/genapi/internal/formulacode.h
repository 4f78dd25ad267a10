// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/formula.h"

#include <cstdint>
#include <string>
#include <vector>

namespace GenApi
{
namespace Internal
{

/** Instructions of the stack machine a formula is compiled to. */
enum class EFormulaOp : std::uint8_t
{
    PushConstant, // operand: index of the constant
    PushVariable, // operand: index of the variable
    Add,
    Subtract,
    Multiply,
    Divide,
    Remainder,
    Power,
    BitAnd,
    BitOr,
    BitXor,
    BitNot,
    ShiftLeft,
    ShiftRight,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    Negate,
    Truth,       // any number to 0 or 1
    Jump,        // operand: distance from the next instruction
    JumpIfFalse, // pops the condition
    AndJump,     // pops the left operand; if false pushes 0 and jumps
    OrJump,      // pops the left operand; if true pushes 1 and jumps
    Sgn,
    Abs,
    Atan,
    Cos,
    Sin,
    Tan,
    Exp,
    Ln,
    Lg,
    Sqrt,
    Trunc,
    Floor,
    Ceil,
    Round,
    RoundDigits, // pops digits, then the number
    Asin,
    Acos
};

struct SFormulaInstruction
{
    EFormulaOp op = EFormulaOp::PushConstant;
    std::uint16_t text = 0;     // index of the text the instruction stems from
    std::uint32_t position = 0; // first character of the operator in that text, from 0
    std::int32_t operand = 0;
};

struct SFormulaCode
{
    /** The place of an instruction for an error text: 'at character 5 of the formula "A / B"'. */
    std::string Describe(const SFormulaInstruction& instruction) const;

    EFormulaKind kind = EFormulaKind::Integer;
    std::vector<SFormulaInstruction> instructions;
    std::vector<SFormulaValue> constants;
    std::vector<std::string> variables;
    std::size_t stackSize = 0;      // values the evaluation keeps at most
    std::vector<std::string> texts; // the formula, then the named sub-expressions it uses
};

/** 'at character 5 of the formula "A / B"'; position counts from 0, long texts are shortened around it. */
std::string DescribePlace(const std::string& text, std::size_t position);

constexpr std::size_t kFormulaStackSize = 256; // values; the compiler refuses formulas that need more

} // namespace Internal
} // namespace GenApi
