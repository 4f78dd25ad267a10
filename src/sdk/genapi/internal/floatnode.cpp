// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/floatnode.h"

#include "genapi/internal/nodeaccess.h"
#include "genapi/internal/textparse.h"

namespace GenApi
{
namespace Internal
{

void CFloatNode::SetValue(double value, bool verify)
{
    WriteAccess(*this, verify, [&] { WriteNumber(SFormulaValue::FromFloat(value), verify); });
}

double CFloatNode::GetValue(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify, [&] { return ToFloat(ReadNumber(ignoreCache)); });
}

double CFloatNode::GetMin()
{
    return Map().Run([&] { return ToFloat(MinNumber()); });
}

double CFloatNode::GetMax()
{
    return Map().Run([&] { return ToFloat(MaxNumber()); });
}

bool CFloatNode::HasInc()
{
    SFormulaValue inc;
    return Map().Run([&] { return IncNumber(inc); });
}

double CFloatNode::GetInc()
{
    SFormulaValue inc;
    if (!Map().Run([&] { return IncNumber(inc); }))
    {
        GENICAM_THROW(LogicalErrorException, "Node '" + Description().name + "' has no increment");
    }
    return ToFloat(inc);
}

ERepresentation CFloatNode::GetRepresentation()
{
    return Map().Run([&] { return Representation(); });
}

GenICam::gcstring CFloatNode::GetUnit()
{
    return Map().Run([&] { return Unit(); });
}

EDisplayNotation CFloatNode::GetDisplayNotation() const
{
    return Description().number->displayNotation;
}

std::int64_t CFloatNode::GetDisplayPrecision() const
{
    return Description().number->displayPrecision;
}

GenICam::gcstring CFloatNode::ToString(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify,
                      [&] { return FormatFloat(ToFloat(ReadNumber(ignoreCache)), Notation(), Precision()); });
}

void CFloatNode::FromString(const GenICam::gcstring& text, bool verify)
{
    double value = 0.0;
    if (!ParseFloat(text.str(), value))
    {
        GENICAM_THROW(InvalidArgumentException, "Node '" + Description().name + "': '" + text.str() + "' is no number");
    }
    SetValue(value, verify);
}

} // namespace Internal
} // namespace GenApi
