// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "pacedcameras.h"

#include "simulator/cameramodel.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

namespace
{

using Benchmarks::BuffersPerCamera;

/** The bound: what copying that many bytes costs. */
void BM_Memcpy(benchmark::State& state)
{
    const auto size = static_cast<std::size_t>(state.range(0));
    // As many lines of source as the moving scene has.
    const std::vector<std::uint8_t> source(size * size + size * 256, 1);
    std::vector<std::vector<std::uint8_t>> targets(BuffersPerCamera, std::vector<std::uint8_t>(size * size));
    std::size_t i = 0;
    for (auto _ : state)
    {
        std::memcpy(targets[i % BuffersPerCamera].data(), source.data() + i % 256 * size, size * size);
        benchmark::ClobberMemory();
        ++i;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size * size));
}
BENCHMARK(BM_Memcpy)->Arg(128)->Arg(512)->Arg(2048);

/** A frame from the camera to a consumer on the same thread: everything but waiting. */
void BM_Produce(benchmark::State& state)
{
    class CSteppingClock final : public Simulator::IClock
    {
    public:
        std::int64_t NowNs() const override { return now; }
        std::int64_t now = 0;
    };
    class CCopySink final : public Simulator::IFrameSink
    {
    public:
        explicit CCopySink(std::size_t bytes) : m_targets(BuffersPerCamera, std::vector<std::uint8_t>(bytes)) {}
        bool OnFrame(const Simulator::SFrame& frame) override
        {
            std::memcpy(m_targets[frame.blockId % BuffersPerCamera].data(), frame.data, frame.bytes);
            return true;
        }

    private:
        std::vector<std::vector<std::uint8_t>> m_targets;
    };
    const auto size = static_cast<std::uint32_t>(state.range(0));
    CSteppingClock clock;
    CCopySink sink(std::size_t{size} * size);
    Simulator::CCameraModel camera(Benchmarks::makeConfigs(1, size, 1000.0).front(), nullptr, clock);
    camera.AddSink(&sink);
    camera.SetFeature("AcquisitionStart", "1");
    for (auto _ : state)
    {
        clock.now += 1'000'000;
        camera.Produce();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size * size));
}
BENCHMARK(BM_Produce)->Arg(128)->Arg(512)->Arg(2048);

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    Benchmarks::CFigures figures("Emulated cameras, the transport alone, three seconds each");
    Benchmarks::measurePacedCameras(figures);
    return 0;
}
