// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"

#include "parametercollection/parameterpath.h"
#include "utils/exceptions.h"

#include <stdexcept>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ParameterCollection::CScopedObjectStateLock;
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
protected:
    template <class Work> static QString thrown(Work&& work)
    {
        try
        {
            work();
        }
        catch (const Core::Exception::InvalidOperationException& e)
        {
            return e.message();
        }
        return {};
    }
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

TEST_F(CameraLifecycle, disposalClosesDestroysAndMarksBothStates)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const auto instanceState = camera->instanceState();
    const auto deviceState = camera->deviceState();
    const auto collection = camera->getParameterCollection();
    int closed = 0;
    QObject::connect(camera.data(), &IDevice::deviceClosed, [&] { ++closed; });
    camera.reset();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    EXPECT_EQ(instanceState.state(), 0);
    EXPECT_EQ(deviceState.state(), 0);
    EXPECT_EQ(collection->nodeMap(Path::CameraDevice), nullptr);
}

TEST_F(CameraLifecycle, disposalOfACameraThatWasNeverInitialisedWorks)
{
    QSharedPointer<CCamera> camera(new CCamera(record(), nullptr));
    EXPECT_NO_THROW(camera.reset());
}

TEST_F(CameraLifecycle, disposalWithAThrowingReceiverStillDestroysTheDevice)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    QObject::connect(camera.data(), &IDevice::deviceClosed, [] { throw std::runtime_error("receiver"); });
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(CameraLifecycle, disposalWithAThrowingReceiverStillWritesTheSettings)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const auto instanceState = camera->instanceState();
    QObject::connect(camera.data(), &IDevice::deviceClosed, [] { throw std::runtime_error("receiver"); });
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toInt(), 10);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MaxNumBuffersContinuousShot")).toInt(), 450);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/UsedBufferMemory")).toUInt(), 8388608U);
    EXPECT_EQ(instanceState.state(), 0);
}

TEST_F(CameraLifecycle, disposalWithAReceiverThatThrowsAnyKindFinishes)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    const auto collection = camera->getParameterCollection();
    QObject::connect(camera.data(), &IDevice::deviceClosed, [] { throw 1; });
    QObject::connect(collection.data(), &ParameterCollection::IParameterCollection::nodeMapDetaching, [] { throw 2; });
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(collection->nodeMap(Path::CameraDevice), nullptr);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MaxNumBuffersContinuousShot")).toInt(), 450);
}

TEST_F(CameraLifecycle, disposalOfACameraThatWasNeverInitialisedLeavesTheSettings)
{
    QSettings().setValue(QStringLiteral("Grab/MinNumBuffersContinuousShot"), 25);
    QSharedPointer<CCamera>(new CCamera(record(), nullptr)).reset();
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toInt(), 25);
}

TEST_F(CameraLifecycle, disposalKeepsSettingsThatMakeNoSense)
{
    QSettings().setValue(QStringLiteral("Grab/MinNumBuffersContinuousShot"), QStringLiteral("many"));
    makeCamera().reset();
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toString(), QStringLiteral("many"));
}

TEST_F(CameraLifecycle, disposalMakesTheDefaultSettingsExplicit)
{
    makeCamera().reset();
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MinNumBuffersContinuousShot")).toInt(), 10);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/MaxNumBuffersContinuousShot")).toInt(), 450);
    EXPECT_EQ(QSettings().value(QStringLiteral("Grab/UsedBufferMemory")).toUInt(), 8388608U);
}

TEST_F(CameraLifecycle, aCameraAloneIsNeitherDisposedNorInUse)
{
    const auto camera = makeCamera();
    const CScopedObjectStateLock own(camera->instanceState());
    EXPECT_NO_THROW(camera->raiseExceptionIfDisposed());
    EXPECT_NO_THROW(camera->raiseExceptionIfInUse());
}

TEST_F(CameraLifecycle, aSecondHolderOfTheInstanceMakesItInUse)
{
    const auto camera = makeCamera();
    const CScopedObjectStateLock own(camera->instanceState());
    const CScopedObjectStateLock other(camera->instanceState());
    EXPECT_EQ(thrown([&] { camera->raiseExceptionIfInUse(); }),
              QStringLiteral("Action cannot be performed. The camera instance is in use."));
}

TEST_F(CameraLifecycle, aMarkedUseMakesTheStreamGrabberInUse)
{
    const auto camera = makeCamera();
    auto state = camera->instanceState();
    state.addUse();
    EXPECT_EQ(thrown([&] { camera->raiseExceptionIfInUse(); }),
              QStringLiteral("Action cannot be performed. The stream grabber is still in use."));
    state.removeUse();
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

TEST_F(CameraLifecycle, disposalOfALostCameraWorks)
{
    auto camera = makeCamera();
    ASSERT_TRUE(camera->open(false));
    m_transport->RemoveCamera(s_serial);
    EXPECT_NO_THROW(camera.reset());
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
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
