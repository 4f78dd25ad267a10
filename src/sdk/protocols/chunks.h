// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/protocols_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/**
 * Chunk data as bytes: how a camera puts an image and values of that image into one payload.
 *
 * A payload is a row of chunks, each its data followed by a trailer of chunk ID and data length (32 bits each; the
 * length leaves the trailer out). Only the end of a payload is known, so it is read backwards: the last chunk first.
 * GigE Vision has big-endian trailers, USB3 Vision little-endian ones. Pure functions without state; everything that is
 * read may come from a stranger. Threads: any.
 */
namespace Velmo::Chunks
{

constexpr std::size_t TrailerBytes = 8;   // GigE Vision, "chunk data payload type": chunk ID, then chunk data length
constexpr std::size_t AlignmentBytes = 4; // the standards make data lengths multiples of it; a reader need not insist
constexpr std::size_t MaxChunkBytes = 0xFFFFFFFC; // of the data: the trailer's 32 bits, aligned

// IDs are the camera's choice; these two are the camera model's, and known by the SDK's decompressor.
constexpr std::uint32_t ImageChunkId = 0x00000001;
constexpr std::uint32_t CompressedImageChunkId = 0x00000002;

enum class EByteOrder
{
    Big,    // GigE Vision
    Little, // USB3 Vision
    Auto    // the one in which the whole payload can be read; Big when both can
};

/** One chunk; the data are valid as long as the payload. */
struct SChunk
{
    std::uint32_t id = 0;
    const std::uint8_t* pData = nullptr; // never null, also of an empty chunk
    std::size_t bytes = 0;               // of the data, without the trailer
};

/**
 * Walks a payload from its end to its begin; allocates nothing.
 *
 * A walk that ends badly has delivered the chunks behind the fault: a caller that wants all or nothing calls Check
 * first.
 */
class PROTOCOLS_EXPORT CReader
{
public:
    enum class EState
    {
        Ok,         // so far; once Next returned false: read to the very begin
        NoTrailer,  // fewer bytes are left than a trailer has
        BeyondBegin // a chunk is longer than what is left before its trailer
    };

    /** The payload must outlive the reader. A null payload counts as one of 0 bytes, which has no chunks. */
    CReader(const void* pPayload, std::size_t bytes, EByteOrder order);

    /** False, and the chunk untouched, at the begin of the payload or at a fault. */
    bool Next(SChunk& chunk);
    EState GetState() const { return m_state; }
    /** Big or Little: the order that is read, also when Auto was asked for. */
    EByteOrder GetByteOrder() const { return m_order; }
    /** What is wrong and where; "" while nothing is. */
    std::string GetErrorText() const;

private:
    const std::uint8_t* m_pPayload;
    std::size_t m_left; // bytes not read yet, at the begin
    EByteOrder m_order;
    EState m_state = EState::Ok;
    std::uint32_t m_faultyId = 0;
    std::uint32_t m_faultyBytes = 0;
};

/** Whether the whole payload can be read in that order. */
PROTOCOLS_EXPORT bool Check(const void* pPayload, std::size_t bytes, EByteOrder order);
/** The first chunk of that ID, from the end; false, and the chunk untouched, when there is none or the payload cannot
 *  be read as a whole. */
PROTOCOLS_EXPORT bool Find(const void* pPayload, std::size_t bytes, EByteOrder order, std::uint32_t id, SChunk& chunk);

/** The trailer of a chunk whose data have that many bytes. Auto writes Big. */
PROTOCOLS_EXPORT std::array<std::uint8_t, TrailerBytes> MakeTrailer(std::uint32_t id, std::uint32_t bytes,
                                                                    EByteOrder order);
/** What data must be filled up to, so that chunks keep their alignment. */
constexpr std::size_t AlignedBytes(std::size_t bytes)
{
    return (bytes + AlignmentBytes - 1) / AlignmentBytes * AlignmentBytes;
}
/** Adds data, zeros up to the alignment (they count as data) and the trailer. Throws std::length_error, and leaves the
 *  payload alone, when the data do not fit into one chunk. */
PROTOCOLS_EXPORT void Append(std::vector<std::uint8_t>& payload, std::uint32_t id, const void* pData, std::size_t bytes,
                             EByteOrder order);

} // namespace Velmo::Chunks
