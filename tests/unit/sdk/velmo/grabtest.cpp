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

// Huge requests answer null instead of ending the program.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options()
{
    return "allocator_may_return_null=1";
}
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options()
{
    return "allocator_may_return_null=1";
}

class Grab : public CCameraTest
{
protected:
    bool Deliver(const ::Test::SScriptedImage& image = {}) { return transport->DeliverImage(serial, image); }
};

TEST_F(Grab, stepsOfStartAndStopComeInOrder)
{
    Open();
    std::vector<EStep> order;
    for (const EStep step : {EStep::GetPayloadBytes, EStep::StartStream, EStep::AcquisitionStart,
                             EStep::AcquisitionStop, EStep::StopStream})
    {
        transport->SetHook(step, [&order, step](const std::string&) { order.push_back(step); });
    }
    camera->StartGrabbing();
    EXPECT_EQ(10U, transport->GetAnnouncedCount(serial));
    EXPECT_EQ(1, transport->GetRegister(serial, "TLParamsLocked"));
    EXPECT_TRUE(camera->IsGrabbing());
    EXPECT_THROW(camera->StartGrabbing(), GenICam::LogicalErrorException);
    camera->StopGrabbing();
    EXPECT_EQ(0, transport->GetRegister(serial, "TLParamsLocked"));
    EXPECT_EQ(0U, transport->GetAnnouncedCount(serial));
    EXPECT_EQ((std::vector<EStep>{EStep::GetPayloadBytes, EStep::StartStream, EStep::AcquisitionStart,
                                  EStep::AcquisitionStop, EStep::StopStream}),
              order);
}

TEST_F(Grab, imagesArriveOnTheLoopThreadNumberedFromOneInEachGrab)
{
    Open();
    for (int round = 0; round < 2; ++round)
    {
        recorder.imageNumbers.clear();
        StartLoop();
        ASSERT_EQ(3U, transport->DeliverImages(serial, 3));
        ASSERT_TRUE(recorder.WaitFor("ImageGrabbed", 3U * (round + 1)));
        camera->StopGrabbing();
        EXPECT_EQ((std::vector<std::int64_t>{1, 2, 3}), recorder.imageNumbers);
    }
}

TEST_F(Grab, resultIsAViewOfTheStreamsBufferWithItsData)
{
    Open();
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.data = {1, 2, 3, 4};
    image.timestamp = 77;
    image.blockId = 5;
    ASSERT_TRUE(Deliver(image));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_TRUE(result->GrabSucceeded());
    EXPECT_EQ(4U, result->GetPayloadSize());
    EXPECT_EQ(3, static_cast<const std::uint8_t*>(result->GetBuffer())[2]);
    EXPECT_EQ(77U, result->GetTimeStamp());
    EXPECT_EQ(5U, result->GetBlockID());
    EXPECT_EQ(64U, result->GetWidth());
    EXPECT_EQ("", result->GetErrorDescription());
}

TEST_F(Grab, theImageOfAChunkPayloadEndsWhereItsGeometrySays)
{
    Open();
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.payloadType = EPayloadType::ChunkData;
    image.payloadBytes = 64 * 48;
    image.pixelType = 0x010C0006; // PFNC, Mono10Packed: 12 bits
    ASSERT_TRUE(Deliver(image));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(64U * 48U, result->GetImageSize()); // as much as there is of 64 x 48 x 1.5
    image.pixelType = 0x01080001;
    image.payloadBytes = 64 * 48 - 1;
    ASSERT_TRUE(Deliver(image));
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(64U * 48U - 1, result->GetImageSize());
}

TEST_F(Grab, anImageOfAnAbsurdGeometryIsTheWholePayload)
{
    ::Test::SScriptedCamera config;
    config.width = 0x80000000;
    config.height = 0x80000000; // with 16 bits for a pixel the product is 2^66
    Open(config);
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.pixelType = 0x01100007; // PFNC, Mono16
    ASSERT_TRUE(Deliver(image));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    ASSERT_EQ(0x80000000U, result->GetWidth());
    EXPECT_EQ(result->GetPayloadSize(), result->GetImageSize());
}

TEST_F(Grab, trailersAreNoPartOfTheImage)
{
    ::Test::SScriptedCamera config;
    config.payloadBytes = 64 * 48 + 24;
    Open(config);
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.payloadType = EPayloadType::ChunkData;
    ASSERT_TRUE(Deliver(image));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(64U * 48U + 24U, result->GetPayloadSize());
    EXPECT_EQ(64U * 48U, result->GetImageSize());
}

