// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "streams/blockcounter.h"

namespace Benchmarks
{

/** The cameras at 127.0.0.1 and behind through the bare engine, with the SDK's packet size, number of buffers and
 *  socket buffers: images are counted in the engine's callback and given back. Throws std::runtime_error. */
SStreamFigures streamThroughTheEngine(int cameras, int seconds);
/** Milliseconds that the engine takes to look for cameras. */
double findByTheEngine();

} // namespace Benchmarks
