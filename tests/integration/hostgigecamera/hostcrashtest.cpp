// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icamerastreamcontrolservice.h"
#include "hostongigecamera.h"
#include "imagecounter.h"
#include "support/program.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

namespace
{

using HostGigECamera::CImageCounter;
using HostGigECamera::HostOnGigECamera;
using HostGigECamera::limitMs;
using ::Test::CProgram;

constexpr int heartbeatMs = 3000; // the cameras' default

TEST_F(HostOnGigECamera, aCrashedControllersCameraIsUsableAfterItsHeartbeatTimeout)
{
    const QTemporaryDir folder; // the other application's settings
    qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
    find("");
    CProgram controller({POOLCLI, "grab", "GC-1", "--seconds", "60"});
    ASSERT_TRUE(controller.WaitForOutput("GC-1): ", 2, std::chrono::seconds(20))) << controller.GetOutput();
    EXPECT_FALSE(m_pHost->control().open(m_info, false)) << "it was not controlled";
    EXPECT_TRUE(m_info->errorString().contains(QStringLiteral("in use by the application at 127.0.0.1")))
        << m_info->errorString().toStdString();

    QElapsedTimer sinceCrash;
    controller.Kill();
    sinceCrash.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_pHost->control().open(m_info, false); }, limitMs))
        << m_info->errorString().toStdString();
    EXPECT_LT(sinceCrash.elapsed(), heartbeatMs + 1000);
    const CImageCounter images(m_pHost->status(), m_info);
    m_pHost->stream().startGrabbing(m_info);
    EXPECT_TRUE(images.waitFor(10));
    EXPECT_EQ(images.failed, 0);
    m_pHost->stream().stopGrabbing(m_info);
}

} // namespace
