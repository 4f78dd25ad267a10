// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/inodemap.h"
#include "integration/poolcli/poolcliprogram.h"
#include "support/cameraprogram.h"
#include "support/gigeclient.h"
#include "transports/gige/gigetransport.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QStringList>
#include <QThread>

namespace
{

using namespace Velmo;
using ::Test::CCameraProgram;
using ::Test::CGigEClient;
using ::Test::CRunningStream;
using ::Test::Execute;
using ::Test::WriteConfig;

constexpr int LimitMs = 60000;

/** Until the condition holds; false when the time is over. The kernel tells of its tables' changes to nobody. */
template <class Condition> bool waitUntil(Condition condition)
{
    constexpr unsigned long pauseMs = 5;
    QElapsedTimer timer;
    timer.start();
    bool holds = condition();
    for (; !holds && timer.elapsed() < LimitMs; holds = condition())
    {
        QThread::msleep(pauseMs);
    }
    return holds;
}

/** How many sockets of this network namespace have joined that multicast group. */
int countListeners(std::uint32_t group)
{
    QFile file(QStringLiteral("/proc/thread-self/net/igmp"));
    if (!file.open(QIODevice::ReadOnly))
    {
        return -1;
    }
    // Linux: a line for each adapter, and one for each of its groups: address as it lies in memory, sockets ...
    const std::uint32_t inMemory = __builtin_bswap32(group);
    const QString address = QStringLiteral("%1").arg(inMemory, 8, 16, QLatin1Char('0')).toUpper();
    const QStringList lines = QString::fromLatin1(file.readAll()).split(QLatin1Char('\n'));
    for (const QString& line : lines)
    {
        const QStringList columns = line.simplified().split(QLatin1Char(' '));
        if (columns.size() > 1 && columns.at(0) == address)
        {
            return columns.at(1).toInt();
        }
    }
    return 0;
}

/** The real program as a monitor, while the test's process controls the camera and streams to a group. */
class PoolCliNetworkMonitor : public PoolCliTest::PoolCliProgram
{
protected:
    PoolCliNetworkMonitor() { m_gigeAdapters = QStringLiteral("127.0.0.1"); }
    void SetUp() override
    {
        PoolCliTest::PoolCliProgram::SetUp();
        writeData(R"({"cameras": []})");
        GigE::SetAdapters({"127.0.0.1"});
    }
    void TearDown() override { GigE::SetAdapters({}); }

    std::unique_ptr<IVelmoDevice> openForMulticast()
    {
        std::unique_ptr<IVelmoDevice> pDevice = m_client.Open("GC-1");
        pDevice->GetStream(0)->Open();
        GenApi::INodeMap& nodeMap = *pDevice->GetStream(0)->GetNodeMap();
        GenApi::CEnumerationPtr(nodeMap.GetNode("TransmissionType"))->FromString("Multicast");
        m_group = static_cast<std::uint32_t>(::Test::GetInteger(nodeMap, "DestinationAddr"));
        return pDevice;
    }
    /** Starts it and waits until it listens beside the controller. */
    void startMonitor(const QStringList& arguments)
    {
        ASSERT_EQ(countListeners(m_group), 1) << "the controller alone";
        prepare(m_monitor);
        m_monitor.setProcessChannelMode(QProcess::MergedChannels);
        m_monitor.start(QStringLiteral(POOLCLI), QStringList{"monitor", "GC-1"} + arguments);
        ASSERT_TRUE(m_monitor.waitForStarted(LimitMs));
        ASSERT_TRUE(waitUntil([this] { return countListeners(m_group) == 2; })) << m_monitor.readAll().constData();
    }
    /** The program says once a second how many images it has. */
    bool waitForText(const QByteArray& text)
    {
        QElapsedTimer timer;
        timer.start();
        while (!m_output.contains(text) && timer.elapsed() < LimitMs && m_monitor.state() != QProcess::NotRunning)
        {
            m_monitor.waitForReadyRead(LimitMs);
            m_output += m_monitor.readAll();
        }
        m_output += m_monitor.readAll();
        return m_output.contains(text);
    }

    CGigEClient m_client;
    std::uint32_t m_group = 0;
    QProcess m_monitor;
    QByteArray m_output;
};

TEST_F(PoolCliNetworkMonitor, inAProcessOfItsOwnSeesEveryImageAndDisturbsNobody)
{
    // Few small images at a time, so that no buffer fills up, however slow the other process is.
    constexpr int batches = 4;
    constexpr int imagesInBatch = 5;
    const CCameraProgram cameras({"--config", WriteConfig("\"Width\": 64, \"Height\": 48, \"TriggerMode\": \"On\", "
                                                          "\"TriggerSource\": \"Software\"")});
    const std::unique_ptr<IVelmoDevice> pDevice = openForMulticast();
    CRunningStream controller(*pDevice, 20);
    ASSERT_NO_FATAL_FAILURE(startMonitor({"-n", QString::number(batches * imagesInBatch)}));
    std::uint64_t number = 0;
    const auto takeImage = [&]
    {
        Execute(*pDevice, "TriggerSoftware");
        const Transport::SStreamResult result = controller.Next();
        EXPECT_EQ(result.status, Transport::EResultStatus::Ok) << result.errorDescription;
        EXPECT_EQ(result.blockId, ++number);
    };
    for (int batch = 1; batch <= batches; ++batch)
    {
        for (int image = 0; image < imagesInBatch; ++image)
        {
            takeImage();
        }
        const QString seen = QStringLiteral(": %1 images, 0 failed, 0 missing").arg(batch * imagesInBatch);
        ASSERT_TRUE(waitForText(seen.toUtf8())) << m_output.constData();
    }
    ASSERT_TRUE(m_monitor.state() == QProcess::NotRunning || m_monitor.waitForFinished(LimitMs));
    EXPECT_EQ(m_monitor.exitCode(), 0) << m_output.constData();

    // It has left: the controller has the camera and the group as before.
    EXPECT_EQ(countListeners(m_group), 1);
    takeImage();
    EXPECT_FALSE(pDevice->IsRemoved());
    EXPECT_EQ(controller.Statistic("StreamDeliveredFrameCount"), batches * imagesInBatch + 1);
    EXPECT_EQ(controller.Statistic("StreamLostFrameCount"), 0);
}

} // namespace
