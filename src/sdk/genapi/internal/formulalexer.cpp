// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formulalexer.h"

#include "genapi/exceptions.h"
#include "genapi/internal/formulacode.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>

namespace GenApi
{
namespace Internal
{
namespace
{

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsNameStart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsNamePart(char c)
{
    return IsNameStart(c) || IsDigit(c);
}

bool IsHexDigit(char c)
{
    return IsDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

} // namespace

CFormulaLexer::CFormulaLexer(const std::string& text) : m_text(text) {}

void CFormulaLexer::Fail(const std::string& what, std::size_t position) const
{
    GENICAM_THROW(LogicalErrorException, what + " " + DescribePlace(m_text, position));
}

SFormulaToken CFormulaLexer::Next()
{
    while (IsSpace(At(m_position)))
    {
        ++m_position;
    }
    if (m_position >= m_text.size())
    {
        SFormulaToken end;
        end.position = m_text.size();
        return end;
    }
    const char c = At(m_position);
    if (IsDigit(c) || (c == '.' && IsDigit(At(m_position + 1))))
    {
        return Number();
    }
    return IsNameStart(c) ? Name() : Operator();
}

SFormulaToken CFormulaLexer::Number()
{
    if (At(m_position) == '0' && (At(m_position + 1) == 'x' || At(m_position + 1) == 'X'))
    {
        return Hexadecimal();
    }
    std::size_t end = m_position;
    bool isFloat = false;
    while (IsDigit(At(end)))
    {
        ++end;
    }
    if (At(end) == '.')
    {
        isFloat = true;
        ++end;
        while (IsDigit(At(end)))
        {
            ++end;
        }
    }
    if (At(end) == 'e' || At(end) == 'E')
    {
        std::size_t exponent = end + 1;
        if (At(exponent) == '+' || At(exponent) == '-')
        {
            ++exponent;
        }
        if (!IsDigit(At(exponent)))
        {
            Fail("number without its exponent", m_position);
        }
        isFloat = true;
        end = exponent;
        while (IsDigit(At(end)))
        {
            ++end;
        }
    }
    if (IsNamePart(At(end)) || At(end) == '.')
    {
        Fail("malformed number", m_position);
    }
    return Decimal(end, isFloat);
}

SFormulaToken CFormulaLexer::Decimal(std::size_t end, bool isFloat)
{
    SFormulaToken token;
    token.type = EFormulaToken::Number;
    token.position = m_position;
    const char* const first = m_text.data() + m_position;
    const char* const last = m_text.data() + end;
    m_position = end;
    if (!isFloat)
    {
        std::uint64_t value = 0;
        const auto result = std::from_chars(first, last, value);
        const auto limit = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        if (result.ec == std::errc() && value <= limit)
        {
            token.value = SFormulaValue::FromInteger(static_cast<std::int64_t>(value));
            return token;
        }
        token.isTooLarge = true;
        token.isMinimum = result.ec == std::errc() && value == limit + 1;
    }
    double value = 0.0;
    const auto result = std::from_chars(first, last, value);
    if (result.ec != std::errc() || result.ptr != last)
    {
        Fail("number out of range", token.position);
    }
    token.value = SFormulaValue::FromFloat(value);
    return token;
}

SFormulaToken CFormulaLexer::Hexadecimal()
{
    std::size_t end = m_position + 2;
    while (IsHexDigit(At(end)))
    {
        ++end;
    }
    std::uint64_t value = 0;
    const auto result = std::from_chars(m_text.data() + m_position + 2, m_text.data() + end, value, 16);
    if (result.ec == std::errc::result_out_of_range)
    {
        Fail("hexadecimal number of more than 64 bits", m_position);
    }
    if (result.ec != std::errc() || IsNamePart(At(end)) || At(end) == '.')
    {
        Fail("malformed hexadecimal number", m_position);
    }
    SFormulaToken token;
    token.type = EFormulaToken::Number;
    token.position = m_position;
    token.value = SFormulaValue::FromInteger(static_cast<std::int64_t>(value));
    m_position = end;
    return token;
}

SFormulaToken CFormulaLexer::Name()
{
    SFormulaToken token;
    token.type = EFormulaToken::Name;
    token.position = m_position;
    std::size_t end = m_position;
    while (IsNamePart(At(end)) || (At(end) == '.' && IsNamePart(At(end + 1))))
    {
        ++end;
    }
    token.text = m_text.substr(m_position, end - m_position);
    m_position = end;
    return token;
}

SFormulaToken CFormulaLexer::Operator()
{
    // Longer ones first: the first that matches is the token.
    static constexpr std::array<const char*, 27> kOperators = {
        "**", "&&", "||", "<>", "<=", ">=", "<<", ">>", "==", "!=", "(", ")", "+", "-",
        "*",  "/",  "%",  "&",  "|",  "^",  "~",  "=",  "<",  ">",  "?", ":", ","};
    for (const char* text : kOperators)
    {
        const std::string candidate = text;
        if (m_text.compare(m_position, candidate.size(), candidate) == 0)
        {
            SFormulaToken token;
            token.type = EFormulaToken::Operator;
            token.position = m_position;
            token.text = candidate == "==" ? "=" : candidate == "!=" ? "<>" : candidate;
            m_position += candidate.size();
            return token;
        }
    }
    Fail("unexpected character", m_position);
}

} // namespace Internal
} // namespace GenApi
