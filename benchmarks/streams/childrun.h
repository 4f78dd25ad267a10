// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "streams/blockcounter.h"

#include <functional>
#include <string>

namespace Benchmarks
{

/** Runs this program again with "--one way cameras seconds" and reads what it printed. Throws std::runtime_error. */
SStreamFigures runInChild(const std::string& way, int cameras, int seconds);

/** The child's side: prints what the run came to. Returns the exit code. */
int printRun(const std::function<SStreamFigures()>& run);

} // namespace Benchmarks
