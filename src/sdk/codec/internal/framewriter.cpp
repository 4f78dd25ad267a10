// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "codec/internal/framewriter.h"

#include "codec/internal/bytes.h"
#include "codec/internal/checksum.h"
#include "codec/internal/filterof.h"
#include "codec/internal/frameformat.h"
#include "codec/pixellayout.h"

#include <zstd.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace Velmo::Codec::Internal
{

namespace
{

constexpr int Level = 1;

DescriptorHash HashOf(const SDescriptor& descriptor)
{
    const std::vector<std::uint8_t> bytes = EncodeDescriptor(descriptor);
    return HashDescriptor(bytes.data(), bytes.size());
}

} // namespace

void CFrameWriter::SFree::operator()(ZSTD_CCtx_s* pContext) const
{
    ZSTD_freeCCtx(pContext);
}

CFrameWriter::CFrameWriter(const SDescriptor& descriptor)
    : m_descriptor(descriptor), m_hash(HashOf(descriptor)), m_limit(MaxFrameBytes(descriptor)),
      m_context(ZSTD_createCCtx())
{
    if (m_context == nullptr)
    {
        throw std::bad_alloc();
    }
    ZSTD_CCtx_setParameter(m_context.get(), ZSTD_c_compressionLevel, Level);
    const std::uint64_t longest =
        MaxStripLines(descriptor.strips, descriptor.height) * (descriptor.imageBytes / descriptor.height);
    m_filtered.resize(longest);
    if (descriptor.mode == EMode::FixedRatio)
    {
        m_scratch.resize(longest);
    }
}

CFrameWriter::~CFrameWriter() = default;

SFrameHeader CFrameWriter::MakeHeader() const
{
    SFrameHeader header;
    header.pixelType = m_descriptor.pixelType;
    header.width = m_descriptor.width;
    header.height = m_descriptor.height;
    header.imageBytes = m_descriptor.imageBytes;
    header.descriptorHash = m_hash;
    return header;
}

std::size_t CFrameWriter::WriteStrip(const std::uint8_t* pStrip, std::size_t bytes, std::uint32_t maxError,
                                     std::uint8_t* pTarget, std::size_t room, std::uint8_t* pEntry)
{
    const SFilter filter = FilterOf(*FindPixelLayout(m_descriptor.pixelType), maxError);
    Filter(filter, pStrip, bytes, m_filtered.data(), m_scratch.data());
    const std::size_t most = std::min(room, bytes - 1); // what does not shrink is not worth decoding
    std::size_t coded = ZSTD_compress2(m_context.get(), pTarget, most, m_filtered.data(), bytes);
    std::uint32_t coding = CodingZstd;
    if (ZSTD_isError(coded) != 0U)
    {
        if (room < bytes)
        {
            return 0;
        }
        std::memcpy(pTarget, pStrip, bytes);
        coded = bytes;
        coding = CodingRaw;
    }
    Store(pEntry, StripOffset::CodedBytes, static_cast<std::uint32_t>(coded));
    Store(pEntry, StripOffset::Coding, coding);
    Store(pEntry, StripOffset::Checksum, Checksum(pTarget, coded));
    return coded;
}

CFrameWriter::SOutcome CFrameWriter::Write(const std::uint8_t* pImage, std::uint32_t maxError,
                                           std::vector<std::uint8_t>& target)
{
    const std::uint32_t strips = m_descriptor.strips;
    const std::uint64_t lineBytes = m_descriptor.imageBytes / m_descriptor.height;
    std::uint64_t used = FrameHeaderBytes + strips * StripEntryBytes;
    if (used >= m_limit)
    {
        return {false, used};
    }
    if (target.size() < m_limit)
    {
        target.resize(m_limit);
    }
    for (std::uint32_t i = 0; i < strips; ++i)
    {
        const std::uint64_t begin = FirstLine(i, strips, m_descriptor.height) * lineBytes;
        const std::uint64_t end = FirstLine(i + 1, strips, m_descriptor.height) * lineBytes;
        std::uint8_t* const pEntry = target.data() + FrameHeaderBytes + i * StripEntryBytes;
        const std::size_t coded =
            WriteStrip(pImage + begin, end - begin, maxError, target.data() + used, m_limit - used, pEntry);
        if (coded == 0)
        {
            // The strips so far stand for all, and this one filled at least what was left.
            const double scale = static_cast<double>(m_descriptor.imageBytes) / static_cast<double>(end);
            return {false, std::max(m_limit + 1, static_cast<std::uint64_t>(static_cast<double>(m_limit) * scale))};
        }
        used += coded;
    }
    SFrameHeader header = MakeHeader();
    header.strips = strips;
    header.maxError = maxError;
    header.frameBytes = used;
    header.tableChecksum = Checksum(target.data() + FrameHeaderBytes, strips * StripEntryBytes);
    EncodeFrameHeader(header, target.data());
    return {true, used};
}

void CFrameWriter::WriteOverflow(std::vector<std::uint8_t>& target)
{
    if (target.size() < FrameHeaderBytes)
    {
        target.resize(FrameHeaderBytes);
    }
    SFrameHeader header = MakeHeader();
    header.isOverflow = true;
    header.frameBytes = FrameHeaderBytes;
    EncodeFrameHeader(header, target.data());
}

} // namespace Velmo::Codec::Internal
