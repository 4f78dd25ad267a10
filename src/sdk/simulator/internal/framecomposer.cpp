// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/internal/framecomposer.h"

#include "simulator/internal/chunkkinds.h"
#include "simulator/registers.h"

#include <algorithm>

namespace Simulator::Internal
{

namespace
{

namespace Chunks = Velmo::Chunks;

constexpr auto ByteOrder = Chunks::EByteOrder::Big;

/** The bits of a chunk's value. */
std::uint64_t ValueOf(EChunk chunk, const CRegisterMemory& memory, const SFrame& frame)
{
    switch (chunk)
    {
    case EChunk::Timestamp:
        return frame.timestamp;
    case EChunk::FrameID:
        return frame.blockId;
    case EChunk::ExposureTime:
        return memory.GetInteger(Register::ExposureTime, 8);
    case EChunk::Gain:
        return memory.GetInteger(Register::Gain, 8);
    case EChunk::BlackLevel:
        return memory.GetInteger(Register::BlackLevel, 8);
    case EChunk::Width:
        return frame.width;
    case EChunk::Height:
        return frame.height;
    case EChunk::OffsetX:
        return frame.offsetX;
    case EChunk::OffsetY:
        return frame.offsetY;
    case EChunk::PixelFormat:
        return frame.pfnc;
    case EChunk::Image:
    case EChunk::Count:
        break;
    }
    return 0;
}

} // namespace

std::size_t CFrameComposer::GetTailBytes(const CSettings& settings)
{
    const bool hasChunks = settings.IsChunkModeActive();
    if (!hasChunks && !settings.IsCompressing())
    {
        return 0;
    }
    std::size_t bytes = Chunks::TrailerBytes; // the image's
    for (const SChunkKind& kind : ChunkKinds())
    {
        bytes += hasChunks && settings.IsChunkEnabled(kind.selector) ? kind.bytes + Chunks::TrailerBytes : 0;
    }
    return bytes;
}

void CFrameComposer::Compose(const CSettings& settings, const SImagePart& image, SFrame& frame)
{
    frame.data = image.data;
    frame.bytes = image.bytes;
    frame.tail = nullptr;
    frame.tailBytes = 0;
    frame.payload = EFramePayload::Image;
    const bool hasChunks = settings.IsChunkModeActive();
    if (!hasChunks && !settings.IsCompressing())
    {
        return;
    }
    const CRegisterMemory& memory = settings.GetMemory();
    m_tail.clear();
    const auto addTrailer = [this](std::uint32_t id, std::size_t bytes)
    {
        const auto trailer = Chunks::MakeTrailer(id, static_cast<std::uint32_t>(bytes), ByteOrder);
        m_tail.insert(m_tail.end(), trailer.begin(), trailer.end());
    };
    addTrailer(image.chunkId, image.bytes);
    std::size_t lastBegin = m_tail.size(); // of the chunk added last
    for (const SChunkKind& kind : ChunkKinds())
    {
        if (hasChunks && settings.IsChunkEnabled(kind.selector))
        {
            lastBegin = m_tail.size();
            const std::uint64_t value = ValueOf(kind.selector, memory, frame);
            for (std::uint32_t byte = kind.bytes; byte > 0; --byte)
            {
                m_tail.push_back(static_cast<std::uint8_t>(value >> (byte - 1) * 8U));
            }
            addTrailer(kind.id, kind.bytes);
        }
    }
    if (memory.GetInteger(Register::FaultChunkMissing) != 0)
    {
        m_tail.resize(lastBegin);
    }
    if (memory.GetInteger(Register::FaultChunkLies) != 0)
    {
        m_tail[m_tail.size() - 4] |= 0x80U; // the most significant byte of the last length
    }
    frame.payload = EFramePayload::ChunkData;
    frame.tail = m_tail.data();
    frame.tailBytes = m_tail.size();
}

void CFrameComposer::ReplaceImage(const SImagePart& image, SFrame& frame)
{
    // A fault may have changed the very last length, which is the image's own when no chunk follows.
    const bool isAlone = m_tail.size() == Chunks::TrailerBytes;
    const std::uint8_t fault = isAlone ? m_tail[Chunks::TrailerBytes - 4] & 0x80U : 0U;
    const auto trailer = Chunks::MakeTrailer(image.chunkId, static_cast<std::uint32_t>(image.bytes), ByteOrder);
    std::copy(trailer.begin(), trailer.end(), m_tail.begin());
    m_tail[Chunks::TrailerBytes - 4] |= fault;
    frame.data = image.data;
    frame.bytes = image.bytes;
}

} // namespace Simulator::Internal
