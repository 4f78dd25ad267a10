// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"

#include <atomic>
#include <thread>

using namespace Velmo;
using Test::CCameraTest;
using Test::EFault;
using Test::EStep;
using Strings = std::vector<std::string>;

/** Handlers that call back into the camera, and threads that meet in it. */
class Reentrancy : public CCameraTest
{
};

TEST_F(Reentrancy, deviceDestroyedWhileTheStopIsAnnounced)
{
    for (const EGrabStrategy strategy : {GrabStrategy_OneByOne, GrabStrategy_LatestImages})
    {
        Open();
        recorder.At("GrabStop", [](CInstantCamera& c) { c.DestroyDevice(); });
        StartLoop(strategy);
        camera->StopGrabbing();
        EXPECT_FALSE(camera->IsVelmoDeviceAttached());
        EXPECT_FALSE(camera->IsGrabbing());
        EXPECT_EQ(0U, transport->GetLivingDevices());
        camera.reset();
    }
    EXPECT_EQ(2U, recorder.Count("GrabStop"));
    EXPECT_EQ(2U, recorder.Count("GrabStopped"));
    EXPECT_EQ(2U, recorder.Count("Destroyed"));
}

TEST_F(Reentrancy, cameraClosedWhileTheLoopAnnouncesItsStop)
{
    Open();
    recorder.At("GrabStop", [](CInstantCamera& c) { c.Close(); });
    camera->StartGrabbing(1, GrabStrategy_OneByOne, GrabLoop_ProvidedByInstantCamera);
    ASSERT_TRUE(transport->DeliverImage(serial));
    ASSERT_TRUE(recorder.WaitFor("Closed"));
    EXPECT_EQ(1U, recorder.Count("GrabStop"));
    EXPECT_EQ(1U, recorder.Count("GrabStopped"));
    camera->Open();
    EXPECT_TRUE(camera->IsOpen());
}

TEST_F(Reentrancy, stopWhileTheStopIsAnnouncedDoesNothing)
{
    Open();
    recorder.At("GrabStop",
                [](CInstantCamera& c)
                {
                    c.StopGrabbing();
                    EXPECT_TRUE(c.IsGrabbing());
                });
    StartLoop();
    camera->StopGrabbing();
    EXPECT_EQ(1U, recorder.Count("GrabStop"));
    EXPECT_EQ(1U, recorder.Count("GrabStopped"));
}

TEST_F(Reentrancy, refusalAfterAHandlerClosedTheCameraLeavesItUsable)
{
    Open();
    recorder.At("GrabStop",
                [](CInstantCamera& c)
                {
                    c.Close();
                    throw std::runtime_error("too late");
                });
    camera->StartGrabbing();
    EXPECT_THROW(camera->StopGrabbing(), std::runtime_error);
    EXPECT_FALSE(camera->IsOpen());
    camera->Open();
    EXPECT_NO_THROW(camera->StartGrabbing());
}

TEST_F(Reentrancy, closeAndDestroyFromTheirOwnAnnouncementsEnd)
{
    Open();
    recorder.At("Close", [](CInstantCamera& c) { c.Close(); });
    recorder.At("Destroy", [](CInstantCamera& c) { c.DestroyDevice(); });
    recorder.At("Detach", [](CInstantCamera& c) { c.DestroyDevice(); });
    camera->DestroyDevice();
    EXPECT_FALSE(camera->IsVelmoDeviceAttached());
    EXPECT_EQ(0U, transport->GetLivingDevices());
    for (const char* event : {"Close", "Closed", "Destroy", "Destroyed", "Detached"})
    {
        EXPECT_EQ(1U, recorder.Count(event)) << event;
    }
}

