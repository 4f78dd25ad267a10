// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"

#include "parametercollection/parameterpath.h"

#include <stdexcept>
#include <utility>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EFault;
using ::Test::EStep;
using ::Test::waitUntil;
namespace Path = ParameterCollection::ParameterPath;
namespace Name = ParameterCollection::ParameterName;

namespace
{

const char* const s_creationFailed = "Velmo device creation failed. Reason: ";
const char* const s_openFailed = "Camera could not be opened. Reason: ";

class CameraLifecycle : public ::Test::CameraPoolFixture
{
};

TEST_F(CameraLifecycle, aNewCameraHasNoDeviceAndIsClosed)
{
    const auto camera = makeCamera();
    EXPECT_FALSE(camera->isOpen());
    EXPECT_FALSE(camera->isConnected());
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_FALSE(camera->isMonitorModeActive());
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    ASSERT_FALSE(camera->getParameterCollection().isNull());
    EXPECT_EQ(camera->getParameterCollection()->nodeMap(Path::CameraDevice), nullptr);
}

TEST_F(CameraLifecycle, parametersOfTheInstanceHaveTheNamesThatTheSdkGivesThem)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const auto parameters = camera->getParameterCollection();
    namespace Instance = Name::CameraInstance;
    EXPECT_TRUE(Instance::MaxNumBuffer.of(parameters).isValid());
    EXPECT_TRUE(Instance::MaxNumQueuedBuffer.of(parameters).isValid());
    EXPECT_TRUE(Instance::GrabLoopThreadUseTimeout.of(parameters).isValid());
    EXPECT_TRUE(Instance::GrabLoopThreadTimeout.of(parameters).isValid());
    EXPECT_TRUE(Instance::InternalGrabEngineThreadPriorityOverride.of(parameters).isValid());
    EXPECT_TRUE(Instance::InternalGrabEngineThreadPriority.of(parameters).isValid());
    EXPECT_TRUE(Instance::MonitorModeActive.of(parameters).isValid());
}

TEST_F(CameraLifecycle, openingAttachesTheNodeMapsBeforeItTells)
{
    const auto camera = makeCamera();
    GenApi::INodeMap* pAtSignal = nullptr;
    int stateAtSignal = -1;
    QObject::connect(camera.data(), &IDevice::deviceOpened,
                     [&]
                     {
                         pAtSignal = camera->getParameterCollection()->nodeMap(Path::CameraDevice);
                         stateAtSignal = camera->deviceState().state();
                     });
    ASSERT_TRUE(camera->open(false));
    EXPECT_NE(pAtSignal, nullptr);
    EXPECT_EQ(stateAtSignal, 1);
    EXPECT_TRUE(camera->isOpen());
    EXPECT_TRUE(camera->isConnected());
    EXPECT_NE(camera->getParameterCollection()->nodeMap(Path::StreamGrabber0), nullptr);
    EXPECT_NE(camera->getParameterCollection()->nodeMap(Path::DeviceTransportLayer), nullptr);
    EXPECT_NE(camera->getParameterCollection()->nodeMap(Path::EventGrabber), nullptr);
    EXPECT_NE(camera->getParameterCollection()->nodeMap(Path::CameraInstance), nullptr);
}

TEST_F(CameraLifecycle, theCameraOfTheRecordIsOpenedAmongSeveral)
{
    ::Test::SScriptedCamera other;
    other.serialNumber = "1002";
    m_transport->AddCamera(other);
    const auto camera = makeCamera(record("1002"));
    ASSERT_TRUE(camera->open(false));
    EXPECT_EQ(m_transport->GetOpenDevices("1001"), 0U);
    EXPECT_EQ(m_transport->GetOpenDevices("1002"), 1U);
}

TEST_F(CameraLifecycle, withoutARecordTheFirstCameraIsOpened)
{
    CCamera camera(nullptr);
    camera.initialize();
    ASSERT_TRUE(camera.open(false));
    EXPECT_EQ(m_transport->GetOpenDevices(s_serial), 1U);
    EXPECT_TRUE(camera.getInfo().isNull());
}

TEST_F(CameraLifecycle, withoutARecordAFailureIsLoggedAlone)
{
    m_transport->RemoveCamera(s_serial);
    CCamera camera(nullptr);
    camera.initialize();
    EXPECT_FALSE(camera.open(false));
    EXPECT_TRUE(m_log.containsStart(s_creationFailed));
}

