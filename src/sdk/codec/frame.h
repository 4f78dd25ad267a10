// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/codec_export.h"
#include "codec/descriptor.h"

#include <cstddef>
#include <cstdint>

/**
 * A compressed image as bytes ("frame"): a header, a table of strips, the coded strips. docs/protocols/
 * compressedimage.md gives every field. Frames may come from a stranger: reading one answers with an EResult.
 */
namespace Velmo::Codec
{

constexpr std::size_t FrameHeaderBytes = 88;
constexpr std::size_t StripEntryBytes = 16;

enum class EResult
{
    Ok,
    NotAFrame, // the identifying number is not there
    Truncated,
    Corrupt,
    Unsupported,
    Overflow, // a good frame without an image: it would not have become small enough
    WrongDescriptor,
    TargetTooSmall,
    NoSuchStrip,
    OutOfMemory
};

struct SFrameHeader
{
    bool isOverflow = false;
    std::uint32_t pixelType = 0; // PFNC value
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t strips = 0;     // 0 in a frame of overflow
    std::uint32_t maxError = 0;   // largest error of a sample; 0: lossless
    std::uint64_t imageBytes = 0; // decoded
    std::uint64_t frameBytes = 0; // header, table and strips
    DescriptorHash descriptorHash{};
    std::uint64_t tableChecksum = 0;
};

/** Writes FrameHeaderBytes. */
CODEC_EXPORT void EncodeFrameHeader(const SFrameHeader& header, void* pData);

/** Reads and checks the header alone; Ok also for a frame of overflow. Up to AlignmentSlack bytes may follow the frame.
 *  The header is left alone unless the result is Ok or Truncated. Allocates nothing. */
constexpr std::size_t AlignmentSlack = 3; // chunk data are filled up to a multiple of 4 bytes
CODEC_EXPORT EResult ParseFrameHeader(const void* pData, std::size_t bytes, SFrameHeader& header);

/** Bytes that a frame has at most, whatever the image: no strip is coded in more bytes than it has. In
 *  EMode::FixedRatio it is the ratio's part of the image, but never less than a header. */
CODEC_EXPORT std::uint64_t MaxFrameBytes(const SDescriptor& descriptor);

} // namespace Velmo::Codec
