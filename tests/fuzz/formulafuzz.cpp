// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/formula.h"

#include "genapi/exceptions.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

using GenApi::Internal::CFormula;
using GenApi::Internal::EFormulaKind;
using GenApi::Internal::SFormulaValue;

namespace
{

void EvaluateBoth(const CFormula& formula, std::uint8_t seed)
{
    std::vector<SFormulaValue> values;
    for (std::size_t i = 0; i < formula.GetVariableNames().size(); ++i)
    {
        const auto number = static_cast<std::int64_t>(seed) * static_cast<std::int64_t>(i + 1) - 100;
        values.push_back((seed & 1) != 0 ? SFormulaValue::FromInteger(number)
                                         : SFormulaValue::FromFloat(static_cast<double>(number) / 7.0));
    }
    try
    {
        formula.EvaluateInteger(values.data(), values.size());
    }
    catch (const GenICam::RuntimeException&)
    {
    }
    try
    {
        if (!std::isfinite(formula.EvaluateFloat(values.data(), values.size())))
        {
            std::abort();
        }
    }
    catch (const GenICam::RuntimeException&)
    {
    }
}

} // namespace

/** First byte: kind and values; then lines: the formula, and named sub-expressions A, B, C ... */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
    {
        return 0;
    }
    std::string text;
    std::map<std::string, std::string> names;
    std::string* line = &text;
    for (std::size_t i = 1; i < size; ++i)
    {
        const char c = static_cast<char>(data[i]);
        if (c == '\n' && names.size() < 26)
        {
            line = &names[std::string(1, static_cast<char>('A' + names.size()))];
            continue;
        }
        *line += c;
    }
    try
    {
        const EFormulaKind kind = (data[0] & 2) != 0 ? EFormulaKind::Integer : EFormulaKind::Float;
        EvaluateBoth(CFormula::Parse(text, kind, names), data[0]);
    }
    catch (const GenICam::LogicalErrorException&)
    {
    }
    return 0;
}
