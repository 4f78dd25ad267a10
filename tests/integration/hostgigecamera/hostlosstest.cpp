// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "hostongigecamera.h"
#include "imagecounter.h"
#include "support/networknamespace.h"

#include <QElapsedTimer>

namespace
{

using HostGigECamera::CImageCounter;
using HostGigECamera::HostOnGigECamera;
using HostGigECamera::limitMs;
using HostKit::CameraInfoPtr;
using Plugin::CameraPool::ICameraStatusService;
using ::Test::CCameraProgram;
using ::Test::CPeerNamespace;
using ::Test::RunIp;
using ::Test::WriteConfig;

constexpr int lossLimitMs = 3000;

/** Two cameras at the end of a cable, each a program of its own. */
class HostOnTwoGigECameras : public HostOnGigECamera
{
protected:
    void SetUp() override
    {
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", "va");
        m_far.Connect("va", "192.168.77.1/24", "vb", "192.168.77.2/24");
        m_far.Visit(
            [this]
            {
                RunIp("addr add 192.168.77.3/24 broadcast + dev vb");
                m_pCamera = startCamera("192.168.77.2", "GC-1");
                m_pOther = startCamera("192.168.77.3", "GC-2");
            });
        startHost();
        ASSERT_TRUE(waitFor([this] { return !named("GC-1").isNull() && !named("GC-2").isNull(); }));
    }
    void TearDown() override { qputenv("CAMERAPOOL_GIGE_ADAPTERS", "127.0.0.1"); }

    static std::unique_ptr<CCameraProgram> startCamera(const std::string& address, const std::string& serial)
    {
        return std::make_unique<CCameraProgram>(
            std::vector<std::string>{"--address", address, "--config", WriteConfig("", "\"frameRate\": 50", serial)});
    }

    CPeerNamespace m_far;
    std::unique_ptr<CCameraProgram> m_pOther;
};

TEST_F(HostOnTwoGigECameras, theDeathOfOneCostsTheOtherNoImage)
{
    const CameraInfoPtr first = named("GC-1");
    const CameraInfoPtr second = named("GC-2");
    for (const CameraInfoPtr& camera : {first, second})
    {
        ASSERT_TRUE(m_pHost->control().open(camera, false)) << camera->errorString().toStdString();
    }
    const CImageCounter ofFirst(m_pHost->status(), first);
    const CImageCounter ofSecond(m_pHost->status(), second);
    QSignalSpy lost(&m_pHost->status(), &ICameraStatusService::cameraConnectionLost);
    m_pHost->stream().startGrabbing(first);
    m_pHost->stream().startGrabbing(second);
    ASSERT_TRUE(ofFirst.waitFor(20) && ofSecond.waitFor(20));

    // A search that misses the camera first would tell that it is gone, and no loss.
    m_pHost->enumeration().setEnumerationEnabled(false);
    QElapsedTimer sinceDeath;
    m_pCamera->Kill();
    sinceDeath.start();
    ASSERT_TRUE(lost.count() > 0 || lost.wait(limitMs));
    EXPECT_LT(sinceDeath.elapsed(), lossLimitMs);
    EXPECT_EQ(lost.first().first().value<CameraInfoPtr>(), first);
    // Longer than the engine would wait for the answers of the dead one.
    ASSERT_TRUE(ofSecond.waitFor(ofSecond.images + 500));
    EXPECT_EQ(ofSecond.gaps, 0);
    EXPECT_EQ(ofSecond.failed, 0);
    EXPECT_EQ(lost.count(), 1);
    m_pHost->stream().stopGrabbing(second);
}

/** How long the camera is away, in milliseconds: less and more than the loss takes to be noticed by silence. */
class HostOnRebootingGigECamera : public HostOnGigECamera, public testing::WithParamInterface<int>
{
};

TEST_P(HostOnRebootingGigECamera, comesBackWithTheSameRecordAndTheNextGrabWorks)
{
    start("", "\"bootTimeMs\": " + std::to_string(GetParam()));
    const CImageCounter images(m_pHost->status(), m_info);
    QSignalSpy lost(&m_pHost->status(), &ICameraStatusService::cameraConnectionLost);
    QSignalSpy closed(&m_pHost->status(), &ICameraStatusService::deviceClosed);
    m_pHost->stream().startGrabbing(m_info);
    ASSERT_TRUE(images.waitFor(10));
    m_pHost->enumeration().setEnumerationEnabled(false); // as above
    GenApi::CCommandPtr(m_pNodes->GetNode("DeviceReset"))->Execute();
    ASSERT_TRUE(lost.count() > 0 || lost.wait(lossLimitMs));
    EXPECT_EQ(lost.first().first().value<CameraInfoPtr>(), m_info);
    ASSERT_TRUE(closed.count() > 0 || closed.wait(limitMs));
    m_pHost->enumeration().setEnumerationEnabled(true);

    ASSERT_TRUE(waitFor([this] { return named("GC-1") == m_info; })) << "it did not come back";
    ASSERT_TRUE(m_pHost->control().open(m_info, false)) << m_info->errorString().toStdString();
    const int before = images.images;
    const int failedBefore = images.failed; // that under way when the camera went
    m_pHost->stream().startGrabbing(m_info);
    EXPECT_TRUE(images.waitFor(before + 10));
    EXPECT_EQ(images.failed, failedBefore);
    EXPECT_EQ(lost.count(), 1);
    m_pHost->stream().stopGrabbing(m_info);
}

INSTANTIATE_TEST_SUITE_P(Away, HostOnRebootingGigECamera, testing::Values(500, 4000));

} // namespace
