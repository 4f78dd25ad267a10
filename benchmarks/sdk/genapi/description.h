// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>

namespace Benchmarks
{

/** A description with one node of each kind that is measured. */
std::string SmallDescription();

/** A description of about so many nodes, mixed as cameras mix them: features, registers, formulas, enumerations. */
std::string LargeDescription(std::size_t nodes);

} // namespace Benchmarks
