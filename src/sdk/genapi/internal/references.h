// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"

namespace GenApi
{
namespace Internal
{

/** What a node needs another node for. */
enum class ERole : std::uint8_t
{
    Value,        // pValue, pValueIndexed, pValueDefault
    Copy,         // pValueCopy
    Index,        // pIndex of an indexed value
    Variable,     // pVariable read as value
    VariableMin,  // pVariable read as NAME.Min
    VariableMax,  // pVariable read as NAME.Max
    VariableInc,  // pVariable read as NAME.Inc
    VariableReg,  // pVariable read as NAME.Address
    Address,      // pAddress, pIndex, pOffset of a register
    Length,       // pLength
    Min,          // pMin
    Max,          // pMax
    Inc,          // pInc
    CommandValue, // pCommandValue
    Implemented,
    Available,
    Locked,
    Port,
    ChunkId,
    Entry, // an enumeration's entry
    Error,
    BlockPolling
};

inline ERole RoleOf(EAspect aspect)
{
    switch (aspect)
    {
    case EAspect::Min:
        return ERole::VariableMin;
    case EAspect::Max:
        return ERole::VariableMax;
    case EAspect::Inc:
        return ERole::VariableInc;
    case EAspect::Address:
        return ERole::VariableReg;
    default:
        return ERole::Variable;
    }
}

template <class Visitor> void VisitNumberReferences(const SNumberPart& part, Visitor visit)
{
    visit(ERole::Value, part.value.node);
    visit(ERole::Index, part.index);
    for (const auto& entry : part.indexed)
    {
        visit(ERole::Value, entry.second.node);
    }
    visit(ERole::Value, part.indexedDefault.node);
    for (const NodeIndex copy : part.copies)
    {
        visit(ERole::Copy, copy);
    }
    visit(ERole::Min, part.min.node);
    visit(ERole::Max, part.max.node);
    visit(ERole::Inc, part.inc.node);
    visit(ERole::CommandValue, part.commandValue.node);
}

template <class Visitor> void VisitRegisterReferences(const SRegisterPart& part, Visitor visit)
{
    for (const SAddressTerm& term : part.address)
    {
        visit(ERole::Address, term.value.node);
        visit(ERole::Address, term.stride.node);
    }
    visit(ERole::Length, part.length.node);
    visit(ERole::Port, part.port);
}

template <class Visitor> void VisitFormulaReferences(const SFormulaPart& part, Visitor visit)
{
    for (const SBoundFormula* formula : {&part.from, &part.to})
    {
        for (const SVariable& variable : formula->variables)
        {
            visit(RoleOf(variable.aspect), variable.node);
        }
    }
}

/** Calls visit(role, node) for every node that this node needs in order to be read, written or limited. */
template <class Visitor> void VisitReferences(const SNodeDescription& node, Visitor visit)
{
    const auto present = [&visit](ERole role, NodeIndex index)
    {
        if (index != NoNode)
        {
            visit(role, index);
        }
    };
    present(ERole::Implemented, node.isImplemented);
    present(ERole::Available, node.isAvailable);
    present(ERole::Locked, node.isLocked);
    present(ERole::BlockPolling, node.blockPolling);
    present(ERole::Error, node.error);
    if (node.number)
    {
        VisitNumberReferences(*node.number, present);
    }
    if (node.reg)
    {
        VisitRegisterReferences(*node.reg, present);
    }
    if (node.formula)
    {
        VisitFormulaReferences(*node.formula, present);
    }
    if (node.enumeration)
    {
        for (const NodeIndex entry : node.enumeration->entries)
        {
            visit(ERole::Entry, entry);
        }
    }
    if (node.port)
    {
        present(ERole::ChunkId, node.port->chunkIdNode);
    }
}

} // namespace Internal
} // namespace GenApi
