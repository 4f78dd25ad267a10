// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"

namespace GenApi
{
namespace Internal
{

/**
 * Computes which nodes a change of a node concerns (SDescription::dependents), what must be read again when a node is
 * invalidated (SDescription::terminals), and which values and access modes may be cached. Needs a description that
 * CheckEvaluation() accepted.
 */
void BuildDependencyGraph(SDescription& description);

/** Registers that a node's value is read from, itself among them if it is one. */
NodeIndices FindTerminals(const SDescription& description, NodeIndex start);

} // namespace Internal
} // namespace GenApi
