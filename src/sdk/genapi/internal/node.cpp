// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/node.h"

#include "genapi/internal/elementreader.h"
#include "genapi/internal/nodemap.h"
#include "genapi/internal/numbernode.h"
#include "genapi/internal/portnode.h"

#include <algorithm>
#include <utility>

namespace GenApi
{
namespace Internal
{
namespace
{

const char* NameOfMode(EAccessMode mode)
{
    switch (mode)
    {
    case EAccessMode::NI:
        return "not implemented";
    case EAccessMode::NA:
        return "not available";
    case EAccessMode::WO:
        return "write-only";
    case EAccessMode::RO:
        return "read-only or locked";
    default:
        return "readable and writable";
    }
}

} // namespace

EAccessMode Combine(EAccessMode first, EAccessMode second)
{
    if (first == EAccessMode::NI || second == EAccessMode::NI)
    {
        return EAccessMode::NI;
    }
    const bool isReadable = IsReadable(first) && IsReadable(second);
    const bool isWritable = IsWritable(first) && IsWritable(second);
    if (isReadable)
    {
        return isWritable ? EAccessMode::RW : EAccessMode::RO;
    }
    return isWritable ? EAccessMode::WO : EAccessMode::NA;
}

CNode::CNode(CNodeMap& map, NodeIndex index)
    : m_map(map), m_description(map.Description().nodes[static_cast<std::size_t>(index)]), m_index(index)
{
}

CNode::~CNode() = default;

EAccessMode CNode::GetAccessMode() const
{
    return m_map.Run([this] { return m_map.Node(m_index).Mode(); });
}

EAccessMode CNode::Mode()
{
    const EAccessMode mode = AvailableMode();
    if (IsWritable(mode) && IsLocked())
    {
        return mode == EAccessMode::RW ? EAccessMode::RO : EAccessMode::NA;
    }
    return mode;
}

EAccessMode CNode::AvailableMode()
{
    if (!m_isModeKnown)
    {
        m_mode = ComputeAvailableMode();
        m_isModeKnown = m_description.isAccessCachable;
    }
    return m_mode;
}

EAccessMode CNode::ComputeAvailableMode()
{
    // A condition that cannot be read now says nothing about the node's existence, only about its availability.
    if (!Holds(m_description.isImplemented, true))
    {
        return EAccessMode::NI;
    }
    if (!Holds(m_description.isAvailable, false) || !Holds(m_description.isImplemented, false))
    {
        return EAccessMode::NA;
    }
    return Combine(m_description.imposedAccessMode, SourceMode());
}

bool CNode::Holds(NodeIndex condition, bool ifUnreadable)
{
    if (condition == NoNode)
    {
        return true;
    }
    CNumberNode& node = m_map.Number(condition);
    if (!IsReadable(node.AvailableMode()))
    {
        return ifUnreadable;
    }
    return IsTrue(node.ReadNumber(false));
}

bool CNode::IsLocked()
{
    if (m_description.isLocked != NoNode && Holds(m_description.isLocked, true))
    {
        return true;
    }
    return IsSourceLocked();
}

void CNode::ThrowAccess(const char* what, EAccessMode mode) const
{
    GENICAM_THROW(AccessException, "Node '" + m_description.name + "' is not " + what + ": it is " + NameOfMode(mode));
}

void CNode::RequireReadable()
{
    const EAccessMode mode = AvailableMode();
    if (!IsReadable(mode))
    {
        ThrowAccess("readable", mode);
    }
}

void CNode::RequireWritable()
{
    const EAccessMode mode = Mode();
    if (IsWritable(mode))
    {
        return;
    }
    const std::string refusal = PortsRefusal();
    if (!refusal.empty())
    {
        GENICAM_THROW(AccessException, "Node '" + m_description.name + "' is not writable: " + refusal);
    }
    ThrowAccess("writable", mode);
}

bool CNode::IsRefusedByDescription()
{
    return !IsWritable(m_description.imposedAccessMode) || !Holds(m_description.isImplemented, false) ||
           !Holds(m_description.isAvailable, false) ||
           (m_description.isLocked != NoNode && Holds(m_description.isLocked, true));
}

std::string CNode::PortsRefusal()
{
    // The port's word counts only where nothing else on the way to it forbids to write.
    CNode* node = this;
    while (!node->IsRefusedByDescription())
    {
        if (const SRegisterPart* const reg = node->m_description.reg.get())
        {
            const IPort* const port = IsWritable(reg->accessMode) ? m_map.Port(reg->port).Target() : nullptr;
            return port == nullptr || IsWritable(port->GetAccessMode()) ? std::string() : port->GetWriteRefusal().str();
        }
        const SNumberPart* const number = node->m_description.number.get();
        if (number == nullptr || number->value.node == NoNode)
        {
            break;
        }
        node = &m_map.Node(number->value.node);
    }
    return {};
}

void CNode::CheckError()
{
    if (m_description.error == NoNode)
    {
        return;
    }
    CNumberNode& error = m_map.Number(m_description.error);
    error.RequireReadable();
    const std::int64_t code = error.ReadInteger(true);
    if (code != 0)
    {
        GENICAM_THROW(RuntimeException, "Node '" + m_description.name + "': '" + error.Description().name +
                                            "' reports the error " + error.ToString(false, false).str());
    }
}

void CNode::Drop()
{
    m_isModeKnown = false;
}

std::string CNode::Text(const char* elementName) const
{
    const pugi::xml_node own = m_description.element.child(elementName);
    return TextOf(own || !m_description.outer ? own : m_description.outer.child(elementName));
}

GenICam::gcstring CNode::GetName(bool fullyQualified) const
{
    if (!fullyQualified)
    {
        return m_description.name;
    }
    return (m_description.isStandard ? "Std::" : "Cust::") + m_description.name;
}

ENameSpace CNode::GetNameSpace() const
{
    return m_description.isStandard ? ENameSpace::Standard : ENameSpace::Custom;
}

EVisibility CNode::GetVisibility() const
{
    return m_description.visibility;
}

GenICam::gcstring CNode::GetToolTip() const
{
    return Text("ToolTip");
}

GenICam::gcstring CNode::GetDescription() const
{
    return Text("Description");
}

GenICam::gcstring CNode::GetDisplayName() const
{
    const std::string text = Text("DisplayName");
    if (!text.empty())
    {
        return text;
    }
    return m_description.entry ? m_description.entry->symbolic : m_description.name;
}

GenICam::gcstring CNode::GetDeviceName() const
{
    return m_map.GetDeviceName();
}

GenICam::gcstring CNode::GetEventID() const
{
    return Text("EventID");
}

GenICam::gcstring CNode::GetDocuURL() const
{
    return Text("DocuURL");
}

bool CNode::IsFeature() const
{
    return m_description.isFeature;
}

bool CNode::IsStreamable() const
{
    return m_description.isStreamable;
}

bool CNode::IsDeprecated() const
{
    return m_description.isDeprecated;
}

bool CNode::IsCachable() const
{
    return m_description.isValueCachable;
}

ECachingMode CNode::GetCachingMode() const
{
    return m_description.isValueCachable ? m_description.caching : ECachingMode::NoCache;
}

std::int64_t CNode::GetPollingTime() const
{
    return m_description.pollingTimeMs;
}

EInterfaceType CNode::GetPrincipalInterfaceType() const
{
    const ENodeKind kind = m_description.kind;
    if (IsIntegerKind(kind))
    {
        return EInterfaceType::Integer;
    }
    if (IsFloatKind(kind))
    {
        return EInterfaceType::Float;
    }
    switch (kind)
    {
    case ENodeKind::Category:
        return EInterfaceType::Category;
    case ENodeKind::Boolean:
        return EInterfaceType::Boolean;
    case ENodeKind::Command:
        return EInterfaceType::Command;
    case ENodeKind::Enumeration:
        return EInterfaceType::Enumeration;
    case ENodeKind::EnumEntry:
        return EInterfaceType::EnumEntry;
    case ENodeKind::String:
    case ENodeKind::StringReg:
        return EInterfaceType::String;
    case ENodeKind::Register:
        return EInterfaceType::Register;
    case ENodeKind::Port:
        return EInterfaceType::Port;
    default:
        return EInterfaceType::Base;
    }
}

INode* CNode::GetAlias() const
{
    const NodeIndex alias = m_description.alias;
    return alias == NoNode ? nullptr : m_map.Run([&]() -> INode* { return &m_map.Node(alias); });
}

INode* CNode::GetCastAlias() const
{
    const NodeIndex alias = m_description.castAlias;
    return alias == NoNode ? nullptr : m_map.Run([&]() -> INode* { return &m_map.Node(alias); });
}

INodeMap* CNode::GetNodeMap() const
{
    return &m_map;
}

bool CNode::GetProperty(const GenICam::gcstring& name, GenICam::gcstring& value) const
{
    for (const pugi::xml_node element : {m_description.element, m_description.outer})
    {
        if (const pugi::xml_node child = element.child(name.c_str()))
        {
            value = TextOf(child);
            return true;
        }
    }
    return false;
}

void CNode::InvalidateNode()
{
    m_map.Run([this] { m_map.Invalidate(m_index); });
}

CallbackHandle CNode::RegisterCallback(std::function<void(INode*)> callback)
{
    if (!callback)
    {
        return 0;
    }
    return m_map.Run(
        [&]
        {
            const CallbackHandle handle = ++m_lastHandle;
            m_callbacks.push_back(std::make_shared<CCallback>(handle, std::move(callback)));
            return handle;
        });
}

bool CNode::DeregisterCallback(CallbackHandle handle)
{
    const CallbackPtr removed = m_map.Run(
        [&]
        {
            CallbackPtr found;
            const auto isIt = [handle](const CallbackPtr& callback)
            {
                return callback->Handle() == handle;
            };
            const auto position = std::find_if(m_callbacks.begin(), m_callbacks.end(), isIt);
            if (position != m_callbacks.end())
            {
                found = *position;
                m_callbacks.erase(position);
            }
            return found;
        });
    if (removed)
    {
        removed->Retire();
    }
    return removed != nullptr;
}

bool CNode::IsSelector() const
{
    return !m_description.selected.empty();
}

void CNode::GetSelectedFeatures(FeatureList& features) const
{
    FillFeatures(m_description.selected, features);
}

void CNode::GetSelectingFeatures(FeatureList& features) const
{
    FillFeatures(m_description.selecting, features);
}

void CNode::FillFeatures(const NodeIndices& indices, FeatureList& features) const
{
    features.clear();
    m_map.Run([&] { m_map.CollectFeatures(indices, features); });
}

} // namespace Internal
} // namespace GenApi
