// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/elementreader.h"

#include "genapi/exceptions.h"
#include "genapi/internal/elementhandlers.h"
#include "genapi/internal/textparse.h"

#include <cstring>

namespace GenApi
{
namespace Internal
{

void ThrowDescriptionError(const std::string& nodeName, const std::string& text)
{
    GENICAM_THROW(LogicalErrorException, "Node '" + nodeName + "': " + text);
}

std::string TextOf(pugi::xml_node element)
{
    std::string text;
    for (const pugi::xml_node child : element.children())
    {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
        {
            text += child.value();
        }
    }
    return std::string(Trim(text));
}

CElementReader::CElementReader(SDescription& description, const EmbeddedNodes& embedded, NodeIndex index)
    : m_description(description), m_embedded(embedded), m_node(description.nodes[static_cast<std::size_t>(index)])
{
}

void CElementReader::Read()
{
    CreateParts();
    m_node.isStandard = std::strcmp(m_node.element.attribute("NameSpace").value(), "Standard") == 0;
    if (m_node.outer)
    {
        ReadChildren(m_node.outer);
    }
    ReadChildren(m_node.element);
}

void CElementReader::CreateParts()
{
    const ENodeKind kind = m_node.kind;
    if (IsRegisterKind(kind))
    {
        m_node.reg = std::make_unique<SRegisterPart>();
    }
    if (IsNumberKind(kind) || kind == ENodeKind::String)
    {
        m_node.number = std::make_unique<SNumberPart>();
    }
    if (IsFormulaKind(kind))
    {
        m_node.formula = std::make_unique<SFormulaPart>();
    }
    if (kind == ENodeKind::Enumeration)
    {
        m_node.enumeration = std::make_unique<SEnumerationPart>();
    }
    if (kind == ENodeKind::EnumEntry)
    {
        m_node.entry = std::make_unique<SEntryPart>();
    }
    if (kind == ENodeKind::Port)
    {
        m_node.port = std::make_unique<SPortPart>();
    }
}

void CElementReader::ReadChildren(pugi::xml_node element)
{
    for (const pugi::xml_node child : element.children())
    {
        if (child.type() == pugi::node_element)
        {
            if (const ElementHandler handler = FindElementHandler(m_node, child.name()))
            {
                handler(*this, child);
            }
        }
    }
}

void CElementReader::ThrowBadText(pugi::xml_node element, const std::string& text, const char* reason) const
{
    ThrowDescriptionError(m_node.name, "the text '" + text.substr(0, 80) + "' of <" + element.name() + "> " + reason);
}

NodeIndex CElementReader::Embedded(pugi::xml_node element) const
{
    const auto found = m_embedded.find(element.hash_value());
    return found == m_embedded.end() ? NoNode : found->second;
}

NodeIndex CElementReader::Reference(pugi::xml_node element) const
{
    return ReferenceByName(element, TextOf(element));
}

NodeIndex CElementReader::ReferenceByName(pugi::xml_node element, const std::string& name) const
{
    const NodeIndex index = m_description.Find(name);
    if (index == NoNode)
    {
        ThrowDescriptionError(m_node.name,
                              "<" + std::string(element.name()) + "> refers to '" + name + "', which does not exist");
    }
    return index;
}

std::int64_t CElementReader::Integer(pugi::xml_node element) const
{
    const std::string text = TextOf(element);
    std::int64_t value = 0;
    if (!ParseInteger(text, value))
    {
        ThrowBadText(element, text, "is no integer");
    }
    return value;
}

double CElementReader::Float(pugi::xml_node element) const
{
    const std::string text = TextOf(element);
    double value = 0.0;
    if (!ParseFloat(text, value))
    {
        ThrowBadText(element, text, "is no number");
    }
    return value;
}

bool CElementReader::YesNo(pugi::xml_node element) const
{
    return Choice<bool>(element, {{"Yes", true}, {"No", false}, {"true", true}, {"false", false}});
}

bool CElementReader::Truth(pugi::xml_node element) const
{
    return Choice<bool>(element, {{"true", true}, {"false", false}, {"1", true}, {"0", false}});
}

std::int64_t CElementReader::IndexAttribute(pugi::xml_node element) const
{
    const char* text = element.attribute("Index").value();
    std::int64_t value = 0;
    if (!ParseInteger(text, value))
    {
        ThrowBadText(element, text, "as Index is no integer");
    }
    return value;
}

SSource CElementReader::ReferenceSource(pugi::xml_node element) const
{
    SSource source;
    source.node = Reference(element);
    return source;
}

SSource CElementReader::IntegerSource(pugi::xml_node element) const
{
    SSource source;
    source.hasConstant = true;
    source.constant = SFormulaValue::FromInteger(Integer(element));
    return source;
}

SSource CElementReader::NumberSource(pugi::xml_node element) const
{
    if (!IsFloatKind(m_node.kind))
    {
        return IntegerSource(element);
    }
    SSource source;
    source.hasConstant = true;
    source.constant = SFormulaValue::FromFloat(Float(element));
    return source;
}

std::uint64_t CElementReader::Id(pugi::xml_node element) const
{
    const std::string text = TextOf(element);
    std::uint64_t value = 0;
    if (!ParseHex(text, value))
    {
        ThrowBadText(element, text, "is no hexadecimal number");
    }
    return value;
}

} // namespace Internal
} // namespace GenApi