TEST_F(CameraLifecycle, openingAnOpenCameraReturnsTrueAndEmitsNothing)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    QSignalSpy opened(camera.data(), &IDevice::deviceOpened);
    EXPECT_TRUE(camera->open(false));
    EXPECT_TRUE(camera->open(true));
    EXPECT_EQ(opened.count(), 0);
    EXPECT_FALSE(camera->isMonitorModeActive());
}

TEST_F(CameraLifecycle, openingWithoutAReachableDeviceFailsAndSaysWhy)
{
    const auto info = record();
    const auto camera = makeCamera(info);
    m_transport->RemoveCamera(s_serial);
    QSignalSpy opened(camera.data(), &IDevice::deviceOpened);
    EXPECT_FALSE(camera->open(false));
    EXPECT_FALSE(camera->isOpen());
    EXPECT_EQ(opened.count(), 0);
    ASSERT_FALSE(info->errorString().isEmpty());
    EXPECT_TRUE(m_log.contains(s_creationFailed + info->errorString()));
}

TEST_F(CameraLifecycle, aStandardExceptionAtCreationIsReportedAsOne)
{
    const auto info = record();
    const auto camera = makeCamera(info);
    m_transport->SetFault(EStep::CreateDevice, EFault::Standard, "no more handles");
    EXPECT_FALSE(camera->open(false));
    EXPECT_TRUE(info->errorString().contains(QStringLiteral("no more handles")));
    EXPECT_TRUE(m_log.contains(s_creationFailed + info->errorString()));
}

TEST_F(CameraLifecycle, aCameraInUseElsewhereIsAnOpenErrorThatNamesItsOwner)
{
    m_transport->SetInUseBy(s_serial, "10.0.0.7");
    const auto info = record();
    const auto camera = makeCamera(info);
    EXPECT_FALSE(camera->open(false));
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(info->errorString().contains(QStringLiteral("10.0.0.7")));
    EXPECT_TRUE(m_log.contains(s_openFailed + info->errorString()));

    m_transport->SetInUseBy(s_serial, "");
    EXPECT_TRUE(camera->open(false));
}

TEST_F(CameraLifecycle, aBrokenDescriptionIsAnOpenErrorAndLeavesTheCameraClosed)
{
    ::Test::SScriptedCamera broken;
    broken.description = "<RegisterDescription><Integer Name=";
    m_transport->AddCamera(broken);
    const auto info = record();
    const auto camera = makeCamera(info);
    EXPECT_FALSE(camera->open(false));
    EXPECT_FALSE(camera->isOpen());
    EXPECT_EQ(m_transport->GetOpenDevices(s_serial), 0U);
    EXPECT_TRUE(m_log.contains(s_openFailed + info->errorString()));
    EXPECT_EQ(camera->getParameterCollection()->nodeMap(Path::CameraDevice), nullptr);
}

TEST_F(CameraLifecycle, anExceptionOfAnotherKindPassesOnAndLeavesTheCameraClosed)
{
    const auto camera = makeCamera();
    m_transport->SetFault(EStep::OpenControl, EFault::Unknown);
    EXPECT_THROW(camera->open(false), int);
    EXPECT_FALSE(camera->isOpen());
    m_transport->SetFault(EStep::OpenControl, EFault::None);
    EXPECT_TRUE(camera->open(false));
}

TEST_F(CameraLifecycle, anExceptionOfAnotherKindAtCreationPassesOnToo)
{
    const auto info = record();
    const auto camera = makeCamera(info);
    m_transport->SetFault(EStep::CreateDevice, EFault::Unknown);
    EXPECT_THROW(camera->open(false), int);
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(info->errorString().isEmpty());
    m_transport->SetFault(EStep::CreateDevice, EFault::None);
    EXPECT_TRUE(camera->open(false));
}

