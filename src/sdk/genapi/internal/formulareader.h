// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"

namespace GenApi
{
namespace Internal
{

/**
 * Compiles the formulas of a SwissKnife or converter and binds their variables to nodes. The enumerations of the
 * description must have been read before, because a variable may name one of their entries.
 *
 * Errors: LogicalErrorException that names the node: no formula, no valid formula, a variable that is not declared or
 * asks a node for what it does not have.
 */
void ReadFormulas(const SDescription& description, SNodeDescription& node);

} // namespace Internal
} // namespace GenApi
