// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/numbersource.h"

#include "genapi/internal/formulasource.h"
#include "genapi/internal/registersource.h"
#include "genapi/internal/valuesource.h"

#include <limits>

namespace GenApi
{
namespace Internal
{

CNumberSource::~CNumberSource() = default;

SFormulaValue CNumberSource::Min()
{
    return IsFloat() ? SFormulaValue::FromFloat(std::numeric_limits<double>::lowest())
                     : SFormulaValue::FromInteger(std::numeric_limits<std::int64_t>::min());
}

SFormulaValue CNumberSource::Max()
{
    return IsFloat() ? SFormulaValue::FromFloat(std::numeric_limits<double>::max())
                     : SFormulaValue::FromInteger(std::numeric_limits<std::int64_t>::max());
}

bool CNumberSource::Inc(SFormulaValue&)
{
    return false;
}

std::unique_ptr<CNumberSource> MakeNumberSource(CNode& node)
{
    const ENodeKind kind = node.Description().kind;
    if (IsRegisterKind(kind))
    {
        return std::make_unique<CRegisterSource>(node);
    }
    if (IsConverterKind(kind))
    {
        return std::make_unique<CConverterSource>(node);
    }
    if (IsFormulaKind(kind))
    {
        return std::make_unique<CSwissKnifeSource>(node);
    }
    return std::make_unique<CValueSource>(node);
}

} // namespace Internal
} // namespace GenApi
