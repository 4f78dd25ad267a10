// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "transports/gige/internal/eventreader.h"

#include <algorithm>
#include <cstdlib>
#include <string>

using namespace Velmo;

namespace
{

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

constexpr std::uint32_t Camera = 0x7F000001;

/** A node map with one event, whose values lie at the begin, in the middle and far behind. */
GenApi::INodeMap& NodeMap()
{
    static const std::string xml = []
    {
        std::string text = "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" "
                           "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
                           "MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\">";
        for (const int address : {2, 16, 500})
        {
            text += "<IntReg Name=\"At" + std::to_string(address) + "\"><Address>" + std::to_string(address) +
                    "</Address><Length>8</Length><AccessMode>RO</AccessMode><pPort>EventPort</pPort></IntReg>";
        }
        return text + "<Port Name=\"EventPort\"><EventID>9001</EventID></Port><Port Name=\"Device\"/>"
                      "</RegisterDescription>";
    }();
    static const auto pMap = GenApi::CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap();
    return *pMap;
}

void Attach(const Transport::SDeviceEvent& event)
{
    NodeMap().AttachEvent("9001", event.bytes.data(), event.bytes.size());
    for (const char* name : {"At2", "At16", "At500"})
    {
        const GenApi::CIntegerPtr value(NodeMap().GetNode(name));
        try
        {
            value->GetValue();
        }
        catch (const GenICam::AccessException&)
        {
            // the event is too short for it
        }
    }
}

} // namespace

/** The input is a row of datagrams, each behind its length (one byte); the sender's address ends in the byte after. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    GigE::Internal::CEventReader reader(Camera, 0);
    while (size >= 2)
    {
        const std::size_t bytes = std::min<std::size_t>(data[0], size - 2);
        const std::uint32_t sender = (Camera & 0xFFFFFF00) | data[1];
        const auto before = reader.GetCounters();
        std::int64_t events = 0;
        const Gvcp::Bytes answer = reader.Handle(data + 2, bytes, sender, 1,
                                                 [&](const Transport::SDeviceEvent& event)
                                                 {
                                                     Require(event.bytes.size() <= bytes);
                                                     Attach(event);
                                                     ++events;
                                                 });
        Require(sender == Camera || (answer.empty() && events == 0));
        Require(reader.GetCounters().received - before.received == events);
        Require(answer.empty() || answer.size() == Gvcp::HeaderBytes);
        data += 2 + bytes;
        size -= 2 + bytes;
    }
    return 0;
}
