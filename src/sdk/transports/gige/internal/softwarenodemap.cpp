// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/softwarenodemap.h"

#include <utility>

namespace Velmo::GigE::Internal
{

namespace
{

constexpr std::int64_t MemoryBytes = 4096;
constexpr std::int64_t TextBytes = 64;
constexpr std::int64_t NumberBytes = 8;

std::string Element(const char* name, const std::string& text)
{
    return text.empty() ? std::string() : std::string("<") + name + ">" + text + "</" + name + ">";
}

} // namespace

CSoftwareNodeMap::CSoftwareNodeMap(std::string modelName)
    : m_modelName(std::move(modelName)), m_port(static_cast<std::size_t>(MemoryBytes))
{
}

std::int64_t CSoftwareNodeMap::Reserve(std::int64_t bytes)
{
    return std::exchange(m_used, m_used + bytes);
}

void CSoftwareNodeMap::Hook(std::int64_t address, Getter getter, Setter setter)
{
    if (getter)
    {
        m_port.SetReadHook(address, NumberBytes,
                           [this, address, getter](std::int64_t, std::int64_t)
                           { m_port.Poke(address, static_cast<std::uint64_t>(getter()), NumberBytes); });
    }
    if (setter)
    {
        m_port.SetWriteHook(address, NumberBytes,
                            [this, address, setter](std::int64_t, std::int64_t)
                            { setter(static_cast<std::int64_t>(m_port.Peek(address, NumberBytes))); });
    }
}

std::string CSoftwareNodeMap::Register(const std::string& name, std::int64_t address, const char* accessMode) const
{
    return "<IntReg Name=\"" + name + "Reg\">" + Element("Visibility", "Invisible") +
           Element("Address", std::to_string(address)) + Element("Length", std::to_string(NumberBytes)) +
           Element("AccessMode", accessMode) + Element("pPort", "Device") + Element("Cachable", "NoCache") +
           Element("Sign", "Signed") + Element("Endianess", "LittleEndian") + "</IntReg>\n";
}

void CSoftwareNodeMap::Add(SInteger parameter)
{
    const std::int64_t address = Reserve(NumberBytes);
    m_port.Poke(address, static_cast<std::uint64_t>(parameter.value), NumberBytes);
    const bool isWritable = static_cast<bool>(parameter.setter);
    m_features += Element("pFeature", parameter.name);
    m_nodes += "<Integer Name=\"" + parameter.name + "\">" + Element("ToolTip", parameter.toolTip) +
               Element("pValue", parameter.name + "Reg") + Element("Min", std::to_string(parameter.min)) +
               Element("Max", std::to_string(parameter.max)) + Element("Unit", parameter.unit) +
               Element("Representation", parameter.representation) + "</Integer>\n" +
               Register(parameter.name, address, isWritable ? "RW" : "RO");
    Hook(address, std::move(parameter.getter), std::move(parameter.setter));
}

void CSoftwareNodeMap::AddBoolean(const std::string& name, const std::string& toolTip, bool value, Setter setter)
{
    const std::int64_t address = Reserve(NumberBytes);
    m_port.Poke(address, value ? 1 : 0, NumberBytes);
    m_features += Element("pFeature", name);
    m_nodes += "<Boolean Name=\"" + name + "\">" + Element("ToolTip", toolTip) + Element("pValue", name + "Reg") +
               Element("OnValue", "1") + Element("OffValue", "0") + "</Boolean>\n" + Register(name, address, "RW");
    Hook(address, nullptr, std::move(setter));
}

void CSoftwareNodeMap::AddText(const std::string& name, const std::string& toolTip, const std::string& value)
{
    const std::int64_t address = Reserve(TextBytes);
    m_port.PokeText(address, value, static_cast<std::size_t>(TextBytes));
    m_features += Element("pFeature", name);
    m_nodes += "<StringReg Name=\"" + name + "\">" + Element("ToolTip", toolTip) +
               Element("Address", std::to_string(address)) + Element("Length", std::to_string(TextBytes)) +
               Element("AccessMode", "RO") + Element("pPort", "Device") + "</StringReg>\n";
}

void CSoftwareNodeMap::Build()
{
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"" + m_modelName +
        "\" VendorName=\"Velmo\" ToolTip=\"\" StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" "
        "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
        "MinorVersion=\"0\" SubMinorVersion=\"0\" "
        "ProductGuid=\"00000000-0000-0000-0000-000000000000\" "
        "VersionGuid=\"00000000-0000-0000-0000-000000000000\" "
        "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n<Category Name=\"Root\">" +
        m_features + "</Category>\n" + m_nodes + "<Port Name=\"Device\"></Port>\n" + "</RegisterDescription>\n";
    m_pNodeMap = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap();
    m_pNodeMap->Connect(&m_port);
}

} // namespace Velmo::GigE::Internal
