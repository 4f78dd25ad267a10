// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/stringnode.h"

#include "genapi/internal/nodeaccess.h"

#include <algorithm>
#include <limits>

namespace GenApi
{
namespace Internal
{

CStringNode::CStringNode(CNodeMap& map, NodeIndex index)
    : CNode(map, index), m_access(Description().reg ? std::make_unique<CRegisterAccess>(*this) : nullptr),
      m_text(Description().text)
{
}

CStringNode* CStringNode::Target()
{
    const SNumberPart* const part = Description().number.get();
    return part == nullptr || part->value.node == NoNode ? nullptr
                                                         : static_cast<CStringNode*>(&Map().Node(part->value.node));
}

EAccessMode CStringNode::SourceMode()
{
    if (m_access)
    {
        return m_access->Mode();
    }
    CStringNode* const target = Target();
    return target == nullptr ? EAccessMode::RW : target->AvailableMode();
}

bool CStringNode::IsSourceLocked()
{
    CStringNode* const target = Target();
    return target != nullptr && target->IsLocked();
}

std::string CStringNode::ReadText(bool ignoreCache)
{
    if (m_access)
    {
        const std::vector<std::uint8_t>& bytes = m_access->Read(ignoreCache);
        return std::string(bytes.begin(), std::find(bytes.begin(), bytes.end(), std::uint8_t{0}));
    }
    CStringNode* const target = Target();
    return target == nullptr ? m_text : target->ReadText(ignoreCache);
}

void CStringNode::WriteText(const std::string& text)
{
    if (static_cast<std::int64_t>(text.size()) > MaxLength())
    {
        GENICAM_THROW(OutOfRangeException, "Node '" + Description().name + "': the text has " +
                                               std::to_string(text.size()) + " bytes, more than " +
                                               std::to_string(MaxLength()));
    }
    if (m_access)
    {
        std::vector<std::uint8_t> bytes(text.begin(), text.end());
        bytes.resize(static_cast<std::size_t>(m_access->Length()));
        m_access->Write(bytes);
    }
    else if (CStringNode* const target = Target())
    {
        target->WriteText(text);
    }
    else
    {
        m_text = text;
        Map().Changed(Index(), true);
    }
}

std::int64_t CStringNode::MaxLength()
{
    if (m_access)
    {
        return m_access->Length();
    }
    CStringNode* const target = Target();
    return target == nullptr ? std::numeric_limits<std::int64_t>::max() : target->MaxLength();
}

void CStringNode::SetValue(const GenICam::gcstring& value, bool verify)
{
    WriteAccess(*this, verify, [&] { WriteText(value.str()); });
}

GenICam::gcstring CStringNode::GetValue(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify, [&] { return ReadText(ignoreCache); });
}

std::int64_t CStringNode::GetMaxLength()
{
    return Map().Run([&] { return MaxLength(); });
}

GenICam::gcstring CStringNode::ToString(bool verify, bool ignoreCache)
{
    return GetValue(verify, ignoreCache);
}

void CStringNode::FromString(const GenICam::gcstring& text, bool verify)
{
    SetValue(text, verify);
}

bool CStringNode::IsValueCacheValid() const
{
    return Map().Run(
        [&]
        {
            if (m_access)
            {
                return m_access->IsCacheValid();
            }
            CStringNode* const target = static_cast<CStringNode&>(Map().Node(Index())).Target();
            return target == nullptr || target->IsValueCacheValid();
        });
}

void CStringNode::Drop()
{
    CNode::Drop();
    if (m_access)
    {
        m_access->Drop();
    }
}

} // namespace Internal
} // namespace GenApi
