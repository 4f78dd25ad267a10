// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/frame.h"

#include <memory>

namespace Velmo::Codec
{

/** A frame that an encoder made. */
struct SEncodedFrame
{
    const std::uint8_t* pData = nullptr; // valid until the encoder's next call
    std::size_t bytes = 0;
    std::uint32_t maxError = 0; // 0: lossless
    bool isOverflow = false;    // no image inside: not even the largest error made it small enough
};

/**
 * Makes frames of the images of one camera.
 *
 * With a fixed ratio it looks for the smallest error with which the image fits, and begins with that of the image
 * before: images like the last one are coded once, a new scene up to eight times. Throws std::bad_alloc.
 * Threads: one at a time.
 */
class CODEC_EXPORT CEncoder
{
public:
    /** The descriptor must be one that MakeDescriptor makes of a known pixel type and size; throws
     *  std::invalid_argument otherwise. */
    explicit CEncoder(const SDescriptor& descriptor);
    ~CEncoder();
    CEncoder(const CEncoder&) = delete;
    CEncoder& operator=(const CEncoder&) = delete;

    const SDescriptor& GetDescriptor() const;
    /** pImage holds the descriptor's imageBytes, lines without padding. */
    SEncodedFrame Encode(const void* pImage);

    /** The largest error that the fixed ratio may cost: an eighth of the format's range. */
    static std::uint32_t LargestError(std::uint32_t pixelType);

private:
    struct SPrivate;
    const std::unique_ptr<SPrivate> m_p;
};

} // namespace Velmo::Codec
