// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/formula.h"

#include <cstddef>
#include <string>

namespace GenApi
{
namespace Internal
{

enum class EFormulaToken
{
    End,
    Number,
    Name,
    Operator
};

struct SFormulaToken
{
    EFormulaToken type = EFormulaToken::End;
    std::size_t position = 0;
    std::string text; // a name or an operator; "==" and "!=" read as "=" and "<>"
    SFormulaValue value;
    bool isTooLarge = false; // a number without fraction beyond the integers: the value is the nearest double
    bool isMinimum = false;  // the number 9223372036854775808, which only a minus sign makes an integer
};

/** Splits the text of a formula into tokens. Independent of the locale. */
class CFormulaLexer
{
public:
    /** The text must outlive the lexer. */
    explicit CFormulaLexer(const std::string& text);

    /** Throws LogicalErrorException with text and position for what is no token. */
    SFormulaToken Next();

private:
    SFormulaToken Number();
    SFormulaToken Hexadecimal();
    SFormulaToken Decimal(std::size_t end, bool isFloat);
    SFormulaToken Name();
    SFormulaToken Operator();
    char At(std::size_t index) const { return index < m_text.size() ? m_text[index] : '\0'; }
    [[noreturn]] void Fail(const std::string& what, std::size_t position) const;

    const std::string& m_text;
    std::size_t m_position = 0;
};

} // namespace Internal
} // namespace GenApi
