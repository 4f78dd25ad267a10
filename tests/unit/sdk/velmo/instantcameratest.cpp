// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerafixture.h"
#include "support/warnings.h"

#include <gmock/gmock.h>

using namespace Velmo;
using Test::CCameraTest;
using Test::CWarnings;
using Test::EFault;
using Test::EStep;
using Strings = std::vector<std::string>;

class InstantCamera : public CCameraTest
{
};

TEST_F(InstantCamera, withoutADeviceNothingButAnswers)
{
    CInstantCamera empty;
    EXPECT_FALSE(empty.IsVelmoDeviceAttached());
    EXPECT_FALSE(empty.IsOpen());
    EXPECT_EQ(nullptr, empty.DetachDevice());
    EXPECT_NO_THROW(empty.DestroyDevice());
    EXPECT_NO_THROW(empty.Close());
    EXPECT_NO_THROW(empty.StopGrabbing());
    EXPECT_THROW(empty.Open(), GenICam::LogicalErrorException);
    EXPECT_THROW(empty.StartGrabbing(), GenICam::LogicalErrorException);
    EXPECT_THROW(empty.GetNodeMap(), GenICam::LogicalErrorException);
    EXPECT_THROW(empty.Attach(nullptr), GenICam::InvalidArgumentException);
}

TEST_F(InstantCamera, eventsOfOneLifeComeInOrder)
{
    Attach();
    camera->Open();
    camera->Open();
    camera->StartGrabbing();
    camera->StopGrabbing();
    camera->Close();
    camera->Close();
    camera->DestroyDevice();
    EXPECT_EQ((Strings{"Open", "Opened", "GrabStart", "GrabStarted", "GrabStop", "GrabStopped", "Close", "Closed",
                       "Destroy", "Detach", "Detached", "Destroyed"}),
              recorder.Events());
    EXPECT_EQ(0U, transport->GetLivingDevices());
}

TEST_F(InstantCamera, closeAndDestroyStopTheGrabFirst)
{
    Open();
    StartLoop();
    camera->DestroyDevice();
    EXPECT_EQ(1U, recorder.Count("GrabStopped"));
    EXPECT_FALSE(camera->IsGrabbing());
    EXPECT_FALSE(camera->IsOpen());
}

TEST_F(InstantCamera, defaultConfigurationSetsContinuousAcquisition)
{
    transport->SetRegister(serial, "AcquisitionMode", 1);
    transport->SetRegister(serial, "TriggerMode", 1);
    CInstantCamera plain(CTlFactory::GetInstance().CreateFirstDevice());
    plain.Open();
    EXPECT_EQ(0, transport->GetRegister(serial, "AcquisitionMode"));
    EXPECT_EQ(0, transport->GetRegister(serial, "TriggerMode"));
}

TEST_F(InstantCamera, withoutConfigurationOpeningWritesNothing)
{
    CInstantCamera plain(CTlFactory::GetInstance().CreateFirstDevice());
    plain.RegisterConfiguration(nullptr, RegistrationMode_ReplaceAll, Cleanup_Delete);
    plain.Open();
    EXPECT_TRUE(transport->GetWrites(serial).empty());
}

TEST_F(InstantCamera, monitorOpensForMonitoringAndWritesNothing)
{
    Attach();
    camera->MonitorModeActive.SetValue(true);
    camera->Open();
    EXPECT_EQ(1U, transport->GetCount(EStep::OpenMonitor));
    EXPECT_EQ(0U, transport->GetCount(EStep::OpenControl));
    camera->StartGrabbing();
    camera->StopGrabbing();
    EXPECT_TRUE(transport->GetWrites(serial).empty());
}

TEST_F(InstantCamera, eventsAreStartedOnEachOpeningWhenTheyAreWanted)
{
    Attach();
    camera->Open();
    camera->Close();
    EXPECT_EQ(0U, transport->GetCount(EStep::StartEvents));
    camera->GrabCameraEvents.SetValue(true);
    recorder.At("Opened", [this](CInstantCamera&) { EXPECT_EQ(1U, transport->GetCount(EStep::StartEvents)); });
    camera->Open();
    camera->Open(); // is open already
    EXPECT_FALSE(camera->GrabCameraEvents.TrySetValue(false));
    EXPECT_EQ(1U, transport->GetCount(EStep::StartEvents));
    EXPECT_EQ(2U, recorder.Count("Opened"));
}

TEST_F(InstantCamera, eventsThatCannotBeReceivedAreLoggedAndLeaveItOpen)
{
    for (const EFault fault : {EFault::Runtime, EFault::Standard, EFault::Unknown})
    {
        Attach();
        camera->GrabCameraEvents.SetValue(true);
        transport->SetFault(EStep::StartEvents, fault, "no port is free");
        CWarnings warnings;
        EXPECT_NO_THROW(camera->Open());
        EXPECT_TRUE(camera->IsOpen());
        const std::vector<std::string> lines = warnings.Lines();
        ASSERT_EQ(1U, lines.size());
        const std::string reason = fault == EFault::Unknown ? "" : "no port is free";
        EXPECT_THAT(lines.front(), testing::StartsWith("Receiving the camera's events failed: "));
        EXPECT_THAT(lines.front(), testing::HasSubstr(reason));
        EXPECT_NO_THROW(camera->StartGrabbing());
        camera->StopGrabbing();
        camera.reset();
    }
}

