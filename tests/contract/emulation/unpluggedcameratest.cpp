// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/emulationtransport.h"
#include "velmo/instantcamera.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <tuple>

using namespace Velmo;

namespace
{

/** Counts images and removals, and does at a removal what it was told to do. */
class CWatcher final : public CConfigurationEventHandler, public CImageEventHandler
{
public:
    enum class EAtRemoval
    {
        Nothing,
        Stop,
        Close,
        Destroy
    };
    explicit CWatcher(EAtRemoval atRemoval) : m_atRemoval(atRemoval) {}

    bool WaitForImages(int count)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(20), [&] { return m_images >= count; });
    }
    bool WaitForStop()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(20), [&] { return m_stops > 0; });
    }
    int Stops() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_stops;
    }
    CGrabResultPtr Last() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_last;
    }

    void OnImageGrabbed(CInstantCamera&, const CGrabResultPtr& result) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_images;
        m_last = result;
        m_changed.notify_all();
    }
    void OnGrabStopped(CInstantCamera&) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_stops;
        m_changed.notify_all();
    }
    void OnCameraDeviceRemoved(CInstantCamera& camera) override
    {
        switch (m_atRemoval)
        {
        case EAtRemoval::Nothing:
            return;
        case EAtRemoval::Stop:
            return camera.StopGrabbing();
        case EAtRemoval::Close:
            return camera.Close();
        case EAtRemoval::Destroy:
            return camera.DestroyDevice();
        }
    }

private:
    const EAtRemoval m_atRemoval;
    mutable std::mutex m_mutex; // guards the members below
    std::condition_variable m_changed;
    int m_images = 0;
    int m_stops = 0;
    CGrabResultPtr m_last;
};

Simulator::SCameraConfig MakeCamera(const std::string& serial)
{
    Simulator::SCameraConfig camera;
    camera.serialNumber = serial;
    camera.sensorWidth = 64;
    camera.sensorHeight = 48;
    camera.frameRate = 500.0;
    return camera;
}

class UnpluggedCamera : public ::testing::TestWithParam<std::tuple<CWatcher::EAtRemoval, EGrabStrategy>>
{
protected:
    void Start()
    {
        transport = Emulation::CreateTransport({MakeCamera("E-1")});
        DeviceInfoList list;
        transport->EnumerateDevices(list, Transport::EDiscoveryScope::Usable);
        camera = std::make_unique<CInstantCamera>(transport->CreateDevice(list.at(0)).release());
        camera->RegisterConfiguration(&watcher, RegistrationMode_Append, Cleanup_None);
        camera->RegisterImageEventHandler(&watcher, RegistrationMode_ReplaceAll, Cleanup_None);
        camera->Open();
        camera->StartGrabbing(std::get<1>(GetParam()), GrabLoop_ProvidedByInstantCamera);
        ASSERT_TRUE(watcher.WaitForImages(3));
    }

    CWatcher watcher{std::get<0>(GetParam())};
    std::shared_ptr<Transport::ITransport> transport;
    std::unique_ptr<CInstantCamera> camera;
};

} // namespace

TEST_P(UnpluggedCamera, stopsOnceAndKeepsItsLastImageReadable)
{
    Start();
    ASSERT_TRUE(Emulation::GetControl(transport)->Unplug("E-1"));
    ASSERT_TRUE(watcher.WaitForStop());
    camera.reset();
    transport.reset();
    EXPECT_EQ(1, watcher.Stops());
    const CGrabResultPtr last = watcher.Last();
    ASSERT_TRUE(last.IsValid());
    EXPECT_EQ(64U * 48U, last->GetPayloadSize());
    EXPECT_NE(nullptr, last->GetBuffer());
}

TEST_P(UnpluggedCamera, mayBeDestroyedAtTheMomentItVanishes)
{
    Start();
    std::thread unplugging([this] { EXPECT_TRUE(Emulation::GetControl(transport)->Unplug("E-1")); });
    camera->DestroyDevice();
    unplugging.join();
    EXPECT_FALSE(camera->IsVelmoDeviceAttached());
    camera.reset();
    EXPECT_EQ(1, watcher.Stops());
}

INSTANTIATE_TEST_SUITE_P(Emulation, UnpluggedCamera,
                         ::testing::Combine(::testing::Values(CWatcher::EAtRemoval::Nothing, CWatcher::EAtRemoval::Stop,
                                                              CWatcher::EAtRemoval::Close,
                                                              CWatcher::EAtRemoval::Destroy),
                                            ::testing::Values(GrabStrategy_OneByOne, GrabStrategy_LatestImages,
                                                              GrabStrategy_UpcomingImage)));
