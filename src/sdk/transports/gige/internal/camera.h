// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/removal.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Velmo::GigE::Internal
{

/** What a camera is from Open to Close, whether it is controlled or watched; held by its device, used by its stream. */
struct SCamera
{
    std::string name;            // for texts
    std::uint32_t deviceIp = 0;  // host byte order
    std::uint32_t adapterIp = 0; // host byte order
    std::shared_ptr<CRemoval> pRemoval;
};

} // namespace Velmo::GigE::Internal
