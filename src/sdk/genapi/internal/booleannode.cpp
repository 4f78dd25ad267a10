// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/booleannode.h"

#include "genapi/internal/nodeaccess.h"
#include "genapi/internal/textparse.h"

namespace GenApi
{
namespace Internal
{

SFormulaValue CBooleanNode::ReadNumber(bool ignoreCache)
{
    const SNumberPart& part = *Description().number;
    const std::int64_t raw = CNumberNode::ReadNumber(ignoreCache).integer;
    if (HasOwnValue() || raw == part.onValue || raw == part.offValue)
    {
        return SFormulaValue::FromInteger(HasOwnValue() ? raw : raw == part.onValue ? 1 : 0);
    }
    if (part.hasOnValue)
    {
        GENICAM_THROW(RuntimeException, "Node '" + Description().name + "': the device's value " + std::to_string(raw) +
                                            " is neither on nor off");
    }
    return SFormulaValue::FromInteger(1);
}

void CBooleanNode::WriteNumber(const SFormulaValue& value, bool verify)
{
    const SNumberPart& part = *Description().number;
    const bool isOn = IsTrue(value);
    const std::int64_t raw = HasOwnValue() ? (isOn ? 1 : 0) : isOn ? part.onValue : part.offValue;
    CNumberNode::WriteNumber(SFormulaValue::FromInteger(raw), verify);
}

void CBooleanNode::SetValue(bool value, bool verify)
{
    WriteAccess(*this, verify, [&] { WriteNumber(SFormulaValue::FromInteger(value ? 1 : 0), verify); });
}

bool CBooleanNode::GetValue(bool verify, bool ignoreCache)
{
    return ReadAccess(*this, verify, [&] { return IsTrue(ReadNumber(ignoreCache)); });
}

GenICam::gcstring CBooleanNode::ToString(bool verify, bool ignoreCache)
{
    return GetValue(verify, ignoreCache) ? "true" : "false";
}

void CBooleanNode::FromString(const GenICam::gcstring& text, bool verify)
{
    const std::string_view trimmed = Trim(text.str());
    const bool isTrue = trimmed == "true" || trimmed == "True" || trimmed == "1";
    if (!isTrue && trimmed != "false" && trimmed != "False" && trimmed != "0")
    {
        GENICAM_THROW(InvalidArgumentException,
                      "Node '" + Description().name + "': '" + text.str() + "' is neither true nor false");
    }
    SetValue(isTrue, verify);
}

} // namespace Internal
} // namespace GenApi
