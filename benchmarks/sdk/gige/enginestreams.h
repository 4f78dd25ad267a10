// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "streams/blockcounter.h"

namespace Benchmarks
{

/** The cameras at 127.0.0.1 and behind through the bare engine, with the SDK's packet size, number of buffers and
 *  socket buffers: images are counted in the engine's callback and given back. With a packet socket where the process
 *  may have one, which is cheaper and takes in what is not meant for it; or from UDP sockets, as the SDK. Throws
 *  std::runtime_error. */
SStreamFigures streamThroughTheEngine(int cameras, int seconds, bool withPacketSocket);
/** Milliseconds that the engine takes to look for cameras. */
double findByTheEngine();

} // namespace Benchmarks
