// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "allocations.h"
#include "bareport.h"
#include "description.h"
#include "ratiotable.h"

#include "genapi/inodemap.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

namespace
{

using Benchmarks::CBarePort;

struct SMap
{
    SMap()
    {
        const std::string text = Benchmarks::SmallDescription();
        map = GenApi::CNodeMapFactory::FromData(text.data(), text.size()).CreateNodeMap();
        map->Connect(&port);
    }
    GenApi::CIntegerPtr Integer(const char* name) const { return map->GetNode(name); }
    GenApi::CFloatPtr Float(const char* name) const { return map->GetNode(name); }

    CBarePort port;
    std::unique_ptr<GenApi::INodeMap> map;
};

void VirtualCall(benchmark::State& state)
{
    CBarePort port;
    GenApi::IPort* bare = &port;
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(bare);
        benchmark::DoNotOptimize(bare->GetAccessMode());
    }
}
BENCHMARK(VirtualCall);

void LockAndUnlock(benchmark::State& state)
{
    std::recursive_mutex lock;
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        const std::lock_guard<std::recursive_mutex> guard(lock);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(LockAndUnlock);

void PortRead(benchmark::State& state)
{
    CBarePort port;
    GenApi::IPort* bare = &port;
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(bare);
        std::uint32_t value = 0;
        bare->Read(&value, 16, 4);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(PortRead);

void PortWrite(benchmark::State& state)
{
    CBarePort port;
    GenApi::IPort* bare = &port;
    std::uint32_t value = 0;
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(bare);
        ++value;
        bare->Write(&value, 16, 4);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PortWrite);

void Get(benchmark::State& state, const char* name)
{
    const SMap map;
    GenApi::IInteger& node = *map.Integer(name);
    node.GetValue();
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(node.GetValue());
    }
}
BENCHMARK_CAPTURE(Get, cached, "Cached");
BENCHMARK_CAPTURE(Get, throughThePort, "Uncached");
BENCHMARK_CAPTURE(Get, cachedBehindAnInteger, "Feature");
BENCHMARK_CAPTURE(Get, formulaOfCachedValues, "Formula");

void GetFloat(benchmark::State& state)
{
    const SMap map;
    GenApi::IFloat& node = *map.Float("Converter");
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(node.GetValue());
    }
}
BENCHMARK(GetFloat);

void Set(benchmark::State& state, const char* name)
{
    const SMap map;
    GenApi::IInteger& node = *map.Integer(name);
    std::int64_t value = 0;
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        value = (value + 1) & 0xFF;
        node.SetValue(value);
    }
}
BENCHMARK_CAPTURE(Set, cached, "Cached");
BENCHMARK_CAPTURE(Set, throughThePort, "Uncached");
BENCHMARK_CAPTURE(Set, cachedBehindAnInteger, "Feature");

void LoadDescription(benchmark::State& state)
{
    const auto nodes = static_cast<std::size_t>(state.range(0));
    const std::string text = Benchmarks::LargeDescription(nodes);
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        GenApi::CNodeMapFactory::ClearCache();
        const auto map = GenApi::CNodeMapFactory::FromData(text.data(), text.size()).CreateNodeMap();
        if (map->GetNumNodes() < nodes)
        {
            state.SkipWithError("nodes are missing");
        }
    }
    state.counters["perNode"] = benchmark::Counter(
        static_cast<double>(nodes), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(LoadDescription)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void InstantiateCached(benchmark::State& state)
{
    const auto nodes = static_cast<std::size_t>(state.range(0));
    const std::string text = Benchmarks::LargeDescription(nodes);
    const GenApi::CNodeMapFactory factory = GenApi::CNodeMapFactory::FromData(text.data(), text.size());
    const Benchmarks::CAllocationCounter counter(state);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(factory.CreateNodeMap());
    }
}
BENCHMARK(InstantiateCached)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
    {
        return 2;
    }
    Benchmarks::CRatioTable table({{"LockAndUnlock", "VirtualCall", 1.0},
                                   {"Get/cached", "VirtualCall", 1.0},
                                   {"Get/cached", "LockAndUnlock", 1.0},
                                   {"Get/throughThePort", "PortRead", 1.0},
                                   {"Get/cachedBehindAnInteger", "VirtualCall", 1.0},
                                   {"Get/formulaOfCachedValues", "VirtualCall", 1.0},
                                   {"GetFloat", "VirtualCall", 1.0},
                                   {"Set/cached", "PortWrite", 1.0},
                                   {"Set/throughThePort", "PortWrite", 1.0},
                                   {"Set/cachedBehindAnInteger", "PortWrite", 1.0},
                                   {"LoadDescription/10000", "LoadDescription/1000", 10.0},
                                   {"InstantiateCached/10000", "InstantiateCached/1000", 10.0}});
    benchmark::RunSpecifiedBenchmarks(&table);
    table.Print();
    benchmark::Shutdown();
    return 0;
}
