// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

/** Where the fields of a frame are; docs/protocols/compressedimage.md. */
namespace Velmo::Codec::Internal
{

constexpr std::uint32_t FrameMagic = 0x46434D56; // "VMCF"
constexpr std::uint16_t FrameVersion = 1;
constexpr std::uint16_t FlagLossy = 1;
constexpr std::uint32_t StatusOk = 0;
constexpr std::uint32_t StatusOverflow = 1;

namespace FrameOffset
{
constexpr std::size_t Magic = 0;
constexpr std::size_t Version = 4;
constexpr std::size_t HeaderBytes = 6;
constexpr std::size_t Codec = 8;
constexpr std::size_t Flags = 10;
constexpr std::size_t Status = 12;
constexpr std::size_t PixelType = 16;
constexpr std::size_t Width = 20;
constexpr std::size_t Height = 24;
constexpr std::size_t Strips = 28;
constexpr std::size_t ImageBytes = 32;
constexpr std::size_t FrameBytes = 40;
constexpr std::size_t MaxError = 48;
constexpr std::size_t Reserved = 52;
constexpr std::size_t DescriptorHash = 56;
constexpr std::size_t TableChecksum = 72;
constexpr std::size_t HeaderChecksum = 80;
} // namespace FrameOffset

namespace StripOffset
{
constexpr std::size_t CodedBytes = 0;
constexpr std::size_t Coding = 4;
constexpr std::size_t Checksum = 8;
} // namespace StripOffset

constexpr std::uint32_t CodingRaw = 0;  // the strip as it is in the image
constexpr std::uint32_t CodingZstd = 1; // filtered, then zstd

} // namespace Velmo::Codec::Internal
