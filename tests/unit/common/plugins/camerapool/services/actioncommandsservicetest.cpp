// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraactioncommandsservice.h"
#include "unit/common/plugins/camerapool/testing/poolfixture.h"

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EFault;
using ::Test::EStep;

const QString everyCamera = QStringLiteral("255.255.255.255");
constexpr unsigned int timeoutMs = 250;

class ActionCommandsService : public ::Test::PoolFixture
{
protected:
    ActionCommandsService() : m_service(new CCameraActionCommandsService(m_pool.get(), nullptr)) {}

    static std::string describe(const QStringList& features)
    {
        std::string nodes;
        std::string root;
        for (const QString& feature : features)
        {
            const bool isThere = !feature.startsWith(QLatin1Char('-'));
            const std::string name = (isThere ? feature : feature.mid(1)).toStdString();
            nodes += "<Integer Name=\"" + name + "\">" + (isThere ? "" : "<pIsAvailable>Never</pIsAvailable>") +
                     "<Value>0</Value></Integer>";
            root += "<pFeature>" + name + "</pFeature>";
        }
        return "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"M\" VendorName=\"V\" "
               "StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" "
               "SchemaSubMinorVersion=\"0\" "
               "MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\" ProductGuid=\"p\" VersionGuid=\"v\" "
               "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\"><Category Name=\"Root\">" +
               root + "</Category>" + nodes +
               "<Integer Name=\"Never\"><Value>0</Value></Integer><Port Name=\"Device\"/></RegisterDescription>";
    }

    /** What the service says of an open camera with these features ("-Name": one that is not available). */
    std::pair<bool, bool> supportOf(const QStringList& features)
    {
        ::Test::SScriptedCamera camera;
        camera.serialNumber = "action" + std::to_string(++m_cameras);
        camera.description = describe(features);
        m_transport->AddCamera(camera);
        const auto info = record(camera.serialNumber);
        m_pool->announceDevice(info);
        EXPECT_TRUE(m_pool->openDevice(BaseInfoPtr(info), false)) << info->errorString().toStdString();
        const std::pair<bool, bool> answer(m_service->isSupported(info), m_service->isScheduledSupported(info));
        m_pool->closeDevice(BaseInfoPtr(info));
        EXPECT_FALSE(m_service->isSupported(info)) << "closed";
        return answer;
    }

    bool issue(QVector<SGigEActionCommandResult>& results, unsigned int* pNumResults)
    {
        return m_service->issue(1, 2, 4, results, everyCamera, timeoutMs, pNumResults);
    }
    unsigned int held() const { return m_sdk.GetHeldTransportLayers("KorvelGigE"); }

    const QStringList m_actions{QStringLiteral("ActionDeviceKey"), QStringLiteral("ActionGroupKey"),
                                QStringLiteral("ActionGroupMask"), QStringLiteral("ActionSelector")};
    QSharedPointer<ICameraActionCommandsService> m_service;
    QVector<SGigEActionCommandResult> m_results = QVector<SGigEActionCommandResult>(3);
    unsigned int m_count = 3;
    int m_cameras = 0;
};

TEST_F(ActionCommandsService, isSupportedByTheKeysMaskAndSelectorTogether)
{
    EXPECT_EQ(supportOf(m_actions), std::make_pair(true, false));
    EXPECT_EQ(supportOf({}), std::make_pair(false, false));
    for (const QString& missing : m_actions)
    {
        QStringList features = m_actions;
        features.removeOne(missing);
        EXPECT_EQ(supportOf(features), std::make_pair(false, false)) << missing.toStdString();
        EXPECT_EQ(supportOf(features << QLatin1Char('-') + missing), std::make_pair(false, false));
    }
}

TEST_F(ActionCommandsService, scheduledIsSupportedWithClockSynchronisationUnderEitherName)
{
    const QStringList older{QStringLiteral("GevIEEE1588"), QStringLiteral("GevIEEE1588DataSetLatch")};
    const QStringList newer{QStringLiteral("PtpEnable"), QStringLiteral("PtpDataSetLatch")};
    EXPECT_EQ(supportOf(m_actions + older), std::make_pair(true, true));
    EXPECT_EQ(supportOf(m_actions + newer), std::make_pair(true, true));
    EXPECT_EQ(supportOf(m_actions + older + newer), std::make_pair(true, true));
    for (const QString& alone : older + newer)
    {
        EXPECT_EQ(supportOf(m_actions + QStringList(alone)), std::make_pair(true, false)) << alone.toStdString();
    }
    EXPECT_EQ(supportOf(newer), std::make_pair(false, false));
}

