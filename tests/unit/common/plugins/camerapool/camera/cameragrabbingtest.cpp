// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "unit/common/plugins/camerapool/testing/grabbingfixture.h"

#include "genapi/exceptions.h"
#include "velmo/velmo.h"

#include <limits>
#include <stdexcept>
#include <utility>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::CSignalOrder;
using ::Test::CSignalRecord;
using ::Test::EFault;
using ::Test::EStep;
using ::Test::SScriptedCamera;
using ::Test::SScriptedImage;
using ::Test::waitUntil;
namespace Name = ParameterCollection::ParameterName;

namespace
{

/** AcquisitionMode is a number here. */
const char* const s_descriptionWithWrongKind =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"Odd\" VendorName=\"TestVendor\" "
    "ToolTip=\"\" StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" "
    "SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\" ProductGuid=\"0\" "
    "VersionGuid=\"0\" xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">"
    "<Category Name=\"Root\"><pFeature>AcquisitionMode</pFeature></Category>"
    "<Integer Name=\"AcquisitionMode\"><Value>0</Value></Integer><Port Name=\"Device\"/></RegisterDescription>";

class CameraGrabbing : public ::Test::GrabbingFixture
{
};

SScriptedCamera withPayload(std::uint64_t bytes)
{
    SScriptedCamera config;
    config.payloadBytes = bytes;
    return config;
}

TEST_F(CameraGrabbing, aContinuousGrabTellsItsStepsInOrder)
{
    const auto camera = openCamera();
    CSignalOrder order;
    order.watch(camera.data(), &ICamera::cameraGrabStart, QStringLiteral("start"));
    order.watch(camera.data(), &ICamera::cameraGrabStarted, QStringLiteral("started"));
    order.watch(camera.data(), &ICamera::cameraStatisticChanged, QStringLiteral("statistic"));
    order.watch(camera.data(), &ICamera::cameraImageGrabbed, QStringLiteral("image"));
    order.watch(camera.data(), &CCamera::invokeTimeout, QStringLiteral("timeout"));
    order.watch(camera.data(), &ICamera::cameraGrabStopped, QStringLiteral("stopped"));
    camera->startGrabbing();
    EXPECT_TRUE(camera->isGrabbing());
    ASSERT_TRUE(waitForStart());
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(waitUntil([&] { return order.count(QStringLiteral("timeout")) == 1; }));
    camera->stopGrabbing();
    ASSERT_TRUE(waitUntil([&] { return order.count(QStringLiteral("stopped")) == 1; }));
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_EQ(order.names().join(QLatin1Char(' ')), QStringLiteral("start started statistic image timeout stopped"));
}

TEST_F(CameraGrabbing, aContinuousGrabSetsTheAcquisitionModeAndNoGrabLoopTimeout)
{
    const auto camera = openCamera();
    camera->singleShot(1234);
    ASSERT_TRUE(waitForStart());
    camera->stopGrabbing();
    camera->startGrabbing();
    EXPECT_EQ(Name::CameraDevice::AcquisitionMode.of(camera->getParameterCollection()).value(),
              QStringLiteral("Continuous"));
    EXPECT_FALSE(instanceFlag(*camera, "GrabLoopThreadUseTimeout"));
}

TEST_F(CameraGrabbing, aContinuousGrabPreparesThenTellsThenSetsTheCamera)
{
    const auto camera = openCamera(withPayload(100000));
    qint64 buffersAtSignal = 0;
    bool boostedAtSignal = false;
    std::string modeAtSignal = "not told";
    QObject::connect(camera.data(), &ICamera::cameraGrabStart,
                     [&]
                     {
                         buffersAtSignal = instanceValue(*camera, "MaxNumBuffer");
                         boostedAtSignal = instanceFlag(*camera, "InternalGrabEngineThreadPriorityOverride");
                         modeAtSignal = m_transport->GetLastWrite(s_serial, "AcquisitionMode");
                     });
    camera->startGrabbing();
    EXPECT_EQ(buffersAtSignal, 83);
    EXPECT_TRUE(boostedAtSignal);
    EXPECT_EQ(modeAtSignal, "");
    EXPECT_NE(m_transport->GetLastWrite(s_serial, "AcquisitionMode"), "");
}

TEST_F(CameraGrabbing, startingAClosedCameraLogsAndDoesNothing)
{
    const auto camera = makeCamera();
    QSignalSpy start(camera.data(), &ICamera::cameraGrabStart);
    camera->startGrabbing();
    camera->singleShot(100);
    EXPECT_EQ(start.count(), 0);
    EXPECT_EQ(m_log.lines(),
              QStringList({QStringLiteral("CCamera::startGrabbing failed, because the camera is not connected."),
                           QStringLiteral("CCamera::singleShot failed, because the camera is not connected.")}));
}

TEST_F(CameraGrabbing, startingAGrabbingCameraLogsAndGoesOnGrabbing)
{
    const auto camera = openCamera();
    camera->startGrabbing();
    m_log.clear();
    QSignalSpy start(camera.data(), &ICamera::cameraGrabStart);
    camera->startGrabbing();
    camera->singleShot(100);
    EXPECT_EQ(start.count(), 0);
    EXPECT_TRUE(camera->isGrabbing());
    EXPECT_EQ(m_log.lines(),
              QStringList({QStringLiteral("CCamera::startGrabbing failed, because the camera is currently grabbing."),
                           QStringLiteral("CCamera::singleShot failed, because the camera is currently grabbing.")}));
}

TEST_F(CameraGrabbing, stoppingACameraThatDoesNotGrabDoesNothing)
{
    const auto camera = openCamera();
    const CSignalRecord stopped(camera.data(), &ICamera::cameraGrabStopped);
    camera->stopGrabbing();
    camera->close();
    camera->stopGrabbing();
    EXPECT_EQ(stopped.count(), 0);
    EXPECT_TRUE(m_log.lines().isEmpty());
}

// Buffers and priority

TEST_F(CameraGrabbing, aMegabyteOfPayloadGetsTheMinimumOfTenBuffers)
{
    const auto camera = openCamera(withPayload(1000000));
    camera->startGrabbing();
    EXPECT_EQ(instanceValue(*camera, "MaxNumBuffer"), 10);
    EXPECT_EQ(instanceValue(*camera, "MaxNumQueuedBuffer"), 10);
    EXPECT_EQ(m_transport->GetAnnouncedCount(s_serial), 10U);
}

TEST_F(CameraGrabbing, aSmallPayloadGetsTheMaximumOfFourHundredAndFiftyBuffers)
{
    const auto camera = openCamera(withPayload(10000));
    camera->startGrabbing();
    EXPECT_EQ(instanceValue(*camera, "MaxNumBuffer"), 450);
    EXPECT_EQ(instanceValue(*camera, "MaxNumQueuedBuffer"), 450);
}

TEST_F(CameraGrabbing, whatTheStreamGrabberNeedsCountsBeforeWhatTheCameraSays)
{
    SScriptedCamera config = withPayload(10000);
    config.streamPayloadBytes = 100000;
    const auto camera = openCamera(config);
    camera->startGrabbing();
    EXPECT_EQ(instanceValue(*camera, "MaxNumBuffer"), 83);
}

TEST_F(CameraGrabbing, theCamerasPayloadIsTakenWhenTheStreamGrabberSaysNone)
{
    const auto camera = openCamera(withPayload(100000));
    m_transport->SetRegister(s_serial, "StreamPayloadSize", 0);
    camera->startGrabbing();
    EXPECT_EQ(instanceValue(*camera, "MaxNumBuffer"), 83);
}

TEST_F(CameraGrabbing, aPayloadOfZeroLeavesTheBufferCounts)
{
    const auto camera = openCamera();
    Name::CameraInstance::MaxNumBuffer.of(camera->getParameterCollection()).setValue(17);
    Name::CameraInstance::MaxNumQueuedBuffer.of(camera->getParameterCollection()).setValue(16);
    m_transport->SetRegister(s_serial, "PayloadSize", 0);
    m_transport->SetRegister(s_serial, "StreamPayloadSize", 0);
    camera->startGrabbing();
    EXPECT_EQ(instanceValue(*camera, "MaxNumBuffer"), 17);
    EXPECT_EQ(instanceValue(*camera, "MaxNumQueuedBuffer"), 16);
}

TEST_F(CameraGrabbing, aCameraWithoutPayloadSizeLeavesTheBufferCountsAndGrabs)
{
    SScriptedCamera config;
    config.hasPayloadSize = false;
    const auto camera = openCamera(config);
    camera->startGrabbing();
    EXPECT_EQ(instanceValue(*camera, "MaxNumBuffer"), 10);
    EXPECT_TRUE(camera->isGrabbing());
}

TEST_F(CameraGrabbing, theGrabEngineGetsTheMiddleOfTheRealTimePriorities)
{
    int lowest = 0;
    int highest = 0;
    ASSERT_TRUE(Velmo::GetRTThreadPriorityCapabilities(&lowest, &highest));
    const auto camera = openCamera();
    camera->startGrabbing();
    const int priority = (lowest + highest) / 2;
    EXPECT_EQ(instanceValue(*camera, "InternalGrabEngineThreadPriority"), priority);
    EXPECT_TRUE(instanceFlag(*camera, "InternalGrabEngineThreadPriorityOverride"));
    EXPECT_TRUE(m_log.contains(QStringLiteral("Boosted Instant Camera Thread Priority to: %1").arg(priority)));
    EXPECT_TRUE(camera->isGrabbing());
}

TEST_F(CameraGrabbing, aPriorityRangeOfOneToNinetyNineGivesFifty)
{
    int lowest = 0;
    int highest = 0;
    ASSERT_TRUE(Velmo::GetRTThreadPriorityCapabilities(&lowest, &highest));
    ASSERT_EQ(lowest, 1);
    ASSERT_EQ(highest, 99);
    const auto camera = openCamera();
    camera->startGrabbing();
    EXPECT_EQ(instanceValue(*camera, "InternalGrabEngineThreadPriority"), 50);
    EXPECT_TRUE(m_log.contains(QStringLiteral("Boosted Instant Camera Thread Priority to: 50")));
}

TEST_F(CameraGrabbing, aPriorityThatCannotBeSetIsLoggedAndTheGrabGoesOn)
{
    const auto grabAfter = [this](const auto& refuse)
    {
        const auto camera = openCamera();
        auto* const pNode =
            camera->getParameterCollection()->node(Name::CameraInstance::InternalGrabEngineThreadPriority.toString());
        ASSERT_NE(pNode, nullptr);
        pNode->RegisterCallback(
            [refuse, isFirst = true](GenApi::INode*) mutable
            {
                if (std::exchange(isFirst, false))
                {
                    refuse();
                }
            });
        camera->startGrabbing();
        EXPECT_TRUE(camera->isGrabbing()) << qPrintable(m_info->errorString());
        EXPECT_TRUE(m_log.contains(QStringLiteral("Boosting Instant Camera Thread Priority failed: refused")));
        EXPECT_FALSE(m_log.containsStart(QStringLiteral("Boosted")));
    };
    grabAfter([] { throw GenICam::RuntimeException("refused", __FILE__, __LINE__); });
    grabAfter([] { throw std::runtime_error("refused"); });
}

// Start failures

TEST_F(CameraGrabbing, aFaultAtTheStartIsRecordedAndLoggedAndLeavesTheCameraIdle)
{
    const auto camera = openCamera();
    m_transport->SetFault(EStep::StartStream, EFault::Runtime, "no bandwidth");
    EXPECT_NO_THROW(camera->startGrabbing());
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_TRUE(m_info->errorString().contains(QStringLiteral("no bandwidth")));
    EXPECT_TRUE(m_log.contains(QStringLiteral("Couldn't start continuous grab. Reason: ") + m_info->errorString()));
    m_transport->SetFault(EStep::StartStream, EFault::None);
    camera->startGrabbing();
    EXPECT_TRUE(camera->isGrabbing());
}

TEST_F(CameraGrabbing, anAcquisitionModeOfAnotherKindIsAStartFailure)
{
    SScriptedCamera config;
    config.description = s_descriptionWithWrongKind;
    const auto camera = openCamera(config);
    camera->startGrabbing();
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_TRUE(m_log.containsStart(QStringLiteral("Couldn't start continuous grab. Reason: ")));
    camera->singleShot(100);
    EXPECT_TRUE(m_log.containsStart(QStringLiteral("Couldn't start grabbing for single shot. Reason: ")));
    EXPECT_FALSE(m_info->errorString().isEmpty());
}

TEST_F(CameraGrabbing, aReceiverThatClosesInAnswerToTheGrabStartLeavesTheCameraClosed)
{
    const auto camera = openCamera();
    QObject::connect(camera.data(), &ICamera::cameraGrabStart, [&] { camera->close(); });
    camera->startGrabbing();
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_FALSE(camera->isOpen());
    EXPECT_TRUE(m_log.containsStart(QStringLiteral("Couldn't start continuous grab. Reason: ")));
}

TEST_F(CameraGrabbing, closingAGrabbingCameraStopsItFirst)
{
    const auto camera = openCamera();
    CSignalOrder order;
    order.watch(camera.data(), &ICamera::cameraGrabStopped, QStringLiteral("stopped"));
    order.watch(camera.data(), &IDevice::deviceClosed, QStringLiteral("closed"));
    camera->startGrabbing();
    camera->close();
    EXPECT_TRUE(waitUntil([&] { return order.names().size() == 2; }));
    EXPECT_EQ(order.count(QStringLiteral("closed")), 1);
    EXPECT_FALSE(camera->isGrabbing());
}

TEST_F(CameraGrabbing, aReceiverThatClosesInAnswerToTheStopMakesOneClosing)
{
    const auto camera = openCamera();
    QObject::connect(camera.data(), &ICamera::cameraGrabStopped, camera.data(), [&] { camera->close(); });
    QSignalSpy closed(camera.data(), &IDevice::deviceClosed);
    camera->startGrabbing();
    camera->close();
    QCoreApplication::processEvents();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(camera->isOpen());
}

// Single shot

TEST_F(CameraGrabbing, aSingleShotGrabsOneImageAndEndsByItself)
{
    const auto camera = openCamera();
    const CSignalRecord images(camera.data(), &ICamera::cameraImageGrabbed);
    const CSignalRecord stopped(camera.data(), &ICamera::cameraGrabStopped);
    QSignalSpy start(camera.data(), &ICamera::cameraGrabStart);
    camera->singleShot(5000);
    EXPECT_EQ(start.count(), 1);
    EXPECT_EQ(Name::CameraDevice::AcquisitionMode.of(camera->getParameterCollection()).value(),
              QStringLiteral("SingleFrame"));
    EXPECT_TRUE(instanceFlag(*camera, "GrabLoopThreadUseTimeout"));
    EXPECT_EQ(instanceValue(*camera, "GrabLoopThreadTimeout"), 5000);
    ASSERT_TRUE(waitForStart());
    ASSERT_TRUE(m_transport->DeliverImage(s_serial));
    ASSERT_TRUE(waitUntil([&] { return stopped.count() == 1; }));
    EXPECT_EQ(images.count(), 1);
    EXPECT_TRUE(waitUntil([&] { return !camera->isGrabbing(); }));
}

TEST_F(CameraGrabbing, aSingleShotNeitherCountsBuffersNorBoosts)
{
    const auto camera = openCamera(withPayload(10000));
    camera->singleShot(5000);
    EXPECT_EQ(instanceValue(*camera, "MaxNumBuffer"), 10);
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(CameraGrabbing, aSingleShotTakesTheLongestTimeThereIs)
{
    const auto camera = openCamera();
    camera->singleShot(std::numeric_limits<unsigned int>::max());
    EXPECT_TRUE(camera->isGrabbing()) << qPrintable(m_info->errorString());
    EXPECT_EQ(instanceValue(*camera, "GrabLoopThreadTimeout"), 4294967295);
}

TEST_F(CameraGrabbing, aSingleShotThatGetsNoImageFailsAfterItsTime)
{
    const auto camera = openCamera();
    const CSignalRecord failed(camera.data(), &ICamera::cameraImageGrabFailed);
    const CSignalRecord stopped(camera.data(), &ICamera::cameraGrabStopped);
    camera->singleShot(50);
    ASSERT_TRUE(waitUntil([&] { return stopped.count() == 1; }));
    EXPECT_EQ(failed.count(), 1);
    EXPECT_FALSE(m_log.lines().isEmpty());
    EXPECT_TRUE(waitUntil([&] { return !camera->isGrabbing(); }));
}

TEST_F(CameraGrabbing, aFaultAtASingleShotIsRecordedAndLogged)
{
    const auto camera = openCamera();
    m_transport->SetFault(EStep::StartStream, EFault::Standard, "no bandwidth");
    camera->singleShot(100);
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_TRUE(
        m_log.contains(QStringLiteral("Couldn't start grabbing for single shot. Reason: ") + m_info->errorString()));
}

// Monitor mode

TEST_F(CameraGrabbing, aMonitorTakesTheStreamAsTheCameraIsConfigured)
{
    SScriptedCamera config;
    config.hasTransmissionType = true;
    const auto camera = openCamera(config, true);
    camera->startGrabbing();
    EXPECT_TRUE(camera->isGrabbing()) << qPrintable(m_info->errorString());
    EXPECT_EQ(Name::StreamGrabber0::TransmissionType.of(camera->getParameterCollection()).value(),
              QStringLiteral("UseCameraConfig"));
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "AcquisitionMode"), "");
}

