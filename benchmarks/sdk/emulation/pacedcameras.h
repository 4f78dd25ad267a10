// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameraconfig.h"
#include "support/figures.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Benchmarks
{

constexpr std::size_t BuffersPerCamera = 8;

/** Square cameras of that size at that rate. */
std::vector<Simulator::SCameraConfig> makeConfigs(int cameras, std::uint32_t size, double rate);

/** Cameras at their rate for three seconds through transport, device and stream, one consumer thread. */
void measurePacedCameras(CFigures& figures);

} // namespace Benchmarks