TEST_F(CameraLifecycle, aReceiverThatThrowsMakesTheOpeningFailAndIsToldOfTheClosing)
{
    const auto camera = makeCamera();
    QObject::connect(camera.data(), &IDevice::deviceOpened, [] { throw std::runtime_error("cannot show it"); });
    QSignalSpy closed(camera.data(), &IDevice::deviceClosed);
    EXPECT_FALSE(camera->open(false));
    EXPECT_FALSE(camera->isOpen());
    EXPECT_EQ(closed.count(), 1);
    EXPECT_TRUE(m_log.contains(s_openFailed + QStringLiteral("cannot show it")));
}

TEST_F(CameraLifecycle, receiversThatThrowAtTheOpeningAndAtTheClosingMakeTheOpeningFail)
{
    const auto camera = makeCamera();
    const auto opening =
        QObject::connect(camera.data(), &IDevice::deviceOpened, [] { throw std::runtime_error("cannot show it"); });
    const auto closing =
        QObject::connect(camera.data(), &IDevice::deviceClosed, [] { throw std::runtime_error("cannot hide it"); });
    EXPECT_FALSE(camera->open(false));
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(m_log.contains(QStringLiteral("Camera could not be closed. Reason: cannot hide it")));
    QObject::disconnect(opening);
    QObject::disconnect(closing);
    EXPECT_TRUE(camera->open(false));
}

TEST_F(CameraLifecycle, theCamerasHandlersReplaceTheDefaultConfigurationOfTheSdk)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "AcquisitionMode"), "");
}

TEST_F(CameraLifecycle, aCameraWithoutClearBufferModeOpensAndLogsOneLine)
{
    ::Test::SScriptedCamera plain;
    plain.hasClearBufferModeEnable = false;
    m_transport->AddCamera(plain);
    const auto camera = makeCamera();
    EXPECT_TRUE(camera->open(false));
    EXPECT_EQ(m_log.count(QStringLiteral("Couldn't set ClearBufferModeEnable to true")), 1);
}

TEST_F(CameraLifecycle, clearBufferModeIsSwitchedOn)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    EXPECT_EQ(m_transport->GetRegister(s_serial, "ClearBufferModeEnable"), 1);
    EXPECT_EQ(m_log.count(QStringLiteral("Couldn't set ClearBufferModeEnable to true")), 0);
}

TEST_F(CameraLifecycle, openingInMonitorModeSetsMonitorModeOnAndCameraEventsOff)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(true));
    EXPECT_TRUE(camera->isMonitorModeActive());
    const auto collection = camera->getParameterCollection();
    EXPECT_FALSE(
        ParameterCollection::CBooleanParameter(collection, QStringLiteral("@CameraInstance/GrabCameraEvents")).value());
    EXPECT_EQ(m_transport->GetCount(EStep::OpenMonitor), 1U);
    EXPECT_EQ(m_transport->GetCount(EStep::OpenControl), 0U);
}

TEST_F(CameraLifecycle, aNormalOpenAfterAMonitorSetsTheReverse)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(true));
    camera->close();
    EXPECT_FALSE(camera->isMonitorModeActive());
    ASSERT_TRUE(camera->open(false));
    EXPECT_FALSE(camera->isMonitorModeActive());
    const auto collection = camera->getParameterCollection();
    EXPECT_TRUE(
        ParameterCollection::CBooleanParameter(collection, QStringLiteral("@CameraInstance/GrabCameraEvents")).value());
    EXPECT_EQ(m_transport->GetCount(EStep::OpenControl), 1U);
}

TEST_F(CameraLifecycle, closingTakesOutTheNodeMapsDestroysTheDeviceAndTellsOnce)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    QSignalSpy closed(camera.data(), &IDevice::deviceClosed);
    camera->close();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(camera->isOpen());
    EXPECT_EQ(camera->deviceState().state(), 2);
    EXPECT_EQ(camera->getParameterCollection()->nodeMap(Path::CameraDevice), nullptr);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(CameraLifecycle, closingTakesItsStepsInOrder)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    QStringList steps;
    const auto state = [&camera]
    {
        return QString::number(camera->deviceState().state());
    };
    QObject::connect(camera->getParameterCollection().data(),
                     &ParameterCollection::IParameterCollection::nodeMapDetaching,
                     [&](const QString& path)
                     {
                         if (path == Path::CameraDevice)
                         {
                             steps.append(QStringLiteral("detach in state ") + state());
                         }
                     });
    m_transport->SetHook(EStep::CloseDevice, [&](const std::string&) { steps.append(QStringLiteral("close")); });
    m_transport->SetHook(EStep::DestroyDevice, [&](const std::string&) { steps.append(QStringLiteral("destroy")); });
    QObject::connect(camera.data(), &IDevice::deviceClosed,
                     [&] { steps.append(QStringLiteral("told in state ") + state()); });
    camera->close();
    m_transport->SetHook(EStep::CloseDevice, nullptr);
    m_transport->SetHook(EStep::DestroyDevice, nullptr);
    EXPECT_EQ(steps.join(QStringLiteral(", ")), QStringLiteral("detach in state 2, close, destroy, told in state 2"));
}

