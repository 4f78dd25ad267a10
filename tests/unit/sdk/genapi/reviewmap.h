// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

/** A memory that counts its accesses. */
class CCountingPort : public GenApi::IPort
{
public:
    explicit CCountingPort(std::size_t bytes) : memory(bytes) {}

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }
    void Read(void* buffer, std::int64_t address, std::int64_t length) override
    {
        Check(address, length);
        ++reads;
        std::memcpy(buffer, memory.data() + address, static_cast<std::size_t>(length));
    }
    void Write(const void* buffer, std::int64_t address, std::int64_t length) override
    {
        Check(address, length);
        ++writes;
        std::memcpy(memory.data() + address, buffer, static_cast<std::size_t>(length));
    }

    std::vector<std::uint8_t> memory;
    int reads = 0;
    int writes = 0;

private:
    void Check(std::int64_t address, std::int64_t length) const
    {
        if (address < 0 || length < 0 || static_cast<std::size_t>(address + length) > memory.size())
        {
            GENICAM_THROW(AccessException, "outside the memory");
        }
    }
};

/** A node map of the nodes given, over 256 bytes. */
class CReviewMap
{
public:
    explicit CReviewMap(const std::string& nodes, bool isConnected = true) : port(256)
    {
        const std::string text =
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<RegisterDescription ModelName=\"Review\" VendorName=\"Test\" StandardNameSpace=\"None\" "
            "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
            "MinorVersion=\"2\" SubMinorVersion=\"3\" ToolTip=\"\" ProductGuid=\"0\" VersionGuid=\"0\" "
            "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n" +
            nodes + "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
        map = GenApi::CNodeMapFactory::FromData(text.data(), text.size()).CreateNodeMap();
        if (isConnected)
        {
            map->Connect(&port);
        }
    }

    GenApi::EAccessMode Access(const std::string& name) const { return map->GetNode(name.c_str())->GetAccessMode(); }
    GenApi::CIntegerPtr Integer(const std::string& name) const { return map->GetNode(name.c_str()); }
    GenApi::CFloatPtr Float(const std::string& name) const { return map->GetNode(name.c_str()); }
    GenApi::CEnumerationPtr Enumeration(const std::string& name) const { return map->GetNode(name.c_str()); }
    GenApi::CBooleanPtr Boolean(const std::string& name) const { return map->GetNode(name.c_str()); }
    GenApi::CCommandPtr Command(const std::string& name) const { return map->GetNode(name.c_str()); }
    GenApi::CStringPtr String(const std::string& name) const { return map->GetNode(name.c_str()); }
    GenApi::CValuePtr Value(const std::string& name) const { return map->GetNode(name.c_str()); }

    CCountingPort port;
    std::unique_ptr<GenApi::INodeMap> map;
};

/** An unsigned little-endian 32-bit register. */
inline std::string Register(const std::string& name, int address, const std::string& more = "",
                            const std::string& access = "RW")
{
    return "<IntReg Name=\"" + name + "\"><Address>" + std::to_string(address) + "</Address><Length>4</Length>" +
           "<AccessMode>" + access + "</AccessMode><pPort>Device</pPort>" + more +
           "<Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

inline std::string Plain(const std::string& name, std::int64_t value)
{
    return "<Integer Name=\"" + name + "\"><Value>" + std::to_string(value) + "</Value></Integer>\n";
}
