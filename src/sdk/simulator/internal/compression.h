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
 * A 2048x2048 grey image costs a worker of the pump about 4 ms (12 ms with a fixed ratio, and up to eight times that at
 * a change of scene); other cameras wait no longer than for that when all workers compress. Threads: one at a time.
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
