// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/fpsstatistic.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <limits>
#include <thread>
#include <utility>

namespace
{

constexpr std::int64_t SlotNs = 20'000'000;
constexpr std::size_t SlotCount = 256; // 5.12 s
constexpr std::int64_t WindowSlots = 50;
constexpr std::int64_t LongestWindowSlots = 250;
constexpr std::uint64_t EnoughSamples = 3;

std::int64_t steadyNow()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/** The samples of one stretch of time, added up. */
struct SSum
{
    std::int64_t slot = -1;
    std::uint64_t generation = 0;
    std::uint64_t samples = 0;
    std::uint64_t bytes = 0;
    std::uint64_t firstBytes = 0;
    std::int64_t firstNs = 0;
    std::int64_t lastNs = 0;
};

/**
 * One writer, many readers: the sequence is odd while the writer is at it. The release stores keep the odd sequence
 * ahead of the data, the acquire loads keep the second look at the sequence behind them.
 */
class CSlot
{
public:
    void store(const SSum& sum)
    {
        const auto sequence = m_sequence.load(std::memory_order_relaxed);
        m_sequence.store(sequence + 1, std::memory_order_relaxed);
        m_slot.store(sum.slot, std::memory_order_release);
        m_generation.store(sum.generation, std::memory_order_release);
        m_samples.store(sum.samples, std::memory_order_release);
        m_bytes.store(sum.bytes, std::memory_order_release);
        m_firstBytes.store(sum.firstBytes, std::memory_order_release);
        m_firstNs.store(sum.firstNs, std::memory_order_release);
        m_lastNs.store(sum.lastNs, std::memory_order_release);
        m_sequence.store(sequence + 2, std::memory_order_release);
    }

    /** For the writer, which needs no second look. */
    SSum own() const
    {
        SSum sum;
        sum.slot = m_slot.load(std::memory_order_acquire);
        sum.generation = m_generation.load(std::memory_order_acquire);
        sum.samples = m_samples.load(std::memory_order_acquire);
        sum.bytes = m_bytes.load(std::memory_order_acquire);
        sum.firstBytes = m_firstBytes.load(std::memory_order_acquire);
        sum.firstNs = m_firstNs.load(std::memory_order_acquire);
        sum.lastNs = m_lastNs.load(std::memory_order_acquire);
        return sum;
    }

    SSum load() const
    {
        for (;;)
        {
            const auto before = m_sequence.load(std::memory_order_acquire);
            const SSum sum = own();
            if ((before & 1U) == 0 && m_sequence.load(std::memory_order_relaxed) == before)
            {
                return sum;
            }
            std::this_thread::yield(); // the writer may have been interrupted half way
        }
    }

    bool holds(std::int64_t slot) const { return m_slot.load(std::memory_order_acquire) == slot; }

private:
    std::atomic<std::uint64_t> m_sequence{0};
    std::atomic<std::int64_t> m_slot{-1};
    std::atomic<std::uint64_t> m_generation{0};
    std::atomic<std::uint64_t> m_samples{0};
    std::atomic<std::uint64_t> m_bytes{0};
    std::atomic<std::uint64_t> m_firstBytes{0};
    std::atomic<std::int64_t> m_firstNs{0};
    std::atomic<std::int64_t> m_lastNs{0};
};

void prepend(SSum& window, const SSum& older)
{
    if (window.samples == 0)
    {
        window = older;
        return;
    }
    window.samples += older.samples;
    window.bytes += older.bytes;
    window.firstBytes = older.firstBytes;
    window.firstNs = older.firstNs;
}

} // namespace

struct FpsStatistic::SPrivate
{
    explicit SPrivate(Clock c) : clock(std::move(c)) {}

    /** Now, never earlier than any time observed before by any thread. */
    std::int64_t observe()
    {
        const std::int64_t now = clock();
        std::int64_t latest = latestNs.load(std::memory_order_relaxed);
        while (latest < now && !latestNs.compare_exchange_weak(latest, now, std::memory_order_relaxed))
        {
        }
        return latest < now ? now : latest;
    }

    SSum window(std::int64_t now) const
    {
        const std::uint64_t current = generation.load(std::memory_order_acquire);
        const std::int64_t newest = now / SlotNs;
        SSum sum;
        for (std::int64_t age = 0; age < LongestWindowSlots && newest - age >= 0; ++age)
        {
            if (age >= WindowSlots && sum.samples >= EnoughSamples)
            {
                break;
            }
            const CSlot& slot = ring[static_cast<std::size_t>(newest - age) % SlotCount];
            if (!slot.holds(newest - age))
            {
                continue;
            }
            const SSum stored = slot.load();
            if (stored.slot == newest - age && stored.generation == current)
            {
                prepend(sum, stored);
            }
        }
        return sum;
    }

    Clock clock;
    std::atomic<std::int64_t> latestNs{0};
    std::atomic<std::uint64_t> generation{1}; // samples of an older one are forgotten
    std::array<CSlot, SlotCount> ring;
};

FpsStatistic::FpsStatistic() : FpsStatistic(steadyNow) {}

FpsStatistic::FpsStatistic(Clock clock) : m_p(std::make_unique<SPrivate>(std::move(clock))) {}

FpsStatistic::~FpsStatistic() = default;

void FpsStatistic::reset()
{
    m_p->generation.fetch_add(1, std::memory_order_acq_rel);
}

void FpsStatistic::addSample(unsigned int bytes)
{
    const std::int64_t now = m_p->observe();
    const std::int64_t index = now / SlotNs;
    const std::uint64_t generation = m_p->generation.load(std::memory_order_acquire);
    CSlot& slot = m_p->ring[static_cast<std::size_t>(index) % SlotCount];
    SSum sum = slot.own();
    if (sum.slot != index || sum.generation != generation)
    {
        sum = SSum();
        sum.slot = index;
        sum.generation = generation;
        sum.firstBytes = bytes;
        sum.firstNs = now;
    }
    ++sum.samples;
    sum.bytes += bytes;
    sum.lastNs = now;
    slot.store(sum);
}

void FpsStatistic::addNoSample()
{
    m_p->observe();
}

void FpsStatistic::computeResult(double& fps, unsigned int& bps)
{
    fps = 0.0;
    bps = 0;
    const std::int64_t now = m_p->observe();
    const SSum sum = m_p->window(now);
    const std::int64_t covered = sum.lastNs - sum.firstNs;
    if (sum.samples < 2 || covered <= 0)
    {
        return;
    }
    const double intervals = static_cast<double>(sum.samples - 1);
    const double usualSilence = static_cast<double>(covered) / intervals;
    const double silence = static_cast<double>(now - sum.lastNs);
    const double excess = silence > usualSilence ? silence - usualSilence : 0.0;
    const double seconds = (static_cast<double>(covered) + excess) / 1e9;
    fps = intervals / seconds;
    // The first sample's bytes arrived before the time that is measured.
    const double rate = static_cast<double>(sum.bytes - sum.firstBytes) / seconds;
    constexpr auto Most = std::numeric_limits<unsigned int>::max();
    bps = rate >= static_cast<double>(Most) ? Most : static_cast<unsigned int>(std::llround(rate));
}
