// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"
#include "camerapool/icameraactioncommandsservice.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "gigeserver/server.h"
#include "hostkit/cameranames.h"
#include "hostkit/host.h"
#include "parametercollection/parameters.h"
#include "support/networknamespace.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include <map>

namespace
{

using HostKit::CameraInfoPtr;
using Plugin::CameraPool::ICameraEnumerationService;
using Plugin::CameraPool::ICameraStatusService;
using Plugin::CameraPool::SGigEActionCommandResult;

constexpr int limitMs = 20000;
constexpr int cameraCount = 8;
constexpr unsigned int deviceKey = 0x11223344;
constexpr unsigned int groupKey = 7;
const QString everywhere = QStringLiteral("255.255.255.255");

class CNetworkEnvironment : public ::testing::Environment
{
public:
    void SetUp() override { ::Test::EnterOwnNetworkNamespace(); }
};

const auto* const pEnvironment = ::testing::AddGlobalTestEnvironment(new CNetworkEnvironment);

/** A whole host with the real plugins, and eight GigE Vision cameras that wait for the action signal 1; the mask of
 * each has a bit of its own. */
class HostActions : public testing::Test
{
protected:
    static std::string address(int camera) { return "127.0.0." + std::to_string(21 + camera); }

    static std::vector<GigEServer::SServedCamera> cameras()
    {
        std::vector<GigEServer::SServedCamera> all(cameraCount);
        for (int i = 0; i < cameraCount; ++i)
        {
            auto& camera = all[static_cast<std::size_t>(i)];
            camera.address = GigEServer::FindAddress(address(i));
            camera.config.serialNumber = "ACT-" + std::to_string(i);
            camera.config.sensorWidth = 64;
            camera.config.sensorHeight = 48;
            camera.config.clockOffsetNs = 1'000'000'000LL * i;
            camera.config.features = {{"ActionDeviceKey", std::to_string(deviceKey)},
                                      {"ActionGroupKey[1]", std::to_string(groupKey)},
                                      {"ActionGroupMask[1]", std::to_string(1 << i)},
                                      {"TriggerMode", "On"},
                                      {"TriggerSource", "Action1"}};
        }
        return all;
    }

    void SetUp() override
    {
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", "127.0.0.1");
        qputenv("CAMERAPOOL_EMULATION_CAMERAS", "0");
        m_pServer = std::make_unique<GigEServer::CServer>(cameras());
        m_pHost = std::make_unique<HostKit::CHost>(QStringLiteral(PLUGIN_FOLDER));
        ASSERT_TRUE(m_pHost->start(QStringLiteral("en"))) << m_pHost->errors().join('\n').toStdString();
        ASSERT_TRUE(findAll()) << m_cameras.size() << " cameras were found";
        QObject::connect(&m_pHost->status(), &ICameraStatusService::cameraImageGrabbed, &m_receiver,
                         [this](const auto& info, const Velmo::CGrabResultPtr& result)
                         { m_images[info->getSerialNumber()].append(result->GetTimeStamp()); });
        for (const auto& camera : qAsConst(m_cameras))
        {
            ASSERT_TRUE(m_pHost->control().open(camera, false)) << camera->errorString().toStdString();
            m_pHost->stream().startGrabbing(camera);
            ASSERT_TRUE(m_pHost->status().isCameraGrabbing(camera));
        }
    }

    bool findAll()
    {
        QSignalSpy changed(&m_pHost->enumeration(), &ICameraEnumerationService::enumerationChanged);
        constexpr int passes = 40;
        for (int pass = 0; pass < passes && m_cameras.size() != cameraCount; ++pass)
        {
            m_pHost->enumeration().triggerEnumeration();
            changed.wait(limitMs / passes);
            m_cameras.clear();
            const auto layers = m_pHost->enumeration().enumerate();
            for (const auto& layer : layers)
            {
                const auto records = layer->getCameraInfoList().toBaseInfoVector();
                for (const auto& record : records)
                {
                    m_cameras.append(record.objectCast<Plugin::CameraPool::ICameraInfo>());
                }
            }
        }
        return m_cameras.size() == cameraCount;
    }

    /** Until so many cameras have sent so many images each. */
    bool waitForImages(int cameraNumber, int images)
    {
        return QTest::qWaitFor(
            [&]
            {
                int cameras = 0;
                for (const auto& [serial, timestamps] : m_images)
                {
                    cameras += timestamps.size() >= images ? 1 : 0;
                }
                return cameras >= cameraNumber;
            },
            limitMs);
    }

