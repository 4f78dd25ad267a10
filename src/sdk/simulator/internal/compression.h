// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "codec/encoder.h"
#include "simulator/internal/framecomposer.h"

#include <memory>
#include <optional>
#include <vector>

namespace Simulator::Internal
{

/** The switches of compression and what the camera tells of it. */
void AddCompressionControl(std::vector<SFeature>& features);

/** Of the images under these settings; nothing when they are not compressed. */
std::optional<Velmo::Codec::SDescriptor> GetCompression(const CSettings& settings);
/** What a compressed image takes of a payload at most, without its trailer. */
std::uint64_t GetCompressedBytes(const Velmo::Codec::SDescriptor& descriptor);
/** Writes descriptor, hash, their lengths and the decoded size into the registers. */
void RefreshCompressionRegisters(CSettings& settings);

/**
 * Compresses the images of one camera.
 *
 * One 2048x2048 grey image costs 8 to 12 ms of a worker, with a fixed ratio at a change of scene up to eight times
 * that; other cameras wait for no longer than that when all workers compress. Threads: one at a time.
 */
class CImageCompressor
{
public:
    /** The part is valid until the next call. */
    SImagePart Compress(const Velmo::Codec::SDescriptor& descriptor, const std::uint8_t* pImage);
    /** Gives the memory back. */
    void Reset();

private:
    std::unique_ptr<Velmo::Codec::CEncoder> m_encoder;
    std::vector<std::uint8_t> m_descriptor; // the encoder's
    std::vector<std::uint8_t> m_aligned;
};

} // namespace Simulator::Internal