TEST_F(InstantCamera, settingsHaveTheirDefaultsAndLimits)
{
    CInstantCamera plain;
    EXPECT_EQ(10, plain.MaxNumBuffer.GetValue());
    EXPECT_EQ(10, plain.MaxNumQueuedBuffer.GetValue());
    EXPECT_EQ(1, plain.OutputQueueSize.GetValue());
    EXPECT_FALSE(plain.MonitorModeActive.GetValue());
    EXPECT_FALSE(plain.GrabCameraEvents.GetValue());
    EXPECT_FALSE(plain.GrabLoopThreadUseTimeout.GetValue());
    EXPECT_EQ(5000, plain.GrabLoopThreadTimeout.GetValue());
    EXPECT_EQ(15, plain.GrabLoopThreadPriority.GetValue());
    EXPECT_EQ(25, plain.InternalGrabEngineThreadPriority.GetValue());
    EXPECT_THROW(plain.MaxNumBuffer.SetValue(0), GenICam::OutOfRangeException);
    EXPECT_FALSE(plain.MaxNumBuffer.TrySetValue(0));
    EXPECT_TRUE(plain.MaxNumBuffer.TrySetValue(450));
    const GenApi::CIntegerPtr node(plain.GetInstantCameraNodeMap().GetNode("MaxNumBuffer"));
    EXPECT_EQ(450, node->GetValue());
}

TEST_F(InstantCamera, settingsAreLockedWhileOpenOrGrabbing)
{
    Open();
    EXPECT_FALSE(camera->MonitorModeActive.TrySetValue(true));
    EXPECT_TRUE(camera->MaxNumBuffer.TrySetValue(5));
    camera->StartGrabbing();
    EXPECT_FALSE(camera->MaxNumBuffer.TrySetValue(6));
    camera->StopGrabbing();
    EXPECT_TRUE(camera->MaxNumBuffer.TrySetValue(6));
    camera->Close();
    EXPECT_TRUE(camera->MonitorModeActive.TrySetValue(true));
}

TEST_F(InstantCamera, exceptionBeforeTheActReachesTheCallerAndTheActIsNotDone)
{
    Attach();
    recorder.At("Open", [](CInstantCamera&) { throw std::runtime_error("no"); });
    EXPECT_THROW(camera->Open(), std::runtime_error);
    EXPECT_FALSE(camera->IsOpen());
    EXPECT_EQ(0U, transport->GetCount(EStep::OpenControl));
}

TEST_F(InstantCamera, failuresOfOpeningReachTheCallerAndLeaveItClosed)
{
    for (const EStep step : {EStep::OpenControl, EStep::OpenStream})
    {
        Attach();
        transport->SetFault(step, EFault::Access, "taken");
        EXPECT_THROW(camera->Open(), GenICam::AccessException);
        EXPECT_FALSE(camera->IsOpen());
        EXPECT_EQ(0U, transport->GetOpenDevices(serial));
        transport->SetFault(step, EFault::None);
        EXPECT_NO_THROW(camera->Open());
        camera.reset();
    }
}

TEST_F(InstantCamera, closingNeverThrowsWhatTheDeviceThrows)
{
    Open();
    transport->SetFault(EStep::CloseDevice, EFault::Unknown);
    transport->SetFault(EStep::CloseStream, EFault::Runtime);
    EXPECT_NO_THROW(camera->Close());
    EXPECT_FALSE(camera->IsOpen());
}

TEST_F(InstantCamera, attachingReplacesAndDestroysTheOwnedDevice)
{
    Open();
    camera->Attach(CTlFactory::GetInstance().CreateFirstDevice());
    EXPECT_EQ(1U, transport->GetLivingDevices());
    EXPECT_FALSE(camera->IsOpen());
    EXPECT_EQ(1U, recorder.Count("Detached"));
    EXPECT_EQ(1U, recorder.Count("Attached"));
}

TEST_F(InstantCamera, detachedDeviceStaysOpenAndCanBeAdopted)
{
    Open();
    IVelmoDevice* pDevice = camera->DetachDevice();
    ASSERT_NE(nullptr, pDevice);
    EXPECT_TRUE(pDevice->IsOpen());
    EXPECT_FALSE(camera->IsOpen());
    CInstantCamera other(pDevice);
    EXPECT_TRUE(other.IsOpen());
    other.StartGrabbing(1);
    EXPECT_TRUE(transport->DeliverImage(serial));
    CGrabResultPtr result;
    EXPECT_TRUE(other.RetrieveResult(5000, result));
}

