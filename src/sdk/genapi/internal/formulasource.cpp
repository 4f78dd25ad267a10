// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formulasource.h"

#include "genapi/internal/nodemap.h"
#include "genapi/internal/numbernode.h"
#include "genapi/internal/registeraccess.h"

#include <array>

namespace GenApi
{
namespace Internal
{

SFormulaValue CFormulaSource::ValueOf(const SVariable& variable, const SFormulaValue& own, bool ignoreCache)
{
    if (variable.node == NoNode)
    {
        return own;
    }
    if (variable.aspect == EAspect::Constant)
    {
        return SFormulaValue::FromInteger(variable.constant);
    }
    CNode& node = Map().Node(variable.node);
    if (variable.aspect == EAspect::Address)
    {
        return SFormulaValue::FromInteger(node.Register()->Address());
    }
    CNumberNode& number = Map().Number(variable.node);
    SFormulaValue inc = SFormulaValue::FromInteger(1);
    switch (variable.aspect)
    {
    case EAspect::Min:
        return number.MinNumber();
    case EAspect::Max:
        return number.MaxNumber();
    case EAspect::Inc:
        number.IncNumber(inc);
        return inc;
    default:
        number.RequireReadable();
        return number.ReadNumber(ignoreCache);
    }
}

SFormulaValue CFormulaSource::Evaluate(const SBoundFormula& formula, const SFormulaValue& own, bool ignoreCache)
{
    std::array<SFormulaValue, 8> few;
    std::vector<SFormulaValue> many;
    const std::size_t count = formula.variables.size();
    SFormulaValue* values = few.data();
    if (count > few.size())
    {
        many.resize(count);
        values = many.data();
    }
    for (std::size_t i = 0; i < count; ++i)
    {
        values[i] = ValueOf(formula.variables[i], own, ignoreCache);
    }
    try
    {
        return IsFloat() ? SFormulaValue::FromFloat(formula.formula.EvaluateFloat(values, count))
                         : SFormulaValue::FromInteger(formula.formula.EvaluateInteger(values, count));
    }
    catch (const GenICam::RuntimeException& e)
    {
        GENICAM_THROW(RuntimeException, "Node '" + Description().name + "': " + e.GetDescription());
    }
}

EAccessMode CFormulaSource::VariablesMode(const SBoundFormula& formula)
{
    for (const SVariable& variable : formula.variables)
    {
        if (variable.node != NoNode && variable.aspect == EAspect::Value &&
            !IsReadable(Map().Node(variable.node).AvailableMode()))
        {
            return EAccessMode::NA;
        }
    }
    return EAccessMode::RW;
}

SFormulaValue CSwissKnifeSource::Read(bool ignoreCache)
{
    if (!m_isCached || ignoreCache)
    {
        m_isCached = false;
        m_cached = Evaluate(Description().formula->from, SFormulaValue(), ignoreCache);
        m_isCached = Description().isValueCachable;
    }
    return m_cached;
}

void CSwissKnifeSource::Write(const SFormulaValue&, bool)
{
    GENICAM_THROW(AccessException, "Node '" + Description().name + "' is computed and cannot be written");
}

EAccessMode CSwissKnifeSource::Mode()
{
    return Combine(EAccessMode::RO, VariablesMode(Description().formula->from));
}

CNumberNode& CConverterSource::Converted()
{
    return Map().Number(Part().value.node);
}

SFormulaValue CConverterSource::Read(bool ignoreCache)
{
    if (!m_isCached || ignoreCache)
    {
        m_isCached = false;
        m_cached = Evaluate(Description().formula->from, Converted().ReadNumber(ignoreCache), ignoreCache);
        m_isCached = Description().isValueCachable;
    }
    return m_cached;
}

void CConverterSource::Write(const SFormulaValue& value, bool verify)
{
    Converted().WriteNumber(Evaluate(Description().formula->to, value, false), verify);
}

SFormulaValue CConverterSource::Limit(bool isMax)
{
    const SFormulaValue widest = isMax ? CNumberSource::Max() : CNumberSource::Min();
    const ESlope slope = Description().formula->slope;
    if (slope == ESlope::Varying)
    {
        return widest;
    }
    const SBoundFormula& formula = Description().formula->from;
    try
    {
        if (slope == ESlope::Increasing || slope == ESlope::Decreasing)
        {
            const bool takesMax = isMax == (slope == ESlope::Increasing);
            return Evaluate(formula, takesMax ? Converted().MaxNumber() : Converted().MinNumber(), false);
        }
        const SFormulaValue first = Evaluate(formula, Converted().MinNumber(), false);
        const SFormulaValue second = Evaluate(formula, Converted().MaxNumber(), false);
        const bool isFirstLess = first.isFloat ? first.real < second.real : first.integer < second.integer;
        return isFirstLess == isMax ? second : first;
    }
    catch (const GenICam::RuntimeException&)
    {
        return widest;
    }
}

EAccessMode CConverterSource::Mode()
{
    const SFormulaPart& part = *Description().formula;
    return Combine(Converted().AvailableMode(), Combine(VariablesMode(part.from), VariablesMode(part.to)));
}

bool CConverterSource::IsLocked()
{
    return Converted().IsLocked();
}

} // namespace Internal
} // namespace GenApi
