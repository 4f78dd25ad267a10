// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/descriptionreader.h"

#include "genapi/exceptions.h"
#include "genapi/internal/dependencygraph.h"
#include "genapi/internal/descriptioncheck.h"
#include "genapi/internal/elementreader.h"
#include "genapi/internal/evaluationcheck.h"
#include "genapi/internal/formulareader.h"
#include "genapi/internal/textparse.h"

#include <cstring>
#include <string_view>

namespace GenApi
{
namespace Internal
{
namespace
{

/** Finds all nodes of a document, so that references can be resolved whatever the order of the nodes. */
class CNodeCollector
{
public:
    CNodeCollector(SDescription& description, EmbeddedNodes& embedded)
        : m_description(description), m_embedded(embedded)
    {
    }

    void Collect(pugi::xml_node root)
    {
        std::vector<pugi::xml_node> groups{root};
        while (!groups.empty())
        {
            const pugi::xml_node group = groups.back();
            groups.pop_back();
            for (const pugi::xml_node child : group.children())
            {
                if (child.type() != pugi::node_element || std::strcmp(child.name(), "Extension") == 0)
                {
                    continue;
                }
                if (std::strcmp(child.name(), "Group") == 0)
                {
                    groups.push_back(child);
                    continue;
                }
                CollectElement(child);
            }
        }
    }

private:
    static ENodeKind KindOf(const char* elementName)
    {
        static const std::unordered_map<std::string_view, ENodeKind> Kinds = {
            {"Category", ENodeKind::Category},
            {"Integer", ENodeKind::Integer},
            {"IntReg", ENodeKind::IntReg},
            {"MaskedIntReg", ENodeKind::MaskedIntReg},
            {"StructEntry", ENodeKind::MaskedIntReg},
            {"Boolean", ENodeKind::Boolean},
            {"Command", ENodeKind::Command},
            {"Enumeration", ENodeKind::Enumeration},
            {"EnumEntry", ENodeKind::EnumEntry},
            {"Float", ENodeKind::Float},
            {"FloatReg", ENodeKind::FloatReg},
            {"String", ENodeKind::String},
            {"StringReg", ENodeKind::StringReg},
            {"Register", ENodeKind::Register},
            {"Converter", ENodeKind::Converter},
            {"IntConverter", ENodeKind::IntConverter},
            {"SwissKnife", ENodeKind::SwissKnife},
            {"IntSwissKnife", ENodeKind::IntSwissKnife},
            {"Port", ENodeKind::Port}};
        const auto found = Kinds.find(elementName);
        return found == Kinds.end() ? ENodeKind::Plain : found->second;
    }

    static std::string NameOf(pugi::xml_node element) { return std::string(Trim(element.attribute("Name").value())); }

    void CollectElement(pugi::xml_node element)
    {
        if (std::strcmp(element.name(), "StructReg") == 0)
        {
            for (const pugi::xml_node entry : element.children("StructEntry"))
            {
                const std::string name = Required(entry, NameOf(entry));
                m_description.nodes[static_cast<std::size_t>(Add(entry, name))].outer = element;
                CollectEmbedded(element, name);
            }
            return;
        }
        const std::string name = Required(element, NameOf(element));
        Add(element, name);
        if (KindOf(element.name()) == ENodeKind::Enumeration)
        {
            for (const pugi::xml_node entry : element.children("EnumEntry"))
            {
                m_embedded[entry.hash_value()] = Add(entry, "EnumEntry_" + name + "_" + Required(entry, NameOf(entry)));
            }
        }
        else if (IsRegisterKind(KindOf(element.name())))
        {
            CollectEmbedded(element, name);
        }
    }

    /** Formulas inside a register that compute its address. */
    void CollectEmbedded(pugi::xml_node element, const std::string& name)
    {
        std::size_t count = 0;
        for (const pugi::xml_node formula : element.children("IntSwissKnife"))
        {
            if (m_embedded.count(formula.hash_value()) == 0)
            {
                const std::string ownName = NameOf(formula);
                m_embedded[formula.hash_value()] =
                    Add(formula, ownName.empty() ? name + "_Address" + std::to_string(count) : ownName);
            }
            ++count;
        }
    }

    static std::string Required(pugi::xml_node element, const std::string& name)
    {
        if (name.empty())
        {
            GENICAM_THROW(LogicalErrorException, "A <" + std::string(element.name()) + "> inside '" +
                                                     NameOf(element.parent()) + "' (offset " +
                                                     std::to_string(element.offset_debug()) + ") has no Name");
        }
        return name;
    }

    NodeIndex Add(pugi::xml_node element, const std::string& name)
    {
        const auto index = static_cast<NodeIndex>(m_description.nodes.size());
        if (!m_description.byName.emplace(name, index).second)
        {
            ThrowDescriptionError(name, "there is more than one node of this name");
        }
        SNodeDescription node;
        node.name = name;
        node.element = element;
        node.kind = KindOf(element.name());
        m_description.nodes.push_back(std::move(node));
        return index;
    }

