// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/descriptor.h"

#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"
#include "codec/pixellayout.h"

#include <algorithm>
#include <cmath>

namespace Velmo::Codec
{

namespace
{

using Internal::Checksum;
using Internal::Load;
using Internal::Store;

constexpr std::uint32_t Magic = 0x44434D56; // "VMCD"
constexpr std::uint16_t Version = 1;
constexpr std::uint32_t MaxRatio = 100 * RatioUnitsPerPercent;
constexpr std::uint64_t SecondSeed = 0x9E3779B97F4A7C15; // any but that of the first half of a hash

namespace Offset
{
constexpr std::size_t Magic = 0;
constexpr std::size_t Version = 4;
constexpr std::size_t Bytes = 6;
constexpr std::size_t Codec = 8;
constexpr std::size_t Mode = 10;
constexpr std::size_t PixelType = 12;
constexpr std::size_t Width = 16;
constexpr std::size_t Height = 20;
constexpr std::size_t Ratio = 24;
constexpr std::size_t Strips = 28;
constexpr std::size_t ImageBytes = 32;
constexpr std::size_t Checksum = 40;
} // namespace Offset

std::string Wrong(const char* what, std::uint64_t value, std::size_t offset)
{
    return std::string("its ") + what + " at byte " + std::to_string(offset) + " cannot be " + std::to_string(value);
}

std::string CheckFrame(const void* pData, std::size_t bytes)
{
    if (pData == nullptr || bytes < DescriptorBytes)
    {
        return "it is " + std::to_string(pData == nullptr ? 0 : bytes) + " bytes long, and a descriptor has " +
               std::to_string(DescriptorBytes);
    }
    if (Load<std::uint32_t>(pData, Offset::Magic) != Magic)
    {
        return Wrong("identifying number", Load<std::uint32_t>(pData, Offset::Magic), Offset::Magic);
    }
    if (Load<std::uint16_t>(pData, Offset::Version) != Version)
    {
        return Wrong("version", Load<std::uint16_t>(pData, Offset::Version), Offset::Version);
    }
    const auto length = Load<std::uint16_t>(pData, Offset::Bytes);
    if (length != DescriptorBytes || length != bytes)
    {
        return Wrong("length", length, Offset::Bytes) + " (" + std::to_string(bytes) + " bytes are there)";
    }
    if (Load<std::uint64_t>(pData, Offset::Checksum) != Checksum(pData, Offset::Checksum))
    {
        return "its checksum at byte " + std::to_string(Offset::Checksum) + " does not match the bytes before";
    }
    return {};
}

std::string CheckFields(const void* pData, const SDescriptor& parsed)
{
    const auto codec = Load<std::uint16_t>(pData, Offset::Codec);
    if (codec != CodecDeltaZstd)
    {
        return Wrong("codec", codec, Offset::Codec);
    }
    if (parsed.mode != EMode::Lossless && parsed.mode != EMode::FixedRatio)
    {
        return Wrong("mode", static_cast<std::uint16_t>(parsed.mode), Offset::Mode);
    }
    if (FindPixelLayout(parsed.pixelType) == nullptr)
    {
        return Wrong("pixel type", parsed.pixelType, Offset::PixelType);
    }
    if (parsed.width == 0 || parsed.width > MaxDimension)
    {
        return Wrong("width", parsed.width, Offset::Width);
    }
    if (parsed.height == 0 || parsed.height > MaxDimension)
    {
        return Wrong("height", parsed.height, Offset::Height);
    }
    if (parsed.ratio > MaxRatio || (parsed.ratio == 0) != (parsed.mode == EMode::Lossless))
    {
        return Wrong("ratio", parsed.ratio, Offset::Ratio);
    }
    if (parsed.strips == 0 || parsed.strips > std::min(parsed.height, MaxStrips))
    {
        return Wrong("number of strips", parsed.strips, Offset::Strips);
    }
    if (parsed.imageBytes == 0 || parsed.imageBytes != ImageBytes(parsed.pixelType, parsed.width, parsed.height))
    {
        return Wrong("image size", parsed.imageBytes, Offset::ImageBytes);
    }
    return {};
}

} // namespace

SDescriptor MakeDescriptor(EMode mode, std::uint32_t pixelType, std::uint32_t width, std::uint32_t height,
                           double ratioPercent)
{
    SDescriptor descriptor;
    descriptor.mode = mode;
    descriptor.pixelType = pixelType;
    descriptor.width = width;
    descriptor.height = height;
    if (mode == EMode::FixedRatio)
    {
        const double units = std::floor(ratioPercent * RatioUnitsPerPercent);
        descriptor.ratio = static_cast<std::uint32_t>(std::clamp(units, 1.0, double{MaxRatio}));
    }
    descriptor.imageBytes = ImageBytes(pixelType, width, height);
    descriptor.strips = StripCountFor(descriptor.imageBytes, height);
    return descriptor;
}

std::vector<std::uint8_t> EncodeDescriptor(const SDescriptor& descriptor)
{
    std::vector<std::uint8_t> data(DescriptorBytes);
    std::uint8_t* const p = data.data();
    Store(p, Offset::Magic, Magic);
    Store(p, Offset::Version, Version);
    Store(p, Offset::Bytes, static_cast<std::uint16_t>(DescriptorBytes));
    Store(p, Offset::Codec, CodecDeltaZstd);
    Store(p, Offset::Mode, descriptor.mode);
    Store(p, Offset::PixelType, descriptor.pixelType);
    Store(p, Offset::Width, descriptor.width);
    Store(p, Offset::Height, descriptor.height);
    Store(p, Offset::Ratio, descriptor.ratio);
    Store(p, Offset::Strips, descriptor.strips);
    Store(p, Offset::ImageBytes, descriptor.imageBytes);
    Store(p, Offset::Checksum, Checksum(p, Offset::Checksum));
    return data;
}

std::string ParseDescriptor(const void* pData, std::size_t bytes, SDescriptor& descriptor)
{
    std::string error = CheckFrame(pData, bytes);
    if (!error.empty())
    {
        return error;
    }
    SDescriptor parsed;
    parsed.mode = Load<EMode>(pData, Offset::Mode);
    parsed.pixelType = Load<std::uint32_t>(pData, Offset::PixelType);
    parsed.width = Load<std::uint32_t>(pData, Offset::Width);
    parsed.height = Load<std::uint32_t>(pData, Offset::Height);
    parsed.ratio = Load<std::uint32_t>(pData, Offset::Ratio);
    parsed.strips = Load<std::uint32_t>(pData, Offset::Strips);
    parsed.imageBytes = Load<std::uint64_t>(pData, Offset::ImageBytes);
    error = CheckFields(pData, parsed);
    if (error.empty())
    {
        descriptor = parsed;
    }
    return error;
}

DescriptorHash HashDescriptor(const void* pData, std::size_t bytes)
{
    DescriptorHash hash{};
    Store(hash.data(), 0, Checksum(pData, bytes));
    Store(hash.data(), 8, Checksum(pData, bytes, SecondSeed));
    return hash;
}

} // namespace Velmo::Codec