TEST_F(ActionCommandsService, nothingIsSupportedWithoutAParameterCollection)
{
    EXPECT_FALSE(m_service->isSupported({}));
    EXPECT_FALSE(m_service->isScheduledSupported({}));
    CCameraActionCommandsService service(m_pool.get(), nullptr);
    EXPECT_FALSE(service.getParameterColllection(m_info).isNull());
    EXPECT_TRUE(service.getParameterColllection({}).isNull());
    m_pool.reset();
    EXPECT_TRUE(service.getParameterColllection(m_info).isNull());
    EXPECT_FALSE(service.isSupported(m_info));
    EXPECT_FALSE(service.isScheduledSupported(m_info));
}

TEST_F(ActionCommandsService, issuePassesItsArgumentsToTheGigETransportLayer)
{
    EXPECT_FALSE(m_service->issue(11, 22, 44, m_results, QStringLiteral("10.0.255.255"), 77, &m_count));
    ASSERT_EQ(m_transport->GetActions().size(), 1U);
    const auto action = m_transport->GetActions().front();
    EXPECT_EQ(action.deviceKey, 11U);
    EXPECT_EQ(action.groupKey, 22U);
    EXPECT_EQ(action.groupMask, 44U);
    EXPECT_EQ(action.address, "10.0.255.255");
    EXPECT_EQ(action.timeoutMs, 77U);
    EXPECT_EQ(action.expectedAnswers, 3U);
    EXPECT_FALSE(action.time.has_value());
}

TEST_F(ActionCommandsService, schedulePassesTheTimeInAddition)
{
    EXPECT_TRUE(m_service->schedule(11, 22, 44, 0xFEDCBA9876543210ULL, m_results, everyCamera, 0, nullptr));
    ASSERT_EQ(m_transport->GetActions().size(), 1U);
    EXPECT_EQ(m_transport->GetActions().front().time.value_or(0), 0xFEDCBA9876543210ULL);
    EXPECT_EQ(m_transport->GetActions().front().deviceKey, 11U);
    EXPECT_TRUE(m_results.isEmpty());
}

TEST_F(ActionCommandsService, statusZeroIsNoErrorAndAnyOtherIsOne)
{
    m_transport->SetActionAnswers({{"192.168.100.101", 0}, {"10.0.0.2", 0x8016}, {"10.0.0.3", 1}});
    EXPECT_TRUE(issue(m_results, &m_count));
    EXPECT_EQ(m_count, 3U);
    ASSERT_EQ(m_results.size(), 3);
    EXPECT_STREQ(m_results.at(0).deviceAddress, "192.168.100.101");
    EXPECT_FALSE(m_results.at(0).hasError);
    EXPECT_STREQ(m_results.at(1).deviceAddress, "10.0.0.2");
    EXPECT_TRUE(m_results.at(1).hasError);
    EXPECT_TRUE(m_results.at(2).hasError);
}

TEST_F(ActionCommandsService, fewerAnswersThanRoomGiveSoManyRecordsAndFalse)
{
    m_results.reserve(3);
    m_transport->SetActionAnswers({{"10.0.0.2", 0}});
    EXPECT_FALSE(issue(m_results, &m_count));
    EXPECT_EQ(m_count, 1U);
    EXPECT_EQ(m_results.size(), 1);
    EXPECT_GE(m_results.capacity(), 3);
}

TEST_F(ActionCommandsService, withoutRoomNoRecordIsAppendedWhateverTheNumberSays)
{
    m_results.clear();
    m_count = 1000;
    m_transport->SetActionAnswers({{"10.0.0.2", 0}, {"10.0.0.3", 0}});
    EXPECT_TRUE(issue(m_results, &m_count));
    EXPECT_TRUE(m_results.isEmpty());
    EXPECT_EQ(m_count, 0U);
}

