// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/chunkparsingeventhandler.h"

#include "unit/common/plugins/camerapool/testing/camerapoolfixture.h"

#include "velmo/tlfactory.h"

#include <algorithm>

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EFault;
using ::Test::EStep;
using ::Test::SScriptedCamera;
using ::Test::SScriptedImage;
using ::Test::waitUntil;
using Velmo::CGrabResultPtr;
using Velmo::CInstantCamera;
using Velmo::EPayloadType;

namespace
{

constexpr unsigned int s_waitMs = 10000;

SScriptedCamera chunkCamera(const std::string& serialNumber = "1001")
{
    SScriptedCamera config;
    config.serialNumber = serialNumber;
    config.hasChunks = true;
    return config;
}

SScriptedImage chunkImage(std::size_t payloadBytes = 100)
{
    SScriptedImage image;
    image.payloadType = EPayloadType::ChunkData;
    image.payloadBytes = payloadBytes;
    return image;
}

/** The handler alone with an instant camera whose grab loop is the test's. */
class ChunkParsingEventHandler : public ::Test::CameraPoolFixture
{
protected:
    ~ChunkParsingEventHandler() override
    {
        m_camera.DestroyDevice();
        m_camera.DeregisterImageEventHandler(&m_handler);
        m_camera.DeregisterConfiguration(&m_handler);
    }
    void prepare(const SScriptedCamera& config = chunkCamera())
    {
        m_transport->AddCamera(config);
        m_camera.RegisterConfiguration(&m_handler, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
        m_camera.RegisterImageEventHandler(&m_handler, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_None);
    }
    Velmo::IVelmoDevice* makeDevice(const std::string& serialNumber = s_serial)
    {
        return Velmo::CTlFactory::GetInstance().CreateDevice(m_transport->GetDeviceInfo(serialNumber));
    }
    void open(const SScriptedCamera& config = chunkCamera())
    {
        prepare(config);
        m_camera.Attach(makeDevice());
        m_camera.Open();
    }
    void start(bool chunkMode = true)
    {
        m_transport->SetRegister(s_serial, "ChunkModeActive", chunkMode ? 1 : 0);
        m_camera.StartGrabbing();
    }
    CGrabResultPtr grab(const SScriptedImage& image)
    {
        CGrabResultPtr result;
        EXPECT_TRUE(m_transport->DeliverImage(s_serial, image));
        EXPECT_TRUE(m_camera.RetrieveResult(s_waitMs, result));
        return result;
    }
    unsigned int count(EStep step, const std::string& serialNumber = "") const
    {
        return m_transport->GetCount(step, serialNumber);
    }

    CInstantCamera m_camera;
    CChunkParsingEventHander m_handler;
};

TEST_F(ChunkParsingEventHandler, attachingADeviceCreatesItsParser)
{
    prepare();
    m_camera.Attach(makeDevice());
    EXPECT_EQ(count(EStep::CreateChunkParser), 1U);
}

TEST_F(ChunkParsingEventHandler, openingTheSameDeviceKeepsTheParser)
{
    open();
    EXPECT_EQ(count(EStep::CreateChunkParser), 1U);
    EXPECT_EQ(count(EStep::DestroyChunkParser), 0U);
}

TEST_F(ChunkParsingEventHandler, openingAsksAgainADeviceThatHadNoParser)
{
    open(SScriptedCamera());
    EXPECT_EQ(count(EStep::CreateChunkParser), 2U);
    m_camera.Close();
    EXPECT_EQ(count(EStep::DestroyChunkParser), 0U);
}

TEST_F(ChunkParsingEventHandler, closingDestroysTheParserAndOpeningMakesOne)
{
    open();
    m_camera.Close();
    EXPECT_EQ(count(EStep::DestroyChunkParser), 1U);
    m_camera.Open();
    EXPECT_EQ(count(EStep::CreateChunkParser), 2U);
}

TEST_F(ChunkParsingEventHandler, detachingDestroysTheParserOfADeviceThatWasNeverOpened)
{
    prepare();
    m_camera.Attach(makeDevice());
    m_camera.DestroyDevice();
    EXPECT_EQ(count(EStep::DestroyChunkParser), 1U);
}

TEST_F(ChunkParsingEventHandler, closingAndDetachingDestroyOnce)
{
    open();
    m_camera.DestroyDevice();
    EXPECT_EQ(count(EStep::DestroyChunkParser), 1U);
}

TEST_F(ChunkParsingEventHandler, openingWithAnotherDeviceDestroysOnTheOldAndCreatesOnTheNew)
{
    m_transport->AddCamera(chunkCamera("A"));
    m_transport->AddCamera(chunkCamera("B"));
    CInstantCamera old(makeDevice("A"));
    CInstantCamera fresh(makeDevice("B"));
    m_handler.OnAttached(old);
    m_handler.OnOpened(fresh);
    EXPECT_EQ(count(EStep::DestroyChunkParser, "A"), 1U);
    EXPECT_EQ(count(EStep::CreateChunkParser, "B"), 1U);
    m_handler.OnClose(fresh);
    EXPECT_EQ(count(EStep::DestroyChunkParser, "B"), 1U);
}

TEST_F(ChunkParsingEventHandler, aCameraWithoutDeviceHasNoParser)
{
    CInstantCamera empty;
    m_handler.OnAttached(empty);
    m_handler.OnOpened(empty);
    m_handler.OnClose(empty);
    EXPECT_EQ(count(EStep::CreateChunkParser), 0U);
    EXPECT_EQ(count(EStep::DestroyChunkParser), 0U);
}

TEST_F(ChunkParsingEventHandler, anImageWithChunksIsAttachedWithItsPayloadAndNoHint)
{
    open();
    start();
    const CGrabResultPtr result = grab(chunkImage(100));
    const auto buffers = m_transport->GetChunkBuffers(s_serial);
    ASSERT_EQ(buffers.size(), 1U);
    EXPECT_EQ(buffers[0].pBuffer, result->GetBuffer());
    EXPECT_EQ(buffers[0].bytes, 100);
    EXPECT_EQ(buffers[0].layoutId, 0);
    EXPECT_EQ(buffers[0].pChunkOffset, nullptr);
}

TEST_F(ChunkParsingEventHandler, withChunkModeOffNothingIsAttached)
{
    open();
    start(false);
    grab(chunkImage());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
}

TEST_F(ChunkParsingEventHandler, withoutTheFeatureChunkModeIsOff)
{
    SScriptedCamera config = chunkCamera();
    config.description = "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" "
                         "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
                         "MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\"><Port Name=\"Device\"/>"
                         "</RegisterDescription>";
    open(config);
    start();
    grab(chunkImage());
    EXPECT_EQ(count(EStep::CreateChunkParser), 1U);
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
}

TEST_F(ChunkParsingEventHandler, anUnreadableChunkModeIsOff)
{
    open();
    m_transport->SetRegister(s_serial, "ChunkModeActive", 1);
    m_transport->SetHook(EStep::StartStream,
                         [this](const std::string&) { m_transport->SetFault(EStep::ReadRegister, EFault::Runtime); });
    m_camera.StartGrabbing();
    m_transport->SetFault(EStep::ReadRegister, EFault::None);
    grab(chunkImage());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
}

TEST_F(ChunkParsingEventHandler, anUnreadableChunkModeIsOffWhateverIsThrownAndWhateverItWasBefore)
{
    open();
    start();
    grab(chunkImage());
    ASSERT_EQ(count(EStep::AttachChunkBuffer), 1U);
    m_camera.StopGrabbing();
    m_transport->SetHook(EStep::StartStream,
                         [this](const std::string&) { m_transport->SetFault(EStep::ReadRegister, EFault::Unknown); });
    m_camera.StartGrabbing();
    m_transport->SetFault(EStep::ReadRegister, EFault::None);
    grab(chunkImage());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 1U);
}

TEST_F(ChunkParsingEventHandler, chunkModeIsThatAtTheStartOfTheGrab)
{
    open();
    start(false);
    m_transport->SetRegister(s_serial, "ChunkModeActive", 1);
    grab(chunkImage());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
    m_camera.StopGrabbing();
    start(true);
    grab(chunkImage());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 1U);
}

