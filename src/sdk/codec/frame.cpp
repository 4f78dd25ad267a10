// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/frame.h"

#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"
#include "codec/internal/frameformat.h"
#include "codec/pixellayout.h"

#include <algorithm>
#include <cstring>

namespace Velmo::Codec
{

namespace
{

using Internal::Checksum;
using Internal::Load;
using Internal::Store;
namespace Offset = Internal::FrameOffset;

bool IsConsistent(const SFrameHeader& header, bool isLossy)
{
    const SPixelLayout* const layout = FindPixelLayout(header.pixelType);
    if (layout == nullptr || header.imageBytes == 0 ||
        header.imageBytes != ImageBytes(header.pixelType, header.width, header.height) ||
        header.maxError > layout->maxSample || isLossy != (header.maxError != 0))
    {
        return false;
    }
    const std::uint64_t head = FrameHeaderBytes + header.strips * StripEntryBytes;
    if (header.isOverflow)
    {
        return header.strips == 0 && header.frameBytes == FrameHeaderBytes;
    }
    return header.strips != 0 && header.strips <= std::min(header.height, MaxStrips) && header.frameBytes > head &&
           header.frameBytes <= head + header.imageBytes;
}

} // namespace

void EncodeFrameHeader(const SFrameHeader& header, void* pData)
{
    std::memset(pData, 0, FrameHeaderBytes);
    Store(pData, Offset::Magic, Internal::FrameMagic);
    Store(pData, Offset::Version, Internal::FrameVersion);
    Store(pData, Offset::HeaderBytes, static_cast<std::uint16_t>(FrameHeaderBytes));
    Store(pData, Offset::Codec, CodecDeltaZstd);
    Store(pData, Offset::Flags, header.maxError != 0 ? Internal::FlagLossy : std::uint16_t{0});
    Store(pData, Offset::Status, header.isOverflow ? Internal::StatusOverflow : Internal::StatusOk);
    Store(pData, Offset::PixelType, header.pixelType);
    Store(pData, Offset::Width, header.width);
    Store(pData, Offset::Height, header.height);
    Store(pData, Offset::Strips, header.strips);
    Store(pData, Offset::ImageBytes, header.imageBytes);
    Store(pData, Offset::FrameBytes, header.frameBytes);
    Store(pData, Offset::MaxError, header.maxError);
    Store(pData, Offset::DescriptorHash, header.descriptorHash);
    Store(pData, Offset::TableChecksum, header.tableChecksum);
    Store(pData, Offset::HeaderChecksum, Checksum(pData, Offset::HeaderChecksum));
}

EResult ParseFrameHeader(const void* pData, std::size_t bytes, SFrameHeader& header)
{
    if (pData == nullptr || bytes < sizeof(std::uint32_t) || Load<std::uint32_t>(pData) != Internal::FrameMagic)
    {
        return EResult::NotAFrame;
    }
    if (bytes < FrameHeaderBytes)
    {
        return EResult::Truncated;
    }
    if (Load<std::uint16_t>(pData, Offset::Version) != Internal::FrameVersion) // another one may be laid out otherwise
    {
        return EResult::Unsupported;
    }
    if (Load<std::uint64_t>(pData, Offset::HeaderChecksum) != Checksum(pData, Offset::HeaderChecksum))
    {
        return EResult::Corrupt;
    }
    if (Load<std::uint16_t>(pData, Offset::Codec) != CodecDeltaZstd)
    {
        return EResult::Unsupported;
    }
    const auto status = Load<std::uint32_t>(pData, Offset::Status);
    const auto flags = Load<std::uint16_t>(pData, Offset::Flags);
    SFrameHeader parsed;
    parsed.isOverflow = status == Internal::StatusOverflow;
    parsed.pixelType = Load<std::uint32_t>(pData, Offset::PixelType);
    parsed.width = Load<std::uint32_t>(pData, Offset::Width);
    parsed.height = Load<std::uint32_t>(pData, Offset::Height);
    parsed.strips = Load<std::uint32_t>(pData, Offset::Strips);
    parsed.maxError = Load<std::uint32_t>(pData, Offset::MaxError);
    parsed.imageBytes = Load<std::uint64_t>(pData, Offset::ImageBytes);
    parsed.frameBytes = Load<std::uint64_t>(pData, Offset::FrameBytes);
    parsed.descriptorHash = Load<DescriptorHash>(pData, Offset::DescriptorHash);
    parsed.tableChecksum = Load<std::uint64_t>(pData, Offset::TableChecksum);
    if (status > Internal::StatusOverflow || flags > Internal::FlagLossy ||
        Load<std::uint16_t>(pData, Offset::HeaderBytes) != FrameHeaderBytes ||
        Load<std::uint32_t>(pData, Offset::Reserved) != 0 || !IsConsistent(parsed, flags != 0) ||
        parsed.frameBytes + AlignmentSlack < bytes)
    {
        return EResult::Corrupt;
    }
    header = parsed;
    return bytes < parsed.frameBytes ? EResult::Truncated : EResult::Ok;
}

std::uint64_t MaxFrameBytes(const SDescriptor& descriptor)
{
    if (descriptor.mode == EMode::FixedRatio)
    {
        const std::uint64_t part = descriptor.imageBytes * descriptor.ratio / (100ULL * RatioUnitsPerPercent);
        return std::max<std::uint64_t>(part, FrameHeaderBytes);
    }
    return FrameHeaderBytes + descriptor.strips * StripEntryBytes + descriptor.imageBytes;
}

} // namespace Velmo::Codec
