// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/node.h"

#include <memory>

namespace GenApi
{
namespace Internal
{

/** The node of that index, as its kind. */
std::unique_ptr<CNode> MakeNode(CNodeMap& map, NodeIndex index);

} // namespace Internal
} // namespace GenApi
