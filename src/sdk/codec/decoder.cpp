// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/decoder.h"

#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"
#include "codec/internal/filterof.h"
#include "codec/internal/frameformat.h"
#include "codec/pixellayout.h"

#include <zstd.h>

#include <cstring>
#include <memory>
#include <new>

namespace Velmo::Codec
{

namespace
{

using Internal::Checksum;
using Internal::Load;
namespace Offset = Internal::StripOffset;

struct SFreeContext
{
    void operator()(ZSTD_DCtx* pContext) const { ZSTD_freeDCtx(pContext); }
};

/** What a thread keeps from one call to the next. */
class CWorkspace
{
public:
    ZSTD_DCtx* GetContext()
    {
        if (m_context == nullptr)
        {
            m_context.reset(ZSTD_createDCtx());
        }
        return m_context.get();
    }
    /** Null when there is no memory; not initialised. */
    std::uint8_t* GetMemory(std::size_t bytes)
    {
        if (bytes > m_bytes)
        {
            m_memory.reset(); // before the larger one, so that the two are never there together
            m_memory.reset(new (std::nothrow) std::uint8_t[bytes]);
            m_bytes = m_memory == nullptr ? 0 : bytes;
        }
        return m_memory.get();
    }

private:
    std::unique_ptr<ZSTD_DCtx, SFreeContext> m_context;
    std::unique_ptr<std::uint8_t[]> m_memory;
    std::size_t m_bytes = 0;
};

/** One strip as the table gives it. */
struct SStrip
{
    const std::uint8_t* pCoded = nullptr;
    std::size_t codedBytes = 0;
    std::uint32_t coding = 0;
    std::uint64_t checksum = 0;
    std::uint64_t begin = 0; // in the image
    std::size_t bytes = 0;   // decoded
    std::size_t longest = 0; // bytes of the image's longest strip
};

EResult DecodeStrip(const SStrip& strip, const Internal::SFilter& filter, std::uint8_t* pImage)
{
    if (Checksum(strip.pCoded, strip.codedBytes) != strip.checksum)
    {
        return EResult::Corrupt;
    }
    if (strip.coding == Internal::CodingRaw)
    {
        std::memcpy(pImage + strip.begin, strip.pCoded, strip.bytes);
        return EResult::Ok;
    }
    thread_local CWorkspace workspace;
    ZSTD_DCtx* const pContext = workspace.GetContext();
    std::uint8_t* const pFiltered = workspace.GetMemory(strip.longest);
    if (pContext == nullptr || pFiltered == nullptr)
    {
        return EResult::OutOfMemory;
    }
    if (ZSTD_decompressDCtx(pContext, pFiltered, strip.bytes, strip.pCoded, strip.codedBytes) != strip.bytes)
    {
        return EResult::Corrupt;
    }
    Internal::Unfilter(filter, pFiltered, strip.bytes, pImage + strip.begin);
    return EResult::Ok;
}

EResult CheckHeader(const void* pFrame, std::size_t bytes, const SDescriptor& descriptor, const DescriptorHash& hash,
                    const STarget& target, SFrameHeader& header)
{
    const EResult result = ParseFrameHeader(pFrame, bytes, header);
    if (result != EResult::Ok)
    {
        return result;
    }
    // The geometry is compared too: equal hashes do not make a stranger's frame fit.
    if (header.descriptorHash != hash || header.pixelType != descriptor.pixelType || header.width != descriptor.width ||
        header.height != descriptor.height)
    {
        return EResult::WrongDescriptor;
    }
    if (header.isOverflow)
    {
        return EResult::Overflow;
    }
    if (header.strips != descriptor.strips)
    {
        return EResult::Corrupt;
    }
    return target.pImage == nullptr || target.bytes < header.imageBytes ? EResult::TargetTooSmall : EResult::Ok;
}

/** Walks the table; every strip is checked, those of the target are decoded. */
class CTableReader
{
public:
    CTableReader(const SFrameHeader& header, const std::uint8_t* pFrame)
        : m_header(header), m_pEntry(pFrame + FrameHeaderBytes), m_pCoded(m_pEntry + header.strips * StripEntryBytes),
          m_left(pFrame + header.frameBytes - m_pCoded), m_lineBytes(header.imageBytes / header.height)
    {
    }

    /** False when the entry is not a good one. */
    bool Next(SStrip& strip)
    {
        strip.begin = FirstLine(m_strip, m_header.strips, m_header.height) * m_lineBytes;
        strip.bytes = FirstLine(m_strip + 1, m_header.strips, m_header.height) * m_lineBytes - strip.begin;
        strip.codedBytes = Load<std::uint32_t>(m_pEntry, Offset::CodedBytes);
        strip.coding = Load<std::uint32_t>(m_pEntry, Offset::Coding);
        strip.checksum = Load<std::uint64_t>(m_pEntry, Offset::Checksum);
        strip.pCoded = m_pCoded;
        strip.longest = MaxStripLines(m_header.strips, m_header.height) * m_lineBytes;
        const bool fits = strip.codedBytes <= m_left && strip.codedBytes <= strip.bytes;
        const bool isRaw = strip.coding == Internal::CodingRaw && strip.codedBytes == strip.bytes;
        if (!fits || (!isRaw && strip.coding != Internal::CodingZstd))
        {
            return false;
        }
        ++m_strip;
        m_pEntry += StripEntryBytes;
        m_pCoded += strip.codedBytes;
        m_left -= strip.codedBytes;
        return true;
    }
    bool IsAtEnd() const { return m_left == 0; }

private:
    const SFrameHeader& m_header;
    std::uint32_t m_strip = 0;
    const std::uint8_t* m_pEntry;
    const std::uint8_t* m_pCoded;
    std::size_t m_left;
    std::uint64_t m_lineBytes;
};

} // namespace

EResult DecodeFrame(const void* pFrame, std::size_t bytes, const SDescriptor& descriptor, const DescriptorHash& hash,
                    const STarget& target) noexcept
{
    SFrameHeader header;
    EResult result = CheckHeader(pFrame, bytes, descriptor, hash, target, header);
    if (result != EResult::Ok)
    {
        return result;
    }
    const auto* const pBytes = static_cast<const std::uint8_t*>(pFrame);
    if (Checksum(pBytes + FrameHeaderBytes, header.strips * StripEntryBytes) != header.tableChecksum)
    {
        return EResult::Corrupt;
    }
    const std::uint32_t count = target.strips == AllStrips && target.firstStrip < header.strips
                                    ? header.strips - target.firstStrip
                                    : target.strips;
    if (count == 0 || target.firstStrip >= header.strips || count > header.strips - target.firstStrip)
    {
        return EResult::NoSuchStrip;
    }
    const Internal::SFilter filter = Internal::FilterOf(*FindPixelLayout(header.pixelType), header.maxError);
    CTableReader table(header, pBytes);
    for (std::uint32_t i = 0; i < header.strips; ++i)
    {
        SStrip strip;
        if (!table.Next(strip))
        {
            return EResult::Corrupt;
        }
        if (i < target.firstStrip || i - target.firstStrip >= count)
        {
            continue;
        }
        result = DecodeStrip(strip, filter, static_cast<std::uint8_t*>(target.pImage));
        if (result != EResult::Ok)
        {
            return result;
        }
    }
    return table.IsAtEnd() ? EResult::Ok : EResult::Corrupt;
}

} // namespace Velmo::Codec
