// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/softwarenodemap.h"

#include "genapi/exceptions.h"

namespace Velmo::Transport
{

namespace
{

constexpr std::int64_t NumberBytes = 8;

std::string Element(const char* name, const std::string& text)
{
    return text.empty() ? std::string() : std::string("<") + name + ">" + text + "</" + name + ">";
}

/** The register behind a number, hidden or not; "" for "". */
std::string RegisterOf(const std::string& name)
{
    return name.empty() ? std::string() : name + "Register";
}

std::string Begin(const char* element, const std::string& name, bool isCustom)
{
    return std::string("<") + element + " Name=\"" + name + "\" NameSpace=\"" + (isCustom ? "Custom" : "Standard") +
           "\">";
}

std::string End(const char* element)
{
    return std::string("</") + element + ">\n";
}

/** Where the value is, and how it may be used. */
std::string Location(std::int64_t address, std::int64_t bytes, bool isWritable, int pollingMs)
{
    return Element("Address", std::to_string(address)) + Element("Length", std::to_string(bytes)) +
           Element("AccessMode", isWritable ? "RW" : "RO") + Element("pPort", "Device") +
           Element("Cachable", "NoCache") +
           (pollingMs > 0 ? Element("PollingTime", std::to_string(pollingMs)) : std::string());
}

/** At most bytes of a UTF-8 text, never half a character. */
std::string Cut(const std::string& text, std::size_t bytes)
{
    if (text.size() <= bytes)
    {
        return text;
    }
    constexpr unsigned int continuationMask = 0xC0; // UTF-8: 10xxxxxx continues a character
    constexpr unsigned int continuation = 0x80;
    std::size_t end = bytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & continuationMask) == continuation)
    {
        --end;
    }
    return text.substr(0, end);
}

/** What every kind of node has. */
std::string Common(const SSoftwareParameter& parameter)
{
    std::string text = Element("ToolTip", parameter.toolTip) + Element("Visibility", parameter.visibility) +
                       Element("pIsAvailable", RegisterOf(parameter.availableBy)) +
                       Element("pIsLocked", RegisterOf(parameter.lockedBy));
    for (const std::string& name : parameter.changeWith)
    {
        text += Element("pInvalidator", name);
    }
    return text;
}

} // namespace

CSoftwareNodeMap::CSoftwareNodeMap(std::string modelName) : m_modelName(std::move(modelName)) {}

CSoftwareNodeMap::~CSoftwareNodeMap() = default;

void CSoftwareNodeMap::BeginCategory(const std::string& name, const std::string& toolTip)
{
    if (m_isInCategory)
    {
        m_nodes += m_features + End("Category");
        m_features.clear();
    }
    m_isInCategory = true;
    m_rootFeatures += Element("pFeature", name);
    m_features = Begin("Category", name, true) + Element("ToolTip", toolTip);
}

void CSoftwareNodeMap::Add(const char* element, SSoftwareParameter& parameter, const std::string& own)
{
    (m_isInCategory ? m_features : m_rootFeatures) += Element("pFeature", parameter.name);
    std::string selected;
    for (const std::string& name : parameter.selects)
    {
        selected += Element("pSelected", name);
    }
    m_nodes += Begin(element, parameter.name, parameter.isCustom) + Common(parameter) + own + selected + End(element);
}

void CSoftwareNodeMap::AddNumber(const char* element, SSoftwareParameter& parameter, const std::string& own)
{
    Add(element, parameter, own);
    AddHidden(std::move(parameter));
}

void CSoftwareNodeMap::AddHidden(SSoftwareParameter parameter)
{
    const std::int64_t address = std::exchange(m_used, m_used + NumberBytes);
    m_addresses[parameter.name] = address;
    const bool isWritable = parameter.isWritable || parameter.setter != nullptr;
    const std::string name = RegisterOf(parameter.name);
    m_nodes += Begin("IntReg", name, true) + Element("Visibility", "Invisible") +
               Location(address, NumberBytes, isWritable, parameter.pollingMs) + Element("Sign", "Signed") +
               Element("Endianess", "LittleEndian") + End("IntReg");
    Hook(address, parameter);
}

void CSoftwareNodeMap::Hook(std::int64_t address, const SSoftwareParameter& parameter)
{
    m_prepare.emplace_back(
        [address, value = parameter.value, getter = parameter.getter,
         setter = parameter.setter](GenApi::CMemoryPort& port)
        {
            port.Poke(address, static_cast<std::uint64_t>(value), NumberBytes);
            if (getter)
            {
                port.SetReadHook(address, NumberBytes,
                                 [&port, address, getter](std::int64_t, std::int64_t)
                                 { port.Poke(address, static_cast<std::uint64_t>(getter()), NumberBytes); });
            }
            if (setter)
            {
                port.SetWriteHook(address, NumberBytes,
                                  [&port, address, setter](std::int64_t, std::int64_t)
                                  { setter(static_cast<std::int64_t>(port.Peek(address, NumberBytes))); });
            }
        });
}

