// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/descriptor.h"
#include "protocols/chunks.h"
#include "velmo/imagedecompressor.h"

#include <cstdlib>
#include <vector>

using namespace Velmo;
using Bytes = std::vector<std::uint8_t>;

namespace
{

constexpr std::uint32_t Mono8 = 0x01080001;
constexpr std::uint32_t Mono12 = 0x01100005;
constexpr std::uint32_t RGB8 = 0x02180014;
constexpr std::uint8_t Guard = 0x5A;
constexpr std::size_t Margin = 32;

void Require(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

/** Two strips of 24 x 20 pixels, as the seeds have them. */
Bytes DescriptorOf(std::uint8_t kind)
{
    constexpr std::uint32_t PixelTypes[] = {Mono8, Mono12, RGB8};
    Codec::SDescriptor descriptor = Codec::MakeDescriptor(Codec::EMode::Lossless, PixelTypes[kind % 3], 24, 20);
    descriptor.strips = 2;
    return Codec::EncodeDescriptor(descriptor);
}

/** What is told of a payload and what becomes of decoding it agree, and nothing beyond the image is written. */
void Decode(const CImageDecompressor& decompressor, const Bytes& payload, EEndianness endianness)
{
    SCompressionInfo info;
    const bool isCompressed = CImageDecompressor::GetCompressionInfo(info, payload.data(), payload.size(), endianness);
    Require(info.hasCompressedImage == (isCompressed && info.compressionStatus == CompressionStatus_Ok));
    Require(info.compressedImageBytes <= payload.size() || !info.hasCompressedImage);
    Require(!info.hasCompressedImage || info.decompressedPayloadBytes >= info.decompressedImageBytes);

    const std::size_t imageBytes = decompressor.GetImageSizeForDecompression();
    Bytes image(imageBytes + 2 * Margin, Guard);
    const auto status = decompressor.Decompress(image.data() + Margin, imageBytes, payload.data(), payload.size(), 0,
                                                CImageDecompressor::AllStrips, endianness);
    Require(isCompressed == (status != CompressionStatus_NotCompressed));
    Require(status != CompressionStatus_Ok || info.decompressedImageBytes == imageBytes);
    for (std::size_t i = 0; i < Margin; ++i)
    {
        Require(image[i] == Guard && image[image.size() - 1 - i] == Guard);
    }
}

} // namespace

/** The first byte chooses the descriptor; the others are a payload, and in a second turn the image of one. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
    {
        return 0;
    }
    const Bytes descriptor = DescriptorOf(data[0]);
    const CImageDecompressor decompressor(descriptor.data(), descriptor.size());
    const Bytes bare(data + 1, data + size);
    for (const auto endianness : {Endianness_Little, Endianness_Big, Endianness_Auto})
    {
        Decode(decompressor, bare, endianness);
    }
    for (const auto order : {Chunks::EByteOrder::Little, Chunks::EByteOrder::Big})
    {
        Bytes payload;
        Chunks::Append(payload, Chunks::CompressedImageChunkId, bare.data(), bare.size(), order);
        Decode(decompressor, payload, Endianness_Auto);
    }
    return 0;
}
