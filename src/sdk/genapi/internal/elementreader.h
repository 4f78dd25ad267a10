// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"

#include <initializer_list>
#include <string>
#include <unordered_map>
#include <utility>

namespace GenApi
{
namespace Internal
{

/** Nodes described inside another node's element (entries, embedded formulas), by the hash of their element. */
using EmbeddedNodes = std::unordered_map<std::size_t, NodeIndex>;

/** Throws LogicalErrorException that names the node. */
[[noreturn]] void ThrowDescriptionError(const std::string& nodeName, const std::string& text);

/** The text of an element without its surrounding blanks; comments inside are left out. */
std::string TextOf(pugi::xml_node element);

/**
 * Reads the child elements of one node's element into its description and resolves the names they hold.
 *
 * Errors: LogicalErrorException that names the node for a reference to a node that does not exist and for a text that
 * is no number or none of the words allowed. Elements that are not known are left alone.
 */
class CElementReader
{
public:
    CElementReader(SDescription& description, const EmbeddedNodes& embedded, NodeIndex index);
    void Read();

    SNodeDescription& Node() { return m_node; }
    NodeIndex Embedded(pugi::xml_node element) const;
    NodeIndex Reference(pugi::xml_node element) const;
    NodeIndex ReferenceByName(pugi::xml_node element, const std::string& name) const;
    std::int64_t Integer(pugi::xml_node element) const;
    double Float(pugi::xml_node element) const;
    bool YesNo(pugi::xml_node element) const;
    bool Truth(pugi::xml_node element) const;
    std::int64_t IndexAttribute(pugi::xml_node element) const;
    SSource ReferenceSource(pugi::xml_node element) const;
    SSource IntegerSource(pugi::xml_node element) const;
    /** An integer or a real number, as the node's kind has it. */
    SSource NumberSource(pugi::xml_node element) const;
    std::uint64_t Id(pugi::xml_node element) const;

    template <class T> T Choice(pugi::xml_node element, std::initializer_list<std::pair<const char*, T>> choices) const
    {
        const std::string text = TextOf(element);
        for (const auto& choice : choices)
        {
            if (text == choice.first)
            {
                return choice.second;
            }
        }
        ThrowBadText(element, text, "is none of the values allowed");
    }
    [[noreturn]] void ThrowBadText(pugi::xml_node element, const std::string& text, const char* reason) const;

private:
    void CreateParts();
    void ReadChildren(pugi::xml_node element);

    const SDescription& m_description;
    const EmbeddedNodes& m_embedded;
    SNodeDescription& m_node;
};

} // namespace Internal
} // namespace GenApi
