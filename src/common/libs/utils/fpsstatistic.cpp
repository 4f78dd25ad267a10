// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "utils/fpsstatistic.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <ctime>
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

/**
 * The same clock as of the system's last tick, up to ten milliseconds ago: a fraction of what the other one costs, and
 * good enough to tell how long nothing has come. A result is asked for with each image.
 */
std::int64_t tickingNow()
{
#ifdef CLOCK_MONOTONIC_COARSE
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
#else
    return steadyNow();
#endif
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
    SPrivate(Clock sampleClock, Clock resultClock)
        : ofSamples(std::move(sampleClock)), ofResults(std::move(resultClock))
    {
    }

    /** Now, never earlier than any time observed before by any thread. */
    std::int64_t observe(const Clock& clock)
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
        addSlot(sum, newest, current);
        const SSum before = completed.load();
        if (before.slot == newest && before.generation == current && before.samples >= EnoughSamples)
        {
            prepend(sum, before);
            return sum;
        }
        for (std::int64_t age = 1; age < LongestWindowSlots; ++age)
        {
            if (age >= WindowSlots && sum.samples >= EnoughSamples)
            {
                break;
            }
            addSlot(sum, newest - age, current);
        }
        return sum;
    }

    void addSlot(SSum& sum, std::int64_t index, std::uint64_t wanted) const
    {
        if (index < 0)
        {
            return;
        }
        const CSlot& slot = ring[static_cast<std::size_t>(index) % SlotCount];
        if (!slot.holds(index))
        {
            return;
        }
        const SSum stored = slot.load();
        if (stored.slot == index && stored.generation == wanted)
        {
            prepend(sum, stored);
        }
    }

    /** By the thread that adds samples, at the first one of a slot: those before it in the window change no more. */
    void complete(std::int64_t newest, std::uint64_t wanted)
    {
        SSum sum;
        for (std::int64_t age = 1; age < WindowSlots; ++age)
        {
            addSlot(sum, newest - age, wanted);
        }
        sum.slot = newest;
        sum.generation = wanted;
        completed.store(sum);
    }

    const Clock ofSamples;
    const Clock ofResults;
    std::atomic<std::int64_t> latestNs{0};
    std::atomic<std::uint64_t> generation{1}; // samples of an older one are forgotten
    std::array<CSlot, SlotCount> ring;
    CSlot completed; // the window without its newest slot, so that it is not added up anew for each image
};

FpsStatistic::FpsStatistic() : m_p(std::make_unique<SPrivate>(steadyNow, tickingNow)) {}

FpsStatistic::FpsStatistic(Clock clock) : m_p(std::make_unique<SPrivate>(clock, clock)) {}

FpsStatistic::~FpsStatistic() = default;

void FpsStatistic::reset()
{
    m_p->generation.fetch_add(1, std::memory_order_acq_rel);
}

void FpsStatistic::addSample(unsigned int bytes)
{
    const std::int64_t now = m_p->observe(m_p->ofSamples);
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
        m_p->complete(index, generation);
    }
    ++sum.samples;
    sum.bytes += bytes;
    sum.lastNs = now;
    slot.store(sum);
}

void FpsStatistic::addNoSample()
{
    m_p->observe(m_p->ofSamples);
}

void FpsStatistic::computeResult(double& fps, unsigned int& bps)
{
    fps = 0.0;
    bps = 0;
    const std::int64_t now = m_p->observe(m_p->ofResults);
    const SSum sum = m_p->window(now);
    const std::int64_t coveredNs = sum.lastNs - sum.firstNs;
    if (sum.samples < 2 || coveredNs <= 0)
    {
        return;
    }
    const double intervals = static_cast<double>(sum.samples - 1);
    double measuredNs = static_cast<double>(coveredNs);
    const double silenceNs = static_cast<double>(now - sum.lastNs);
    if (silenceNs * intervals > measuredNs)
    {
        measuredNs += silenceNs - measuredNs / intervals; // what is beyond the usual interval
    }
    const double perSecond = 1e9 / measuredNs;
    fps = intervals * perSecond;
    // The first sample's bytes arrived before the time that is measured.
    const double rate = static_cast<double>(sum.bytes - sum.firstBytes) * perSecond;
    constexpr auto Most = std::numeric_limits<unsigned int>::max();
    bps = rate >= static_cast<double>(Most) ? Most : static_cast<unsigned int>(std::llround(rate));
}