TEST_F(Grab, payloadsThatAreNoImageHaveNoImageSize)
{
    Open();
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.payloadType = EPayloadType::File;
    ASSERT_TRUE(Deliver(image));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(0U, result->GetImageSize());
}

TEST_F(Grab, failedImageIsAResultThatTellsWhy)
{
    Open();
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.status = Transport::EResultStatus::Failed;
    image.errorCode = 12;
    image.errorDescription = "packets lost";
    ASSERT_TRUE(Deliver(image));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_FALSE(result->GrabSucceeded());
    EXPECT_EQ(12U, result->GetErrorCode());
    EXPECT_EQ("packets lost", result->GetErrorDescription());
}

TEST_F(Grab, resultsOutliveStopAndDestructionOfTheCamera)
{
    Open();
    camera->StartGrabbing();
    ::Test::SScriptedImage image;
    image.data = {42};
    ASSERT_TRUE(Deliver(image));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    camera.reset();
    EXPECT_EQ(42, *static_cast<const std::uint8_t*>(result->GetBuffer()));
    std::thread([moved = std::move(result)]() mutable { moved.Release(); }).join();
}

TEST_F(Grab, bufferGoesBackWhenTheLastReferenceGoesOnAnyThread)
{
    Open();
    camera->MaxNumBuffer.SetValue(1);
    camera->StartGrabbing();
    ASSERT_TRUE(Deliver());
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    CGrabResultPtr copy = result;
    result.Release();
    EXPECT_FALSE(Deliver());
    std::thread([&copy] { copy.Release(); }).join();
    EXPECT_TRUE(Deliver());
    EXPECT_THROW(copy->GetWidth(), GenICam::LogicalErrorException);
}

TEST_F(Grab, numbersOfBuffersAreHonoured)
{
    Open();
    camera->MaxNumBuffer.SetValue(7);
    camera->MaxNumQueuedBuffer.SetValue(3);
    camera->StartGrabbing();
    EXPECT_EQ(7U, transport->GetAnnouncedCount(serial));
    EXPECT_EQ(3U, transport->GetQueuedCount(serial));
    ASSERT_TRUE(Deliver());
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(3U, transport->GetQueuedCount(serial));
}

TEST_F(Grab, missingMemoryIsBadAllocAndEverythingIsUndone)
{
    ::Test::SScriptedCamera config;
    for (const std::uint64_t bytes : {std::uint64_t(1) << 45, std::uint64_t(1) << 62})
    {
        config.streamPayloadBytes = bytes;
        Open(config);
        EXPECT_THROW(camera->StartGrabbing(), GenICam::BadAllocException);
        EXPECT_FALSE(camera->IsGrabbing());
        EXPECT_EQ(0U, transport->GetAnnouncedCount(serial));
        camera.reset();
    }
}

TEST_F(Grab, failureAtAnyStepOfTheStartIsUndone)
{
    Open();
    for (const EStep step : {EStep::GetPayloadBytes, EStep::AnnounceBuffer, EStep::QueueBuffer, EStep::StartStream,
                             EStep::AcquisitionStart})
    {
        transport->SetFault(step, EFault::Runtime);
        EXPECT_THROW(camera->StartGrabbing(), GenICam::RuntimeException);
        EXPECT_FALSE(camera->IsGrabbing());
        EXPECT_EQ(0U, transport->GetAnnouncedCount(serial));
        EXPECT_EQ(0, transport->GetRegister(serial, "TLParamsLocked"));
        transport->SetFault(step, EFault::None);
        EXPECT_NO_THROW(camera->StartGrabbing());
        camera->StopGrabbing();
    }
}

TEST_F(Grab, failureAtAnyStepOfTheStopStillStops)
{
    Open();
    for (const EStep step : {EStep::AcquisitionStop, EStep::StopStream, EStep::RevokeBuffer})
    {
        StartLoop();
        transport->SetFault(step, EFault::Unknown);
        EXPECT_NO_THROW(camera->StopGrabbing());
        EXPECT_FALSE(camera->IsGrabbing());
        transport->SetFault(step, EFault::None);
        camera->Close();
        Open();
    }
}

TEST_F(Grab, timeoutOfRetrieveThrowsOrReturns)
{
    Open();
    camera->StartGrabbing();
    CGrabResultPtr result;
    EXPECT_THROW(camera->RetrieveResult(1, result), GenICam::TimeoutException);
    EXPECT_FALSE(camera->RetrieveResult(0, result, TimeoutHandling_Return));
    EXPECT_TRUE(camera->IsGrabbing());
}

