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
#include "support/actionresponder.h"
#include "support/networknamespace.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <map>

namespace
{

using HostKit::CameraInfoPtr;
using ParameterCollection::CBooleanParameter;
using ParameterCollection::CCommandParameter;
using ParameterCollection::CEnumParameter;
using ParameterCollection::CIntegerParameter;
using Plugin::CameraPool::ICameraEnumerationService;
using Plugin::CameraPool::ICameraStatusService;
using Plugin::CameraPool::SGigEActionCommandResult;

constexpr int limitMs = 20000;
constexpr unsigned int shortMs = 300; // for answers that do not come
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

/** A whole host with the real plugins, and eight GigE Vision cameras, or a few less, that wait for the action signal 1;
 * the mask of each has a bit of its own. */
class HostActions : public testing::Test
{
protected:
    explicit HostActions(int served = cameraCount) : m_served(served) {}

    static std::string address(int camera) { return "127.0.0." + std::to_string(21 + camera); }

    std::vector<GigEServer::SServedCamera> cameras() const
    {
        std::vector<GigEServer::SServedCamera> all(static_cast<std::size_t>(m_served));
        for (int i = 0; i < m_served; ++i)
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
        for (int pass = 0; pass < passes && m_cameras.size() != m_served; ++pass)
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
        return m_cameras.size() == m_served;
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

    CameraInfoPtr camera(int number) const
    {
        const QString serial = QStringLiteral("ACT-%1").arg(number);
        const auto found = std::find_if(m_cameras.cbegin(), m_cameras.cend(),
                                        [&serial](const auto& info) { return info->getSerialNumber() == serial; });
        return found == m_cameras.cend() ? CameraInfoPtr() : *found;
    }
    /** Lets the clocks of the cameras with these numbers follow the one that all of them share. */
    void synchronise(int from, int to)
    {
        for (int i = from; i < to; ++i)
        {
            parameter<CBooleanParameter>(camera(i), "PtpEnable").setValue(true);
        }
        for (int i = from; i < to; ++i)
        {
            EXPECT_TRUE(QTest::qWaitFor(
                [&]
                {
                    parameter<CCommandParameter>(camera(i), "PtpDataSetLatch").execute();
                    return parameter<CEnumParameter>(camera(i), "PtpStatus").value() == QLatin1String("Slave");
                },
                limitMs));
        }
    }
    /** A time of the shared clock that is a second away. */
    unsigned long long soon() const
    {
        constexpr unsigned long long aheadNs = 1'000'000'000;
        parameter<CCommandParameter>(camera(0), "TimestampLatch").execute();
        const auto now = parameter<CIntegerParameter>(camera(0), "TimestampLatchValue").value();
        return static_cast<unsigned long long>(now) + aheadNs;
    }
    /** "address=accepted|refused" of each answer, sorted. */
    QStringList answers() const
    {
        QStringList texts;
        for (const auto& result : m_results)
        {
            texts.append(QStringLiteral("%1=%2").arg(QString::fromLatin1(result.deviceAddress),
                                                     result.hasError ? "refused" : "accepted"));
        }
        texts.sort();
        return texts;
    }
    /** Room and number as at the beginning. */
    void expect(int number)
    {
        m_results.resize(number);
        m_count = static_cast<unsigned int>(number);
    }

    template <class Parameter> Parameter parameter(const CameraInfoPtr& camera, const char* name) const
    {
        return Parameter(m_pHost->parameters().getParameterCollection(camera), QString::fromLatin1(name));
    }

    const int m_served;
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

TEST_F(HostActions, otherKeysAndMasksAreMetWithSilence)
{
    auto& actions = m_pHost->actions();
    EXPECT_FALSE(actions.issue(deviceKey + 1, groupKey, 0xFF, m_results, everywhere, shortMs, &m_count));
    EXPECT_TRUE(m_results.isEmpty());
    EXPECT_EQ(m_count, 0U);
    expect(cameraCount);
    EXPECT_FALSE(actions.issue(deviceKey, groupKey + 1, 0xFF, m_results, everywhere, shortMs, &m_count));
    EXPECT_TRUE(m_results.isEmpty());
    expect(cameraCount);
    EXPECT_FALSE(actions.issue(deviceKey, groupKey, 0x100, m_results, everywhere, shortMs, &m_count));
    EXPECT_TRUE(m_results.isEmpty());
    expect(cameraCount);
    EXPECT_FALSE(actions.issue(0, 0, 0xFF, m_results, everywhere, shortMs, &m_count)) << "keys like others";
    EXPECT_TRUE(m_results.isEmpty());
    expect(cameraCount);
    EXPECT_TRUE(actions.issue(deviceKey, groupKey, 0xFF, m_results, everywhere, limitMs, &m_count));
    EXPECT_TRUE(waitForImages(cameraCount, 1));
    for (const auto& [serial, timestamps] : m_images)
    {
        EXPECT_EQ(timestamps.size(), 1) << serial.toStdString();
    }
}

TEST_F(HostActions, commandsThatCannotBeSentAreFalseAndTriggerNothing)
{
    auto& actions = m_pHost->actions();
    EXPECT_FALSE(actions.issue(deviceKey, groupKey, 0, m_results, everywhere, shortMs, &m_count)) << "no mask";
    for (const char* address : {"", "everybody", "0.0.0.0", "239.1.1.1", "127.0.0.256", "255.255.255.255 "})
    {
        expect(cameraCount);
        EXPECT_FALSE(actions.issue(deviceKey, groupKey, 0xFF, m_results, QString::fromLatin1(address), 0, nullptr))
            << address;
    }
    m_results.clear();
    EXPECT_TRUE(actions.issue(deviceKey, groupKey, 0xFF, m_results, everywhere, limitMs, nullptr));
    EXPECT_TRUE(waitForImages(cameraCount, 1));
    for (const auto& [serial, timestamps] : m_images)
    {
        EXPECT_EQ(timestamps.size(), 1) << serial.toStdString();
    }
}

TEST_F(HostActions, withoutRoomOrNumberAllActAndNobodyIsAsked)
{
    auto& actions = m_pHost->actions();
    QElapsedTimer timer;
    timer.start();
    m_results.clear();
    EXPECT_TRUE(actions.issue(deviceKey, groupKey, 0xFF, m_results, everywhere, limitMs, &m_count));
    EXPECT_TRUE(m_results.isEmpty());
    EXPECT_EQ(m_count, 0U);
    EXPECT_TRUE(waitForImages(cameraCount, 1));
    m_results.resize(cameraCount);
    EXPECT_TRUE(actions.issue(deviceKey, groupKey, 0xFF, m_results, everywhere, limitMs, nullptr));
    EXPECT_TRUE(m_results.isEmpty());
    EXPECT_TRUE(waitForImages(cameraCount, 2));
    EXPECT_LT(timer.elapsed(), limitMs) << "no answer was waited for";
}

TEST_F(HostActions, oneAddressReachesOneCamera)
{
    expect(1);
    EXPECT_TRUE(m_pHost->actions().issue(deviceKey, groupKey, 0xFF, m_results, QString::fromStdString(address(4)),
                                         limitMs, &m_count));
    EXPECT_EQ(answers(), QStringList{"127.0.0.25=accepted"});
    EXPECT_TRUE(waitForImages(1, 1));
    EXPECT_EQ(m_images.count(QStringLiteral("ACT-4")), 1U);
    EXPECT_EQ(m_images.size(), 1U);
}

TEST_F(HostActions, scheduledCommandGivesEightImagesOfOneTime)
{
    EXPECT_TRUE(m_pHost->actions().schedule(deviceKey, groupKey, 0xFF, 1, m_results, everywhere, limitMs, &m_count));
    ASSERT_EQ(m_results.size(), cameraCount);
    EXPECT_TRUE(m_results.constFirst().hasError) << "no clock is synchronised yet";
    synchronise(0, cameraCount);
    const unsigned long long due = soon();
    EXPECT_TRUE(m_pHost->actions().schedule(deviceKey, groupKey, 0xFF, due, m_results, everywhere, limitMs, &m_count));
    EXPECT_TRUE(waitForImages(cameraCount, 1));
    for (const auto& [serial, timestamps] : m_images)
    {
        EXPECT_EQ(timestamps, QVector<quint64>{due}) << serial.toStdString();
    }
}

TEST_F(HostActions, timeThatHasPassedIsRefusedByAll)
{
    synchronise(0, cameraCount);
    EXPECT_TRUE(m_pHost->actions().schedule(deviceKey, groupKey, 0xFF, 1, m_results, everywhere, limitMs, &m_count));
    EXPECT_EQ(answers().filter(QStringLiteral("refused")).size(), cameraCount);
}

/** Seven of the eight, and one that answers when it is too late. */
class MixedHostActions : public HostActions
{
protected:
    MixedHostActions() : HostActions(cameraCount - 1) {}

    ::Test::CActionResponder m_late{address(cameraCount - 1), Velmo::Gvcp::EStatus::Success,
                                    ::Test::CActionResponder::EWay::Late};
};

TEST_F(MixedHostActions, oneRefusesOneIsSilentOneIsLateAndFiveExposeAtOnce)
{
    synchronise(0, 5); // and the clock of 5 stays its own
    parameter<CIntegerParameter>(camera(6), "ActionDeviceKey").setValue(deviceKey + 1);
    const unsigned long long due = soon();
    EXPECT_FALSE(m_pHost->actions().schedule(deviceKey, groupKey, 0xFF, due, m_results, everywhere, shortMs, &m_count));
    EXPECT_EQ(answers(), (QStringList{"127.0.0.21=accepted", "127.0.0.22=accepted", "127.0.0.23=accepted",
                                      "127.0.0.24=accepted", "127.0.0.25=accepted", "127.0.0.26=refused"}));
    EXPECT_EQ(m_count, 6U);
    EXPECT_TRUE(waitForImages(5, 1));
    EXPECT_EQ(m_images.size(), 5U);
    for (const auto& [serial, timestamps] : m_images)
    {
        EXPECT_EQ(timestamps, QVector<quint64>{due}) << serial.toStdString();
    }
    ASSERT_TRUE(m_late.WaitForCommands(1));
    m_late.SendLate(); // the next command must not take it for an answer of its own
    expect(cameraCount);
    EXPECT_FALSE(m_pHost->actions().issue(deviceKey, groupKey, 0xFF, m_results, everywhere, shortMs, &m_count));
    EXPECT_EQ(answers().filter(QStringLiteral("accepted")).size(), 6);
    EXPECT_TRUE(answers().filter(QStringLiteral("127.0.0.28")).isEmpty());
}

} // namespace