TEST_F(CameraLifecycle, closingAClosedCameraDoesNothing)
{
    const auto camera = makeCamera();
    QSignalSpy closed(camera.data(), &IDevice::deviceClosed);
    camera->close();
    EXPECT_EQ(closed.count(), 0);
    EXPECT_EQ(camera->deviceState().state(), 0);
}

TEST_F(CameraLifecycle, openClosedAndOpenedAgainMakesAFreshDevice)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    camera->close();
    ASSERT_TRUE(camera->open(false));
    EXPECT_EQ(m_transport->GetCount(EStep::CreateDevice), 2U);
}

TEST_F(CameraLifecycle, aReceiverMayCloseTheCameraInAnswerToItsOpening)
{
    const auto camera = makeCamera();
    QObject::connect(camera.data(), &IDevice::deviceOpened, [&] { camera->close(); });
    QSignalSpy closed(camera.data(), &IDevice::deviceClosed);
    EXPECT_TRUE(camera->open(false));
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(camera->isOpen());
}

TEST_F(CameraLifecycle, aReceiverMayOpenTheCameraInAnswerToItsClosing)
{
    const auto camera = makeCamera();
    bool again = true;
    const auto connection = QObject::connect(camera.data(), &IDevice::deviceClosed,
                                             [&]
                                             {
                                                 if (std::exchange(again, false))
                                                 {
                                                     EXPECT_TRUE(camera->open(false));
                                                 }
                                             });
    ASSERT_TRUE(camera->open(false));
    camera->close();
    EXPECT_TRUE(camera->isOpen());
    QObject::disconnect(connection);
}

TEST_F(CameraLifecycle, aReceiverThatClosesWhileNodeMapsGoMakesOneClosing)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    QObject::connect(camera->getParameterCollection().data(),
                     &ParameterCollection::IParameterCollection::nodeMapDetaching, [&] { camera->close(); });
    QSignalSpy closed(camera.data(), &IDevice::deviceClosed);
    camera->close();
    EXPECT_EQ(closed.count(), 1);
}

TEST_F(CameraLifecycle, aReceiverThatThrowsWhileNodeMapsGoIsLoggedAndTheyGo)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    QObject::connect(camera->getParameterCollection().data(),
                     &ParameterCollection::IParameterCollection::nodeMapDetaching,
                     [] { throw std::runtime_error("callback"); });
    camera->close();
    EXPECT_TRUE(m_log.contains(QStringLiteral("Could not detach from camera node maps. Unexpected exceptions e.g. from "
                                              "callbacks. Reason: callback")));
    EXPECT_EQ(camera->getParameterCollection()->nodeMap(Path::CameraDevice), nullptr);
    EXPECT_FALSE(camera->isOpen());
}

TEST_F(CameraLifecycle, aFaultWhileClosingDoesNotKeepTheCameraOpen)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    m_transport->SetFault(EStep::CloseDevice, EFault::Runtime, "will not close");
    QSignalSpy closed(camera.data(), &IDevice::deviceClosed);
    EXPECT_NO_THROW(camera->close());
    EXPECT_FALSE(camera->isOpen());
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

// Connection loss

