// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"

namespace GenApi
{
namespace Internal
{

/**
 * Refuses descriptions whose evaluation would not end, or not in any sensible time or stack.
 *
 * A node has a value, limits and an availability, each computed from those of others. Limits that use values of nodes
 * whose own limits use the first node's value (as widths and offsets do) are no circle; a value that needs itself is.
 * Locks are left out: they are asked for only when a node is written, never while one is read.
 * Errors: LogicalErrorException that names the nodes of the circle.
 */
void CheckEvaluation(const SDescription& description);

} // namespace Internal
} // namespace GenApi