TEST_F(ActionCommandsService, numberBeyondTheRoomIsCutToIt)
{
    m_count = 1000;
    m_transport->SetActionAnswers({{"10.0.0.2", 0}, {"10.0.0.3", 0}, {"10.0.0.4", 0}, {"10.0.0.5", 0}});
    EXPECT_TRUE(issue(m_results, &m_count));
    EXPECT_EQ(m_transport->GetActions().front().expectedAnswers, 3U);
    EXPECT_EQ(m_results.size(), 3);
}

TEST_F(ActionCommandsService, withoutANumberResultsEndUpEmptyAndTheSdkDecides)
{
    m_transport->SetActionAnswers({{"10.0.0.2", 0}});
    EXPECT_TRUE(issue(m_results, nullptr));
    EXPECT_TRUE(m_results.isEmpty());
    m_count = 0;
    m_results.resize(2);
    EXPECT_TRUE(issue(m_results, &m_count));
    EXPECT_TRUE(m_results.isEmpty());
}

struct SLogged
{
    QString category;
    QString text;
};

QVector<SLogged>& logged()
{
    static QVector<SLogged> lines;
    return lines;
}

TEST_F(ActionCommandsService, failuresAreLoggedInTheDefaultCategoryAndAnsweredFalse)
{
    const auto previous = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text)
        {
            EXPECT_EQ(type, QtDebugMsg);
            logged().append({QString::fromLatin1(context.category), text});
        });
    for (const EFault fault : {EFault::Runtime, EFault::Standard, EFault::Unknown})
    {
        m_transport->SetFault(EStep::IssueAction, fault, "100 %s broken");
        EXPECT_FALSE(issue(m_results, &m_count));
        EXPECT_FALSE(m_service->schedule(1, 2, 4, 8, m_results, everyCamera, timeoutMs, &m_count));
        EXPECT_EQ(held(), 0U);
    }
    qInstallMessageHandler(previous);
    const auto lines = std::exchange(logged(), {});
    ASSERT_EQ(lines.size(), 6);
    for (const SLogged& line : lines)
    {
        EXPECT_EQ(line.category, QStringLiteral("default"));
    }
    EXPECT_EQ(lines.at(0).text, QStringLiteral("100 %s broken"));
    EXPECT_EQ(lines.at(3).text, QStringLiteral("100 %s broken"));
    EXPECT_FALSE(lines.at(5).text.isEmpty());
}

TEST_F(ActionCommandsService, transportLayerIsHeldForTheCallAlone)
{
    unsigned int during = 0;
    m_transport->SetHook(EStep::IssueAction, [&](const std::string&) { during = held(); });
    issue(m_results, &m_count);
    EXPECT_EQ(during, 1U);
    EXPECT_EQ(held(), 0U);
}

TEST_F(ActionCommandsService, withoutATransportLayerNothingIsSentAndNobodyAnswered)
{
    m_transport->SetFault(EStep::CreateTl, EFault::Runtime);
    EXPECT_FALSE(issue(m_results, &m_count));
    EXPECT_TRUE(m_results.isEmpty());
    EXPECT_EQ(m_count, 0U);
    EXPECT_TRUE(m_transport->GetActions().empty());
}

TEST(ActionCommands, transportLayerThatIsNotGigEIsReleasedAndAnsweredFalse)
{
    ::Test::SScriptedTransportConfig config;
    config.deviceClass = "KorvelGigE";
    const auto transport = std::make_shared<::Test::CScriptedTransport>(config);
    const ::Test::CScriptedSdk sdk({transport});
    CCameraActionCommandsService service(nullptr, nullptr);
    QVector<SGigEActionCommandResult> results(2);
    unsigned int count = 2;
    EXPECT_FALSE(service.issue(1, 2, 4, results, everyCamera, timeoutMs, &count));
    EXPECT_TRUE(results.isEmpty());
    results.resize(2);
    count = 2;
    EXPECT_FALSE(service.schedule(1, 2, 4, 8, results, everyCamera, timeoutMs, &count));
    EXPECT_TRUE(results.isEmpty());
    EXPECT_EQ(count, 0U);
    EXPECT_GE(transport->GetCount(EStep::CreateTl), 2U);
    EXPECT_EQ(sdk.GetHeldTransportLayers("KorvelGigE"), 0U);
}

} // namespace
