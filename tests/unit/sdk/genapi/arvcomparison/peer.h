// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"

#include <arv.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/** One memory, described by one text, seen through our node map and through the independent engine's. */
class CPeer : private GenApi::IPort
{
public:
    /** The independent engine's simulated camera with its own description. */
    CPeer() : CPeer(std::string()) {}

    /** Its memory with the nodes given (elements of a description without its frame). */
    explicit CPeer(const std::string& nodes)
    {
        m_device.reset(arv_fake_device_new("Peer", nullptr));
        if (nodes.empty())
        {
            std::size_t bytes = 0;
            const char* const own = arv_device_get_genicam_xml(m_device.get(), &bytes);
            m_description.assign(own, bytes);
        }
        else
        {
            m_description = Frame(nodes);
        }
        m_gc.reset(arv_gc_new(m_device.get(), m_description.data(), m_description.size()));
        if (m_gc == nullptr)
        {
            throw std::runtime_error("the independent engine does not take the description");
        }
        m_nodeMap = GenApi::CNodeMapFactory::FromData(m_description.data(), m_description.size()).CreateNodeMap();
        m_nodeMap->Connect(this);
    }

    ~CPeer() override { m_nodeMap->Disconnect(this); }

    GenApi::INodeMap& Map() { return *m_nodeMap; }
    const std::string& Description() const { return m_description; }
    template <class Pointer> Pointer Own(const std::string& name) { return Pointer(m_nodeMap->GetNode(name.c_str())); }
    ArvGcNode* Other(const std::string& name) { return arv_gc_get_node(m_gc.get(), name.c_str()); }

    std::optional<std::int64_t> OtherInteger(const std::string& name)
    {
        return Ask<std::int64_t>([&](GError** e) { return arv_gc_integer_get_value(ARV_GC_INTEGER(Other(name)), e); });
    }
    std::optional<double> OtherFloat(const std::string& name)
    {
        return Ask<double>([&](GError** e) { return arv_gc_float_get_value(ARV_GC_FLOAT(Other(name)), e); });
    }
    std::optional<std::string> OtherString(const std::string& name)
    {
        return Ask<std::string>(
            [&](GError** e)
            {
                const char* const text = arv_gc_string_get_value(ARV_GC_STRING(Other(name)), e);
                return std::string(text == nullptr ? "" : text);
            });
    }
    bool SetOtherInteger(const std::string& name, std::int64_t value)
    {
        return Ask<bool>(
                   [&](GError** e)
                   {
                       arv_gc_integer_set_value(ARV_GC_INTEGER(Other(name)), value, e);
                       return true;
                   })
            .has_value();
    }
    bool SetOtherFloat(const std::string& name, double value)
    {
        return Ask<bool>(
                   [&](GError** e)
                   {
                       arv_gc_float_set_value(ARV_GC_FLOAT(Other(name)), value, e);
                       return true;
                   })
            .has_value();
    }

    void Poke(std::int64_t address, std::vector<std::uint8_t> bytes)
    {
        Write(bytes.data(), address, static_cast<std::int64_t>(bytes.size()));
        m_nodeMap->InvalidateNodes();
    }
    std::vector<std::uint8_t> Peek(std::int64_t address, std::size_t bytes)
    {
        std::vector<std::uint8_t> result(bytes);
        Read(result.data(), address, static_cast<std::int64_t>(bytes));
        return result;
    }

    /** Runs an access of the independent engine; empty when it reports an error. */
    template <class T, class F> static std::optional<T> Ask(F access)
    {
        GError* error = nullptr;
        T value = access(&error);
        if (error != nullptr)
        {
            g_error_free(error);
            return std::nullopt;
        }
        return value;
    }

private:
    struct SUnref
    {
        void operator()(void* object) const { g_object_unref(object); }
    };

    static std::string Frame(const std::string& nodes)
    {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
               "<RegisterDescription ModelName=\"Peer\" VendorName=\"Test\" StandardNameSpace=\"None\" "
               "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" "
               "MinorVersion=\"0\" SubMinorVersion=\"0\" ToolTip=\"\" ProductGuid=\"0\" VersionGuid=\"0\" "
               "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n" +
               nodes + "<Port Name=\"Device\"></Port>\n</RegisterDescription>\n";
    }

    GenApi::EAccessMode GetAccessMode() const override { return GenApi::EAccessMode::RW; }

    void Read(void* buffer, std::int64_t address, std::int64_t length) override
    {
        Check(arv_device_read_memory(m_device.get(), static_cast<guint64>(address), static_cast<guint32>(length),
                                     buffer, nullptr));
    }

    void Write(const void* buffer, std::int64_t address, std::int64_t length) override
    {
        const auto* const bytes = static_cast<const std::uint8_t*>(buffer);
        std::vector<std::uint8_t> copy(bytes, bytes + length); // the device's interface takes no constant bytes
        Check(arv_device_write_memory(m_device.get(), static_cast<guint64>(address), static_cast<guint32>(length),
                                      copy.data(), nullptr));
    }

    static void Check(gboolean isDone)
    {
        if (!isDone)
        {
            GENICAM_THROW(RuntimeException, "the simulated camera refused the access");
        }
    }

    std::unique_ptr<ArvDevice, SUnref> m_device;
    std::string m_description;
    std::unique_ptr<ArvGc, SUnref> m_gc;
    std::unique_ptr<GenApi::INodeMap> m_nodeMap;
};
