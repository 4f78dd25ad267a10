// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/frame.h"

namespace Velmo::Codec
{

constexpr std::uint32_t AllStrips = 0xFFFFFFFF;

/** Where a frame is decoded to: the whole image, lines without padding, whichever strips are asked for. */
struct STarget
{
    void* pImage = nullptr;
    std::size_t bytes = 0;
    std::uint32_t firstStrip = 0;
    std::uint32_t strips = AllStrips; // from firstStrip on
};

/**
 * Decodes strips of a frame that was made under the descriptor; hash is that of the descriptor's bytes.
 *
 * Anything but Ok leaves the lines of the strips asked for as they happen to be; other lines are never touched.
 * Threads: any; strips of one frame may be decoded on many threads at a time. Memory that a thread needs is kept for
 * its next call: nothing is allocated once it has decoded a frame of that geometry. Never throws.
 */
CODEC_EXPORT EResult DecodeFrame(const void* pFrame, std::size_t bytes, const SDescriptor& descriptor,
                                 const DescriptorHash& hash, const STarget& target) noexcept;

} // namespace Velmo::Codec