TEST_F(Reentrancy, deviceWhoseCloseWaitsForARemovalReportThatClosesDoesNotDeadlock)
{
    Open();
    std::mutex mutex;
    std::condition_variable changed;
    bool inReport = false;
    bool inClose = false;
    bool reported = false;
    const auto waitFor = [&](bool& flag)
    {
        std::unique_lock<std::mutex> lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(10), [&] { return flag; });
    };
    const auto set = [&](bool& flag)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        flag = true;
        changed.notify_all();
    };
    recorder.At("Removed",
                [&](CInstantCamera& c)
                {
                    set(inReport);
                    EXPECT_TRUE(waitFor(inClose));
                    c.Close();
                    set(reported);
                });
    transport->SetHook(EStep::CloseDevice,
                       [&](const std::string&)
                       {
                           set(inClose);
                           EXPECT_TRUE(waitFor(reported));
                       });
    transport->RemoveCamera(serial, 1, false);
    ASSERT_TRUE(waitFor(inReport));
    camera->Close();
    transport->SetHook(EStep::CloseDevice, nullptr);
    EXPECT_EQ(1U, recorder.Count("Closed"));
}

TEST_F(Reentrancy, closeFromTheCommandThatEndsTheAcquisitionIsDoneAfterwards)
{
    Open();
    StartLoop();
    std::atomic<bool> once{true};
    transport->SetHook(EStep::AcquisitionStop,
                       [&](const std::string&)
                       {
                           if (once.exchange(false))
                           {
                               camera->Close();
                               EXPECT_TRUE(camera->IsOpen());
                           }
                       });
    camera->StopGrabbing();
    transport->SetHook(EStep::AcquisitionStop, nullptr);
    EXPECT_FALSE(camera->IsOpen());
    EXPECT_EQ(1U, recorder.Count("GrabStopped"));
    EXPECT_EQ(1U, recorder.Count("Closed"));
}

TEST_F(Reentrancy, stopEndsEveryWaitingRetrieve)
{
    Open();
    const auto begin = std::chrono::steady_clock::now();
    for (int round = 0; round < 50; ++round)
    {
        camera->StartGrabbing();
        std::vector<std::thread> takers;
        for (int i = 0; i < 4; ++i)
        {
            takers.emplace_back(
                [this]
                {
                    CGrabResultPtr result;
                    EXPECT_FALSE(camera->RetrieveResult(60000, result, TimeoutHandling_Return));
                });
        }
        camera->StopGrabbing();
        for (std::thread& taker : takers)
        {
            taker.join();
        }
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(50));
}

TEST_F(Reentrancy, severalWaitingThreadsTakeNoMoreImagesThanWereAskedFor)
{
    Open();
    for (int round = 0; round < 50; ++round)
    {
        transport->ResetCounts();
        camera->StartGrabbing(1);
        std::atomic<int> taken{0};
        std::vector<std::thread> takers;
        for (int i = 0; i < 3; ++i)
        {
            takers.emplace_back(
                [&]
                {
                    CGrabResultPtr result;
                    taken += camera->RetrieveResult(60000, result, TimeoutHandling_Return) ? 1 : 0;
                });
        }
        ASSERT_TRUE(transport->WaitForCount(EStep::RetrieveResult, 3));
        EXPECT_LE(1U, transport->DeliverImages(serial, 3));
        for (std::thread& taker : takers)
        {
            taker.join();
        }
        EXPECT_EQ(1, taken);
        EXPECT_FALSE(camera->IsGrabbing());
    }
}

TEST_F(Reentrancy, removalEndsEveryWaitingRetrieve)
{
    Open();
    camera->MaxNumBuffer.SetValue(1);
    camera->StartGrabbing();
    std::vector<std::thread> takers;
    for (int i = 0; i < 4; ++i)
    {
        takers.emplace_back(
            [this]
            {
                CGrabResultPtr result;
                try
                {
                    EXPECT_FALSE(camera->RetrieveResult(60000, result));
                }
                catch (const GenICam::TimeoutException&)
                {
                    ADD_FAILURE() << "the removal did not end the wait";
                }
                catch (const GenICam::RuntimeException&)
                {
                    EXPECT_TRUE(camera->IsCameraDeviceRemoved());
                }
            });
    }
    ASSERT_TRUE(transport->WaitForCount(EStep::RetrieveResult, 4));
    transport->RemoveCamera(serial);
    for (std::thread& taker : takers)
    {
        taker.join();
    }
    EXPECT_FALSE(camera->IsGrabbing());
}

