// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraenumerationservice.h"
#include "camerapool/internal/camerainfo.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTimer>

#include <memory>

/** When the enumeration service asks for a pass by itself, and what both pools and the host are told of the result. */
namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::waitUntil;

constexpr int PatienceMs = 60000;

/** A pool that notes what it is told. */
template <class Pool> class CNotingPool : public Pool
{
public:
    CNotingPool(const char* name, QStringList& told) : Pool(nullptr), m_name(QLatin1String(name)), m_told(told) {}
    void beginAnnounce() override
    {
        note(QStringLiteral("begin"), {});
        Pool::beginAnnounce();
    }
    void announceDevices(QVector<QSharedPointer<IBaseInfo>> infos) override
    {
        note(QStringLiteral("announce"), infos);
        Pool::announceDevices(infos);
    }
    void endAnnounce() override
    {
        note(QStringLiteral("end"), {});
        Pool::endAnnounce();
    }

private:
    void note(const QString& what, const QVector<QSharedPointer<IBaseInfo>>& infos)
    {
        QStringList line{m_name, what};
        for (const auto& info : infos)
        {
            line.append(info->getFullName());
        }
        m_told.append(line.join(QLatin1Char(' ')));
    }

    QString m_name;
    QStringList& m_told;
};

std::shared_ptr<::Test::CScriptedTransport> transport(const std::string& deviceClass)
{
    ::Test::SScriptedTransportConfig config;
    config.deviceClass = deviceClass;
    return std::make_shared<::Test::CScriptedTransport>(config);
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

class EnumerationAnnouncement : public ::testing::Test
{
protected:
    EnumerationAnnouncement()
    {
        QObject::connect(&m_service, &ICameraEnumerationService::enumerationChanged, &m_service,
                         [this] { m_told.append(QStringLiteral("changed")); });
        // Called after the service itself, which connected first.
        QObject::connect(m_service.findChild<CCameraEnumerationThread*>(),
                         &CCameraEnumerationThread::enumerationFinished, &m_service, [this] { ++m_results; });
        m_service.findChild<QTimer*>()->stop(); // from here on only what a test asks for
    }
    /** One whole pass, and what comes of it. */
    void pass()
    {
        const int before = m_results;
        m_service.triggerEnumeration();
        ASSERT_TRUE(waitUntil([&] { return m_results > before; }, PatienceMs));
    }
    void awaitFirstPass()
    {
        ASSERT_TRUE(waitUntil([this] { return m_results > 0; }, PatienceMs));
    }

    ::Test::CScriptedSdk m_sdk{{}};
    QStringList m_told;
    int m_results = 0;
    CNotingPool<CCameraPool> m_cameras{"cameras", m_told};
    CNotingPool<CInterfacePool> m_interfaces{"interfaces", m_told};
    CCameraEnumerationService m_service{&m_cameras, &m_interfaces};
};

TEST_F(EnumerationAnnouncement, firstPassComesByItselfAndDoesNotWaitForThePeriodicOne)
{
    awaitFirstPass();
    EXPECT_TRUE(m_service.isEnumerationEnabled());
}

TEST_F(EnumerationAnnouncement, bothPoolsAreToldOfEachTransportLayerInOrderInterfacesFirst)
{
    awaitFirstPass();
    const auto first = transport("AnnounceA");
    first->AddInterface("announce/if0");
    first->AddCamera({});
    m_sdk.Add(first);
    const auto second = transport("AnnounceB");
    second->AddCamera({});
    m_sdk.Add(second);
    pass();
    ASSERT_EQ(m_told.size(), 9) << m_told.join('\n').toStdString();
    EXPECT_EQ(sorted(m_told.mid(0, 2)), (QStringList{"cameras begin", "interfaces begin"}));
    EXPECT_EQ(m_told.mid(2, 4),
              (QStringList{"interfaces announce AnnounceA/announce/if0", "cameras announce AnnounceA/1001",
                           "interfaces announce", "cameras announce AnnounceB/1001"}));
    EXPECT_EQ(sorted(m_told.mid(6, 2)), (QStringList{"cameras end", "interfaces end"}));
    EXPECT_EQ(m_told.last(), QStringLiteral("changed"));
}

TEST_F(EnumerationAnnouncement, transportLayersThatComeAndGoAreAnnouncedWithTheirDevices)
{
    awaitFirstPass();
    const auto tl = transport("ComesAndGoes");
    tl->AddInterface("comesandgoes/if0");
    tl->AddCamera({});
    QSignalSpy camerasConnected(&m_cameras, &ADevicePool::deviceConnected);
    QSignalSpy interfacesConnected(&m_interfaces, &ADevicePool::deviceConnected);
    m_sdk.Add(tl);
    pass();
    EXPECT_EQ(m_told.count(QStringLiteral("changed")), 1);
    EXPECT_EQ(camerasConnected.count(), 1);
    EXPECT_EQ(interfacesConnected.count(), 1);
    QSignalSpy camerasGone(&m_cameras, &ADevicePool::deviceDisconnected);
    QSignalSpy interfacesGone(&m_interfaces, &ADevicePool::deviceDisconnected);
    m_sdk.Remove(tl);
    pass();
    EXPECT_EQ(m_told.count(QStringLiteral("changed")), 2);
    EXPECT_EQ(camerasGone.count(), 1);
    EXPECT_EQ(interfacesGone.count(), 1);
    EXPECT_TRUE(m_service.enumerate().isEmpty());
}

TEST_F(EnumerationAnnouncement, renamedCameraChangesTheEnumerationAndStaysConnected)
{
    awaitFirstPass();
    const auto tl = transport("Renames");
    tl->AddCamera({});
    m_sdk.Add(tl);
    pass();
    const auto record = m_service.enumerate().at(0)->getCameraInfoList().at(0);
    QSignalSpy connected(&m_cameras, &ADevicePool::deviceConnected);
    QSignalSpy disconnected(&m_cameras, &ADevicePool::deviceDisconnected);
    tl->SetUserDefinedName("1001", "Left");
    pass();
    EXPECT_EQ(m_told.count(QStringLiteral("changed")), 2);
    EXPECT_EQ(m_service.enumerate().at(0)->getCameraInfoList().at(0), record);
    EXPECT_EQ(record->getUserDefinedName(), QStringLiteral("Left"));
    EXPECT_EQ(connected.count() + disconnected.count(), 0);
}

TEST_F(EnumerationAnnouncement, forcedUpdateWhileEnabledGivesAPassAndEnumerationStaysEnabled)
{
    awaitFirstPass();
    const int before = m_results;
    m_service.forceUpdate();
    ASSERT_TRUE(waitUntil([&] { return m_results > before; }, PatienceMs));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_service.isEnumerationEnabled());
}

TEST_F(EnumerationAnnouncement, disablingOnceWithoutAForcedUpdateDoesNothing)
{
    awaitFirstPass();
    m_service.disableOnce();
    EXPECT_TRUE(m_service.isEnumerationEnabled());
}

TEST_F(EnumerationAnnouncement, worksOnWithoutItsThread)
{
    awaitFirstPass();
    delete m_service.findChild<CCameraEnumerationThread*>();
    EXPECT_FALSE(m_service.isEnumerationEnabled());
    m_service.triggerEnumeration();
    m_service.setEnumerationEnabled(true);
    m_service.setEnumerationEnabled(false);
    m_service.forceUpdate();
    m_service.disableOnce();
    EXPECT_FALSE(m_service.isEnumerationEnabled());
    EXPECT_TRUE(m_service.enumerate().isEmpty());
}

} // namespace
