// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "integration/poolcli/poolcliprogram.h"
#include "protocols/gvbsregisters.h"
#include "simulator/registers.h"
#include "support/cameraprogram.h"
#include "support/fakecamera.h"
#include "support/gvcppeer.h"

#include <gtest/gtest.h>

#include <csignal>

namespace
{

using PoolCliTest::SOutcome;
using ::Test::CCameraProgram;
using ::Test::CFakeCamera;
using ::Test::CGvcpPeer;
using ::Test::WriteConfig;

/** The real program in front of GigE cameras on loopback, which keep their settings when it has ended. */
class PoolCliNetworkEvents : public PoolCliTest::PoolCliProgram
{
protected:
    PoolCliNetworkEvents() { m_gigeAdapters = QStringLiteral("127.0.0.1"); }
    void SetUp() override
    {
        PoolCliTest::PoolCliProgram::SetUp();
        writeData(R"({"cameras": []})");
    }
    /** EventSelector, then EventNotification of each event. */
    static std::vector<std::uint32_t> settings()
    {
        namespace Register = Simulator::Register;
        CGvcpPeer observer;
        std::vector<std::uint32_t> values{observer.Read(static_cast<std::uint32_t>(Register::EventSelector))};
        for (std::uint32_t event = 0; event < 4; ++event)
        {
            values.push_back(observer.Read(static_cast<std::uint32_t>(Register::EventNotification) + 4 * event));
        }
        return values;
    }
    const std::vector<std::uint32_t> m_initial{1, 0, 1, 0, 0}; // ExposureStart is selected, and on
    const std::string m_features = R"("EventSelector": "ExposureStart", "EventNotification[ExposureStart]": "On")";
};

TEST_F(PoolCliNetworkEvents, comeByTheMessageChannelAndLeaveTheSettingsAsTheyWere)
{
    const CCameraProgram cameras({"--config", WriteConfig(m_features)});
    ASSERT_EQ(settings(), m_initial);
    const SOutcome outcome =
        run({"events", "GC-1", "Test", "ExposureEnd", "-n", "3", "--grab", "--set", "TestEventGenerate"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.constData();
    EXPECT_EQ(outcome.out.trimmed().split('\n').size(), 3) << outcome.out.constData();
    EXPECT_TRUE(outcome.out.contains("Test  id=0x9010")) << outcome.out.constData();
    EXPECT_TRUE(outcome.out.contains("EventExposureEndFrameID=1")) << outcome.out.constData();
    EXPECT_FALSE(outcome.out.contains("ExposureStart")) << outcome.out.constData();
    EXPECT_EQ(settings(), m_initial);
}

TEST_F(PoolCliNetworkEvents, ctrlCRestoresTheSettingsToo)
{
    const CCameraProgram cameras({"--config", WriteConfig(m_features)});
    QProcess process;
    prepare(process);
    process.start(QStringLiteral(POOLCLI), {"events", "GC-1", "--set", "TestEventGenerate"});
    constexpr int limitMs = 30000;
    ASSERT_TRUE(process.waitForReadyRead(limitMs)) << "no event";
    EXPECT_EQ(settings(), (std::vector<std::uint32_t>{3, 1, 1, 1, 1}));
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(limitMs));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    EXPECT_EQ(settings(), m_initial);
}

TEST_F(PoolCliNetworkEvents, aCameraWithoutThemIsRefused)
{
    const CFakeCamera camera("GV77");
    const SOutcome outcome = run({"events", "GV77"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("poolcli: The camera reports no events.\n")) << outcome.err.constData();
}

} // namespace