TEST_F(Reentrancy, handlerThatDeregistersItselfOnTheLoopAndOnTheRemovalThread)
{
    for (int round = 0; round < 20; ++round)
    {
        Open();
        ::Test::CRecorder passing;
        const auto leave = [&](CInstantCamera& c)
        {
            c.DeregisterImageEventHandler(&passing);
            c.DeregisterConfiguration(&passing);
        };
        passing.At("ImageGrabbed", leave);
        passing.At("GrabError", leave);
        camera->RegisterImageEventHandler(&passing, RegistrationMode_Append, Cleanup_None);
        camera->RegisterConfiguration(&passing, RegistrationMode_Append, Cleanup_None);
        StartLoop();
        transport->DeliverImage(serial);
        transport->RemoveCamera(serial, 1, false);
        camera->DestroyDevice();
        camera->DeregisterImageEventHandler(&passing);
        camera->DeregisterConfiguration(&passing);
        EXPECT_EQ(0, passing.DebugGetEventHandlerRegistrationCount());
        camera.reset();
    }
}

TEST_F(Reentrancy, handlersOnTwoThreadsThatDeregisterOneAnotherDoNotDeadlock)
{
    Open();
    ::Test::CRecorder image;
    ::Test::CRecorder configuration;
    camera->RegisterImageEventHandler(&image, RegistrationMode_Append, Cleanup_None);
    camera->RegisterConfiguration(&configuration, RegistrationMode_Append, Cleanup_None);
    image.At("ImageGrabbed",
             [&](CInstantCamera& c)
             {
                 EXPECT_TRUE(configuration.WaitFor("Removed"));
                 EXPECT_TRUE(c.DeregisterConfiguration(&configuration));
             });
    configuration.At("Removed", [&](CInstantCamera& c) { EXPECT_TRUE(c.DeregisterImageEventHandler(&image)); });
    StartLoop();
    ASSERT_TRUE(transport->DeliverImage(serial));
    ASSERT_TRUE(image.WaitFor("ImageGrabbed"));
    transport->RemoveCamera(serial);
    ASSERT_TRUE(recorder.WaitFor("GrabStopped"));
    EXPECT_EQ(0, image.DebugGetEventHandlerRegistrationCount());
    EXPECT_EQ(0, configuration.DebugGetEventHandlerRegistrationCount());
}

TEST_F(Reentrancy, deregisteringWaitsForACallOnAnotherThread)
{
    Open();
    ::Test::CRecorder image;
    camera->RegisterImageEventHandler(&image, RegistrationMode_Append, Cleanup_None);
    std::atomic<bool> isLeaving{false};
    std::atomic<bool> ended{false};
    image.At("ImageGrabbed",
             [&](CInstantCamera&)
             {
                 while (!isLeaving)
                 {
                     std::this_thread::yield();
                 }
                 ended = true;
             });
    StartLoop();
    ASSERT_TRUE(transport->DeliverImage(serial));
    ASSERT_TRUE(image.WaitFor("ImageGrabbed"));
    std::thread releasing([&] { isLeaving = true; });
    EXPECT_TRUE(camera->DeregisterImageEventHandler(&image));
    EXPECT_TRUE(ended);
    releasing.join();
}

TEST_F(Reentrancy, threadsThatOpenGrabCloseAndDestroyAtOnce)
{
    Attach();
    std::atomic<bool> done{false};
    const auto forever = [&](auto act)
    {
        return std::thread(
            [&done, act]
            {
                while (!done)
                {
                    try
                    {
                        act();
                    }
                    catch (const GenICam::GenericException&)
                    {
                        // the state changed meanwhile
                    }
                    std::this_thread::yield(); // or the same two threads would have the camera for long on a busy
                                               // machine
                }
            });
    };
    std::vector<std::thread> threads;
    threads.push_back(forever([this] { camera->Open(); }));
    threads.push_back(forever([this] { StartLoop(GrabStrategy_LatestImages); }));
    threads.push_back(forever([this] { camera->StopGrabbing(); }));
    threads.push_back(forever([this] { camera->Close(); }));
    threads.push_back(forever([this] { transport->DeliverImage(serial); }));
    ASSERT_TRUE(recorder.WaitFor("GrabStopped", 30));
    transport->RemoveCamera(serial);
    camera->DestroyDevice();
    done = true;
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(0U, transport->GetLivingDevices());
    EXPECT_EQ(recorder.Count("GrabStarted"),
              recorder.Count("GrabStopped")); // the removal may refuse one that was to start
}
