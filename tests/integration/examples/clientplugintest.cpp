// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/plugin/hostfixture.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"
#include "velmo/velmo.h"

#include <QRegularExpression>

namespace
{

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
    bool tells(const QString& pattern) const
    {
        const QRegularExpression wanted(QStringLiteral("EmuMono1280 \\(CLIENT\\): .*") + pattern);
        return QTest::qWaitFor([&] { return !m_log.lines().filter(wanted).isEmpty(); }, s_waitMs);
    }
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
    EXPECT_TRUE(tells(QStringLiteral("chunk frame \\d+ at block \\d+")));
}

TEST_F(ClientPlugin, letsGoOfItsCameraWhenTheHostStops)
{
    ASSERT_TRUE(tells(QStringLiteral("image 1,")));
    m_manager->stop();
    EXPECT_TRUE(m_registry.services().isEmpty());
    EXPECT_EQ(Velmo::VelmoInitializationCount(), 0U);
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
    EXPECT_TRUE(tells(QStringLiteral("chunk frame \\d+ at block \\d+, %1 bytes decoded from \\d+$").arg(1280 * 1024)));
}

} // namespace
