// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "hostkit/cameranames.h"
#include "hostkit/host.h"
#include "parametercollection/parameters.h"
#include "support/fakecamera.h"

#include <gtest/gtest.h>

#include <QSettings>
#include <QSignalSpy>

namespace
{

using HostKit::CameraInfoPtr;
using Plugin::CameraPool::ICameraEnumerationService;
using Plugin::CameraPool::ICameraStatusService;

constexpr int limitMs = 20000;
constexpr const char* serial = "GV77";

/** A whole host with the real plugins, and an independent GigE Vision camera in a process of its own. */
class HostOnGigE : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", "127.0.0.1");
        qputenv("CAMERAPOOL_EMULATION_CAMERAS", "0");
        // An image that waits for the main thread holds a buffer; one that finds no buffer is lost, without a result.
        // By default there are 32 of this size, 0.1 s at the camera's highest rate: on a busy machine too few.
        constexpr int memoryBytes = 100 * 1024 * 1024;
        QSettings().setValue(QStringLiteral("Grab/UsedBufferMemory"), memoryBytes);
    }

    void SetUp() override
    {
        m_pCamera = std::make_unique<::Test::CFakeCamera>(serial);
        m_pHost = std::make_unique<HostKit::CHost>(QStringLiteral(PLUGIN_FOLDER));
        ASSERT_TRUE(m_pHost->start(QStringLiteral("en"))) << m_pHost->errors().join('\n').toStdString();
        ASSERT_TRUE(waitFor([this] { return !find().isNull(); })) << "the camera was not found";
    }

    CameraInfoPtr find() const
    {
        QVector<CameraInfoPtr> cameras;
        const auto layers = m_pHost->enumeration().enumerate();
        for (const auto& layer : layers)
        {
            const auto records = layer->getCameraInfoList().toBaseInfoVector();
            for (const auto& record : records)
            {
                cameras.append(record.objectCast<Plugin::CameraPool::ICameraInfo>());
            }
        }
        QString error;
        return HostKit::findByName(cameras, QString::fromLatin1(serial), error);
    }

    /** Looks again after every discovery that changed something, and asks for further ones. */
    bool waitFor(const std::function<bool()>& condition) const
    {
        QSignalSpy changed(&m_pHost->enumeration(), &ICameraEnumerationService::enumerationChanged);
        constexpr int passes = 40;
        for (int pass = 0; pass < passes && !condition(); ++pass)
        {
            m_pHost->enumeration().triggerEnumeration();
            changed.wait(limitMs / passes);
        }
        return condition();
    }

    bool open() const
    {
        const auto camera = find();
        const bool isOpen = m_pHost->control().open(camera, false);
        EXPECT_TRUE(isOpen) << camera->errorString().toStdString();
        return isOpen;
    }

    std::unique_ptr<::Test::CFakeCamera> m_pCamera;
    std::unique_ptr<HostKit::CHost> m_pHost;
};

/** The environment names no adapter, the settings do. */
class HostOnConfiguredAdapter : public HostOnGigE
{
protected:
    void SetUp() override
    {
        qunsetenv("CAMERAPOOL_GIGE_ADAPTERS");
        QSettings().setValue(QStringLiteral("GigE/Adapters"), QStringLiteral("127.0.0.1"));
        HostOnGigE::SetUp();
    }
    void TearDown() override
    {
        QSettings().remove(QStringLiteral("GigE"));
        m_pHost.reset();
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", "127.0.0.1");
    }
};

TEST_F(HostOnConfiguredAdapter, findsAndOpensTheCameraThere)
{
    EXPECT_TRUE(open());
}

