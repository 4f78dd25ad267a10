// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/firmwareelement.h"

#include "genapi/exceptions.h"
#include "genapi/internal/firmwarepattern.h"
#include "genapi/internal/textparse.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace GenApi
{
namespace Internal
{
namespace
{

bool IsAmong(std::initializer_list<const char*> names, const char* name)
{
    return std::any_of(names.begin(), names.end(), [&](const char* known) { return std::strcmp(known, name) == 0; });
}

} // namespace

std::string CFirmwareElement::Place() const
{
    const auto offset = std::min<std::size_t>(
        static_cast<std::size_t>(std::max<std::ptrdiff_t>(m_node.offset_debug(), 0)), m_document.xml.size());
    const auto lines =
        std::count(m_document.xml.begin(), m_document.xml.begin() + static_cast<std::ptrdiff_t>(offset), '\n');
    return m_document.name + ", line " + std::to_string(lines + 1) + ", <" + Name() + ">";
}

void CFirmwareElement::Throw(const std::string& reason) const
{
    GENICAM_THROW(FormatException, Place() + ": " + reason);
}

void CFirmwareElement::ThrowTooMany(const std::string& what, std::size_t limit) const
{
    GENICAM_THROW(OutOfRangeException, Place() + ": more than " + std::to_string(limit) + " " + what);
}

void CFirmwareElement::ExpectAttributes(std::initializer_list<const char*> attributes) const
{
    for (const pugi::xml_attribute attribute : m_node.attributes())
    {
        if (!IsAmong(attributes, attribute.name()))
        {
            Throw("the attribute '" + std::string(attribute.name()) + "' is not known here");
        }
        if (attribute != m_node.attribute(attribute.name()))
        {
            Throw("the attribute '" + std::string(attribute.name()) + "' is given twice");
        }
    }
}

void CFirmwareElement::ExpectOnly(std::initializer_list<const char*> attributes,
                                  std::initializer_list<const char*> children) const
{
    ExpectAttributes(attributes);
    for (const pugi::xml_node child : m_node.children())
    {
        if (child.type() != pugi::node_element)
        {
            Throw("there is text between the elements");
        }
        if (!IsAmong(children, child.name()))
        {
            Of(child).Throw("this element is not known inside <" + Name() + ">");
        }
    }
}

std::string CFirmwareElement::ExpectText(std::initializer_list<const char*> attributes) const
{
    ExpectAttributes(attributes);
    std::string text;
    for (const pugi::xml_node child : m_node.children())
    {
        if (child.type() == pugi::node_element)
        {
            Of(child).Throw("this element is not known inside <" + Name() + ">");
        }
        text += child.value();
    }
    text = std::string(Trim(text));
    if (text.empty())
    {
        Throw("the text is empty");
    }
    if (text.size() > Limits().textBytes)
    {
        Throw("the text is longer than " + std::to_string(Limits().textBytes) + " bytes");
    }
    return text;
}

std::string CFirmwareElement::Text(const char* attribute, std::size_t maxBytes) const
{
    if (!Has(attribute))
    {
        Throw("the attribute '" + std::string(attribute) + "' is missing");
    }
    std::string text = m_node.attribute(attribute).value();
    if (text.size() > maxBytes)
    {
        Throw("the attribute '" + std::string(attribute) + "' is longer than " + std::to_string(maxBytes) + " bytes");
    }
    return text;
}

std::string CFirmwareElement::Identifier(const char* attribute) const
{
    std::string text = Text(attribute, Limits().nameBytes);
    const bool hasControls = std::any_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; });
    if (text.empty() || hasControls || Trim(text).size() != text.size())
    {
        Throw("the attribute '" + std::string(attribute) + "' is empty, or has spaces around it or control characters");
    }
    return text;
}

std::string CFirmwareElement::Pattern(const char* attribute) const
{
    const std::string text = Text(attribute, Limits().patternBytes);
    try
    {
        const CFirmwarePattern compiled(text);
    }
    catch (const GenICam::InvalidArgumentException& e)
    {
        Throw(e.GetDescription());
    }
    return text;
}

std::uint64_t CFirmwareElement::Unsigned(const char* attribute) const
{
    constexpr std::size_t MaxDigits = 20; // of 2^64
    const std::string text = Text(attribute, MaxDigits);
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
    {
        Throw("the attribute '" + std::string(attribute) + "' is no whole number");
    }
    return value;
}

std::uint32_t CFirmwareElement::Milliseconds(const char* attribute, std::uint32_t ifAbsent) const
{
    if (!Has(attribute))
    {
        return ifAbsent;
    }
    const std::uint64_t value = Unsigned(attribute);
    if (value > Limits().stepTimeMs)
    {
        Throw("the attribute '" + std::string(attribute) + "' is above " + std::to_string(Limits().stepTimeMs) + " ms");
    }
    return static_cast<std::uint32_t>(value);
}

std::optional<double> CFirmwareElement::Number(const char* attribute) const
{
    if (!Has(attribute))
    {
        return std::nullopt;
    }
    double value = 0;
    if (!ParseFloat(Text(attribute, Limits().nameBytes), value) || !std::isfinite(value))
    {
        Throw("the attribute '" + std::string(attribute) + "' is no number");
    }
    return value;
}

bool CFirmwareElement::Flag(const char* attribute) const
{
    if (!Has(attribute))
    {
        return false;
    }
    const std::string text = Text(attribute, Limits().nameBytes);
    if (text != "true" && text != "false")
    {
        Throw("the attribute '" + std::string(attribute) + "' is neither 'true' nor 'false'");
    }
    return text == "true";
}

pugi::xml_node CFirmwareElement::OnlyChild(const char* name) const
{
    const pugi::xml_node child = m_node.child(name);
    if (const pugi::xml_node second = child.next_sibling(name))
    {
        Of(second).Throw("there is more than one inside <" + Name() + ">");
    }
    return child;
}

bool IsUtf8(const std::string& text)
{
    for (std::size_t i = 0; i < text.size();)
    {
        const auto lead = static_cast<std::uint8_t>(text[i]);
        if (lead == 0)
        {
            return false;
        }
        if (lead < 0x80)
        {
            ++i;
            continue;
        }
        const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        if (lead < 0xC2 || lead > 0xF4 || more > text.size() - i - 1)
        {
            return false;
        }
        std::uint32_t code = lead & (0x3FU >> more);
        for (std::size_t k = 1; k <= more; ++k)
        {
            const auto next = static_cast<std::uint8_t>(text[i + k]);
            if ((next & 0xC0) != 0x80)
            {
                return false;
            }
            code = code << 6 | (next & 0x3FU);
        }
        constexpr std::uint32_t Smallest[] = {0, 0x80, 0x800, 0x10000};
        if (code < Smallest[more] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        {
            return false;
        }
        i += more + 1;
    }
    return true;
}

} // namespace Internal
} // namespace GenApi
