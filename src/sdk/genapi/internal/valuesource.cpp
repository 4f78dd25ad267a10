// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/valuesource.h"

#include "genapi/internal/nodemap.h"
#include "genapi/internal/numbernode.h"

namespace GenApi
{
namespace Internal
{

const SSource* CValueSource::FindChosen()
{
    const SNumberPart& part = Part();
    if (part.index == NoNode)
    {
        return &part.value;
    }
    SSource indexSource;
    indexSource.node = part.index;
    const std::int64_t index = ResolveInteger(Map(), indexSource);
    for (const auto& entry : part.indexed)
    {
        if (entry.first == index)
        {
            return &entry.second;
        }
    }
    if (part.indexedDefault.IsGiven())
    {
        return &part.indexedDefault;
    }
    return part.value.IsGiven() ? &part.value : nullptr;
}

const SSource& CValueSource::Chosen()
{
    const SSource* const chosen = FindChosen();
    if (chosen == nullptr)
    {
        GENICAM_THROW(LogicalErrorException,
                      "Node '" + Description().name + "' has no value for the index that is set");
    }
    return *chosen;
}

SFormulaValue CValueSource::Read(bool ignoreCache)
{
    const SSource& chosen = Chosen();
    if (chosen.node != NoNode)
    {
        return Map().Number(chosen.node).ReadNumber(ignoreCache);
    }
    if (!m_written.empty())
    {
        const auto written = m_written.find(&chosen);
        if (written != m_written.end())
        {
            return written->second;
        }
    }
    return chosen.constant;
}

void CValueSource::Write(const SFormulaValue& value, bool verify)
{
    const SSource& chosen = Chosen();
    if (chosen.node != NoNode)
    {
        Map().Number(chosen.node).WriteNumber(value, verify);
    }
    else
    {
        m_written[&chosen] = value;
        Map().Changed(Node().Index(), true);
    }
    for (const NodeIndex copy : Part().copies)
    {
        CNumberNode& node = Map().Number(copy);
        node.RequireWritable();
        node.WriteNumber(value, verify);
    }
}

CNumberNode* CValueSource::Target()
{
    const SSource* const chosen = FindChosen();
    return chosen == nullptr || chosen->node == NoNode ? nullptr : &Map().Number(chosen->node);
}

SFormulaValue CValueSource::Min()
{
    CNumberNode* const target = Target();
    return target == nullptr ? CNumberSource::Min() : target->MinNumber();
}

SFormulaValue CValueSource::Max()
{
    CNumberNode* const target = Target();
    return target == nullptr ? CNumberSource::Max() : target->MaxNumber();
}

bool CValueSource::Inc(SFormulaValue& inc)
{
    CNumberNode* const target = Target();
    // A real number over integers is rounded to one; it has no increment of its own.
    if (target == nullptr || (IsFloat() && !IsFloatKind(target->Description().kind)))
    {
        return false;
    }
    return target->IncNumber(inc);
}

EAccessMode CValueSource::Mode()
{
    const NodeIndex index = Part().index;
    if (index != NoNode && !IsReadable(Map().Node(index).AvailableMode()))
    {
        return EAccessMode::NA;
    }
    const SSource* const chosen = FindChosen();
    if (chosen == nullptr)
    {
        return EAccessMode::NA;
    }
    return chosen->node == NoNode ? EAccessMode::RW : Map().Node(chosen->node).AvailableMode();
}

bool CValueSource::IsLocked()
{
    CNumberNode* const target = Target();
    return target != nullptr && target->IsLocked();
}

bool CValueSource::IsCacheValid()
{
    CNumberNode* const target = Target();
    return target == nullptr || target->IsValueCacheValid();
}

} // namespace Internal
} // namespace GenApi
