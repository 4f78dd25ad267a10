// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"

namespace GenApi
{
namespace Internal
{

/**
 * Refuses nodes that lack what their kind requires, references to nodes of a wrong kind, and categories that contain
 * each other. Errors: LogicalErrorException that names the node.
 */
void CheckDescription(const SDescription& description);

} // namespace Internal
} // namespace GenApi
