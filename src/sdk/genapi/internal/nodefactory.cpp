// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/nodefactory.h"

#include "genapi/internal/booleannode.h"
#include "genapi/internal/categorynode.h"
#include "genapi/internal/commandnode.h"
#include "genapi/internal/enumentrynode.h"
#include "genapi/internal/enumerationnode.h"
#include "genapi/internal/floatnode.h"
#include "genapi/internal/integernode.h"
#include "genapi/internal/nodemap.h"
#include "genapi/internal/portnode.h"
#include "genapi/internal/registernode.h"
#include "genapi/internal/stringnode.h"

namespace GenApi
{
namespace Internal
{

std::unique_ptr<CNode> MakeNode(CNodeMap& map, NodeIndex index)
{
    switch (map.Description().nodes[static_cast<std::size_t>(index)].kind)
    {
    case ENodeKind::Category:
        return std::make_unique<CCategoryNode>(map, index);
    case ENodeKind::Integer:
    case ENodeKind::IntConverter:
    case ENodeKind::IntSwissKnife:
        return std::make_unique<CIntegerNode>(map, index);
    case ENodeKind::IntReg:
    case ENodeKind::MaskedIntReg:
        return std::make_unique<CRegisterMixin<CIntegerNode>>(map, index);
    case ENodeKind::Boolean:
        return std::make_unique<CBooleanNode>(map, index);
    case ENodeKind::Command:
        return std::make_unique<CCommandNode>(map, index);
    case ENodeKind::Enumeration:
        return std::make_unique<CEnumerationNode>(map, index);
    case ENodeKind::EnumEntry:
        return std::make_unique<CEnumEntryNode>(map, index);
    case ENodeKind::Float:
    case ENodeKind::Converter:
    case ENodeKind::SwissKnife:
        return std::make_unique<CFloatNode>(map, index);
    case ENodeKind::FloatReg:
        return std::make_unique<CRegisterMixin<CFloatNode>>(map, index);
    case ENodeKind::String:
        return std::make_unique<CStringNode>(map, index);
    case ENodeKind::StringReg:
        return std::make_unique<CRegisterMixin<CStringNode>>(map, index);
    case ENodeKind::Register:
        return std::make_unique<CRegisterNode>(map, index);
    case ENodeKind::Port:
        return std::make_unique<CPortNode>(map, index);
    case ENodeKind::Plain:
        break;
    }
    return std::make_unique<CNode>(map, index);
}

} // namespace Internal
} // namespace GenApi
