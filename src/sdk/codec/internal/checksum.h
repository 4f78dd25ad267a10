// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/codec_testexport.h"

#include <cstddef>
#include <cstdint>

namespace Velmo::Codec::Internal
{

/** XXH64 of the xxHash specification: finds accidents, not attacks. */
CODEC_TEST_EXPORT std::uint64_t Checksum(const void* pData, std::size_t bytes, std::uint64_t seed = 0);

} // namespace Velmo::Codec::Internal
