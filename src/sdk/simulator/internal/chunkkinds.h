// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/internal/features.h"

namespace Simulator::Internal
{

/** The chunks that a camera can send; values of ChunkSelector, in the order in which they follow the image. */
enum class EChunk : std::uint32_t
{
    Image,
    Timestamp,
    FrameID,
    ExposureTime,
    Gain,
    BlackLevel,
    Width,
    Height,
    OffsetX,
    OffsetY,
    PixelFormat,
    Count
};

/** One kind of chunk. Values are big-endian, as the registers. */
struct SChunkKind
{
    EChunk selector;
    const char* name; // SFNC: entry of ChunkSelector; the value's feature is "Chunk" + name
    std::uint32_t id; // of the chunk
    std::uint32_t bytes;
    EKind kind;
    const char* unit;
    const char* toolTip;
};

/** All but the image. Threads: any. */
SIMULATOR_TEST_EXPORT const std::vector<SChunkKind>& ChunkKinds();

/** The switches of chunk data: ordinary settings. */
void AddChunkControl(std::vector<SFeature>& features);
/** The values that chunks carry: in the description alone, as no register holds them. */
std::vector<SFeature> MakeChunkValues(const SCameraConfig& config);

} // namespace Simulator::Internal
