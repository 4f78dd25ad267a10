// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formulasource.h"

#include "genapi/internal/nodemap.h"
#include "genapi/internal/numbernode.h"
#include "genapi/internal/registeraccess.h"

namespace GenApi
{
namespace Internal
{

namespace
{

bool IsLess(const SFormulaValue& left, const SFormulaValue& right)
{
    return left.isFloat || right.isFloat ? ToFloat(left) < ToFloat(right) : left.integer < right.integer;
}

} // namespace

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

void CFormulaSource::Gather(const SBoundFormula& formula, const SFormulaValue& own, bool ignoreCache, SValues& values)
{
    const std::size_t count = formula.variables.size();
    SFormulaValue* data = values.few.data();
    if (count > values.few.size())
    {
        values.many.resize(count);
        data = values.many.data();
    }
    for (std::size_t i = 0; i < count; ++i)
    {
        data[i] = ValueOf(formula.variables[i], own, ignoreCache);
    }
    values.data = data;
}

SFormulaValue CFormulaSource::Compute(const SBoundFormula& formula, const SValues& values) const
{
    const std::size_t count = formula.variables.size();
    return IsFloat() ? SFormulaValue::FromFloat(formula.formula.EvaluateFloat(values.data, count))
                     : SFormulaValue::FromInteger(formula.formula.EvaluateInteger(values.data, count));
}

SFormulaValue CFormulaSource::Evaluate(const SBoundFormula& formula, const SFormulaValue& own, bool ignoreCache)
{
    SValues values;
    Gather(formula, own, ignoreCache, values);
    try
    {
        return Compute(formula, values);
    }
    catch (const GenICam::RuntimeException& e)
    {
        GENICAM_THROW(RuntimeException, "Node '" + Description().name + "': " + e.GetDescription());
    }
}

std::optional<SFormulaValue> CFormulaSource::TryEvaluate(const SBoundFormula& formula, const SFormulaValue& own)
{
    SValues values;
    Gather(formula, own, false, values);
    try
    {
        return Compute(formula, values);
    }
    catch (const GenICam::RuntimeException&)
    {
        return std::nullopt; // 1000 / TO at 0, say
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

std::optional<SFormulaValue> CConverterSource::End(bool atMax)
{
    // What fails to be read is an error; only a formula without a value there leaves the end open.
    return TryEvaluate(Description().formula->from, atMax ? Converted().MaxNumber() : Converted().MinNumber());
}

SFormulaValue CConverterSource::Limit(bool isMax)
{
    const SFormulaValue widest = isMax ? CNumberSource::Max() : CNumberSource::Min();
    const ESlope slope = Description().formula->slope;
    if (slope == ESlope::Varying)
    {
        return widest;
    }
    const std::optional<SFormulaValue> first = End(false);
    const std::optional<SFormulaValue> second = End(true);
    if (slope == ESlope::Automatic && !(first && second))
    {
        return widest;
    }
    const bool isFalling = first && second && IsLess(*second, *first);
    const bool isRising = first && second && IsLess(*first, *second);
    // A formula that runs against its declared slope has a pole between the ends: then they limit nothing.
    if ((slope == ESlope::Increasing && isFalling) || (slope == ESlope::Decreasing && isRising))
    {
        return widest;
    }
    const bool takesSecond = isMax != (slope == ESlope::Decreasing || isFalling);
    return (takesSecond ? second : first).value_or(widest);
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
