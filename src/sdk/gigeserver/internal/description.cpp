// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "gigeserver/internal/description.h"

#include "genapi/exceptions.h"
#include "protocols/gvbsregisters.h"

#include <cstdio>
#include <memory>
#include <zip.h>

namespace GigEServer::Internal
{

namespace Gvbs = Velmo::Gvbs;

namespace
{

/** A number in a bootstrap register, by SFNC's name. */
struct STransportFeature
{
    const char* name;
    const char* toolTip;
    std::uint32_t address;
    bool isWritable;
    int lsb; // lowest and highest bit, 0 being the lowest of the word
    int msb;
    const char* limits; // Min, Max and Inc where the bits do not say them
};

constexpr STransportFeature Features[] = {
    {"GevCurrentIPAddress", "Address of the camera.", Gvbs::CurrentIpAddress, false, 0, 31, ""},
    {"GevCurrentSubnetMask", "Subnet mask of the camera.", Gvbs::CurrentSubnetMask, false, 0, 31, ""},
    {"GevCurrentDefaultGateway", "Gateway of the camera.", Gvbs::CurrentDefaultGateway, false, 0, 31, ""},
    {"GevHeartbeatTimeout", "Time after which the camera gives up an application that fell silent, in ms.",
     Gvbs::HeartbeatTimeout, true, 0, 31, "<Min>500</Min>"},
    {"GevSCPHostPort", "Port to which images are sent; 0 closes the stream channel.", Gvbs::StreamChannelPort, false, 0,
     15, ""},
    {"GevSCDA", "Address to which images are sent.", Gvbs::StreamChannelDestination, false, 0, 31, ""},
    {"GevSCPSPacketSize", "Bytes of a packet, with the headers of IP and UDP.", Gvbs::StreamChannelPacketSize, true, 0,
     15, "<Min>92</Min><Max>16384</Max><Inc>4</Inc>"},
    {"GevSCPD", "Pause between packets, in ticks of the camera's clock.", Gvbs::StreamChannelPacketDelay, true, 0, 31,
     ""},
    {"GevMCPHostPort", "Port to which events are sent; 0 closes the message channel.", Gvbs::MessageChannelPort, false,
     0, 15, ""},
    {"GevMCDA", "Address to which events are sent.", Gvbs::MessageChannelDestination, false, 0, 31, ""},
    {"GevMCTT", "Time after which an event that was not acknowledged is sent again, in ms; 0: none is.",
     Gvbs::MessageChannelTransmissionTimeout, true, 0, 31, ""},
    {"GevMCRC", "How often an event that was not acknowledged is sent again.", Gvbs::MessageChannelRetryCount, true, 0,
     31, ""},
    {"GevMCSP", "Port from which events are sent.", Gvbs::MessageChannelSourcePort, false, 0, 15, ""},
};

struct STransportSwitch
{
    const char* name;
    const char* toolTip;
    std::uint32_t address;
    int bit;
};

constexpr STransportSwitch Switches[] = {
    {"GevSCCFGExtendedChunkData", "Sends the geometry of the image with payloads that have chunks.",
     Gvbs::StreamChannelConfiguration, 0},
    {"GevGVSPExtendedIDMode", "Numbers images with 64 and packets with 32 bits.", Gvbs::GvspConfiguration, 30},
};

std::string Hex(std::uint64_t value)
{
    char text[24];
    std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(value));
    return text;
}

std::string BitsNode(const std::string& name, std::uint32_t address, bool isWritable, int lsb, int msb)
{
    // Big-endian registers count their bits from the most significant one.
    return "<MaskedIntReg Name=\"" + name + "Reg\" NameSpace=\"Custom\"><Visibility>Invisible</Visibility><Address>0x" +
           Hex(address) + "</Address><Length>4</Length><AccessMode>" + (isWritable ? "RW" : "RO") +
           "</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><LSB>" + std::to_string(31 - lsb) +
           "</LSB><MSB>" + std::to_string(31 - msb) +
           "</MSB><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>\n";
}

std::string Head(const char* kind, const char* name, const char* toolTip)
{
    return std::string("<") + kind + " Name=\"" + name + "\" NameSpace=\"Standard\"><ToolTip>" + toolTip +
           "</ToolTip><Description>" + toolTip + "</Description><Visibility>Expert</Visibility>";
}

void InsertBefore(std::string& xml, const std::string& mark, const std::string& text)
{
    const std::size_t place = xml.rfind(mark);
    if (place != std::string::npos) // a description that is broken on purpose stays so
    {
        xml.insert(place, text);
    }
}

[[noreturn]] void FailToZip(const char* what)
{
    GENICAM_THROW(RuntimeException, std::string("The description of the camera cannot be zipped: ") + what + ".");
}

std::string FileName(const Simulator::CCameraModel& model)
{
    std::string name;
    for (const char c : model.GetConfig().modelName)
    {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        name += isPlain ? c : '_';
    }
    return name;
}

} // namespace

