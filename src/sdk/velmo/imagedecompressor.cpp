// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/imagedecompressor.h"

#include "velmo/internal/copybytes.h"

#include "codec/decoder.h"
#include "protocols/chunks.h"

#include <algorithm>
#include <vector>

namespace Velmo
{

using Internal::CopyBytes;

struct CImageDecompressor::SPrivate
{
    std::vector<std::uint8_t> bytes;
    Codec::SDescriptor descriptor;
    Codec::DescriptorHash hash{};
};

CImageDecompressor::CImageDecompressor(const void* pDescriptor, std::size_t bytes)
    : m_p(
          [&]
          {
              auto p = std::make_unique<SPrivate>();
              const std::string error = Codec::ParseDescriptor(pDescriptor, bytes, p->descriptor);
              if (!error.empty())
              {
                  GENICAM_THROW(InvalidArgumentException, "The compression descriptor cannot be used: " + error +
                                                              ". Read it again from the camera that grabs.");
              }
              const auto* const pBytes = static_cast<const std::uint8_t*>(pDescriptor);
              p->bytes.assign(pBytes, pBytes + bytes);
              p->hash = Codec::HashDescriptor(pDescriptor, bytes);
              return p;
          }())
{
}

CImageDecompressor::~CImageDecompressor() = default;

ECompressionMode CImageDecompressor::GetCompressionMode() const
{
    return static_cast<ECompressionMode>(m_p->descriptor.mode);
}

void CImageDecompressor::GetCompressionDescriptor(void* pBuffer, std::size_t* pBytes) const
{
    CopyBytes("compression descriptor", m_p->bytes.data(), m_p->bytes.size(), pBuffer, pBytes);
}

void CImageDecompressor::GetCompressionDescriptorHash(void* pBuffer, std::size_t* pBytes) const
{
    CopyBytes("compression descriptor hash", m_p->hash.data(), m_p->hash.size(), pBuffer, pBytes);
}

std::size_t CImageDecompressor::GetImageSizeForDecompression() const
{
    return m_p->descriptor.imageBytes;
}

std::uint32_t CImageDecompressor::GetPixelType() const
{
    return m_p->descriptor.pixelType;
}

std::uint32_t CImageDecompressor::GetWidth() const
{
    return m_p->descriptor.width;
}

std::uint32_t CImageDecompressor::GetHeight() const
{
    return m_p->descriptor.height;
}

std::uint32_t CImageDecompressor::GetNumStrips() const
{
    return m_p->descriptor.strips;
}

namespace
{

constexpr Chunks::EByteOrder ByteOrderOf(EEndianness endianness)
{
    return endianness == Endianness_Little ? Chunks::EByteOrder::Little
           : endianness == Endianness_Big  ? Chunks::EByteOrder::Big
                                           : Chunks::EByteOrder::Auto;
}

ECompressionStatus StatusOf(Codec::EResult result)
{
    switch (result)
    {
    case Codec::EResult::Ok:
        return CompressionStatus_Ok;
    case Codec::EResult::Overflow:
        return CompressionStatus_BufferOverflow;
    case Codec::EResult::Truncated:
        return CompressionStatus_Truncated;
    case Codec::EResult::NotAFrame:
    case Codec::EResult::Corrupt:
        return CompressionStatus_Corrupt;
    case Codec::EResult::Unsupported:
        return CompressionStatus_Unsupported;
    case Codec::EResult::WrongDescriptor:
        return CompressionStatus_WrongDescriptor;
    case Codec::EResult::TargetTooSmall:
        return CompressionStatus_TargetTooSmall;
    case Codec::EResult::NoSuchStrip:
        return CompressionStatus_NoSuchStrip;
    case Codec::EResult::OutOfMemory:
        break;
    }
    return CompressionStatus_Error;
}

/** The compressed image of a payload: its chunk, or the payload itself when it begins like one. */
bool FindFrame(const void* pPayload, std::size_t bytes, EEndianness endianness, Chunks::SChunk& frame)
{
    if (pPayload == nullptr)
    {
        return false;
    }
    if (Chunks::Find(pPayload, bytes, ByteOrderOf(endianness), Chunks::CompressedImageChunkId, frame))
    {
        return true;
    }
    frame.pData = static_cast<const std::uint8_t*>(pPayload);
    frame.bytes = bytes;
    Codec::SFrameHeader header;
    // Chunk data in good order that merely begin with the same bytes are not meant.
    return Codec::ParseFrameHeader(pPayload, bytes, header) != Codec::EResult::NotAFrame &&
           !Chunks::Check(pPayload, bytes, ByteOrderOf(endianness));
}

void Describe(const Codec::SFrameHeader& header, std::size_t payloadBytes, SCompressionInfo& info)
{
    info.lossy = header.maxError != 0;
    info.pixelType = header.pixelType;
    info.width = header.width;
    info.height = header.height;
    info.decompressedImageBytes = header.imageBytes;
    info.decompressedPayloadBytes = header.imageBytes + (payloadBytes - std::min(header.frameBytes, payloadBytes));
    info.compressedImageBytes = header.frameBytes;
    info.maxError = header.maxError;
    info.strips = header.strips;
}

bool IsChunkData(const CGrabResultPtr& result)
{
    return result.IsValid() && result->GetPayloadType() == EPayloadType::ChunkData;
}

} // namespace

bool CImageDecompressor::GetCompressionInfo(SCompressionInfo& info, const void* pPayload, std::size_t payloadBytes,
                                            EEndianness endianness)
{
    Chunks::SChunk frame;
    if (!FindFrame(pPayload, payloadBytes, endianness, frame))
    {
        return false;
    }
    Codec::SFrameHeader header;
    Codec::EResult result = Codec::ParseFrameHeader(frame.pData, frame.bytes, header);
    info = {};
    if (result == Codec::EResult::Ok || result == Codec::EResult::Truncated)
    {
        Describe(header, payloadBytes, info);
    }
    if (result == Codec::EResult::Ok && header.isOverflow)
    {
        result = Codec::EResult::Overflow;
    }
    info.compressionStatus = StatusOf(result);
    info.hasCompressedImage = result == Codec::EResult::Ok;
    return true;
}

bool CImageDecompressor::GetCompressionInfo(SCompressionInfo& info, const CGrabResultPtr& result,
                                            EEndianness endianness)
{
    return IsChunkData(result) && GetCompressionInfo(info, result->GetBuffer(), result->GetPayloadSize(), endianness);
}

ECompressionStatus CImageDecompressor::Decompress(void* pImage, std::size_t imageBytes, const void* pPayload,
                                                  std::size_t payloadBytes, std::uint32_t firstStrip,
                                                  std::uint32_t strips, EEndianness endianness) const noexcept
{
    Chunks::SChunk frame;
    if (!FindFrame(pPayload, payloadBytes, endianness, frame))
    {
        return CompressionStatus_NotCompressed;
    }
    return StatusOf(Codec::DecodeFrame(frame.pData, frame.bytes, m_p->descriptor, m_p->hash,
                                       {pImage, imageBytes, firstStrip, strips}));
}

ECompressionStatus CImageDecompressor::Decompress(void* pImage, std::size_t imageBytes, const CGrabResultPtr& result,
                                                  std::uint32_t firstStrip, std::uint32_t strips,
                                                  EEndianness endianness) const noexcept
{
    return IsChunkData(result) ? Decompress(pImage, imageBytes, result->GetBuffer(), result->GetPayloadSize(),
                                            firstStrip, strips, endianness)
                               : CompressionStatus_NotCompressed;
}

} // namespace Velmo
