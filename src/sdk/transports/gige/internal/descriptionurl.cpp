// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/descriptionurl.h"

#include <cctype>
#include <charconv>

namespace Velmo::GigE::Internal
{

namespace
{

bool ParseHex(std::string text, std::uint32_t& value)
{
    if (text.size() > 2 && text[0] == '0' && std::tolower(static_cast<unsigned char>(text[1])) == 'x')
    {
        text.erase(0, 2);
    }
    constexpr int hexadecimal = 16;
    const char* const pEnd = text.data() + text.size();
    const auto [pRead, error] = std::from_chars(text.data(), pEnd, value, hexadecimal);
    return error == std::errc() && pRead == pEnd;
}

bool TakePrefix(std::string& text, const std::string& prefix)
{
    if (text.size() < prefix.size())
    {
        return false;
    }
    for (std::size_t i = 0; i < prefix.size(); ++i)
    {
        if (std::tolower(static_cast<unsigned char>(text[i])) != prefix[i])
        {
            return false;
        }
    }
    text.erase(0, prefix.size());
    return true;
}

} // namespace

bool ParseDescriptionUrl(const std::string& url, SDescriptionPlace& place)
{
    std::string rest = url.substr(0, url.find('\0'));
    if (!TakePrefix(rest, "local:"))
    {
        return false;
    }
    TakePrefix(rest, "///");
    rest = rest.substr(0, rest.find('?'));
    const std::size_t first = rest.find(';');
    const std::size_t second = first == std::string::npos ? first : rest.find(';', first + 1);
    SDescriptionPlace read;
    if (second == std::string::npos || !ParseHex(rest.substr(first + 1, second - first - 1), read.address) ||
        !ParseHex(rest.substr(second + 1), read.bytes) || read.bytes == 0)
    {
        return false;
    }
    read.fileName = rest.substr(0, first);
    place = read;
    return true;
}

} // namespace Velmo::GigE::Internal