TEST_F(ChunkParsingEventHandler, aFailedGrabIsNotAttached)
{
    open();
    start();
    SScriptedImage image = chunkImage();
    image.status = Velmo::Transport::EResultStatus::Failed;
    grab(image);
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
}

TEST_F(ChunkParsingEventHandler, payloadsOfOtherTypesAreNotAttached)
{
    open();
    start();
    for (const EPayloadType type :
         {EPayloadType::Undefined, EPayloadType::Image, EPayloadType::RawData, EPayloadType::File})
    {
        SScriptedImage image = chunkImage();
        image.payloadType = type;
        grab(image);
    }
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
}

TEST_F(ChunkParsingEventHandler, anInvalidResultIsNotAttached)
{
    open();
    start();
    m_handler.OnImageGrabbed(m_camera, CGrabResultPtr());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
}

TEST_F(ChunkParsingEventHandler, aPayloadThatClaimsMoreThanItsBufferIsAttachedAsFarAsTheBufferGoes)
{
    open();
    start();
    const CGrabResultPtr result = grab(chunkImage(std::size_t(1) << 33));
    EXPECT_EQ(result->GetPayloadSize(), result->GetBufferSize());
    const auto buffers = m_transport->GetChunkBuffers(s_serial);
    ASSERT_EQ(buffers.size(), 1U);
    EXPECT_EQ(buffers[0].bytes, static_cast<std::int64_t>(result->GetBufferSize()));
}