TEST_F(CameraGrabbing, aMonitorHasNoGrabLoopTimeoutAfterASingleShotThatHadOne)
{
    SScriptedCamera config;
    config.hasTransmissionType = true;
    const auto camera = openCamera(config, true);
    camera->singleShot(1234);
    EXPECT_TRUE(instanceFlag(*camera, "GrabLoopThreadUseTimeout"));
    camera->stopGrabbing();
    camera->startGrabbing();
    EXPECT_TRUE(camera->isGrabbing()) << qPrintable(m_info->errorString());
    EXPECT_FALSE(instanceFlag(*camera, "GrabLoopThreadUseTimeout"));
}

TEST_F(CameraGrabbing, aMonitorWithoutTransmissionTypeIsAStartFailureWithItsOwnMessage)
{
    const auto camera = openCamera({}, true);
    camera->startGrabbing();
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_TRUE(
        m_log.contains(QStringLiteral("Could't start grabbing in monitor mode. Reason: ") + m_info->errorString()));
}

TEST_F(CameraGrabbing, aSingleShotInMonitorModeDoesNotWriteTheAcquisitionMode)
{
    const auto camera = openCamera({}, true);
    camera->singleShot(5000);
    EXPECT_TRUE(camera->isGrabbing()) << qPrintable(m_info->errorString());
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "AcquisitionMode"), "");
}