void CSoftwareNodeMap::AddInteger(SSoftwareParameter parameter)
{
    const std::string limits = Element("Min", std::to_string(parameter.min)) +
                               (parameter.maxFrom.empty() ? Element("Max", std::to_string(parameter.max))
                                                          : Element("pMax", RegisterOf(parameter.maxFrom)));
    AddNumber("Integer", parameter,
              Element("pValue", RegisterOf(parameter.name)) + limits + Element("Unit", parameter.unit) +
                  Element("Representation", parameter.representation));
}

void CSoftwareNodeMap::AddBoolean(SSoftwareParameter parameter)
{
    AddNumber("Boolean", parameter,
              Element("pValue", RegisterOf(parameter.name)) + Element("OnValue", "1") + Element("OffValue", "0"));
}

void CSoftwareNodeMap::AddEnumeration(SSoftwareParameter parameter)
{
    std::string entries;
    for (const auto& [name, value] : parameter.entries)
    {
        entries +=
            Begin("EnumEntry", name, parameter.isCustom) + Element("Value", std::to_string(value)) + "</EnumEntry>";
    }
    AddNumber("Enumeration", parameter, entries + Element("pValue", RegisterOf(parameter.name)));
}

void CSoftwareNodeMap::AddCommand(SSoftwareParameter parameter)
{
    parameter.isWritable = true;
    // Read back as 0, so that the command is done as soon as its setter returned.
    parameter.getter = []
    {
        return std::int64_t{0};
    };
    AddNumber("Command", parameter, Element("pValue", RegisterOf(parameter.name)) + Element("CommandValue", "1"));
}

void CSoftwareNodeMap::AddText(SSoftwareParameter parameter)
{
    const std::int64_t address = std::exchange(m_used, m_used + TextBytes);
    Add("StringReg", parameter, Location(address, TextBytes, false, parameter.pollingMs));
    m_prepare.emplace_back(
        [address, text = parameter.text, getter = parameter.textGetter](GenApi::CMemoryPort& port)
        {
            constexpr auto bytes = static_cast<std::size_t>(TextBytes);
            port.PokeText(address, Cut(text, bytes), bytes);
            if (getter)
            {
                port.SetReadHook(address, TextBytes,
                                 [&port, address, getter](std::int64_t, std::int64_t)
                                 { port.PokeText(address, Cut(getter(), bytes), bytes); });
            }
        });
}

void CSoftwareNodeMap::Build()
{
    if (m_isInCategory)
    {
        m_nodes += m_features + End("Category");
    }
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"" + m_modelName +
        "\" VendorName=\"CameraPool\" ToolTip=\"\" StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" "
        "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" "
        "SubMinorVersion=\"0\" ProductGuid=\"00000000-0000-0000-0000-000000000000\" "
        "VersionGuid=\"00000000-0000-0000-0000-000000000000\" "
        "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n<Category Name=\"Root\" NameSpace=\"Standard\">" +
        m_rootFeatures + "</Category>\n" + m_nodes +
        "<Port Name=\"Device\" NameSpace=\"Standard\"/>\n</RegisterDescription>\n";
    auto nodeMap = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap();
    m_port = std::make_unique<GenApi::CMemoryPort>(static_cast<std::size_t>(m_used));
    for (const auto& prepare : m_prepare)
    {
        prepare(*m_port);
    }
    m_prepare.clear();
    nodeMap->Connect(m_port.get());
    m_nodeMap = std::move(nodeMap);
}

void CSoftwareNodeMap::Set(const std::string& name, std::int64_t value)
{
    const auto found = m_addresses.find(name);
    // The register, so that what it locks or limits is told, too.
    GenApi::INode* pNode = m_nodeMap == nullptr ? nullptr : m_nodeMap->GetNode(RegisterOf(name));
    if (found == m_addresses.end() || pNode == nullptr)
    {
        GENICAM_THROW(InvalidArgumentException, "There is no number '" + name + "' in the node map " + m_modelName);
    }
    m_port->Poke(found->second, static_cast<std::uint64_t>(value), NumberBytes);
    pNode->InvalidateNode();
}

} // namespace Velmo::Transport
