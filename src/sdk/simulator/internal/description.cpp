// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/description.h"

#include "simulator/internal/chunkkinds.h"
#include "simulator/internal/events.h"
#include "simulator/internal/limits.h"
#include "simulator/registers.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

namespace Simulator::Internal
{

namespace
{

constexpr const char* Root = "Root";

std::string Escape(const std::string& text)
{
    std::string escaped;
    for (const char c : text)
    {
        switch (c)
        {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string Element(const char* name, const std::string& text)
{
    return std::string("<") + name + ">" + Escape(text) + "</" + name + ">";
}

std::string Optional(const char* name, const std::string& text)
{
    return text.empty() ? std::string() : Element(name, text);
}

std::string Number(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::string Integral(double value)
{
    if (value <= -9223372036854775808.0)
    {
        return "-9223372036854775808";
    }
    // 2^63 - 1 has no exact double.
    return value >= 9223372036854775807.0 ? "9223372036854775807" : std::to_string(static_cast<std::int64_t>(value));
}

std::string Hex(std::int64_t value)
{
    char text[24];
    std::snprintf(text, sizeof text, "0x%" PRIX64, static_cast<std::uint64_t>(value));
    return text;
}

std::string Open(const char* kind, const std::string& name, bool isCustom)
{
    return std::string("<") + kind + " Name=\"" + name + "\" NameSpace=\"" + (isCustom ? "Custom" : "Standard") + "\">";
}

std::string Common(const SFeature& feature)
{
    std::string xml = Optional("ToolTip", feature.toolTip) + Optional("Description", feature.toolTip) +
                      Element("Visibility", feature.visibility);
    if (feature.isLockedWhileGrabbing)
    {
        xml += Element("pIsLocked", "TLParamsLocked");
    }
    if (feature.eventId != 0)
    {
        xml += Element("EventID", Hex(feature.eventId).substr(2));
    }
    return xml;
}

/** The port behind which the feature's bytes are. */
std::string PortOf(const SFeature& feature)
{
    if (feature.eventId != 0)
    {
        return "Event" + Hex(feature.eventId).substr(2) + "Port";
    }
    return feature.chunkId == 0 ? "Device" : feature.name + "Port";
}

std::string RegisterBody(const SFeature& feature)
{
    std::string xml;
    for (const std::string& name : feature.invalidators)
    {
        xml += Element("pInvalidator", name);
    }
    const char* access = feature.access == EAccess::ReadOnly    ? "RO"
                         : feature.access == EAccess::ReadWrite ? "RW"
                                                                : "WO";
    xml += Element("Address", Hex(feature.address));
    if (!feature.selector.empty())
    {
        xml += "<pIndex Offset=\"" + std::to_string(feature.bytes) + "\">" + feature.selector + "Reg</pIndex>";
    }
    xml += feature.lengthFeature.empty() ? Element("Length", std::to_string(feature.bytes))
                                         : Element("pLength", feature.lengthFeature + "Reg");
    xml += Element("AccessMode", access) + Element("pPort", PortOf(feature));
    xml += Element("Cachable", feature.isVolatile ? "NoCache" : "WriteAround");
    return xml;
}

std::string RegisterNode(const SFeature& feature)
{
    const bool isFloat = feature.kind == EKind::Float;
    const char* kind = isFloat ? "FloatReg" : "IntReg";
    std::string xml = Open(kind, feature.name + "Reg", true) + Element("Visibility", "Invisible");
    xml += RegisterBody(feature);
    if (!isFloat)
    {
        xml += Element("Sign", feature.isSigned ? "Signed" : "Unsigned");
    }
    return xml + Element("Endianess", "BigEndian") + "</" + kind + ">\n";
}

std::string NumberBody(const SFeature& feature)
{
    const bool isFloat = feature.kind == EKind::Float;
    std::string xml = Element("pValue", feature.name + "Reg");
    xml += Element("Min", isFloat ? Number(feature.min) : Integral(feature.min));
    xml += feature.pMax.empty() ? Element("Max", isFloat ? Number(feature.max) : Integral(feature.max))
                                : Element("pMax", feature.pMax);
    if (!isFloat)
    {
        xml += Element("Inc", std::to_string(feature.inc));
    }
    return xml + Optional("Unit", feature.unit) + Element("Representation", isFloat ? "Linear" : "PureNumber");
}

std::string EnumerationBody(const SFeature& feature)
{
    std::string xml;
    for (const auto& [name, value] : feature.entries)
    {
        xml += "<EnumEntry Name=\"" + name + "\" NameSpace=\"Standard\">" + Element("Value", std::to_string(value)) +
               "</EnumEntry>";
    }
    return xml + Element("pValue", feature.name + "Reg");
}

std::string Selected(const SFeature& feature)
{
    std::string xml = Optional("pSelected", feature.selected);
    for (const std::string& name : feature.alsoSelected)
    {
        xml += Element("pSelected", name);
    }
    return xml;
}

std::string FeatureNode(const SFeature& feature)
{
    switch (feature.kind)
    {
    case EKind::Text:
        return Open("StringReg", feature.name, feature.isCustom) + Common(feature) + RegisterBody(feature) +
               "</StringReg>\n";
    case EKind::Bytes:
        return Open("Register", feature.name, feature.isCustom) + Common(feature) + RegisterBody(feature) +
               "</Register>\n";
    case EKind::Command:
        return Open("Command", feature.name, feature.isCustom) + Common(feature) +
               Element("pValue", feature.name + "Reg") + Element("CommandValue", "1") + "</Command>\n" +
               RegisterNode(feature);
    case EKind::Boolean:
        return Open("Boolean", feature.name, feature.isCustom) + Common(feature) +
               Element("pValue", feature.name + "Reg") + Element("OnValue", "1") + Element("OffValue", "0") +
               "</Boolean>\n" + RegisterNode(feature);
    case EKind::Enumeration:
        return Open("Enumeration", feature.name, feature.isCustom) + Common(feature) + EnumerationBody(feature) +
               Selected(feature) + "</Enumeration>\n" + RegisterNode(feature);
    case EKind::Float:
        return Open("Float", feature.name, feature.isCustom) + Common(feature) + NumberBody(feature) + "</Float>\n" +
               RegisterNode(feature);
    case EKind::Integer:
        break;
    }
    return Open("Integer", feature.name, feature.isCustom) + Common(feature) + NumberBody(feature) + "</Integer>\n" +
           RegisterNode(feature);
}

/** "TOTAL - USED", the largest value that still fits on the sensor. USED is a register: the features limit each other,
 *  and by their own nodes they would form a circle. */
std::string LimitNode(const char* name, const char* total, const char* used)
{
    return Open("IntSwissKnife", name, true) + Element("Visibility", "Invisible") + "<pVariable Name=\"TOTAL\">" +
           total + "</pVariable><pVariable Name=\"USED\">" + used + "</pVariable>" +
           Element("Formula", "TOTAL - USED") + "</IntSwissKnife>\n";
}

std::string HelperNodes()
{
    SFeature rateMax;
    rateMax.name = "AcquisitionFrameRateMax";
    rateMax.kind = EKind::Float;
    rateMax.address = Register::AcquisitionFrameRateMax;
    rateMax.bytes = 8;
    rateMax.access = EAccess::ReadOnly;
    rateMax.invalidators = {"Width",       "Height",      "PixelFormat",          "ChunkModeActive",
                            "ChunkEnable", "UserSetLoad", "ImageCompressionMode", "ImageCompressionRatio"};
    return LimitNode("WidthLimit", "WidthMax", "OffsetXReg") + LimitNode("HeightLimit", "HeightMax", "OffsetYReg") +
           LimitNode("OffsetXLimit", "WidthMax", "WidthReg") + LimitNode("OffsetYLimit", "HeightMax", "HeightReg") +
           RegisterNode(rateMax);
}

std::string Categories(const std::vector<SFeature>& features)
{
    std::vector<std::string> names;
    std::string nodes;
    for (const SFeature& feature : features)
    {
        if (std::find(names.begin(), names.end(), feature.category) != names.end())
        {
            continue;
        }
        names.push_back(feature.category);
        nodes += Open("Category", feature.category, feature.isCustom);
        for (const SFeature& other : features)
        {
            if (other.category == feature.category)
            {
                nodes += Element("pFeature", other.name);
            }
        }
        nodes += "</Category>\n";
    }
    std::string root = Open("Category", Root, false);
    for (const std::string& name : names)
    {
        root += Element("pFeature", name);
    }
    return root + "</Category>\n" + nodes;
}

/** Model names may hold anything; the description's root takes a name without white space. */
std::string Identifier(const std::string& text)
{
    std::string identifier;
    for (const char c : text)
    {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        identifier += isPlain ? c : '_';
    }
    return identifier;
}

std::string EventPorts(const std::vector<SFeature>& values)
{
    std::string xml;
    std::uint32_t last = 0;
    for (const SFeature& value : values) // those of one event follow each other
    {
        if (value.eventId != last)
        {
            xml += Open("Port", PortOf(value), true) + Element("EventID", Hex(value.eventId).substr(2)) + "</Port>\n";
        }
        last = value.eventId;
    }
    return xml;
}

} // namespace

std::string MakeDescription(const SCameraConfig& config, const std::vector<SFeature>& settings)
{
    std::vector<SFeature> features = settings;
    const std::vector<SFeature> chunkValues = MakeChunkValues(config);
    features.insert(features.end(), chunkValues.begin(), chunkValues.end());
    const std::vector<SFeature> eventValues = MakeEventValues();
    features.insert(features.end(), eventValues.begin(), eventValues.end());
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"" +
                      Identifier(config.modelName) + "\" VendorName=\"" + Identifier(config.vendorName) +
                      "\" ToolTip=\"Simulated camera\" StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" "
                      "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" "
                      "SubMinorVersion=\"0\" ProductGuid=\"5B0C4D52-0F35-4C6B-9B1C-6A0D7C1E2F01\" "
                      "VersionGuid=\"5B0C4D52-0F35-4C6B-9B1C-6A0D7C1E2F02\" "
                      "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\" "
                      "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                      "xsi:schemaLocation=\"http://www.genicam.org/GenApi/Version_1_1 "
                      "http://www.genicam.org/GenApi/GenApiSchema_Version_1_1.xsd\">\n";
    xml += Categories(features);
    for (const SFeature& feature : features)
    {
        xml += FeatureNode(feature);
    }
    xml += HelperNodes();
    for (const SFeature& value : chunkValues)
    {
        xml += Open("Port", value.name + "Port", true) + Element("ChunkID", Hex(value.chunkId).substr(2)) + "</Port>\n";
    }
    xml += EventPorts(eventValues);
    xml += "<Port Name=\"Device\" NameSpace=\"Standard\"></Port>\n</RegisterDescription>\n";
    if (config.faults.brokenDescription)
    {
        xml.resize(xml.size() / 2);
    }
    return xml;
}

} // namespace Simulator::Internal
