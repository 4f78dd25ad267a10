// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"
#include "genapi/memoryport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace GenApi
{

/** Makes node maps of description fragments over 4 KiB of memory. */
class CNodeMapTest : public ::testing::Test
{
protected:
    static std::string Describe(const std::string& nodes)
    {
        return "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"Model\" VendorName=\"Vendor\" "
               "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"2\" MajorVersion=\"3\" "
               "MinorVersion=\"4\" SubMinorVersion=\"5\">" +
               nodes + "<Port Name=\"Device\"/></RegisterDescription>";
    }

    /** A register's elements but for the kind's own. */
    static std::string At(int address, int length, const std::string& mode = "RW")
    {
        return "<Address>" + std::to_string(address) + "</Address><Length>" + std::to_string(length) +
               "</Length><AccessMode>" + mode + "</AccessMode><pPort>Device</pPort>";
    }

    static std::string IntReg(const std::string& name, int address, const std::string& more = "")
    {
        return "<IntReg Name=\"" + name + "\">" + At(address, 4) + more + "</IntReg>";
    }

    void Load(const std::string& nodes)
    {
        const std::string xml = Describe(nodes);
        m_map = CNodeMapFactory::FromData(xml.data(), xml.size()).CreateNodeMap("Tested");
        m_map->Connect(&m_port);
    }

    template <class T> T& Get(const std::string& name)
    {
        T* const node = dynamic_cast<T*>(m_map->GetNode(name));
        if (node == nullptr)
        {
            throw std::runtime_error("no such node: " + name);
        }
        return *node;
    }
    IInteger& Integer(const std::string& name) { return Get<IInteger>(name); }
    IFloat& Float(const std::string& name) { return Get<IFloat>(name); }
    EAccessMode Mode(const std::string& name) { return Get<INode>(name).GetAccessMode(); }

    /** The text of the exception that loading these nodes throws; empty if it throws none. */
    static std::string Refusal(const std::string& nodes)
    {
        const std::string xml = Describe(nodes);
        try
        {
            CNodeMapFactory::FromData(xml.data(), xml.size());
        }
        catch (const GenICam::LogicalErrorException& e)
        {
            return e.GetDescription();
        }
        return {};
    }

    CMemoryPort m_port{4096};
    std::unique_ptr<INodeMap> m_map;
};

} // namespace GenApi
