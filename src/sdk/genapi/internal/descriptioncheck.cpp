// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/descriptioncheck.h"

#include "genapi/internal/elementreader.h"
#include "genapi/internal/references.h"

#include <algorithm>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr std::int64_t MaxRegisterBytes = std::int64_t{64} << 20;

void Require(bool condition, const SNodeDescription& node, const char* text)
{
    if (!condition)
    {
        ThrowDescriptionError(node.name, text);
    }
}

void CheckBits(const SNodeDescription& node, std::int64_t bits)
{
    const SRegisterPart& reg = *node.reg;
    Require(reg.lsb >= 0 && reg.msb >= 0, node, "<LSB> and <MSB>, or <Bit>, are missing");
    if (bits > 0)
    {
        Require(reg.lsb < bits && reg.msb < bits, node, "<LSB> or <MSB> lies outside the register");
    }
    Require(std::max(reg.lsb, reg.msb) < 64, node, "<LSB> or <MSB> lies beyond 64 bits");
}

void CheckRegister(const SNodeDescription& node)
{
    const SRegisterPart& reg = *node.reg;
    Require(reg.port != NoNode, node, "<pPort> is missing");
    Require(!reg.address.empty(), node, "<Address>, <pAddress>, <pIndex> or <IntSwissKnife> is missing");
    Require(reg.length.IsGiven(), node, "<Length> or <pLength> is missing");
    std::int64_t length = 0;
    if (reg.length.hasConstant && reg.length.node == NoNode)
    {
        length = reg.length.constant.integer;
        Require(length > 0 && length <= MaxRegisterBytes, node, "<Length> is out of range");
        const bool isInteger = node.kind == ENodeKind::IntReg || node.kind == ENodeKind::MaskedIntReg;
        Require(!isInteger || length <= 8, node, "<Length> of an integer is more than 8 bytes");
        Require(node.kind != ENodeKind::FloatReg || length == 4 || length == 8, node,
                "<Length> of a floating-point number is neither 4 nor 8 bytes");
    }
    if (node.kind == ENodeKind::MaskedIntReg)
    {
        CheckBits(node, length * 8);
    }
}

void CheckRequired(const SNodeDescription& node)
{
    const SNumberPart* number = node.number.get();
    switch (node.kind)
    {
    case ENodeKind::Integer:
    case ENodeKind::Float:
        Require(number->value.IsGiven() || number->index != NoNode, node, "<Value>, <pValue> or <pIndex> is missing");
        break;
    case ENodeKind::Boolean:
    case ENodeKind::Enumeration:
        Require(number->value.IsGiven(), node, "<Value> or <pValue> is missing");
        break;
    case ENodeKind::Command:
        Require(number->value.IsGiven(), node, "<Value> or <pValue> is missing");
        Require(number->commandValue.IsGiven(), node, "<CommandValue> or <pCommandValue> is missing");
        break;
    case ENodeKind::String:
        Require(node.hasText || number->value.node != NoNode, node, "<Value> or <pValue> is missing");
        break;
    case ENodeKind::Converter:
    case ENodeKind::IntConverter:
        Require(number->value.node != NoNode, node, "<pValue> is missing");
        break;
    case ENodeKind::EnumEntry:
        Require(node.entry->hasValue, node, "<Value> is missing");
        break;
    default:
        break;
    }
    if (number != nullptr && number->index != NoNode)
    {
        Require(!number->indexed.empty() || number->indexedDefault.IsGiven() || number->value.IsGiven(), node,
                "<pIndex> has no values to choose from");
    }
    if (node.reg)
    {
        CheckRegister(node);
    }
}

/** What is wrong with a reference of that role to that node; null when nothing is. */
const char* WrongKind(const SNodeDescription& from, ERole role, const SNodeDescription& to)
{
    switch (role)
    {
    case ERole::Port:
        return to.kind == ENodeKind::Port ? nullptr : "which is no port";
    case ERole::Entry:
        return to.kind == ENodeKind::EnumEntry ? nullptr : "which is no entry of an enumeration";
    case ERole::VariableReg:
        return to.reg ? nullptr : "which has no address";
    case ERole::ChunkId:
        return IsNumberKind(to.kind) || IsTextKind(to.kind) ? nullptr : "which is neither a number nor a text";
    case ERole::Value:
    case ERole::Copy:
        if (from.kind == ENodeKind::String)
        {
            return IsTextKind(to.kind) ? nullptr : "which is no text";
        }
        break;
    default:
        break;
    }
    return IsNumberKind(to.kind) ? nullptr : "which is no number";
}

void CheckKinds(const SDescription& description, const SNodeDescription& node)
{
    const auto check = [&](ERole role, NodeIndex index)
    {
        const SNodeDescription& target = description.nodes[static_cast<std::size_t>(index)];
        if (const char* reason = WrongKind(node, role, target))
        {
            ThrowDescriptionError(node.name, "refers to '" + target.name + "', " + reason);
        }
    };
    VisitReferences(node, check);
    for (const NodeIndex selected : node.selected)
    {
        const SNodeDescription& target = description.nodes[static_cast<std::size_t>(selected)];
        if (target.port || target.entry)
        {
            ThrowDescriptionError(node.name, "selects '" + target.name + "', which is no feature");
        }
    }
}

/** Depth-first with an explicit stack; a category met again on the way down contains itself. */
void CheckCategories(const SDescription& description)
{
    enum class EState : std::uint8_t
    {
        New,
        Open,
        Done
    };
    std::vector<EState> states(description.nodes.size(), EState::New);
    std::vector<std::pair<NodeIndex, std::size_t>> stack;
    for (std::size_t start = 0; start < description.nodes.size(); ++start)
    {
        if (states[start] != EState::New)
        {
            continue;
        }
        stack.emplace_back(static_cast<NodeIndex>(start), 0);
        while (!stack.empty())
        {
            const auto index = static_cast<std::size_t>(stack.back().first);
            const SNodeDescription& node = description.nodes[index];
            states[index] = EState::Open;
            if (stack.back().second == node.features.size())
            {
                states[index] = EState::Done;
                stack.pop_back();
                continue;
            }
            const NodeIndex next = node.features[stack.back().second++];
            const EState state = states[static_cast<std::size_t>(next)];
            if (state == EState::Open)
            {
                ThrowDescriptionError(node.name, "contains itself through '" +
                                                     description.nodes[static_cast<std::size_t>(next)].name + "'");
            }
            if (state == EState::New)
            {
                stack.emplace_back(next, 0);
            }
        }
    }
}

} // namespace

void CheckDescription(const SDescription& description)
{
    for (const SNodeDescription& node : description.nodes)
    {
        CheckRequired(node);
        CheckKinds(description, node);
    }
    CheckCategories(description);
}

} // namespace Internal
} // namespace GenApi