TEST_F(Grab, timeoutOfTheLoopEndsTheGrabWithAnError)
{
    Open();
    camera->GrabLoopThreadUseTimeout.SetValue(true);
    camera->GrabLoopThreadTimeout.SetValue(20);
    StartLoop();
    ASSERT_TRUE(recorder.WaitFor("GrabStopped"));
    EXPECT_NE(std::string::npos, recorder.LastError().find("timed out"));
    EXPECT_EQ(1U, recorder.Count("GrabError"));
}

TEST_F(Grab, grabOfSomeImagesStopsByItself)
{
    Open();
    camera->StartGrabbing(2, GrabStrategy_OneByOne, GrabLoop_ProvidedByInstantCamera);
    EXPECT_LE(2U, transport->DeliverImages(serial, 5)); // those after the second may find the stream stopped
    ASSERT_TRUE(recorder.WaitFor("GrabStopped"));
    EXPECT_EQ(2U, recorder.Count("ImageGrabbed"));
    EXPECT_EQ(0U, recorder.Count("GrabError"));
    EXPECT_FALSE(camera->IsGrabbing());
}

TEST_F(Grab, handlerMayStopCloseAndDestroyFromTheLoopThread)
{
    Open();
    recorder.At("ImageGrabbed",
                [](CInstantCamera& c)
                {
                    c.StopGrabbing();
                    c.Close();
                    c.DestroyDevice();
                });
    StartLoop();
    ASSERT_TRUE(Deliver());
    ASSERT_TRUE(recorder.WaitFor("Destroyed"));
    EXPECT_EQ(1U, recorder.Count("GrabStopped"));
}

TEST_F(Grab, stopFromTheHandlerAndFromOutsideAtOnceDoNotDeadlock)
{
    Open();
    recorder.At("ImageGrabbed", [](CInstantCamera& c) { c.StopGrabbing(); });
    for (std::size_t round = 1; round <= 50; ++round)
    {
        StartLoop();
        Deliver();
        camera->StopGrabbing();
        EXPECT_EQ(round, recorder.Count("GrabStopped"));
    }
}

TEST_F(Grab, handlerMayStartTheNextGrab)
{
    Open();
    // Shared with the handler, whose last call may come after this function's end.
    const auto restarts = std::make_shared<std::atomic<int>>(0);
    recorder.At("GrabStopped",
                [restarts](CInstantCamera& c)
                {
                    if ((*restarts)++ == 0)
                    {
                        c.StartGrabbing(1, GrabStrategy_OneByOne, GrabLoop_ProvidedByInstantCamera);
                    }
                });
    camera->StartGrabbing(1, GrabStrategy_OneByOne, GrabLoop_ProvidedByInstantCamera);
    ASSERT_TRUE(Deliver());
    ASSERT_TRUE(recorder.WaitFor("GrabStarted", 2));
    ASSERT_TRUE(transport->WaitForQueued(serial, 1));
    ASSERT_TRUE(Deliver());
    ASSERT_TRUE(recorder.WaitFor("GrabStopped", 2));
}

TEST_F(Grab, exceptionInAHandlerIsReportedAndStopsOnlyThatCall)
{
    Open();
    ::Test::CRecorder second;
    camera->RegisterImageEventHandler(&second, RegistrationMode_Append, Cleanup_None);
    recorder.At("ImageGrabbed", [](CInstantCamera&) { throw std::runtime_error("handler broke"); });
    StartLoop();
    ASSERT_EQ(2U, transport->DeliverImages(serial, 2));
    ASSERT_TRUE(second.WaitFor("ImageGrabbed", 2));
    ASSERT_TRUE(recorder.WaitFor("GrabError", 2));
    EXPECT_EQ("handler broke", recorder.LastError());
    EXPECT_TRUE(camera->IsGrabbing());
    camera->DeregisterImageEventHandler(&second);
}

TEST_F(Grab, failureOfTheStreamEndsTheGrabWithAnError)
{
    Open();
    transport->SetFault(EStep::RetrieveResult, EFault::Standard, "socket broke", "", 1);
    StartLoop();
    ASSERT_TRUE(recorder.WaitFor("GrabStopped"));
    EXPECT_EQ("socket broke", recorder.LastError());
}

TEST_F(Grab, removalEndsTheGrabWithOneErrorAndNoImage)
{
    Open();
    StartLoop();
    transport->RemoveCamera(serial);
    ASSERT_TRUE(recorder.WaitFor("GrabStopped"));
    EXPECT_EQ(1U, recorder.Count("GrabError"));
    EXPECT_EQ(1U, recorder.Count("Removed"));
    EXPECT_EQ(0U, recorder.Count("ImageGrabbed") + recorder.Count("ImageFailed"));
    EXPECT_FALSE(camera->IsGrabbing());
}

