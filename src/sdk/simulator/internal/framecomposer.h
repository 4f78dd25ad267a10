// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/chunks.h"
#include "simulator/framesink.h"
#include "simulator/internal/settings.h"

#include <vector>

namespace Simulator::Internal
{

/** The image of a frame in the form in which it is sent. */
struct SImagePart
{
    const std::uint8_t* data = nullptr;
    std::size_t bytes = 0;                               // in a chunk payload a multiple of 4
    std::uint32_t chunkId = Velmo::Chunks::ImageChunkId; // what the image's chunk is called
};

/**
 * Puts a frame's payload together: the image; with chunk mode or compression the image's trailer; with chunk mode the
 * chunks behind it.
 *
 * The image is not copied. Threads: the owner's lock.
 */
class SIMULATOR_TEST_EXPORT CFrameComposer
{
public:
    /** Fills payload type, data and tail. The frame's other fields and the settings must be those of the frame's
     *  exposure: the chunks repeat them. The tail is valid until the next call. */
    void Compose(const CSettings& settings, const SImagePart& image, SFrame& frame);
    /** Puts another form of the image in place of the one that Compose was given; chunk payloads only. Does not look at
     *  the settings, so the owner's lock need not be held over it. */
    void ReplaceImage(const SImagePart& image, SFrame& frame);
    /** What Compose adds to an image under these settings, without faults. */
    static std::size_t GetTailBytes(const CSettings& settings);

private:
    std::vector<std::uint8_t> m_tail;
};

} // namespace Simulator::Internal
