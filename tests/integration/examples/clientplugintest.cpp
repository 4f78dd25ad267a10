// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icamerastatusservice.h"
#include "integration/plugin/hostfixture.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"
#include "velmo/velmo.h"

#include <QRegularExpression>

namespace
{

using Plugin::CameraPool::ICameraEnumerationService;
using Plugin::CameraPool::ICameraStatusService;

/** The example client in the host, on one emulated camera. It tells of each image in the log. */
class ClientPlugin : public ::Test::HostFixture
{
protected:
    QStringList pluginFolders() const override
    {
        return HostFixture::pluginFolders() << QStringLiteral(CLIENT_PLUGIN_FOLDER);
    }
    QByteArray emulation() const override { return R"({"cameras": [{"serial": "CLIENT", "frameRate": 50}]})"; }
    void TearDown() override
    {
        m_manager.reset(); // its threads write to the log
        HostFixture::TearDown();
    }
    /** Waits until the client has told something of an image that matches. */
    bool tells(const QString& pattern, int patienceMs = s_waitMs) const
    {
        const QRegularExpression wanted(QStringLiteral("EmuMono1280 \\(CLIENT\\): .*") + pattern);
        return QTest::qWaitFor([&] { return !m_log.lines().filter(wanted).isEmpty(); }, patienceMs);
    }
    static constexpr int s_patienceMs = 60000;
    ::Test::CMessageLog m_log;
};

TEST_F(ClientPlugin, isStartedAfterThePluginItNeeds)
{
    ASSERT_EQ(m_manager->startedPlugins().size(), 4);
    EXPECT_EQ(m_manager->startedPlugins().last()->name(), QStringLiteral("Client"));
}

TEST_F(ClientPlugin, looksAtEachImageOfTheFirstCamera)
{
    EXPECT_TRUE(tells(QStringLiteral("image 1, .*not compressed")));
    EXPECT_TRUE(tells(QStringLiteral("image 5, .*not compressed")));
}

TEST_F(ClientPlugin, readsChunkValues)
{
    EXPECT_TRUE(tells(QStringLiteral("chunks of frame \\d+$")));
}

TEST_F(ClientPlugin, letsGoOfItsCameraWhenTheHostStops)
{
    ASSERT_TRUE(tells(QStringLiteral("image 1,")));
    m_manager->stop();
    EXPECT_TRUE(m_registry.services().isEmpty());
    EXPECT_EQ(Velmo::VelmoInitializationCount(), 0U);
}

/** The same on a camera whose loss only a discovery pass notices. */
class ClientPluginOnAQuietCamera : public ClientPlugin
{
protected:
    QByteArray emulation() const override
    {
        return R"({"cameras": [{"serial": "CLIENT", "frameRate": 50, "faults": {"removalReports": 0}}]})";
    }
    void plug(const QByteArray& data) const
    {
        const QString name = m_folder.filePath(QStringLiteral("cameras.json"));
        QFile file(name + QStringLiteral(".new"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(data);
        file.close();
        QFile::remove(name);
        ASSERT_TRUE(file.rename(name));
    }
};

TEST_F(ClientPluginOnAQuietCamera, takesTheCameraAgainWhenItIsPluggedAgain)
{
    ASSERT_TRUE(tells(QStringLiteral("image 1,")));
    bool isGone = false;
    QObject receiver;
    QObject::connect(service<ICameraStatusService>().data(), &ICameraStatusService::deviceDisconnected, &receiver,
                     [&] { isGone = true; });
    plug(R"({"cameras": []})");
    const auto enumeration = service<ICameraEnumerationService>();
    ASSERT_TRUE(QTest::qWaitFor(
        [&]
        {
            enumeration->triggerEnumeration();
            return isGone;
        },
        s_patienceMs));
    m_log.clear();
    plug(emulation());
    enumeration->triggerEnumeration();
    EXPECT_TRUE(tells(QStringLiteral("image 1,"), s_patienceMs));
    EXPECT_TRUE(tells(QStringLiteral("chunks of frame 1$")));
}

/** The same on a camera that compresses. */
class ClientPluginOnACompressingCamera : public ClientPlugin
{
protected:
    QByteArray emulation() const override
    {
        return R"({"cameras": [{"serial": "CLIENT", "frameRate": 50, "features": {"ImageCompressionMode": "Lossless"}}]})";
    }
};

TEST_F(ClientPluginOnACompressingCamera, decodesTheImages)
{
    EXPECT_TRUE(tells(QStringLiteral("image \\d+, %1 bytes decoded from \\d+$").arg(1280 * 1024)));
}

} // namespace