TEST_F(HostOnGigE, grabsTwoHundredImagesWithoutLosingOne)
{
    ASSERT_TRUE(open());
    const auto camera = find();
    constexpr int wanted = 200;
    ParameterCollection::CFloatParameter rate(m_pHost->parameters().getParameterCollection(camera),
                                              QStringLiteral("AcquisitionFrameRate"));
    rate.setValue(rate.maximum());
    int images = 0;
    int failed = 0;
    quint64 last = 0;
    quint64 gaps = 0;
    // Of the statistics, one with each image: a spy on the images would keep every buffer.
    QSignalSpy statistics(&m_pHost->status(), &ICameraStatusService::cameraStatisticUpdated);
    QObject receiver;
    QObject::connect(&m_pHost->status(), &ICameraStatusService::cameraImageGrabbed, &receiver,
                     [&](const auto&, const Velmo::CGrabResultPtr& result)
                     {
                         ++images;
                         gaps += last != 0 && result->GetBlockID() != last + 1 ? 1 : 0;
                         last = result->GetBlockID();
                     });
    QObject::connect(&m_pHost->status(), &ICameraStatusService::cameraImageGrabFailed, &receiver, [&] { ++failed; });
    m_pHost->stream().startGrabbing(camera);
    const ParameterCollection::CIntegerParameter buffers(m_pHost->parameters().getParameterCollection(camera),
                                                         QStringLiteral("@CameraInstance/MaxNumBuffer"));
    EXPECT_GT(buffers.value(), wanted);
    while (images < wanted && statistics.wait(limitMs))
    {
    }
    m_pHost->stream().stopGrabbing(camera);
    EXPECT_GE(images, wanted);
    EXPECT_EQ(failed, 0) << camera->errorString().toStdString();
    EXPECT_EQ(gaps, 0U);
}

TEST_F(HostOnGigE, aSingleShotGivesOneImageAndStops)
{
    ASSERT_TRUE(open());
    const auto camera = find();
    QSignalSpy grabbed(&m_pHost->status(), &ICameraStatusService::cameraImageGrabbed);
    QSignalSpy stopped(&m_pHost->status(), &ICameraStatusService::cameraGrabStopped);
    m_pHost->stream().singleShot(camera, 5000);
    ASSERT_TRUE(stopped.count() > 0 || stopped.wait(limitMs));
    ASSERT_TRUE(grabbed.count() > 0 || grabbed.wait(limitMs));
    EXPECT_EQ(grabbed.count(), 1);
    EXPECT_FALSE(m_pHost->status().isCameraGrabbing(camera));
}

TEST_F(HostOnGigE, featuresAreReadAndWritten)
{
    ASSERT_TRUE(open());
    const auto collection = m_pHost->parameters().getParameterCollection(find());
    ParameterCollection::CIntegerParameter width(collection, QStringLiteral("@CameraDevice/Width"));
    ASSERT_TRUE(width.isWritable());
    width.setValue(256);
    EXPECT_EQ(width.value(), 256);
    EXPECT_THROW(width.setValue(width.maximum() + 1), GenICam::OutOfRangeException);
    const ParameterCollection::CStringParameter model(collection, QStringLiteral("DeviceModelName"));
    EXPECT_EQ(model.value(), QStringLiteral("Fake"));
}

TEST_F(HostOnGigE, aKilledCameraIsLostOnceAndComesBackWithTheSameRecord)
{
    ASSERT_TRUE(open());
    const CameraInfoPtr before = find();
    QSignalSpy lost(&m_pHost->status(), &ICameraStatusService::cameraConnectionLost);
    QSignalSpy closed(&m_pHost->status(), &ICameraStatusService::deviceClosed);
    QSignalSpy disconnected(&m_pHost->status(), &ICameraStatusService::deviceDisconnected);
    m_pHost->stream().startGrabbing(before);
    // A search that misses the camera first would tell that it is gone, and no loss.
    m_pHost->enumeration().setEnumerationEnabled(false);
    m_pCamera->Kill();
    ASSERT_TRUE(lost.count() > 0 || lost.wait(limitMs));
    EXPECT_EQ(lost.first().first().value<CameraInfoPtr>(), before);
    ASSERT_TRUE(closed.count() > 0 || closed.wait(limitMs));
    m_pHost->enumeration().setEnumerationEnabled(true);
    ASSERT_TRUE(disconnected.count() > 0 || disconnected.wait(limitMs));
    EXPECT_TRUE(find().isNull());

    m_pCamera->Restart();
    ASSERT_TRUE(waitFor([this] { return !find().isNull(); })) << "the camera was not found again";
    EXPECT_EQ(find(), before);
    EXPECT_TRUE(open());
    EXPECT_EQ(lost.count(), 1);
}

} // namespace