TEST_F(ChunkParsingEventHandler, theLatestImageStaysOutOfTheStream)
{
    open();
    start();
    const std::size_t all = m_transport->GetQueuedCount(s_serial);
    for (int image = 0; image < 3; ++image)
    {
        grab(chunkImage());
        EXPECT_EQ(m_transport->GetQueuedCount(s_serial), all - 1);
    }
}

TEST_F(ChunkParsingEventHandler, theLastImageIsHeldUntilTheNextIsAttached)
{
    open();
    start();
    const std::size_t all = m_transport->GetQueuedCount(s_serial);
    grab(chunkImage());
    std::size_t duringAttach = 0;
    m_transport->SetHook(EStep::AttachChunkBuffer,
                         [&](const std::string&) { duringAttach = m_transport->GetQueuedCount(s_serial); });
    grab(chunkImage());
    m_transport->SetHook(EStep::AttachChunkBuffer, nullptr);
    EXPECT_EQ(duringAttach, all - 2);
}

TEST_F(ChunkParsingEventHandler, anImageWithoutChunksLeavesTheLastOneHeld)
{
    open();
    start();
    m_transport->ResetCounts();
    const std::size_t all = m_transport->GetQueuedCount(s_serial);
    grab(chunkImage());
    grab(SScriptedImage());
    EXPECT_EQ(count(EStep::DetachChunkBuffer), 0U);
    EXPECT_EQ(m_transport->GetQueuedCount(s_serial), all - 1);
}

TEST_F(ChunkParsingEventHandler, theNextGrabDetachesAndReleasesTheImage)
{
    open();
    start();
    grab(chunkImage());
    m_camera.StopGrabbing();
    m_transport->ResetCounts();
    start();
    EXPECT_EQ(count(EStep::DetachChunkBuffer), 1U);
    EXPECT_EQ(m_transport->GetQueuedCount(s_serial), m_transport->GetAnnouncedCount(s_serial));
}

TEST_F(ChunkParsingEventHandler, withoutAParserAGrabDetachesNothing)
{
    open(SScriptedCamera());
    start();
    EXPECT_EQ(count(EStep::DetachChunkBuffer), 0U);
    grab(chunkImage());
    EXPECT_EQ(count(EStep::AttachChunkBuffer), 0U);
}

TEST_F(ChunkParsingEventHandler, closingDuringAGrabReleasesTheImage)
{
    open();
    start();
    grab(chunkImage());
    m_camera.Close();
    EXPECT_EQ(count(EStep::DestroyChunkParser), 1U);
    EXPECT_EQ(m_transport->GetAnnouncedCount(s_serial), 0U);
}

#ifndef NDEBUG
TEST_F(ChunkParsingEventHandler, attachingWithAParserAsserts)
{
    open();
    EXPECT_DEATH(m_handler.OnAttached(m_camera), "OnAttached.*m_pChunkParser == nullptr");
}

TEST_F(ChunkParsingEventHandler, aFailedCreationAsserts)
{
    prepare();
    m_transport->SetFault(EStep::CreateChunkParser, EFault::Runtime);
    EXPECT_DEATH(m_camera.Attach(makeDevice()), "CreateChunkParser.*false");
}

TEST_F(ChunkParsingEventHandler, aFailedDestructionAsserts)
{
    open();
    m_transport->SetFault(EStep::DestroyChunkParser, EFault::Standard);
    EXPECT_DEATH(m_handler.OnClose(m_camera), "DestroyChunkParser.*false");
    m_transport->SetFault(EStep::DestroyChunkParser, EFault::None);
}

TEST_F(ChunkParsingEventHandler, aFailedAttachmentAsserts)
{
    open();
    start();
    m_transport->SetFault(EStep::AttachChunkBuffer, EFault::Unknown);
    EXPECT_DEATH(grab(chunkImage()), "OnImageGrabbed.*false");
}

TEST_F(ChunkParsingEventHandler, aFailedDetachmentAsserts)
{
    open();
    m_transport->SetFault(EStep::DetachChunkBuffer, EFault::Runtime);
    EXPECT_DEATH(m_handler.OnGrabStarted(m_camera), "OnGrabStarted.*false");
}
#endif

/** As CCamera uses it. */
class CameraChunks : public ::Test::CameraPoolFixture
{
protected:
    QSharedPointer<CCamera> openCamera(const SScriptedCamera& config = chunkCamera())
    {
        m_transport->AddCamera(config);
        const auto camera = makeCamera();
        EXPECT_TRUE(camera->open(false));
        m_transport->SetRegister(s_serial, "ChunkModeActive", 1);
        return camera;
    }
};