TEST_F(CameraLifecycle, aLossIsToldOnceHoweverOftenItIsReported)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const ::Test::CSignalRecord lost(camera.data(), &ICamera::cameraConnectionLost);
    m_transport->RemoveCamera(s_serial, 3);
    ASSERT_TRUE(waitUntil([&] { return lost.count() > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(lost.count(), 1);
    EXPECT_EQ(camera->deviceState().state(), 3);
    EXPECT_FALSE(camera->isConnected());
}

TEST_F(CameraLifecycle, afterALossTheCameraIsClosedAndOpensAnewWithAFreshDevice)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const ::Test::CSignalRecord lost(camera.data(), &ICamera::cameraConnectionLost);
    m_transport->RemoveCamera(s_serial);
    ASSERT_TRUE(waitUntil([&] { return lost.count() > 0; }));
    camera->close();
    EXPECT_EQ(camera->deviceState().state(), 2);
    EXPECT_FALSE(camera->open(false));

    m_transport->AddCamera(::Test::SScriptedCamera());
    ASSERT_TRUE(camera->open(false));
    EXPECT_TRUE(camera->isConnected());
    EXPECT_EQ(camera->deviceState().state(), 1);
    m_transport->RemoveCamera(s_serial);
    EXPECT_TRUE(waitUntil([&] { return lost.count() == 2; }));
}

TEST_F(CameraLifecycle, aLossReportedWhileTheCameraClosesLeavesItClosed)
{
    const auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    m_transport->SetHook(EStep::CloseStream,
                         [this](const std::string&)
                         {
                             m_transport->SetHook(EStep::CloseStream, nullptr);
                             m_transport->RemoveCamera(s_serial, 1, true);
                         });
    camera->close();
    EXPECT_FALSE(camera->isOpen());
    EXPECT_EQ(camera->deviceState().state(), 2);
}

TEST_F(CameraLifecycle, afterALossOpenCreatesANewDeviceForTheSameRecord)
{
    const auto info = record();
    const auto camera = makeCamera(info);
    ASSERT_TRUE(camera->open(false));
    const ::Test::CSignalRecord lost(camera.data(), &ICamera::cameraConnectionLost);
    m_transport->RemoveCamera(s_serial);
    ASSERT_TRUE(waitUntil([&] { return lost.count() == 1; }));
    m_transport->AddCamera(::Test::SScriptedCamera());
    camera->close();
    EXPECT_TRUE(camera->open(false));
    EXPECT_TRUE(camera->isConnected());
    EXPECT_EQ(camera->getInfo(), info);
    EXPECT_EQ(m_transport->GetCount(EStep::CreateDevice), 2U);
}

/** Each step of the SDK that opening takes. */
class CameraOpenStep : public CameraLifecycle, public ::testing::WithParamInterface<EStep>
{
};

TEST_P(CameraOpenStep, aFaultLeavesTheCameraClosedRecordedAndReadyForAnotherTry)
{
    const auto info = record();
    const auto camera = makeCamera(info);
    QSignalSpy opened(camera.data(), &IDevice::deviceOpened);
    m_transport->SetFault(GetParam(), EFault::Access, "scripted refusal");
    const bool isOpen = camera->open(false);
    m_transport->SetFault(GetParam(), EFault::None);
    EXPECT_EQ(isOpen, camera->isOpen());
    EXPECT_EQ(opened.count(), isOpen ? 1 : 0);
    if (!isOpen)
    {
        EXPECT_TRUE(info->errorString().contains(QStringLiteral("scripted refusal")));
        EXPECT_EQ(m_transport->GetOpenDevices(s_serial), 0U);
    }
    camera->close();
    EXPECT_TRUE(camera->open(false));
    EXPECT_TRUE(camera->isConnected());
}

TEST_P(CameraOpenStep, aCameraThatVanishesAtItNeitherHangsNorCrashes)
{
    const auto camera = makeCamera();
    m_transport->SetHook(GetParam(),
                         [this](const std::string&)
                         {
                             m_transport->SetHook(GetParam(), nullptr);
                             m_transport->RemoveCamera(s_serial, 1, false);
                         });
    camera->open(false);
    camera->close();
    EXPECT_FALSE(camera->isOpen());
    m_transport->SetHook(GetParam(), nullptr);
    EXPECT_EQ(m_transport->GetOpenDevices(s_serial), 0U);
    m_transport->AddCamera(::Test::SScriptedCamera());
    EXPECT_TRUE(camera->open(false));
}

INSTANTIATE_TEST_SUITE_P(AllSteps, CameraOpenStep,
                         ::testing::Values(EStep::CreateDevice, EStep::OpenControl, EStep::OpenStream,
                                           EStep::ReadRegister, EStep::WriteRegister));

} // namespace
