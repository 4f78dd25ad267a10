// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"

#include <cstdio>
#include <cstdlib>
#include <thread>

using namespace Velmo;
using Test::CCameraTest;
using Test::CRecorder;
using Test::EStep;

namespace
{

/** Ends the program when the scope is not left in time: threads that wait in a circle cannot be ended otherwise. */
class CDeadline
{
public:
    explicit CDeadline(const char* what)
        : m_thread(
              [this, what]
              {
                  std::unique_lock<std::mutex> lock(m_mutex);
                  if (!m_changed.wait_for(lock, std::chrono::seconds(30), [this] { return m_left; }))
                  {
                      std::fprintf(stderr, "deadlock: %s\n", what);
                      std::_Exit(EXIT_FAILURE);
                  }
              })
    {
    }
    ~CDeadline()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_left = true;
            m_changed.notify_all();
        }
        m_thread.join();
    }
    CDeadline(const CDeadline&) = delete;
    CDeadline& operator=(const CDeadline&) = delete;

private:
    std::mutex m_mutex; // guards m_left
    std::condition_variable m_changed;
    bool m_left = false;
    std::thread m_thread; // last: it uses the others
};

/** Something that happened, and that other threads wait for. */
class CEvent
{
public:
    void Set()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_set = true;
        m_changed.notify_all();
    }
    bool Wait()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(10), [this] { return m_set; });
    }

private:
    std::mutex m_mutex; // guards m_set
    std::condition_variable m_changed;
    bool m_set = false;
};

/** An image handler on the grab loop thread, and a removal report on a thread of the transport that takes it away. */
class DeregistrationCircle : public CCameraTest
{
protected:
    /** The camera grabs; the image handler is about to act, the removal about to be reported. */
    void Begin()
    {
        Open();
        camera->RegisterImageEventHandler(&image, RegistrationMode_Append, Cleanup_None);
        StartLoop();
        ASSERT_TRUE(transport->DeliverImage(serial));
        ASSERT_TRUE(image.WaitFor("ImageGrabbed"));
        transport->RemoveCamera(serial, 1, false);
    }

    CRecorder image;
    CEvent inReport;
    CEvent inClose;
    CEvent reported;
};

TEST_F(DeregistrationCircle, imageHandlerThatDestroysTheDeviceWhileTheRemovalDeregistersIt)
{
    const CDeadline deadline("destroying on the loop, deregistering on the removal's thread");
    image.At("ImageGrabbed",
             [&](CInstantCamera& c)
             {
                 EXPECT_TRUE(inReport.Wait());
                 c.DestroyDevice();
             });
    recorder.At("Removed",
                [&](CInstantCamera& c)
                {
                    inReport.Set();
                    EXPECT_TRUE(c.DeregisterImageEventHandler(&image));
                });
    Begin();
    ASSERT_TRUE(recorder.WaitFor("Destroyed"));
    EXPECT_FALSE(camera->IsVelmoDeviceAttached());
    EXPECT_EQ(0, image.DebugGetEventHandlerRegistrationCount());
    camera.reset();
    EXPECT_EQ(0U, transport->GetLivingDevices());
}

TEST_F(DeregistrationCircle, removalThatDeregistersAHandlerWhichIsDestroyingTheDeviceAlready)
{
    const CDeadline deadline("deregistering a handler that is destroying the device");
    image.At("ImageGrabbed",
             [&](CInstantCamera& c)
             {
                 EXPECT_TRUE(inReport.Wait());
                 c.DestroyDevice();
             });
    recorder.At("Removed",
                [&](CInstantCamera& c)
                {
                    inReport.Set();
                    EXPECT_TRUE(inClose.Wait());
                    EXPECT_TRUE(c.DeregisterImageEventHandler(&image));
                    reported.Set();
                });
    // The device's closing ends only with the report, as a transport is free to do.
    transport->SetHook(EStep::CloseDevice,
                       [&](const std::string&)
                       {
                           inClose.Set();
                           EXPECT_TRUE(reported.Wait());
                       });
    Begin();
    ASSERT_TRUE(recorder.WaitFor("Destroyed"));
    camera.reset();
    transport->SetHook(EStep::CloseDevice, nullptr);
    EXPECT_EQ(0, image.DebugGetEventHandlerRegistrationCount());
    EXPECT_EQ(0U, transport->GetLivingDevices());
}

TEST_F(DeregistrationCircle, threeThreadsOfWhichOneOnlyWaitsForTheCamera)
{
    const CDeadline deadline("owner, removal report and a handler that wants the camera");
    image.At("ImageGrabbed",
             [&](CInstantCamera& c)
             {
                 EXPECT_TRUE(inReport.Wait());
                 c.Close();
                 inClose.Set();
                 EXPECT_TRUE(recorder.WaitFor("Detach")); // another thread owns the camera and awaits the report
                 c.DestroyDevice();
             });
    recorder.At("Removed",
                [&](CInstantCamera& c)
                {
                    inReport.Set();
                    EXPECT_TRUE(inClose.Wait());
                    EXPECT_TRUE(c.DeregisterImageEventHandler(&image));
                });
    Begin();
    ASSERT_TRUE(inClose.Wait());
    camera->DestroyDevice();
    camera.reset();
    EXPECT_EQ(0U, transport->GetLivingDevices());
    EXPECT_EQ(1U, recorder.Count("Destroyed"));
}

TEST_F(DeregistrationCircle, stopThatAwaitsAHandlerWhichDeregistersOneThatStops)
{
    const CDeadline deadline("stopping thread, grab loop and removal report");
    CRecorder stopper;
    image.At("ImageGrabbed",
             [&](CInstantCamera& c)
             {
                 EXPECT_TRUE(recorder.WaitFor("GrabStop")); // another thread owns the camera
                 EXPECT_TRUE(c.DeregisterConfiguration(&stopper));
             });
    stopper.At("Removed",
               [&](CInstantCamera& c)
               {
                   inReport.Set();
                   EXPECT_TRUE(recorder.WaitFor("GrabStop"));
                   c.StopGrabbing();
               });
    Open();
    camera->RegisterConfiguration(&stopper, RegistrationMode_Append, Cleanup_None);
    camera->RegisterImageEventHandler(&image, RegistrationMode_Append, Cleanup_None);
    StartLoop();
    ASSERT_TRUE(transport->DeliverImage(serial));
    ASSERT_TRUE(image.WaitFor("ImageGrabbed"));
    transport->RemoveCamera(serial, 1, false);
    ASSERT_TRUE(inReport.Wait());
    camera->StopGrabbing();
    camera.reset();
    EXPECT_EQ(1U, recorder.Count("GrabStopped"));
    EXPECT_EQ(0, stopper.DebugGetEventHandlerRegistrationCount());
}

} // namespace
