// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/internal/features.h"

#include <string>

namespace Simulator::Internal
{

/** The GenICam description (XML, UTF-8) of a camera with these settings, and of the values that its chunks carry. */
SIMULATOR_TEST_EXPORT std::string MakeDescription(const SCameraConfig& config, const std::vector<SFeature>& settings);

} // namespace Simulator::Internal
