// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "streams/blockcounter.h"

namespace Benchmarks
{

/** The cameras through the plugin as a host gets them; needs an application object. Throws std::runtime_error. */
SStreamFigures streamThroughThePlugin(int cameras, int seconds);

} // namespace Benchmarks
