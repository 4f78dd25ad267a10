// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/simulator_export.h"

#include <cstddef>
#include <cstdint>

namespace Simulator
{

enum class EFramePayload
{
    Image,    // data alone
    ChunkData // data, then tail
};

/** A frame as the camera sends it; valid only during the call that hands it over. */
struct SFrame
{
    std::uint64_t blockId = 0;   // 1 is the first of an acquisition
    std::uint64_t timestamp = 0; // ticks of the camera's clock
    std::uint32_t pfnc = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t offsetX = 0;
    std::uint32_t offsetY = 0;
    EFramePayload payload = EFramePayload::Image;
    const std::uint8_t* data = nullptr; // the image
    std::size_t bytes = 0;              // of data; of a failed frame less than the payload size
    const std::uint8_t* tail = nullptr; // follows data: the image's chunk trailer and the other chunks, big-endian
    std::size_t tailBytes = 0;          // of tail
    bool isFailed = false;
};

/** Where a camera's frames go. Must not call the camera from OnFrame. */
class SIMULATOR_EXPORT IFrameSink
{
public:
    virtual ~IFrameSink();
    /** False when there was no buffer for it: the frame is lost. Called on a worker, one frame at a time. */
    virtual bool OnFrame(const SFrame& frame) = 0;
};

} // namespace Simulator
