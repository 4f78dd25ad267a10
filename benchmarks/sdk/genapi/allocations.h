// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>

namespace Benchmarks
{

/** Calls of operator new in the process so far. */
std::uint64_t AllocationCount();

/** Adds the allocations of one iteration to a benchmark's report when it goes. */
class CAllocationCounter
{
public:
    explicit CAllocationCounter(benchmark::State& state) : m_state(state), m_before(AllocationCount()) {}
    ~CAllocationCounter()
    {
        m_state.counters["allocations"] =
            benchmark::Counter(static_cast<double>(AllocationCount() - m_before), benchmark::Counter::kAvgIterations);
    }
    CAllocationCounter(const CAllocationCounter&) = delete;
    CAllocationCounter& operator=(const CAllocationCounter&) = delete;

private:
    benchmark::State& m_state;
    std::uint64_t m_before;
};

} // namespace Benchmarks
