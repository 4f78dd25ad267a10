// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/textparse.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <limits>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::string_view Blanks = " \t\r\n\v\f";

/** Numbers of the given base divided by the separator, most significant first; false unless there are count. */
bool ParseParts(std::string_view text, char separator, int base, std::size_t count, std::int64_t& value)
{
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < count; ++i)
    {
        const std::size_t end = i + 1 < count ? text.find(separator) : text.size();
        if (end == std::string_view::npos || end == 0)
        {
            return false;
        }
        std::uint8_t part = 0;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + end, part, base);
        if (error != std::errc() || stop != text.data() + end)
        {
            return false;
        }
        result = result << 8 | part;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    value = static_cast<std::int64_t>(result);
    return true;
}

std::string FormatParts(std::uint64_t value, const char* format, char separator, int count)
{
    std::string text;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
    {
        std::array<char, 8> part{};
        std::snprintf(part.data(), part.size(), format, static_cast<unsigned int>(value >> shift & 0xFF));
        text += part.data();
        if (shift > 0)
        {
            text += separator;
        }
    }
    return text;
}

} // namespace

std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
    {
        return {};
    }
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

bool ParseHex(std::string_view text, std::uint64_t& value)
{
    text = Trim(text);
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
    {
        text.remove_prefix(2);
    }
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return !text.empty() && error == std::errc() && stop == text.data() + text.size();
}

bool ParseInteger(std::string_view text, std::int64_t& value)
{
    text = Trim(text);
    const bool isNegative = !text.empty() && text[0] == '-';
    if (!text.empty() && (text[0] == '-' || text[0] == '+'))
    {
        text.remove_prefix(1);
    }
    std::uint64_t magnitude = 0;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
    {
        if (!ParseHex(text, magnitude))
        {
            return false;
        }
    }
    else
    {
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude, 10);
        const auto limit =
            static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + (isNegative ? 1U : 0U);
        if (text.empty() || error != std::errc() || stop != text.data() + text.size() || magnitude > limit)
        {
            return false;
        }
    }
    value = static_cast<std::int64_t>(isNegative ? std::uint64_t{0} - magnitude : magnitude);
    return true;
}

bool ParseFloat(std::string_view text, double& value)
{
    text = Trim(text);
    if (!text.empty() && text[0] == '+')
    {
        text.remove_prefix(1);
    }
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (!text.empty() && error == std::errc() && stop == text.data() + text.size())
    {
        return true;
    }
    std::int64_t integer = 0;
    if (ParseInteger(text, integer))
    {
        value = static_cast<double>(integer);
        return true;
    }
    return false;
}

std::string FormatInteger(std::int64_t value, ERepresentation representation)
{
    const auto bits = static_cast<std::uint64_t>(value);
    switch (representation)
    {
    case ERepresentation::HexNumber:
    {
        std::array<char, 24> text{};
        std::snprintf(text.data(), text.size(), "0x%llX", static_cast<unsigned long long>(bits));
        return text.data();
    }
    case ERepresentation::IPV4Address:
        return FormatParts(bits, "%u", '.', 4);
    case ERepresentation::MACAddress:
        return FormatParts(bits, "%02x", ':', 6);
    default:
        return std::to_string(value);
    }
}

bool ParseRepresented(std::string_view text, ERepresentation representation, std::int64_t& value)
{
    text = Trim(text);
    if (ParseInteger(text, value))
    {
        return true;
    }
    std::uint64_t bits = 0;
    switch (representation)
    {
    case ERepresentation::IPV4Address:
        return ParseParts(text, '.', 10, 4, value);
    case ERepresentation::MACAddress:
        return ParseParts(text, ':', 16, 6, value) || ParseParts(text, '-', 16, 6, value);
    case ERepresentation::HexNumber:
        if (ParseHex(text, bits))
        {
            value = static_cast<std::int64_t>(bits);
            return true;
        }
        return false;
    default:
        return false;
    }
}

std::string FormatFloat(double value, EDisplayNotation notation, std::int64_t precision)
{
    std::array<char, 512> text{};
    char* const end = text.data() + text.size();
    std::chars_format format = std::chars_format::general;
    if (notation == EDisplayNotation::Fixed)
    {
        format = std::chars_format::fixed;
    }
    else if (notation == EDisplayNotation::Scientific)
    {
        format = std::chars_format::scientific;
    }
    const auto digits = static_cast<int>(std::min<std::int64_t>(precision, 100));
    const auto result = precision < 0 ? std::to_chars(text.data(), end, value, format)
                                      : std::to_chars(text.data(), end, value, format, digits);
    return std::string(text.data(), result.ptr);
}

} // namespace Internal
} // namespace GenApi
