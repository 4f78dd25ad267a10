// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/framepump.h"

#include "fakes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;
using Simulator::CCameraModel;
using Simulator::CFramePump;
using SimulatorTest::SRig;

namespace
{

constexpr auto Deadline = 20s;

/** Counts frames; tests wait for a number of them. */
class CCountingSink final : public Simulator::IFrameSink
{
public:
    bool OnFrame(const Simulator::SFrame& frame) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_count;
        m_inOrder = m_inOrder && frame.blockId == m_count;
        m_changed.notify_all();
        return true;
    }
    bool WaitFor(std::uint64_t count)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, Deadline, [&] { return m_count >= count; });
    }
    bool IsInOrder() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_inOrder;
    }
    std::uint64_t Count() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::uint64_t m_count = 0;
    bool m_inOrder = true;
};

struct SPumped
{
    explicit SPumped(int number)
    {
        auto config = SRig::Small();
        config.serialNumber = "P-" + std::to_string(number);
        config.frameRate = 500.0;
        camera = std::make_shared<CCameraModel>(config);
        camera->AddSink(&sink);
    }
    CCountingSink sink;
    std::shared_ptr<CCameraModel> camera;
};

} // namespace

TEST(FramePump, manyCamerasShareFewThreads)
{
    std::vector<std::unique_ptr<SPumped>> cameras;
    CFramePump pump(2);
    for (int i = 0; i < 20; ++i)
    {
        cameras.push_back(std::make_unique<SPumped>(i));
        pump.Attach(cameras.back()->camera);
        cameras.back()->camera->SetFeature("AcquisitionStart", "1");
    }
    for (const auto& each : cameras)
    {
        EXPECT_TRUE(each->sink.WaitFor(20));
        EXPECT_TRUE(each->sink.IsInOrder());
    }
    for (const auto& each : cameras)
    {
        pump.Detach(each->camera);
    }
}

TEST(FramePump, detachedCameraGetsNoFrameAnyMore)
{
    SPumped one(1);
    SPumped other(2);
    CFramePump pump(2);
    pump.Attach(one.camera);
    pump.Attach(other.camera);
    one.camera->SetFeature("AcquisitionStart", "1");
    other.camera->SetFeature("AcquisitionStart", "1");
    ASSERT_TRUE(one.sink.WaitFor(3));
    pump.Detach(one.camera);
    const std::uint64_t count = one.sink.Count();
    ASSERT_TRUE(other.sink.WaitFor(other.sink.Count() + 20)); // time in which frames would have come
    EXPECT_EQ(one.sink.Count(), count);
    pump.Detach(other.camera);
}

TEST(FramePump, triggerWakesTheSleepingPump)
{
    SPumped one(1);
    CFramePump pump(1);
    pump.Attach(one.camera);
    one.camera->SetFeature("TriggerMode", "On");
    one.camera->SetFeature("AcquisitionStart", "1");
    for (std::uint64_t i = 1; i <= 5; ++i)
    {
        one.camera->SetFeature("TriggerSoftware", "1");
        ASSERT_TRUE(one.sink.WaitFor(i));
    }
    pump.Detach(one.camera);
    EXPECT_EQ(one.sink.Count(), 5U);
}

TEST(FramePump, isDestroyedWhileCamerasAcquire)
{
    SPumped one(1);
    {
        CFramePump pump(2);
        pump.Attach(one.camera);
        one.camera->SetFeature("AcquisitionStart", "1");
        ASSERT_TRUE(one.sink.WaitFor(2));
    }
    one.camera->SetFeature("AcquisitionStop", "1"); // wakes nobody
    EXPECT_GE(one.sink.Count(), 2U);
}

TEST(FramePump, registersChangeFromManyThreadsWhileFramesFlow)
{
    SPumped one(1);
    CFramePump pump(2);
    pump.Attach(one.camera);
    one.camera->SetFeature("AcquisitionStart", "1");
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
    {
        threads.emplace_back(
            [&, t]
            {
                for (int i = 0; i < 50; ++i)
                {
                    one.camera->SetFeature("Gain", std::to_string((t + i) % 10));
                    one.camera->GetFeature("FramesGenerated");
                }
            });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_TRUE(one.sink.WaitFor(one.sink.Count() + 5));
    EXPECT_TRUE(one.sink.IsInOrder());
    pump.Detach(one.camera);
}
