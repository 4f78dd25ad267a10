// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/cameramodel.h"
#include "transports/emulation/emulationtransport.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace
{

using Velmo::Transport::EResultStatus;
using Velmo::Transport::SStreamResult;

constexpr unsigned int TimeoutMs = 5000;
constexpr std::size_t BuffersPerCamera = 8;

std::vector<Simulator::SCameraConfig> MakeConfigs(int cameras, std::uint32_t size, double rate)
{
    std::vector<Simulator::SCameraConfig> configs;
    for (int i = 0; i < cameras; ++i)
    {
        Simulator::SCameraConfig config;
        config.serialNumber = "B-" + std::to_string(i);
        config.sensorWidth = size;
        config.sensorHeight = size;
        config.frameRate = rate;
        config.maxBytesPerSecond = 1.0e11;
        configs.push_back(config);
    }
    return configs;
}

/** An open, grabbing camera with its buffers. */
class CGrabbing
{
public:
    CGrabbing(Velmo::Transport::ITransport& transport, const Velmo::CDeviceInfo& info, std::size_t bytes)
        : m_device(transport.CreateDevice(info)), m_stream(*m_device->GetStream(0)), m_memory(BuffersPerCamera)
    {
        m_device->Open(Velmo::EDeviceAccess::Control);
        m_stream.Open();
        for (auto& memory : m_memory)
        {
            memory.resize(bytes);
            m_stream.AnnounceBuffer(memory.data(), memory.size(), &memory);
            m_stream.QueueBuffer(&memory);
        }
        m_stream.Start();
    }
    ~CGrabbing() { m_device->Close(); }
    void Start() { GenApi::CCommandPtr(m_device->GetNodeMap()->GetNode("AcquisitionStart"))->Execute(); }
    /** Takes what there is, waiting up to timeoutMs for the first; returns the number of images. */
    std::uint64_t Drain(unsigned int timeoutMs)
    {
        std::uint64_t images = 0;
        SStreamResult result;
        while (m_stream.RetrieveResult(result, images == 0 ? timeoutMs : 0))
        {
            m_gaps += result.blockId - m_lastBlock - 1;
            m_lastBlock = result.blockId;
            ++images;
            m_stream.QueueBuffer(result.pContext);
        }
        return images;
    }
    std::uint64_t GetGaps() const { return m_gaps; }

private:
    std::unique_ptr<Velmo::IVelmoDevice> m_device;
    Velmo::Transport::IStream& m_stream;
    std::vector<std::vector<std::uint8_t>> m_memory;
    std::uint64_t m_lastBlock = 0;
    std::uint64_t m_gaps = 0;
};

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
    Simulator::CCameraModel camera(MakeConfigs(1, size, 1000.0).front(), nullptr, clock);
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

/** Cameras at a rate for three seconds through transport, device and stream, one consumer thread.
 *  Arguments: cameras, size, rate. "gaps" counts lost images, "skipped" deadlines that the worker missed. */
void BM_Paced(benchmark::State& state)
{
    const int cameras = static_cast<int>(state.range(0));
    const auto size = static_cast<std::uint32_t>(state.range(1));
    const auto rate = static_cast<double>(state.range(2));
    constexpr auto Duration = std::chrono::seconds(3);
    for (auto _ : state)
    {
        const auto transport = Velmo::Emulation::CreateTransport(MakeConfigs(cameras, size, rate));
        Velmo::DeviceInfoList infos;
        transport->EnumerateDevices(infos, Velmo::Transport::EDiscoveryScope::All);
        std::vector<std::unique_ptr<CGrabbing>> grabbing;
        for (const auto& info : infos)
        {
            grabbing.push_back(std::make_unique<CGrabbing>(*transport, info, std::size_t{size} * size));
        }
        for (auto& each : grabbing)
        {
            each->Start();
        }
        std::uint64_t images = 0;
        const auto begin = std::chrono::steady_clock::now();
        while (std::chrono::steady_clock::now() - begin < Duration)
        {
            for (auto& each : grabbing)
            {
                images += each->Drain(cameras == 1 ? TimeoutMs : 0);
            }
            if (cameras > 1)
            {
                std::this_thread::sleep_for(std::chrono::milliseconds(2)); // the pace of the consumer
            }
        }
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        std::uint64_t gaps = 0;
        for (const auto& each : grabbing)
        {
            gaps += each->GetGaps();
        }
        std::uint64_t skipped = 0;
        const auto control = Velmo::Emulation::GetControl(transport);
        for (const auto& info : infos)
        {
            skipped += control->FindCamera(info.GetSerialNumber().str())->GetFramesSkipped();
        }
        state.counters["fps"] = static_cast<double>(images) / seconds;
        state.counters["gaps"] = static_cast<double>(gaps);
        state.counters["skipped"] = static_cast<double>(skipped);
    }
}
BENCHMARK(BM_Paced)
    ->Args({1, 128, 1000})
    ->Args({1, 512, 1000})
    ->Args({1, 2048, 60})
    ->Args({128, 512, 30})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

} // namespace
