// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/compressionstatisticcounter.h"

#include "velmo/imagedecompressor.h"

#include <cstring>
#include <type_traits>

namespace Plugin::CameraPool::Internal
{

static_assert(std::is_trivially_copyable_v<CCompressionStatistic>, "the statistic is published word by word");

CCompressionStatisticCounter::CCompressionStatisticCounter()
{
    reset();
}

void CCompressionStatisticCounter::reset()
{
    m_current.compressionEnabled = false;
    m_current.compressionRatio = 0.0;
    m_current.minCompressionRatio = 100.0;
    m_current.maxCompressionRatio = 0.0;
    m_current.losslessCount = 0;
    m_current.lossyCount = 0;
    m_current.failedCount = 0;
    publish();
}

void CCompressionStatisticCounter::countUncompressed()
{
    if (m_current.compressionEnabled)
    {
        m_current.compressionEnabled = false;
        publish();
    }
}

void CCompressionStatisticCounter::countCompressed(const Velmo::SCompressionInfo& info, std::uint64_t payloadBytes)
{
    m_current.compressionEnabled = true;
    if (info.compressionStatus != Velmo::CompressionStatus_Ok)
    {
        ++m_current.failedCount;
    }
    else if (info.hasCompressedImage)
    {
        const auto decompressedBytes = static_cast<std::uint64_t>(info.decompressedPayloadBytes);
        countRatio(static_cast<double>(payloadBytes) / static_cast<double>(decompressedBytes) * 100.0);
        ++(info.lossy ? m_current.lossyCount : m_current.losslessCount);
    }
    publish();
}

void CCompressionStatisticCounter::countRatio(double ratioPercent)
{
    m_current.compressionRatio = ratioPercent;
    if (ratioPercent <= m_current.minCompressionRatio)
    {
        m_current.minCompressionRatio = ratioPercent;
    }
    if (!(ratioPercent <= m_current.maxCompressionRatio))
    {
        m_current.maxCompressionRatio = ratioPercent;
    }
}

void CCompressionStatisticCounter::publish()
{
    std::array<std::uint64_t, s_words> words{};
    std::memcpy(words.data(), &m_current, sizeof(m_current));
    const std::uint64_t sequence = m_sequence.load(std::memory_order_relaxed);
    m_sequence.store(sequence + 1, std::memory_order_relaxed);
    for (std::size_t i = 0; i < s_words; ++i)
    {
        // Released, so that whoever sees this word sees the odd sequence too.
        m_published[i].store(words[i], std::memory_order_release);
    }
    m_sequence.store(sequence + 2, std::memory_order_release);
}

CCompressionStatistic CCompressionStatisticCounter::snapshot() const
{
    std::array<std::uint64_t, s_words> words{};
    std::uint64_t before = 0;
    do
    {
        before = m_sequence.load(std::memory_order_acquire);
        for (std::size_t i = 0; i < s_words; ++i)
        {
            words[i] = m_published[i].load(std::memory_order_acquire);
        }
    } while ((before & 1U) != 0 || m_sequence.load(std::memory_order_relaxed) != before);
    CCompressionStatistic result;
    std::memcpy(static_cast<void*>(&result), words.data(), sizeof(result));
    return result;
}

} // namespace Plugin::CameraPool::Internal