    SDescription& m_description;
    EmbeddedNodes& m_embedded;
};

pugi::xml_node ParseXml(const std::string& xml, pugi::xml_document& document)
{
    const pugi::xml_parse_result result =
        document.load_buffer(xml.data(), xml.size(), pugi::parse_default | pugi::parse_doctype);
    if (!result)
    {
        GENICAM_THROW(RuntimeException,
                      "The device description is no well-formed XML: " + std::string(result.description()) +
                          " at offset " + std::to_string(result.offset));
    }
    for (const pugi::xml_node child : document.children())
    {
        if (child.type() == pugi::node_doctype)
        {
            GENICAM_THROW(RuntimeException, "The device description has a document type, which is refused");
        }
    }
    const pugi::xml_node root = document.child("RegisterDescription");
    if (!root)
    {
        GENICAM_THROW(RuntimeException, "The XML is no device description: <RegisterDescription> is missing");
    }
    return root;
}

std::uint16_t VersionPart(pugi::xml_node root, const char* name)
{
    return static_cast<std::uint16_t>(root.attribute(name).as_uint());
}

void ReadHead(pugi::xml_node root, SDescription& description)
{
    description.modelName = root.attribute("ModelName").value();
    description.vendorName = root.attribute("VendorName").value();
    description.schemaVersion = {VersionPart(root, "SchemaMajorVersion"), VersionPart(root, "SchemaMinorVersion"),
                                 VersionPart(root, "SchemaSubMinorVersion")};
    description.deviceVersion = {VersionPart(root, "MajorVersion"), VersionPart(root, "MinorVersion"),
                                 VersionPart(root, "SubMinorVersion")};
}

/** Gives nested entries their symbolic name and enumerations the tables to find them. */
void LinkEntries(SDescription& description)
{
    for (SNodeDescription& node : description.nodes)
    {
        if (node.entry && node.entry->symbolic.empty())
        {
            node.entry->symbolic = std::string(Trim(node.element.attribute("Name").value()));
        }
    }
    for (SNodeDescription& node : description.nodes)
    {
        if (!node.enumeration)
        {
            continue;
        }
        for (const NodeIndex index : node.enumeration->entries)
        {
            const SNodeDescription& entry = description.nodes[static_cast<std::size_t>(index)];
            if (!entry.entry)
            {
                ThrowDescriptionError(node.name, "'" + entry.name + "' is no entry of an enumeration");
            }
            if (!node.enumeration->bySymbolic.emplace(entry.entry->symbolic, index).second)
            {
                ThrowDescriptionError(node.name, "there is more than one entry '" + entry.entry->symbolic + "'");
            }
            node.enumeration->byValue[entry.entry->value].push_back(index);
        }
    }
}

void CollectSpecialNodes(SDescription& description)
{
    for (std::size_t i = 0; i < description.nodes.size(); ++i)
    {
        SNodeDescription& node = description.nodes[i];
        const auto index = static_cast<NodeIndex>(i);
        for (const NodeIndex selected : node.selected)
        {
            description.nodes[static_cast<std::size_t>(selected)].selecting.push_back(index);
        }
        for (const NodeIndex feature : node.features)
        {
            description.nodes[static_cast<std::size_t>(feature)].isFeature = true;
        }
        if (node.pollingTimeMs >= 0)
        {
            description.polled.push_back(index);
        }
        if (node.port && node.port->isChunk)
        {
            description.chunkPorts.push_back(index);
        }
        if (node.port && node.port->isEvent)
        {
            description.eventPorts.push_back(index);
        }
        std::uint64_t eventId = 0;
        if (!node.port && ParseHex(node.element.child("EventID").child_value(), eventId))
        {
            description.byEventId[eventId].push_back(index);
        }
    }
}

} // namespace

std::shared_ptr<const SDescription> ReadDescription(const std::string& xml)
{
    auto description = std::make_shared<SDescription>();
    const pugi::xml_node root = ParseXml(xml, description->document);
    ReadHead(root, *description);
    EmbeddedNodes embedded;
    CNodeCollector(*description, embedded).Collect(root);
    for (std::size_t i = 0; i < description->nodes.size(); ++i)
    {
        CElementReader(*description, embedded, static_cast<NodeIndex>(i)).Read();
    }
    LinkEntries(*description);
    for (SNodeDescription& node : description->nodes)
    {
        if (node.formula)
        {
            ReadFormulas(*description, node);
        }
    }
    CollectSpecialNodes(*description);
    CheckDescription(*description);
    CheckEvaluation(*description);
    BuildDependencyGraph(*description);
    return description;
}

} // namespace Internal
} // namespace GenApi
