// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace Benchmarks
{

/** Counts the images of one stream and the block numbers that are missing between them. Threads: one at a time. */
class CBlockCounter
{
public:
    void add(std::uint64_t blockId, bool succeeded)
    {
        ++m_images;
        m_failed += succeeded ? 0 : 1;
        // The first image is where the numbering begins; what came before it was not asked for.
        if (m_images > 1)
        {
            const std::uint64_t expected = m_last + 1;
            m_missing += blockId > expected ? blockId - expected : 0;
            m_disorder += blockId < expected ? 1 : 0;
        }
        m_last = blockId;
    }
    std::uint64_t images() const { return m_images; }
    /** Missing, failed and out-of-order images. */
    std::uint64_t losses() const { return m_missing + m_failed + m_disorder; }

private:
    std::uint64_t m_images = 0;
    std::uint64_t m_failed = 0;
    std::uint64_t m_missing = 0;
    std::uint64_t m_disorder = 0;
    std::uint64_t m_last = 0;
};

/** What one run of cameras came to. */
struct SStreamFigures
{
    std::uint64_t images = 0;
    std::uint64_t losses = 0;
    double seconds = 0;
    double cpuMicroseconds = 0;
    int threads = 0;
    int descriptors = 0;
};

/** Takes the difference of images, losses, time and processor time of a window. */
class CStreamWindow
{
public:
    void begin(std::uint64_t images, std::uint64_t losses);
    SStreamFigures end(std::uint64_t images, std::uint64_t losses) const;

private:
    std::uint64_t m_images = 0;
    std::uint64_t m_losses = 0;
    double m_start = 0;
    double m_cpu = 0;
};

} // namespace Benchmarks
