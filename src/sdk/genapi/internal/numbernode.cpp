// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/numbernode.h"

#include "genapi/internal/nodemap.h"
#include "genapi/internal/textparse.h"

#include <algorithm>
#include <cmath>

namespace GenApi
{
namespace Internal
{
namespace
{

constexpr double TwoTo63 = 9223372036854775808.0;

template <class T> [[noreturn]] void ThrowRange(const CNode& node, T value, const char* relation, T limit)
{
    const auto text = [](T number)
    {
        if constexpr (std::is_same_v<T, double>)
        {
            return FormatFloat(number, EDisplayNotation::Automatic, -1);
        }
        else
        {
            return std::to_string(number);
        }
    };
    GENICAM_THROW(OutOfRangeException, "Node '" + node.Description().name + "': the value " + text(value) + " is " +
                                           relation + " " + text(limit));
}

} // namespace

std::int64_t ToInteger(const SFormulaValue& value, const CNode& node)
{
    if (!value.isFloat)
    {
        return value.integer;
    }
    const double rounded = std::round(value.real);
    if (!(rounded >= -TwoTo63 && rounded < TwoTo63))
    {
        GENICAM_THROW(RuntimeException, "Node '" + node.Description().name +
                                            "': " + FormatFloat(value.real, EDisplayNotation::Automatic, -1) +
                                            " fits no 64-bit integer");
    }
    return static_cast<std::int64_t>(rounded);
}

double ToFloat(const SFormulaValue& value)
{
    return value.isFloat ? value.real : static_cast<double>(value.integer);
}

SFormulaValue Resolve(CNodeMap& map, const SSource& source)
{
    if (source.node == NoNode)
    {
        return source.constant;
    }
    CNumberNode& node = map.Number(source.node);
    node.RequireReadable();
    return node.ReadNumber(false);
}

std::int64_t ResolveInteger(CNodeMap& map, const SSource& source)
{
    if (source.node == NoNode)
    {
        return source.constant.integer;
    }
    return ToInteger(Resolve(map, source), map.Node(source.node));
}

CNumberNode::CNumberNode(CNodeMap& map, NodeIndex index) : CNode(map, index), m_source(MakeNumberSource(*this)) {}

SFormulaValue CNumberNode::ReadNumber(bool ignoreCache)
{
    const SFormulaValue value = m_source->Read(ignoreCache);
    if (IsFloatKind(Description().kind))
    {
        return value.isFloat ? value : SFormulaValue::FromFloat(ToFloat(value));
    }
    return value.isFloat ? SFormulaValue::FromInteger(ToInteger(value, *this)) : value;
}

void CNumberNode::WriteNumber(const SFormulaValue& value, bool verify)
{
    const SFormulaValue own = IsFloatKind(Description().kind) ? SFormulaValue::FromFloat(ToFloat(value))
                                                              : SFormulaValue::FromInteger(ToInteger(value, *this));
    if (own.isFloat && std::isnan(own.real))
    {
        GENICAM_THROW(OutOfRangeException, "Node '" + Description().name + "': the value is not a number");
    }
    if (verify)
    {
        CheckLimits(own);
    }
    m_source->Write(own, verify);
}

void CNumberNode::CheckLimits(const SFormulaValue& value)
{
    if (value.isFloat)
    {
        CheckFloat(value.real);
    }
    else if (IsIntegerKind(Description().kind))
    {
        CheckInteger(value.integer);
    }
}

void CNumberNode::CheckInteger(std::int64_t value)
{
    const std::int64_t min = ToInteger(MinNumber(), *this);
    const std::int64_t max = ToInteger(MaxNumber(), *this);
    if (value < min)
    {
        ThrowRange(*this, value, "below the minimum", min);
    }
    if (value > max)
    {
        ThrowRange(*this, value, "above the maximum", max);
    }
    SFormulaValue inc;
    if (IncNumber(inc))
    {
        const std::int64_t step = ToInteger(inc, *this);
        const std::uint64_t distance = static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(min);
        if (step > 0 && distance % static_cast<std::uint64_t>(step) != 0)
        {
            ThrowRange(*this, value, "off the increment", step);
        }
    }
    const std::vector<std::int64_t>& valid = Description().number->validValues;
    if (!valid.empty() && std::find(valid.begin(), valid.end(), value) == valid.end())
    {
        GENICAM_THROW(OutOfRangeException, "Node '" + Description().name + "': the value " + std::to_string(value) +
                                               " is none of the valid values");
    }
}

void CNumberNode::CheckFloat(double value)
{
    const double min = ToFloat(MinNumber());
    const double max = ToFloat(MaxNumber());
    if (value < min)
    {
        ThrowRange(*this, value, "below the minimum", min);
    }
    if (value > max)
    {
        ThrowRange(*this, value, "above the maximum", max);
    }
    SFormulaValue inc;
    if (IncNumber(inc))
    {
        // Decimal steps are not exact in binary: a millionth of a step off is on it.
        const double step = ToFloat(inc);
        const double steps = (value - min) / step;
        const double tolerance = std::max(1e-6, std::abs(steps) * 1e-12);
        if (step > 0.0 && std::abs(steps - std::round(steps)) > tolerance)
        {
            ThrowRange(*this, value, "off the increment", step);
        }
    }
}

SFormulaValue CNumberNode::MinNumber()
{
    const SSource& own = Description().number->min;
    return own.IsGiven() ? Resolve(Map(), own) : m_source->Min();
}

SFormulaValue CNumberNode::MaxNumber()
{
    const SSource& own = Description().number->max;
    return own.IsGiven() ? Resolve(Map(), own) : m_source->Max();
}

bool CNumberNode::IncNumber(SFormulaValue& inc)
{
    const SSource& own = Description().number->inc;
    if (own.IsGiven())
    {
        inc = Resolve(Map(), own);
        return true;
    }
    return m_source->Inc(inc);
}

ERepresentation CNumberNode::Representation()
{
    const SNumberPart& part = *Description().number;
    CNumberNode* const target = part.hasRepresentation ? nullptr : m_source->Target();
    return target == nullptr ? part.representation : target->Representation();
}

std::string CNumberNode::Unit()
{
    CNumberNode* const target = Description().number->hasUnit ? nullptr : m_source->Target();
    return target == nullptr ? Text("Unit") : target->Unit();
}

EDisplayNotation CNumberNode::Notation()
{
    return Description().number->displayNotation;
}

std::int64_t CNumberNode::Precision()
{
    const SNumberPart& part = *Description().number;
    return part.hasDisplayPrecision ? std::max<std::int64_t>(part.displayPrecision, 0) : -1;
}

bool CNumberNode::IsValueCacheValid() const
{
    return Map().Run([this] { return m_source->IsCacheValid(); });
}

void CNumberNode::Drop()
{
    CNode::Drop();
    m_source->Drop();
}

} // namespace Internal
} // namespace GenApi
