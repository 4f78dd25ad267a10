// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameramodel.h"

#include <atomic>
#include <vector>

namespace SimulatorTest
{

/** A clock that stands until it is moved. */
class CFakeClock final : public Simulator::IClock
{
public:
    std::int64_t NowNs() const override { return m_nowNs; }
    void Advance(std::int64_t ns) { m_nowNs += ns; }
    void Set(std::int64_t ns) { m_nowNs = ns; }

private:
    std::atomic<std::int64_t> m_nowNs{1'000'000'000};
};

/** Keeps what it gets; hasBuffers false plays a consumer without buffers. */
class CRecordingSink final : public Simulator::IFrameSink
{
public:
    struct SSeen
    {
        Simulator::SFrame frame;
        std::vector<std::uint8_t> bytes; // the whole payload
    };
    bool OnFrame(const Simulator::SFrame& frame) override
    {
        if (!hasBuffers)
        {
            return false;
        }
        seen.push_back({frame, std::vector<std::uint8_t>(frame.data, frame.data + frame.bytes)});
        std::vector<std::uint8_t>& bytes = seen.back().bytes;
        bytes.insert(bytes.end(), frame.tail, frame.tail + frame.tailBytes);
        return true;
    }
    bool hasBuffers = true;
    std::vector<SSeen> seen;
};

/** A small camera under a fake clock, driven by hand. */
struct SRig
{
    explicit SRig(Simulator::SCameraConfig config = Small()) : camera(config, nullptr, clock) { camera.AddSink(&sink); }
    SRig(const Simulator::SCameraConfig& config, std::shared_ptr<Simulator::SFlash> flash)
        : camera(config, std::move(flash), clock)
    {
        camera.AddSink(&sink);
    }

    static Simulator::SCameraConfig Small()
    {
        Simulator::SCameraConfig config;
        config.serialNumber = "T-1";
        config.sensorWidth = 64;
        config.sensorHeight = 48;
        config.pixelFormats = {"Mono8", "Mono10", "Mono12", "Mono16", "BayerRG8", "BayerRG12", "RGB8"};
        config.frameRate = 100.0;
        return config;
    }
    void Start() { camera.SetFeature("AcquisitionStart", "1"); }
    void Stop() { camera.SetFeature("AcquisitionStop", "1"); }
    /** Moves the clock from deadline to deadline, up to that many frames' worth of calls. */
    void RunFrames(int calls)
    {
        for (int i = 0; i < calls; ++i)
        {
            const std::int64_t next = camera.Produce(); // not due yet: tells when
            if (next == INT64_MAX)
            {
                return;
            }
            clock.Set(std::max(next, clock.NowNs()));
            camera.Produce();
        }
    }

    CFakeClock clock;
    CRecordingSink sink; // before the camera that calls it
    Simulator::CCameraModel camera;
};

} // namespace SimulatorTest