TEST_F(Grab, removalEndsRetrieveWithAnExceptionAfterWhatHasArrived)
{
    Open();
    camera->StartGrabbing();
    ASSERT_TRUE(Deliver());
    transport->RemoveCamera(serial);
    CGrabResultPtr result;
    EXPECT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_THROW(camera->RetrieveResult(5000, result), GenICam::RuntimeException);
    EXPECT_FALSE(camera->IsGrabbing());
}

TEST_F(Grab, stopEndsAWaitingRetrieve)
{
    Open();
    camera->StartGrabbing();
    std::thread waiting(
        [this]
        {
            CGrabResultPtr result;
            EXPECT_FALSE(camera->RetrieveResult(60000, result));
        });
    ASSERT_TRUE(transport->WaitForCount(EStep::RetrieveResult, 1));
    camera->StopGrabbing();
    waiting.join();
}

TEST_F(Grab, latestImageOnlyKeepsTheNewestAndCountsTheRest)
{
    Open();
    camera->StartGrabbing(GrabStrategy_LatestImageOnly);
    ASSERT_EQ(4U, transport->DeliverImages(serial, 4));
    ASSERT_TRUE(transport->WaitForCount(EStep::RetrieveResult, 5));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(4U, result->GetBlockID());
    EXPECT_EQ(1, result->GetImageNumber());
    EXPECT_EQ(3, result->GetNumberOfSkippedImages());
    EXPECT_EQ(1U, recorder.Count("ImagesSkipped"));
}

TEST_F(Grab, latestImagesKeepsTheOutputQueue)
{
    Open();
    camera->OutputQueueSize.SetValue(2);
    camera->StartGrabbing(GrabStrategy_LatestImages);
    ASSERT_EQ(5U, transport->DeliverImages(serial, 5));
    ASSERT_TRUE(transport->WaitForCount(EStep::RetrieveResult, 6));
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(4U, result->GetBlockID());
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    EXPECT_EQ(5U, result->GetBlockID());
    EXPECT_FALSE(camera->RetrieveResult(0, result, TimeoutHandling_Return));
}

TEST_F(Grab, upcomingImageIsOneThatCameAfterItWasAskedFor)
{
    Open();
    camera->StartGrabbing(GrabStrategy_UpcomingImage);
    ASSERT_EQ(2U, transport->DeliverImages(serial, 2));
    ASSERT_TRUE(transport->WaitForCount(EStep::RetrieveResult, 3));
    CGrabResultPtr result;
    EXPECT_FALSE(camera->RetrieveResult(0, result, TimeoutHandling_Return));
    std::atomic<bool> got{false};
    std::thread asking([&] { got = camera->RetrieveResult(10000, result); });
    while (!got)
    {
        Deliver();
        std::this_thread::yield();
    }
    asking.join();
    EXPECT_GT(result->GetBlockID(), 2U);
    EXPECT_GE(result->GetNumberOfSkippedImages(), 2);
}

TEST_F(Grab, handlersMayComeAndGoDuringAGrab)
{
    Open();
    StartLoop();
    std::atomic<bool> done{false};
    std::thread images(
        [&]
        {
            while (!done)
            {
                Deliver();
                std::this_thread::yield();
            }
        });
    for (int round = 0; round < 200; ++round)
    {
        ::Test::CRecorder passing;
        camera->RegisterImageEventHandler(&passing, RegistrationMode_Append, Cleanup_None);
        EXPECT_TRUE(camera->DeregisterImageEventHandler(&passing));
    }
    done = true;
    images.join();
    camera->StopGrabbing();
}

TEST_F(Grab, realTimePriorityThatIsRefusedDoesNotEndTheGrab)
{
    Open();
    camera->InternalGrabEngineThreadPriorityOverride.SetValue(true);
    camera->InternalGrabEngineThreadPriority.SetValue(50);
    StartLoop();
    ASSERT_TRUE(Deliver());
    EXPECT_TRUE(recorder.WaitFor("ImageGrabbed"));
}

TEST_F(Grab, statisticsAreNodes)
{
    Open();
    camera->StartGrabbing();
    ASSERT_TRUE(Deliver());
    CGrabResultPtr result;
    ASSERT_TRUE(camera->RetrieveResult(5000, result));
    const GenApi::CIntegerPtr total(camera->GetInstantCameraNodeMap().GetNode("Statistic_Total_Image_Count"));
    EXPECT_EQ(1, total->GetValue());
    EXPECT_FALSE(GenApi::IsWritable(total.Get()));
}
