// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/formulacode.h"

namespace GenApi
{
namespace Internal
{

/**
 * The arithmetic of formulas. Each function throws std::domain_error or std::overflow_error with the bare reason; the
 * evaluator adds the place.
 */
namespace FormulaMath
{

SFormulaValue Unary(EFormulaOp op, EFormulaKind kind, const SFormulaValue& operand);
SFormulaValue Binary(EFormulaOp op, EFormulaKind kind, const SFormulaValue& left, const SFormulaValue& right);
bool IsTrue(const SFormulaValue& value);
double ToFloat(const SFormulaValue& value);
/** Truncates. */
std::int64_t ToInteger(const SFormulaValue& value);
/** Rounds half away from zero. */
std::int64_t ToNearestInteger(const SFormulaValue& value);

} // namespace FormulaMath

} // namespace Internal
} // namespace GenApi
