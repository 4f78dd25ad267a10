// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/imagedecompressor.h"

#include "codec/descriptor.h"
#include "codec/pixellayout.h"
#include "velmo/internal/copybytes.h"

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

bool CImageDecompressor::GetCompressionInfo(SCompressionInfo& /*info*/, const CGrabResultPtr& /*result*/,
                                            EEndianness /*endianness*/)
{
    return false;
}

} // namespace Velmo
