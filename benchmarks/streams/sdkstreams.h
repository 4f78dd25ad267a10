// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "streams/blockcounter.h"

namespace Benchmarks
{

/** All cameras that are found, through the SDK alone, with handlers that only count. Throws std::runtime_error when
 *  there are not exactly so many, or one does not stream. */
SStreamFigures streamThroughTheSdk(int cameras, int seconds);

} // namespace Benchmarks
