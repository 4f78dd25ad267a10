// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/softwarenodemaps.h"

namespace Velmo::Emulation::Internal
{

namespace
{

constexpr std::size_t PortBytes = 256;
constexpr std::size_t TextBytes = 64;

// Addresses of the port's memory, and as the descriptions write them.
constexpr std::int64_t FirstNumber = 0x00;
constexpr std::int64_t NumberBytes = 8;
constexpr std::int64_t TransmissionType = 0x40;
constexpr std::int64_t IdText = 0x80;
constexpr std::int64_t NameText = 0xC0;

std::string Head(const std::string& model)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"" + model +
           "\" VendorName=\"CameraPool\" ToolTip=\"\" StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" "
           "SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" "
           "SubMinorVersion=\"0\" ProductGuid=\"5B0C4D52-0F35-4C6B-9B1C-6A0D7C1E2F03\" "
           "VersionGuid=\"5B0C4D52-0F35-4C6B-9B1C-6A0D7C1E2F04\" "
           "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n";
}

std::string Tail()
{
    return "<Port Name=\"Device\" NameSpace=\"Standard\"></Port>\n</RegisterDescription>\n";
}

std::string Address(std::int64_t address, std::int64_t bytes, const char* access)
{
    return "<Address>" + std::to_string(address) + "</Address><Length>" + std::to_string(bytes) +
           "</Length><AccessMode>" + access + "</AccessMode><pPort>Device</pPort>";
}

/** The index-th read-only number. */
std::string Number(const std::string& name, int index, const std::string& toolTip)
{
    return "<Integer Name=\"" + name + "\" NameSpace=\"Custom\"><ToolTip>" + toolTip + "</ToolTip><pValue>" + name +
           "Reg</pValue></Integer>\n<IntReg Name=\"" + name + "Reg\" NameSpace=\"Custom\">" +
           Address(FirstNumber + index * NumberBytes, NumberBytes, "RO") +
           "<Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

std::string Text(const std::string& name, std::int64_t address, const std::string& toolTip)
{
    return "<StringReg Name=\"" + name + "\" NameSpace=\"Standard\"><ToolTip>" + toolTip + "</ToolTip>" +
           Address(address, TextBytes, "RO") + "</StringReg>\n";
}

const std::string& StreamDescription()
{
    static const std::string description =
        Head("EmulationStream") +
        "<Category Name=\"Root\" NameSpace=\"Standard\"><pFeature>PayloadSize</pFeature>"
        "<pFeature>TransmissionType</pFeature><pFeature>Statistics</pFeature></Category>\n"
        "<Category Name=\"Statistics\" NameSpace=\"Custom\"><pFeature>StatisticTotalBufferCount</pFeature>"
        "<pFeature>StatisticFailedBufferCount</pFeature><pFeature>StatisticBufferUnderrunCount</pFeature>"
        "</Category>\n<Enumeration Name=\"TransmissionType\" NameSpace=\"Custom\"><ToolTip>Who configures the "
        "stream.</ToolTip><EnumEntry Name=\"Unicast\" NameSpace=\"Custom\"><Value>0</Value></EnumEntry>"
        "<EnumEntry Name=\"UseCameraConfig\" NameSpace=\"Custom\"><Value>1</Value></EnumEntry>"
        "<pValue>TransmissionTypeReg</pValue></Enumeration>\n"
        "<IntReg Name=\"TransmissionTypeReg\" NameSpace=\"Custom\">" +
        Address(TransmissionType, 4, "RW") + "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n" +
        Number("PayloadSize", 0, "Bytes of an image.") +
        Number("StatisticTotalBufferCount", 1, "Buffers delivered since the stream was opened.") +
        Number("StatisticFailedBufferCount", 2, "Of these, how many failed.") +
        Number("StatisticBufferUnderrunCount", 3, "Images lost because no buffer was queued.") + Tail();
    return description;
}

const std::string& InterfaceDescription()
{
    static const std::string description =
        Head("EmulationInterface") +
        "<Category Name=\"Root\" NameSpace=\"Standard\"><pFeature>InterfaceID</pFeature>"
        "<pFeature>InterfaceDisplayName</pFeature><pFeature>DeviceCount</pFeature></Category>\n" +
        Number("DeviceCount", 0, "Cameras on the interface now.") +
        Text("InterfaceID", IdText, "Identifier of the interface.") +
        Text("InterfaceDisplayName", NameText, "Name of the interface.") + Tail();
    return description;
}

} // namespace

CSoftwareNodeMap::CSoftwareNodeMap(const std::string& description)
    : m_port(PortBytes),
      m_nodeMap(GenApi::CNodeMapFactory::FromData(description.data(), description.size()).CreateNodeMap())
{
    m_nodeMap->Connect(&m_port);
}

CSoftwareNodeMap::~CSoftwareNodeMap() = default;

void CSoftwareNodeMap::Provide(int index, std::function<std::uint64_t()> value)
{
    const std::int64_t address = FirstNumber + index * NumberBytes;
    m_port.SetReadHook(address, NumberBytes,
                       [this, address, value = std::move(value)](std::int64_t, std::int64_t)
                       { m_port.Poke(address, value(), NumberBytes); });
}

std::unique_ptr<CSoftwareNodeMap> CSoftwareNodeMap::MakeStream(SStreamValues values, bool isMonitor)
{
    std::unique_ptr<CSoftwareNodeMap> map(new CSoftwareNodeMap(StreamDescription()));
    map->Provide(0, std::move(values.payloadBytes));
    map->Provide(1, std::move(values.totalBuffers));
    map->Provide(2, std::move(values.failedBuffers));
    map->Provide(3, std::move(values.underruns));
    map->m_port.Poke(TransmissionType, isMonitor ? 1 : 0, 4);
    return map;
}

std::unique_ptr<CSoftwareNodeMap> CSoftwareNodeMap::MakeInterface(const std::string& id, const std::string& name,
                                                                  std::function<std::uint64_t()> deviceCount)
{
    std::unique_ptr<CSoftwareNodeMap> map(new CSoftwareNodeMap(InterfaceDescription()));
    map->Provide(0, std::move(deviceCount));
    map->m_port.PokeText(IdText, id, TextBytes);
    map->m_port.PokeText(NameText, name, TextBytes);
    return map;
}

} // namespace Velmo::Emulation::Internal