    template <class Parameter> Parameter parameter(const CameraInfoPtr& camera, const char* name) const
    {
        return Parameter(m_pHost->parameters().getParameterCollection(camera), QString::fromLatin1(name));
    }

    std::unique_ptr<GigEServer::CServer> m_pServer;
    std::unique_ptr<HostKit::CHost> m_pHost;
    QVector<CameraInfoPtr> m_cameras;
    std::map<QString, QVector<quint64>> m_images; // timestamps by serial number
    QObject m_receiver;
    QVector<SGigEActionCommandResult> m_results = QVector<SGigEActionCommandResult>(cameraCount);
    unsigned int m_count = cameraCount;
};

TEST_F(HostActions, oneCommandTriggersEightCamerasOnce)
{
    for (const auto& camera : qAsConst(m_cameras))
    {
        EXPECT_TRUE(m_pHost->actions().isSupported(camera));
        EXPECT_TRUE(m_pHost->actions().isScheduledSupported(camera));
    }
    EXPECT_TRUE(m_pHost->actions().issue(deviceKey, groupKey, 0xFF, m_results, everywhere, limitMs, &m_count));
    ASSERT_EQ(m_results.size(), cameraCount);
    for (const auto& result : qAsConst(m_results))
    {
        EXPECT_FALSE(result.hasError) << result.deviceAddress;
    }
    EXPECT_TRUE(waitForImages(cameraCount, 1));
    // The second command's images come after all of the first's.
    m_results.resize(cameraCount);
    EXPECT_TRUE(m_pHost->actions().issue(deviceKey, groupKey, 0xFF, m_results, everywhere, limitMs, &m_count));
    EXPECT_TRUE(waitForImages(cameraCount, 2));
    for (const auto& [serial, timestamps] : m_images)
    {
        EXPECT_EQ(timestamps.size(), 2) << serial.toStdString();
    }
}

TEST_F(HostActions, maskChoosesTheCameras)
{
    m_results.resize(2);
    m_count = 2;
    EXPECT_TRUE(m_pHost->actions().issue(deviceKey, groupKey, 0x05, m_results, everywhere, limitMs, &m_count));
    EXPECT_TRUE(waitForImages(2, 1));
    EXPECT_EQ(m_images.size(), 2U);
    EXPECT_EQ(m_images.count(QStringLiteral("ACT-0")), 1U);
    EXPECT_EQ(m_images.count(QStringLiteral("ACT-2")), 1U);
}

TEST_F(HostActions, scheduledCommandGivesEightImagesOfOneTime)
{
    using ParameterCollection::CBooleanParameter;
    using ParameterCollection::CCommandParameter;
    using ParameterCollection::CEnumParameter;
    using ParameterCollection::CIntegerParameter;
    EXPECT_TRUE(m_pHost->actions().schedule(deviceKey, groupKey, 0xFF, 1, m_results, everywhere, limitMs, &m_count));
    ASSERT_EQ(m_results.size(), cameraCount);
    EXPECT_TRUE(m_results.constFirst().hasError) << "no clock is synchronised yet";
    for (const auto& camera : qAsConst(m_cameras))
    {
        parameter<CBooleanParameter>(camera, "PtpEnable").setValue(true);
    }
    for (const auto& camera : qAsConst(m_cameras))
    {
        EXPECT_TRUE(QTest::qWaitFor(
            [&]
            {
                parameter<CCommandParameter>(camera, "PtpDataSetLatch").execute();
                return parameter<CEnumParameter>(camera, "PtpStatus").value() == QLatin1String("Slave");
            },
            limitMs));
    }
    parameter<CCommandParameter>(m_cameras.constFirst(), "TimestampLatch").execute();
    const auto now = parameter<CIntegerParameter>(m_cameras.constFirst(), "TimestampLatchValue").value();
    constexpr unsigned long long aheadNs = 500'000'000;
    const unsigned long long due = static_cast<unsigned long long>(now) + aheadNs;
    EXPECT_TRUE(m_pHost->actions().schedule(deviceKey, groupKey, 0xFF, due, m_results, everywhere, limitMs, &m_count));
    EXPECT_TRUE(waitForImages(cameraCount, 1));
    for (const auto& [serial, timestamps] : m_images)
    {
        EXPECT_EQ(timestamps, QVector<quint64>{due}) << serial.toStdString();
    }
}

} // namespace
