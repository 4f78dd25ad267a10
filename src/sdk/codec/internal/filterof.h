// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/internal/filter.h"
#include "codec/pixellayout.h"

namespace Velmo::Codec::Internal
{

inline SFilter FilterOf(const SPixelLayout& layout, std::uint32_t maxError)
{
    return {layout.wordBytes, layout.distance, maxError, layout.maxSample};
}

} // namespace Velmo::Codec::Internal
