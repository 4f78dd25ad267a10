// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "blockcounter.h"

namespace Benchmarks
{

/** The cameras through the plugin as a host gets them; needs an application object. Throws std::runtime_error. */
SStreamFigures streamThroughThePlugin(int cameras, int seconds);
/** The same cameras through the SDK alone, with handlers that only count: the least there is to do. */
SStreamFigures streamThroughTheSdk(int cameras, int seconds);

} // namespace Benchmarks