TEST_F(InstantCamera, deviceThatIsNotOwnedSurvives)
{
    IVelmoDevice* pDevice = CTlFactory::GetInstance().CreateFirstDevice();
    {
        CInstantCamera other(pDevice, Cleanup_None);
        EXPECT_FALSE(other.HasOwnership());
        other.Open();
    }
    EXPECT_FALSE(pDevice->IsOpen());
    CTlFactory::GetInstance().DestroyDevice(pDevice);
}

TEST_F(InstantCamera, absentNodeMapsAreEmpty)
{
    ::Test::SScriptedCamera config;
    config.hasTLNodeMap = false;
    Open(config);
    EXPECT_NE(nullptr, camera->GetNodeMap().GetNode("Width"));
    EXPECT_NE(nullptr, camera->GetStreamGrabberNodeMap().GetNode("PayloadSize"));
    EXPECT_EQ(nullptr, camera->GetTLNodeMap().GetNode("HeartbeatTimeout"));
    EXPECT_EQ(nullptr, camera->GetEventGrabberNodeMap().GetNode("HeartbeatTimeout"));
}

TEST_F(InstantCamera, removalIsReportedExactlyOnce)
{
    Open();
    transport->RemoveCamera(serial, 3);
    EXPECT_EQ(1U, recorder.Count("Removed"));
    EXPECT_TRUE(camera->IsCameraDeviceRemoved());
    EXPECT_TRUE(camera->IsOpen());
    EXPECT_NO_THROW(camera->Close());
    EXPECT_THROW(camera->Open(), GenICam::RuntimeException);
    EXPECT_NO_THROW(camera->DestroyDevice());
}

TEST_F(InstantCamera, destroyFromWithinTheRemovalCallback)
{
    Open();
    StartLoop();
    recorder.At("Removed", [](CInstantCamera& c) { c.DestroyDevice(); });
    transport->RemoveCamera(serial);
    EXPECT_FALSE(camera->IsVelmoDeviceAttached());
    EXPECT_EQ(0U, transport->GetLivingDevices());
    EXPECT_EQ(1U, recorder.Count("GrabStopped"));
}

TEST_F(InstantCamera, destroyBesideARemovalCallbackThatClosesDoesNotDeadlock)
{
    for (int round = 0; round < 20; ++round)
    {
        Open();
        StartLoop();
        recorder.At("Removed", [](CInstantCamera& c) { c.Close(); });
        transport->RemoveCamera(serial, 1, false);
        EXPECT_NO_THROW(camera->DestroyDevice());
        EXPECT_EQ(0U, transport->GetLivingDevices());
        camera.reset();
    }
}

TEST_F(InstantCamera, handlersAreCalledInOrderOfRegistration)
{
    Attach();
    Strings order;
    ::Test::CRecorder second;
    recorder.At("Open", [&](CInstantCamera&) { order.push_back("first"); });
    second.At("Open", [&](CInstantCamera&) { order.push_back("second"); });
    camera->RegisterConfiguration(&second, RegistrationMode_Append, Cleanup_None);
    camera->Open();
    EXPECT_EQ((Strings{"first", "second"}), order);
    EXPECT_EQ(1, second.DebugGetEventHandlerRegistrationCount());
    EXPECT_TRUE(camera->DeregisterConfiguration(&second));
    EXPECT_FALSE(camera->DeregisterConfiguration(&second));
    EXPECT_EQ(0, second.DebugGetEventHandlerRegistrationCount());
    EXPECT_EQ(2, recorder.DebugGetEventHandlerRegistrationCount());
}

TEST_F(InstantCamera, replacingDeletesWhatWasGivenForDeletion)
{
    struct SDeleted final : CConfigurationEventHandler
    {
        explicit SDeleted(int& count) : m_count(count) {}
        ~SDeleted() override { ++m_count; }
        int& m_count;
    };
    int deleted = 0;
    Attach();
    camera->RegisterConfiguration(new SDeleted(deleted), RegistrationMode_Append, Cleanup_Delete);
    camera->RegisterConfiguration(new SDeleted(deleted), RegistrationMode_Append, Cleanup_Delete);
    EXPECT_EQ(0, deleted);
    camera->RegisterConfiguration(nullptr, RegistrationMode_ReplaceAll, Cleanup_None);
    EXPECT_EQ(2, deleted);
}

TEST_F(InstantCamera, handlerMayDeregisterItselfFromWithin)
{
    Attach();
    ::Test::CRecorder once;
    once.At("Open", [&](CInstantCamera& c) { EXPECT_TRUE(c.DeregisterConfiguration(&once)); });
    camera->RegisterConfiguration(&once, RegistrationMode_Append, Cleanup_None);
    camera->Open();
    EXPECT_EQ((Strings{"Open"}), once.Events());
}

#ifndef NDEBUG
TEST(EventHandlerDeathTest, destroyingARegisteredHandlerAsserts)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            CInstantCamera camera;
            const CConfigurationEventHandler handler;
            camera.RegisterConfiguration(const_cast<CConfigurationEventHandler*>(&handler), RegistrationMode_Append,
                                         Cleanup_None);
        },
        "The event handler must not be destroyed while it is registered.");
}
#endif
