// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarelimits.h"

#include <pugixml.hpp>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

namespace GenApi
{
namespace Internal
{

/** The document that an element belongs to. */
struct SFirmwareDocument
{
    std::string name; // for messages
    const std::string& xml;
    const SFirmwareLimits& limits;
};

/** An element of control.xml. Every fault is a FormatException that names document, line and element. */
class CFirmwareElement
{
public:
    CFirmwareElement(const SFirmwareDocument& document, pugi::xml_node node) : m_document(document), m_node(node) {}

    const pugi::xml_node& Node() const { return m_node; }
    const SFirmwareLimits& Limits() const { return m_document.limits; }
    CFirmwareElement Of(pugi::xml_node node) const { return {m_document, node}; }
    std::string Name() const { return m_node.name(); }

    /** Refuses attributes and children that are not listed, attributes that come twice, and text. */
    void ExpectOnly(std::initializer_list<const char*> attributes, std::initializer_list<const char*> children) const;
    /** Refuses attributes that are not listed and anything but text inside, and gives the text. */
    std::string ExpectText(std::initializer_list<const char*> attributes) const;

    bool Has(const char* attribute) const { return !m_node.attribute(attribute).empty(); }
    /** The attribute must be there and hold a text of at most so many bytes. */
    std::string Text(const char* attribute, std::size_t maxBytes) const;
    /** An id, a feature, a key: at most nameBytes, no control characters, no spaces around it. */
    std::string Identifier(const char* attribute) const;
    /** A regular expression that compiles. */
    std::string Pattern(const char* attribute) const;
    std::uint32_t Milliseconds(const char* attribute, std::uint32_t ifAbsent) const;
    std::uint64_t Unsigned(const char* attribute) const;
    std::optional<double> Number(const char* attribute) const;
    bool Flag(const char* attribute) const;
    /** The one child of that name, or an empty node; more than one are refused. */
    pugi::xml_node OnlyChild(const char* name) const;

    [[noreturn]] void Throw(const std::string& reason) const;
    [[noreturn]] void ThrowTooMany(const std::string& what, std::size_t limit) const;

private:
    void ExpectAttributes(std::initializer_list<const char*> attributes) const;
    std::string Place() const;

    const SFirmwareDocument& m_document;
    pugi::xml_node m_node;
};

/** Whether the bytes are well-formed UTF-8 (RFC 3629) without a zero byte. */
bool IsUtf8(const std::string& text);

} // namespace Internal
} // namespace GenApi
