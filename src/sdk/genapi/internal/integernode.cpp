// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/integernode.h"

#include "genapi/internal/nodeaccess.h"
#include "genapi/internal/textparse.h"

namespace GenApi
{
namespace Internal
{

void CIntegerNode::SetValue(std::int64_t value, bool verify)
{
    WriteAccess(*this, verify, [&] { WriteNumber(SFormulaValue::FromInteger(value), verify); });
}

std::int64_t CIntegerNode::GetValue(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify, [&] { return ReadInteger(ignoreCache); });
}

std::int64_t CIntegerNode::GetMin()
{
    return Map().Run([&] { return ToInteger(MinNumber(), *this); });
}

std::int64_t CIntegerNode::GetMax()
{
    return Map().Run([&] { return ToInteger(MaxNumber(), *this); });
}

EIncMode CIntegerNode::GetIncMode()
{
    SFormulaValue inc;
    return Map().Run([&] { return IncNumber(inc) ? EIncMode::FixedIncrement : EIncMode::NoIncrement; });
}

std::int64_t CIntegerNode::GetInc()
{
    SFormulaValue inc;
    return Map().Run([&] { return IncNumber(inc) ? ToInteger(inc, *this) : std::int64_t{1}; });
}

ERepresentation CIntegerNode::GetRepresentation()
{
    return Map().Run([&] { return Representation(); });
}

GenICam::gcstring CIntegerNode::GetUnit()
{
    return Map().Run([&] { return Unit(); });
}

GenICam::gcstring CIntegerNode::ToString(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify, [&] { return FormatInteger(ReadInteger(ignoreCache), Representation()); });
}

void CIntegerNode::FromString(const GenICam::gcstring& text, bool verify)
{
    std::int64_t value = 0;
    if (!ParseRepresented(text.str(), GetRepresentation(), value))
    {
        GENICAM_THROW(InvalidArgumentException,
                      "Node '" + Description().name + "': '" + text.str() + "' is no integer");
    }
    SetValue(value, verify);
}

} // namespace Internal
} // namespace GenApi