// Loss

TEST_F(CameraGrabbing, aCameraThatVanishesWhileItGrabsCanBeStoppedAndClosed)
{
    const auto camera = openCamera();
    const CSignalRecord lost(camera.data(), &ICamera::cameraConnectionLost);
    camera->startGrabbing();
    ASSERT_TRUE(waitForStart());
    m_transport->RemoveCamera(s_serial, 2);
    ASSERT_TRUE(waitUntil([&] { return lost.count() == 1; }));
    EXPECT_FALSE(camera->isConnected());
    camera->stopGrabbing();
    camera->close();
    EXPECT_FALSE(camera->isOpen());
    EXPECT_EQ(lost.count(), 1);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(CameraGrabbing, anImageOutlivesTheCameraThatGrabbedIt)
{
    auto camera = openCamera();
    Velmo::CGrabResultPtr kept;
    {
        const CSignalRecord images(camera.data(), &ICamera::cameraImageGrabbed);
        camera->startGrabbing();
        ASSERT_TRUE(waitForStart());
        SScriptedImage image;
        image.data = {1, 2, 3, 4};
        ASSERT_TRUE(m_transport->DeliverImage(s_serial, image));
        ASSERT_TRUE(waitUntil([&] { return images.count() == 1; }));
        kept = std::get<0>(images.at(0));
    }
    camera.reset();
    ASSERT_EQ(kept->GetPayloadSize(), 4U);
    EXPECT_EQ(static_cast<const std::uint8_t*>(kept->GetBuffer())[3], 4);
}

/** Steps of the SDK on the way of a grab at which the camera vanishes. */
class CameraGrabStep : public CameraGrabbing, public ::testing::WithParamInterface<EStep>
{
};

TEST_P(CameraGrabStep, aCameraThatVanishesAtItLeavesACameraThatCanBeClosed)
{
    const auto camera = openCamera();
    m_transport->SetHook(GetParam(),
                         [this](const std::string&)
                         {
                             m_transport->SetHook(GetParam(), nullptr);
                             m_transport->RemoveCamera(s_serial, 1, false);
                         });
    camera->startGrabbing();
    if (camera->isGrabbing() && m_transport->GetCount(EStep::StopStream) == 0)
    {
        camera->stopGrabbing();
    }
    camera->close();
    EXPECT_FALSE(camera->isGrabbing());
    EXPECT_FALSE(camera->isOpen());
    m_transport->SetHook(GetParam(), nullptr);
    EXPECT_EQ(m_transport->GetOpenDevices(s_serial), 0U);
}

TEST_P(CameraGrabStep, aFaultAtItNeitherEscapesNorKeepsTheCameraFromClosing)
{
    const auto camera = openCamera();
    m_transport->SetFault(GetParam(), EFault::Timeout, "scripted fault", "", 1);
    EXPECT_NO_THROW(camera->startGrabbing());
    EXPECT_NO_THROW(camera->stopGrabbing());
    EXPECT_NO_THROW(camera->close());
    EXPECT_FALSE(camera->isOpen());
    m_transport->SetFault(GetParam(), EFault::None);
    EXPECT_TRUE(camera->open(false));
}

INSTANTIATE_TEST_SUITE_P(AllSteps, CameraGrabStep,
                         ::testing::Values(EStep::ReadRegister, EStep::WriteRegister, EStep::GetPayloadBytes,
                                           EStep::AnnounceBuffer, EStep::QueueBuffer, EStep::StartStream,
                                           EStep::AcquisitionStart, EStep::RetrieveResult, EStep::AcquisitionStop,
                                           EStep::StopStream, EStep::RevokeBuffer, EStep::CloseStream,
                                           EStep::CloseDevice));

} // namespace
