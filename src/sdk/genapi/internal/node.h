// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/callbacks.h"
#include "genapi/internal/description.h"

#include "genapi/inodes.h"

namespace GenApi
{
namespace Internal
{

class CNodeMap;
class CRegisterAccess;

/** The common part of the accesses a source and a condition allow. */
EAccessMode Combine(EAccessMode first, EAccessMode second);

/**
 * What all nodes have: names and texts, access mode, callbacks.
 *
 * Functions of the interfaces take the node map's lock; the others are called with it held.
 */
class CNode : public INode, public ISelector
{
public:
    CNode(CNodeMap& map, NodeIndex index);
    ~CNode() override;
    CNode(const CNode&) = delete;
    CNode& operator=(const CNode&) = delete;

    EAccessMode GetAccessMode() const override;
    GenICam::gcstring GetName(bool fullyQualified) const override;
    ENameSpace GetNameSpace() const override;
    EVisibility GetVisibility() const override;
    GenICam::gcstring GetToolTip() const override;
    GenICam::gcstring GetDescription() const override;
    GenICam::gcstring GetDisplayName() const override;
    GenICam::gcstring GetDeviceName() const override;
    GenICam::gcstring GetEventID() const override;
    GenICam::gcstring GetDocuURL() const override;
    bool IsFeature() const override;
    bool IsStreamable() const override;
    bool IsDeprecated() const override;
    bool IsCachable() const override;
    ECachingMode GetCachingMode() const override;
    std::int64_t GetPollingTime() const override;
    EInterfaceType GetPrincipalInterfaceType() const override;
    INode* GetAlias() const override;
    INode* GetCastAlias() const override;
    INodeMap* GetNodeMap() const override;
    bool GetProperty(const GenICam::gcstring& name, GenICam::gcstring& value) const override;
    void InvalidateNode() override;
    CallbackHandle RegisterCallback(std::function<void(INode*)> callback) override;
    bool DeregisterCallback(CallbackHandle handle) override;
    bool IsSelector() const override;
    void GetSelectedFeatures(FeatureList& features) const override;
    void GetSelectingFeatures(FeatureList& features) const override;

    const SNodeDescription& Description() const { return m_description; }
    NodeIndex Index() const { return m_index; }
    CNodeMap& Map() const { return m_map; }
    const Callbacks& RegisteredCallbacks() const { return m_callbacks; }

    /** Access by conditions, imposed mode and source; locks left out. */
    EAccessMode AvailableMode();
    /** By its own condition or that of what it writes to. */
    bool IsLocked();
    /** The node's access mode. */
    EAccessMode Mode();
    void RequireReadable();
    void RequireWritable();
    /** Throws RuntimeException if the node's error node reports one. */
    void CheckError();
    /** Forgets what was cached. */
    virtual void Drop();
    /** The node's register; null if it has none. */
    virtual CRegisterAccess* Register() { return nullptr; }
    /** Looks whether something that takes its time has ended. */
    virtual void Poll() {}

protected:
    /** What the node's source allows. */
    virtual EAccessMode SourceMode() { return EAccessMode::RO; }
    virtual bool IsSourceLocked() { return false; }
    std::string Text(const char* elementName) const;
    [[noreturn]] void ThrowAccess(const char* what, EAccessMode mode) const;

private:
    bool Holds(NodeIndex condition, bool ifUnreadable);
    bool IsRefusedByDescription();
    std::string PortsRefusal();

    EAccessMode ComputeAvailableMode();
    void FillFeatures(const NodeIndices& indices, FeatureList& features) const;

    CNodeMap& m_map;
    const SNodeDescription& m_description;
    const NodeIndex m_index;
    bool m_isModeKnown = false;
    EAccessMode m_mode = EAccessMode::NI;
    Callbacks m_callbacks;
    CallbackHandle m_lastHandle = 0;
};

} // namespace Internal
} // namespace GenApi
