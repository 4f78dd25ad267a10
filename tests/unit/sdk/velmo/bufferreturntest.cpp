// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"

using namespace Velmo;
using Test::CCameraTest;
using Test::EFault;
using Test::EStep;

class BufferReturn : public CCameraTest
{
protected:
    CGrabResultPtr Grab()
    {
        EXPECT_TRUE(transport->DeliverImage(serial));
        CGrabResultPtr result;
        EXPECT_TRUE(camera->RetrieveResult(5000, result));
        return result;
    }
};

TEST_F(BufferReturn, bufferThatTheStreamRefusedOnceComesAlongWithTheNext)
{
    Open();
    camera->MaxNumBuffer.SetValue(3);
    camera->StartGrabbing();
    transport->SetFault(EStep::QueueBuffer, EFault::Runtime, "full", "", 1);
    Grab().Release();
    EXPECT_EQ(2U, transport->GetQueuedCount(serial));
    Grab().Release();
    EXPECT_EQ(3U, transport->GetQueuedCount(serial));
    EXPECT_TRUE(camera->IsGrabbing());
}

TEST_F(BufferReturn, loopThatCanQueueNothingAnyMoreEndsWithOneErrorThatTellsWhy)
{
    Open();
    camera->MaxNumBuffer.SetValue(2);
    StartLoop();
    transport->SetFault(EStep::QueueBuffer, EFault::Runtime, "the stream broke");
    ASSERT_EQ(2U, transport->DeliverImages(serial, 2));
    ASSERT_TRUE(recorder.WaitFor("GrabStopped"));
    EXPECT_EQ(2U, recorder.Count("ImageGrabbed"));
    EXPECT_EQ(1U, recorder.Count("GrabError"));
    EXPECT_NE(std::string::npos, recorder.LastError().find("takes no image buffer any more"));
    EXPECT_NE(std::string::npos, recorder.LastError().find("the stream broke"));
}

TEST_F(BufferReturn, retrieveThrowsWhenNothingCanBeQueuedAnyMoreAndTheGrabEnds)
{
    for (const EGrabStrategy strategy : {GrabStrategy_OneByOne, GrabStrategy_LatestImages})
    {
        Open();
        camera->MaxNumBuffer.SetValue(1);
        camera->StartGrabbing(strategy);
        transport->SetFault(EStep::QueueBuffer, EFault::Runtime, "the stream broke");
        Grab().Release();
        CGrabResultPtr result;
        EXPECT_THROW(camera->RetrieveResult(60000, result), GenICam::RuntimeException);
        EXPECT_FALSE(camera->IsGrabbing());
        transport->SetFault(EStep::QueueBuffer, EFault::None);
        camera->StartGrabbing();
        EXPECT_TRUE(Grab()->GrabSucceeded());
        camera.reset();
    }
}

TEST_F(BufferReturn, userWhoHoldsEveryBufferIsNotAnError)
{
    Open();
    camera->MaxNumBuffer.SetValue(1);
    camera->StartGrabbing();
    CGrabResultPtr held = Grab();
    CGrabResultPtr none;
    EXPECT_FALSE(camera->RetrieveResult(1, none, TimeoutHandling_Return));
    EXPECT_TRUE(camera->IsGrabbing());
    held.Release();
    EXPECT_TRUE(Grab()->GrabSucceeded());
}

TEST_F(BufferReturn, memoryThatTheStreamKeepsStaysUntilItIsClosed)
{
    Open();
    camera->StartGrabbing();
    transport->SetFault(EStep::StopStream, EFault::Runtime);
    camera->StopGrabbing();
    ASSERT_EQ(10U, transport->GetQueuedCount(serial));
    ::Test::SScriptedImage image;
    image.data.assign(1000, 7);
    EXPECT_TRUE(transport->DeliverImage(serial, image)); // the stream writes to what it kept
    EXPECT_THROW(camera->StartGrabbing(), GenICam::GenericException);
    EXPECT_TRUE(transport->DeliverImage(serial, image));
    camera->Close();
}
