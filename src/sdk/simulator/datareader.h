// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameradata.h"

#include <string>
#include <string_view>

namespace Simulator
{

/**
 * Reads the cameras from JSON text; docs/guides/emulation.md describes the format.
 *
 * Throws GenICam::FormatException (not JSON; the text gives line and column) and GenICam::InvalidArgumentException
 * (the text gives the place, such as "cameras[2].sensor.width", and what is wrong with it).
 */
SIMULATOR_EXPORT SRackData ReadData(std::string_view json);

/** The bytes of a file; throws GenICam::FileNotFoundException or GenICam::FileIOException. */
SIMULATOR_EXPORT std::string ReadFile(const std::string& fileName);

} // namespace Simulator
