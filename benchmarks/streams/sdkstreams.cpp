// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "sdkstreams.h"

#include "velmo/instantcamera.h"
#include "velmo/tlfactory.h"
#include "velmo/velmo.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace Benchmarks
{

namespace
{

constexpr std::chrono::seconds Patience(60);

/** Counts one camera's images on its grab thread. */
class CCountingHandler final : public Velmo::CImageEventHandler
{
public:
    void OnImageGrabbed(Velmo::CInstantCamera&, const Velmo::CGrabResultPtr& result) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_counter.add(result->GetBlockID(), result->GrabSucceeded());
        m_changed.notify_all();
    }
    bool waitForImages(std::uint64_t count)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, Patience, [&] { return m_counter.images() >= count; });
    }
    CBlockCounter counter() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_counter;
    }

private:
    mutable std::mutex m_mutex; // guards m_counter
    std::condition_variable m_changed;
    CBlockCounter m_counter;
};

struct SStream
{
    CCountingHandler handler; // outlives the camera that calls it
    Velmo::CInstantCamera camera;
};

using Streams = std::vector<std::unique_ptr<SStream>>;

void start(Streams& streams, const Velmo::DeviceInfoList& devices)
{
    constexpr int Buffers = 32; // as many as the plugin's eight mebibytes give for 512x512
    for (const auto& info : devices)
    {
        streams.push_back(std::make_unique<SStream>());
        auto& camera = streams.back()->camera;
        camera.RegisterImageEventHandler(&streams.back()->handler, Velmo::RegistrationMode_ReplaceAll,
                                         Velmo::Cleanup_None);
        camera.Attach(Velmo::CTlFactory::GetInstance().CreateDevice(info), Velmo::Cleanup_Delete);
        camera.Open();
        camera.MaxNumBuffer.SetValue(Buffers);
        camera.MaxNumQueuedBuffer.SetValue(Buffers);
    }
    for (auto& stream : streams)
    {
        stream->camera.StartGrabbing(Velmo::GrabStrategy_OneByOne, Velmo::GrabLoop_ProvidedByInstantCamera);
    }
    for (auto& stream : streams)
    {
        if (!stream->handler.waitForImages(2))
        {
            throw std::runtime_error("A camera does not stream.");
        }
    }
}

std::pair<std::uint64_t, std::uint64_t> imagesAndLosses(const Streams& streams)
{
    std::pair<std::uint64_t, std::uint64_t> sum{0, 0};
    for (const auto& stream : streams)
    {
        const auto counter = stream->handler.counter();
        sum.first += counter.images();
        sum.second += counter.losses();
    }
    return sum;
}

} // namespace

SStreamFigures streamThroughTheSdk(int cameras, int seconds)
{
    Velmo::VelmoInitialize();
    SStreamFigures figures;
    {
        Velmo::DeviceInfoList devices;
        Velmo::CTlFactory::GetInstance().EnumerateDevices(devices);
        if (devices.size() != static_cast<std::size_t>(cameras))
        {
            throw std::runtime_error("Other cameras than described were found.");
        }
        Streams streams;
        start(streams, devices);
        CStreamWindow window;
        const auto before = imagesAndLosses(streams);
        window.begin(before.first, before.second);
        std::mutex mutex;
        std::unique_lock<std::mutex> lock(mutex);
        std::condition_variable never;
        never.wait_for(lock, std::chrono::seconds(seconds), [] { return false; });
        const auto after = imagesAndLosses(streams);
        figures = window.end(after.first, after.second);
        for (auto& stream : streams)
        {
            stream->camera.StopGrabbing();
        }
    }
    Velmo::VelmoTerminate();
    return figures;
}

} // namespace Benchmarks
