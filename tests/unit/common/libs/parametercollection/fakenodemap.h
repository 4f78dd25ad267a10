// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodemap.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

/** A node without properties; the kind below adds the interface of its value. */
class CFakeNode : public GenApi::INode
{
public:
    explicit CFakeNode(std::string name) : m_name(std::move(name)) {}
    GenApi::EAccessMode GetAccessMode() const override { return access; }
    GenICam::gcstring GetName(bool) const override { return m_name; }
    GenApi::ENameSpace GetNameSpace() const override { return GenApi::ENameSpace::Standard; }
    GenApi::EVisibility GetVisibility() const override { return GenApi::EVisibility::Beginner; }
    GenICam::gcstring GetToolTip() const override { return {}; }
    GenICam::gcstring GetDescription() const override { return {}; }
    GenICam::gcstring GetDisplayName() const override { return {}; }
    GenICam::gcstring GetDeviceName() const override { return {}; }
    GenICam::gcstring GetEventID() const override { return {}; }
    GenICam::gcstring GetDocuURL() const override { return {}; }
    bool IsFeature() const override { return true; }
    bool IsStreamable() const override { return false; }
    bool IsDeprecated() const override { return false; }
    bool IsCachable() const override { return false; }
    GenApi::ECachingMode GetCachingMode() const override { return GenApi::ECachingMode::NoCache; }
    std::int64_t GetPollingTime() const override { return -1; }
    GenApi::EInterfaceType GetPrincipalInterfaceType() const override { return GenApi::EInterfaceType::Value; }
    GenApi::INode* GetAlias() const override { return nullptr; }
    GenApi::INode* GetCastAlias() const override { return nullptr; }
    GenApi::INodeMap* GetNodeMap() const override { return nullptr; }
    bool GetProperty(const GenICam::gcstring&, GenICam::gcstring&) const override { return false; }
    void InvalidateNode() override {}
    GenApi::CallbackHandle RegisterCallback(std::function<void(GenApi::INode*)>) override { return 0; }
    bool DeregisterCallback(GenApi::CallbackHandle) override { return false; }

    GenApi::EAccessMode access = GenApi::EAccessMode::RW;

private:
    std::string m_name;
};

/** An integer from 0 to 100. */
class CFakeInteger : public CFakeNode, public GenApi::IInteger
{
public:
    CFakeInteger(const std::string& name, std::int64_t value) : CFakeNode(name), m_value(value) {}
    GenApi::EAccessMode GetAccessMode() const override { return access; }
    GenICam::gcstring ToString(bool, bool) override { return std::to_string(m_value); }
    void FromString(const GenICam::gcstring& text, bool) override { SetValue(std::stoll(text.str()), true); }
    bool IsValueCacheValid() const override { return false; }
    void SetValue(std::int64_t value, bool) override
    {
        if (value < 0 || value > 100)
        {
            GENICAM_THROW(OutOfRangeException, "out of range");
        }
        m_value = value;
    }
    std::int64_t GetValue(bool, bool) override { return m_value; }
    std::int64_t GetMin() override { return 0; }
    std::int64_t GetMax() override { return 100; }
    GenApi::EIncMode GetIncMode() override { return GenApi::EIncMode::FixedIncrement; }
    std::int64_t GetInc() override { return 1; }
    GenApi::ERepresentation GetRepresentation() override { return GenApi::ERepresentation::Linear; }
    GenICam::gcstring GetUnit() override { return {}; }

private:
    std::int64_t m_value;
};

/** Owns its nodes and finds them by name. */
class CFakeNodeMap : public GenApi::INodeMap
{
public:
    CFakeInteger& add(const std::string& name, std::int64_t value)
    {
        auto& node = m_nodes[name];
        node = std::make_unique<CFakeInteger>(name, value);
        return *node;
    }
    GenApi::INode* GetNode(const GenICam::gcstring& name) const override
    {
        const auto found = m_nodes.find(name.str());
        return found == m_nodes.end() ? nullptr : found->second.get();
    }
    void GetNodes(GenApi::NodeList&) const override {}
    std::uint64_t GetNumNodes() const override { return m_nodes.size(); }
    void InvalidateNodes() override {}
    void Poll(std::int64_t) override {}
    bool Connect(GenApi::IPort*, const GenICam::gcstring&) override { return false; }
    bool Connect(GenApi::IPort*) override { return false; }
    void Disconnect(GenApi::IPort*) override {}
    GenICam::gcstring GetModelName() const override { return {}; }
    GenICam::gcstring GetVendorName() const override { return {}; }
    GenICam::gcstring GetDeviceName() const override { return {}; }
    void GetSchemaVersion(std::uint16_t&, std::uint16_t&, std::uint16_t&) const override {}
    void GetDeviceVersion(std::uint16_t&, std::uint16_t&, std::uint16_t&) const override {}
    std::recursive_mutex& GetLock() const override { return m_lock; }
    void AttachEvent(const GenICam::gcstring&, const std::uint8_t*, std::size_t) override {}
    void AttachChunk(const GenICam::gcstring&, const std::uint8_t*, std::size_t, GenApi::EEndianness) override {}
    void AttachChunks(const GenApi::SChunkData*, std::size_t, GenApi::EEndianness) override {}
    void DetachChunks() override {}
    bool HasChunks() const override { return false; }

private:
    std::map<std::string, std::unique_ptr<CFakeInteger>> m_nodes;
    mutable std::recursive_mutex m_lock;
};
