// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/compressionstatistic.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Velmo
{
struct SCompressionInfo;
}

namespace Plugin::CameraPool::Internal
{

/**
 * Counts the compression figures of one grab.
 *
 * Threads: reset and the count functions from one thread at a time (the grab thread, and the starting thread before
 * that one runs); statistic() from that thread; snapshot() from any other at the same time. No locks, no allocations:
 * a writer never waits, a reader repeats its copy while a write is under way.
 */
class CAMERAPOOL_TEST_EXPORT CCompressionStatisticCounter
{
public:
    CCompressionStatisticCounter();

    /** The values at the start of a grab. */
    void reset();
    /** A result that carries no compression information. */
    void countUncompressed();
    /** A result that carries compression information and a payload of that many bytes. */
    void countCompressed(const Velmo::SCompressionInfo& info, std::uint64_t payloadBytes);

    const CCompressionStatistic& statistic() const { return m_current; }
    CCompressionStatistic snapshot() const;

private:
    static constexpr std::size_t s_words =
        (sizeof(CCompressionStatistic) + sizeof(std::uint64_t) - 1) / sizeof(std::uint64_t);

    void countRatio(double ratioPercent);
    void publish();

    CCompressionStatistic m_current;
    std::atomic<std::uint64_t> m_sequence{0}; // odd while m_published is being written
    std::array<std::atomic<std::uint64_t>, s_words> m_published{};
};

} // namespace Plugin::CameraPool::Internal