TEST_F(CameraChunks, theCamerasOwnHandlerComesFirst)
{
    const auto camera = openCamera();
    int attachedAtSignal = -1;
    QObject::connect(
        camera.data(), &ICamera::cameraImageGrabbed, camera.data(),
        [&](const CGrabResultPtr&)
        { attachedAtSignal = static_cast<int>(m_transport->GetCount(EStep::AttachChunkBuffer)); },
        Qt::DirectConnection);
    camera->startGrabbing();
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial, chunkImage()));
    ASSERT_TRUE(m_transport->WaitForCount(EStep::AttachChunkBuffer, 1));
    camera->stopGrabbing();
    EXPECT_EQ(attachedAtSignal, 0);
}

TEST_F(CameraChunks, reopeningAfterALossMakesAParserOnTheNewDevice)
{
    const auto camera = openCamera();
    m_transport->RemoveCamera(s_serial);
    camera->close();
    EXPECT_EQ(m_transport->GetCount(EStep::DestroyChunkParser), 1U);
    m_transport->AddCamera(chunkCamera());
    ASSERT_TRUE(camera->open(false));
    EXPECT_EQ(m_transport->GetCount(EStep::CreateChunkParser), 2U);
    m_transport->SetRegister(s_serial, "ChunkModeActive", 1);
    camera->startGrabbing();
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial, chunkImage()));
    EXPECT_TRUE(m_transport->WaitForCount(EStep::AttachChunkBuffer, 1));
}

TEST_F(CameraChunks, aCameraRemovedInMidGrabIsParsedAgainOnceItIsBackAndItsImageStaysWhole)
{
    const auto camera = openCamera();
    CGrabResultPtr held;
    QObject::connect(camera.data(), &ICamera::cameraImageGrabbed, camera.data(),
                     [&](const CGrabResultPtr& result) { held = held.IsValid() ? held : result; });
    camera->startGrabbing();
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    SScriptedImage image = chunkImage();
    image.data.assign(image.payloadBytes, 42);
    ASSERT_TRUE(m_transport->DeliverImage(s_serial, image));
    ASSERT_TRUE(waitUntil([&] { return held.IsValid(); }));
    ASSERT_TRUE(m_transport->WaitForCount(EStep::AttachChunkBuffer, 1));
    m_transport->RemoveCamera(s_serial);
    camera->close();
    EXPECT_EQ(m_transport->GetCount(EStep::DestroyChunkParser), 1U);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);

    m_transport->AddCamera(chunkCamera());
    ASSERT_TRUE(camera->open(false));
    m_transport->SetRegister(s_serial, "ChunkModeActive", 1);
    camera->startGrabbing();
    ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1));
    ASSERT_TRUE(m_transport->DeliverImage(s_serial, chunkImage()));
    ASSERT_TRUE(m_transport->WaitForCount(EStep::AttachChunkBuffer, 2));
    EXPECT_EQ(m_transport->GetChunkBuffers(s_serial).size(), 1U) << "of the camera that came back";
    const auto* const pBytes = static_cast<const std::uint8_t*>(held->GetBuffer());
    EXPECT_EQ(std::count(pBytes, pBytes + held->GetPayloadSize(), 42), 100);
}

TEST_F(CameraChunks, disposingAnOpenCameraDestroysTheParser)
{
    auto camera = openCamera();
    camera.reset();
    EXPECT_EQ(m_transport->GetCount(EStep::DestroyChunkParser), 1U);
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
}

TEST_F(CameraChunks, theHeldResultStopsNoGrabThatAskedForASingleBuffer)
{
    QSettings settings;
    settings.beginGroup(QStringLiteral("Grab"));
    settings.setValue(QStringLiteral("MinNumBuffersContinuousShot"), 1);
    settings.setValue(QStringLiteral("MaxNumBuffersContinuousShot"), 1);
    settings.endGroup();
    const auto camera = openCamera();
    camera->startGrabbing();
    for (unsigned int image = 1; image <= 3; ++image)
    {
        ASSERT_TRUE(m_transport->WaitForQueued(s_serial, 1)) << image;
        ASSERT_TRUE(m_transport->DeliverImage(s_serial, chunkImage()));
        ASSERT_TRUE(m_transport->WaitForCount(EStep::AttachChunkBuffer, image));
        QCoreApplication::processEvents(); // receivers of the image's signals let it go
    }
    const ParameterCollection::CIntegerParameter buffers(camera->getParameterCollection(),
                                                         QStringLiteral("@CameraInstance/MaxNumBuffer"));
    EXPECT_EQ(buffers.value(), 1);
}

} // namespace