std::string AddTransportFeatures(std::string xml)
{
    std::string nodes;
    std::string members;
    for (const STransportFeature& feature : Features)
    {
        nodes += Head("Integer", feature.name, feature.toolTip) + "<pValue>" + feature.name + "Reg</pValue>" +
                 feature.limits + "</Integer>\n" +
                 BitsNode(feature.name, feature.address, feature.isWritable, feature.lsb, feature.msb);
        members += std::string("<pFeature>") + feature.name + "</pFeature>";
    }
    for (const STransportSwitch& entry : Switches)
    {
        nodes += Head("Boolean", entry.name, entry.toolTip) + "<pValue>" + entry.name +
                 "Reg</pValue><OnValue>1</OnValue><OffValue>0</OffValue></Boolean>\n" +
                 BitsNode(entry.name, entry.address, true, entry.bit, entry.bit);
        members += std::string("<pFeature>") + entry.name + "</pFeature>";
    }
    const std::string category = "<Category Name=\"TransportLayerControl\"";
    const std::size_t begin = xml.find(category);
    const std::size_t end = begin == std::string::npos ? begin : xml.find("</Category>", begin);
    if (end == std::string::npos)
    {
        return xml;
    }
    xml.insert(end, members);
    InsertBefore(xml, "<Port Name=\"Device\"", nodes);
    return xml;
}

std::vector<std::uint8_t> ZipDescription(const Simulator::CCameraModel& model)
{
    const std::string xml = AddTransportFeatures(model.GetDescription());
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* pTarget = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* pZip = pTarget == nullptr ? nullptr : zip_open_from_source(pTarget, ZIP_TRUNCATE, &error);
    if (pZip == nullptr)
    {
        zip_source_free(pTarget);
        FailToZip(zip_error_strerror(&error));
    }
    zip_source_keep(pTarget); // closing the archive gives up one reference
    const std::unique_ptr<zip_source_t, void (*)(zip_source_t*)> target(pTarget, &zip_source_free);
    zip_source_t* pContent = zip_source_buffer(pZip, xml.data(), xml.size(), 0);
    const std::string name = FileName(model) + ".xml";
    if (pContent == nullptr || zip_file_add(pZip, name.c_str(), pContent, ZIP_FL_ENC_UTF_8) < 0 || zip_close(pZip) != 0)
    {
        const std::string what = zip_strerror(pZip);
        zip_discard(pZip);
        FailToZip(what.c_str());
    }
    zip_stat_t size;
    if (zip_source_open(pTarget) != 0 || zip_source_stat(pTarget, &size) != 0)
    {
        FailToZip("it cannot be read back");
    }
    std::vector<std::uint8_t> bytes(size.size);
    const zip_int64_t read = zip_source_read(pTarget, bytes.data(), size.size);
    zip_source_close(pTarget);
    if (read != static_cast<zip_int64_t>(size.size))
    {
        FailToZip("it was not read back as a whole");
    }
    return bytes;
}

std::string DescriptionUrl(const Simulator::CCameraModel& model, std::size_t bytes)
{
    return "Local:" + FileName(model) + ".zip;" + Hex(DescriptionAddress) + ";" + Hex(bytes);
}

} // namespace GigEServer::Internal
