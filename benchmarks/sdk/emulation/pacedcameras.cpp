// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "pacedcameras.h"

#include "simulator/cameramodel.h"
#include "transports/emulation/emulationtransport.h"

#include <chrono>
#include <memory>
#include <string>
#include <thread>

namespace Benchmarks
{

namespace
{

using Velmo::Transport::SStreamResult;
using Clock = std::chrono::steady_clock;

constexpr unsigned int TimeoutMs = 5000;

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

struct SPace
{
    int cameras = 0;
    std::uint32_t size = 0; // of each side, pixels
    int rate = 0;           // images/s of each camera
};

struct SResult
{
    double imagesPerSecond = 0;
    std::uint64_t lost = 0;   // that the consumer did not get
    std::uint64_t missed = 0; // that were never made, since their time had passed
};

/** Three seconds; returns the images in each. */
double grab(std::vector<std::unique_ptr<CGrabbing>>& grabbing)
{
    constexpr auto duration = std::chrono::seconds(3);
    constexpr auto paceOfConsumer = std::chrono::milliseconds(2); // of many cameras
    std::uint64_t images = 0;
    const auto begin = Clock::now();
    while (Clock::now() - begin < duration)
    {
        for (auto& each : grabbing)
        {
            images += each->Drain(grabbing.size() == 1 ? TimeoutMs : 0);
        }
        if (grabbing.size() > 1)
        {
            std::this_thread::sleep_for(paceOfConsumer);
        }
    }
    return static_cast<double>(images) / std::chrono::duration<double>(Clock::now() - begin).count();
}

SResult measure(const SPace& pace)
{
    const auto transport = Velmo::Emulation::CreateTransport(makeConfigs(pace.cameras, pace.size, pace.rate));
    Velmo::DeviceInfoList infos;
    transport->EnumerateDevices(infos, Velmo::Transport::EDiscoveryScope::All);
    std::vector<std::unique_ptr<CGrabbing>> grabbing;
    for (const auto& info : infos)
    {
        grabbing.push_back(std::make_unique<CGrabbing>(*transport, info, std::size_t{pace.size} * pace.size));
    }
    for (auto& each : grabbing)
    {
        each->Start();
    }
    SResult result;
    result.imagesPerSecond = grab(grabbing);
    for (const auto& each : grabbing)
    {
        result.lost += each->GetGaps();
    }
    const auto control = Velmo::Emulation::GetControl(transport);
    for (const auto& info : infos)
    {
        result.missed += control->FindCamera(info.GetSerialNumber().str())->GetFramesSkipped();
    }
    return result;
}

} // namespace

std::vector<Simulator::SCameraConfig> makeConfigs(int cameras, std::uint32_t size, double rate)
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

void measurePacedCameras(CFigures& figures)
{
    constexpr double leastShare = 0.98; // three seconds at 60 images/s give one less than 180
    for (const SPace& pace : {SPace{1, 128, 1000}, SPace{1, 512, 1000}, SPace{1, 2048, 60}, SPace{128, 512, 30}})
    {
        const SResult result = measure(pace);
        const std::string size = std::to_string(pace.size);
        const std::string what = std::to_string(pace.cameras) + (pace.cameras == 1 ? " camera of " : " cameras of ") +
                                 size + "x" + size + " at " + std::to_string(pace.rate) + "/s";
        const auto count = [&figures, &what](const char* name, std::uint64_t images)
        {
            figures.add({name + what, static_cast<double>(images), "images", "", 0, CFigures::EGoal::AtMost, 0, false});
        };
        figures.add({"rate, " + what, result.imagesPerSecond, "images/s", "asked for",
                     static_cast<double>(pace.cameras) * pace.rate, CFigures::EGoal::AtLeast, leastShare, true});
        count("images lost, ", result.lost);
        count("images not made in time, ", result.missed);
    }
}

} // namespace Benchmarks
