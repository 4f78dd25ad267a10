// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/cameraenumerationthread.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"
#include "velmo/velmo.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QSemaphore>

#include <memory>

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EStep;

constexpr int WaitMs = 60000;

class EnumerationThread : public ::testing::Test
{
protected:
    EnumerationThread()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("Camera Enumeration Thread.debug=true"));
        m_transport->SetHook(EStep::EnumerateDevices,
                             [this](const std::string&)
                             {
                                 m_inPass.release();
                                 m_mayGoOn.acquire();
                             });
    }
    ~EnumerationThread() override { m_mayGoOn.release(100); }
    void letPassesThrough() { m_mayGoOn.release(100); }

    QSemaphore m_inPass;
    QSemaphore m_mayGoOn;
    std::shared_ptr<::Test::CScriptedTransport> m_transport = std::make_shared<::Test::CScriptedTransport>();
    ::Test::CScriptedSdk m_sdk{{m_transport}};
};

/** The results of a thread as they arrive, queued, on the main thread: a spy would count on the emitting one. */
class CResultRecord
{
public:
    explicit CResultRecord(CCameraEnumerationThread& thread)
    {
        QObject::connect(&thread, &CCameraEnumerationThread::enumerationFinished, &m_receiver,
                         [this](const QVector<TransportLayerInfoPtr>& result) { m_results.append(result); });
    }
    int count() const { return m_results.size(); }
    QVector<TransportLayerInfoPtr> at(int index) const { return m_results.at(index); }

private:
    QObject m_receiver;
    QVector<QVector<TransportLayerInfoPtr>> m_results;
};

TEST_F(EnumerationThread, hasItsNameAndAnInitializationOfTheSdk)
{
    const auto before = Velmo::VelmoInitializationCount();
    {
        const CCameraEnumerationThread thread(nullptr);
        EXPECT_EQ(thread.objectName(), QStringLiteral("CameraEnumerationThread"));
        EXPECT_EQ(Velmo::VelmoInitializationCount(), before + 1);
    }
    EXPECT_EQ(Velmo::VelmoInitializationCount(), before);
}

TEST_F(EnumerationThread, registersTheMetatypesOfItsResult)
{
    const CCameraEnumerationThread thread(nullptr);
    EXPECT_EQ(QMetaType::type("TransportLayerInfoPtr"), qMetaTypeId<TransportLayerInfoPtr>());
    EXPECT_TRUE(QMetaType::hasRegisteredConverterFunction(qMetaTypeId<TransportLayerInfoPtr>(),
                                                          static_cast<int>(QMetaType::QObjectStar)));
    EXPECT_EQ(QMetaType::type("QVector<TransportLayerInfoPtr>"), qMetaTypeId<QVector<TransportLayerInfoPtr>>());
}

TEST_F(EnumerationThread, startingAloneEnumeratesNothing)
{
    CCameraEnumerationThread thread(nullptr);
    thread.enable();
    thread.stop();
    EXPECT_EQ(m_transport->GetCount(EStep::EnumerateDevices), 0U);
}

TEST_F(EnumerationThread, requestGivesOnePassWithItsResult)
{
    letPassesThrough();
    CCameraEnumerationThread thread(nullptr);
    const CResultRecord finished(thread);
    thread.enable();
    thread.doEnumerationAsync(true);
    ASSERT_TRUE(::Test::waitUntil([&] { return finished.count() > 0; }));
    const auto result = finished.at(0);
    ASSERT_EQ(result.size(), 1);
    EXPECT_EQ(result.at(0)->getClass(), QStringLiteral("TestScripted"));
}

TEST_F(EnumerationThread, requestsDuringAPassGiveOneFurtherPass)
{
    CCameraEnumerationThread thread(nullptr);
    const CResultRecord finished(thread);
    thread.enable();
    thread.doEnumerationAsync(true);
    ASSERT_TRUE(m_inPass.tryAcquire(1, WaitMs));
    thread.doEnumerationAsync(true);
    thread.doEnumerationAsync(true);
    letPassesThrough();
    ASSERT_TRUE(::Test::waitUntil([&] { return finished.count() == 2; }));
    thread.stop();
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.count(), 2);
    EXPECT_EQ(m_transport->GetCount(EStep::EnumerateDevices), 2U);
}

TEST_F(EnumerationThread, requestDuringAPassCanBeTakenBack)
{
    CCameraEnumerationThread thread(nullptr);
    thread.enable();
    thread.doEnumerationAsync(true);
    ASSERT_TRUE(m_inPass.tryAcquire(1, WaitMs));
    thread.doEnumerationAsync(true);
    thread.doEnumerationAsync(false);
    letPassesThrough();
    thread.stop();
    EXPECT_EQ(m_transport->GetCount(EStep::EnumerateDevices), 1U);
}

TEST_F(EnumerationThread, requestBeforeTheStartIsForgotten)
{
    letPassesThrough();
    CCameraEnumerationThread thread(nullptr);
    thread.doEnumerationAsync(true);
    thread.enable();
    thread.stop();
    EXPECT_EQ(m_transport->GetCount(EStep::EnumerateDevices), 0U);
}

TEST_F(EnumerationThread, stopRightAfterTheStartEndsTheThread)
{
    CCameraEnumerationThread thread(nullptr);
    for (int i = 0; i < 50; ++i)
    {
        thread.enable();
        thread.stop();
        ASSERT_FALSE(thread.isRunning());
    }
}

TEST_F(EnumerationThread, stoppedThreadCanBeStartedAgain)
{
    letPassesThrough();
    CCameraEnumerationThread thread(nullptr);
    thread.enable();
    thread.stop();
    const CResultRecord finished(thread);
    thread.enable();
    thread.doEnumerationAsync(true);
    EXPECT_TRUE(::Test::waitUntil([&] { return finished.count() > 0; }));
}

TEST_F(EnumerationThread, startAndEndAreLogged)
{
    const ::Test::CMessageLog log;
    CCameraEnumerationThread thread(nullptr);
    thread.enable();
    thread.stop();
    EXPECT_EQ(log.lines(), QStringList({QStringLiteral("CameraEnumerationThread started."),
                                        QStringLiteral("CameraEnumerationThread ended")}));
}

TEST_F(EnumerationThread, resultNamesTheTransportLayersThatAreThereNow)
{
    letPassesThrough();
    CCameraEnumerationThread thread(nullptr);
    const CResultRecord finished(thread);
    thread.enable();
    thread.doEnumerationAsync(true);
    ASSERT_TRUE(::Test::waitUntil([&] { return finished.count() > 0; }));
    m_sdk.Remove(m_transport);
    thread.doEnumerationAsync(true);
    ASSERT_TRUE(::Test::waitUntil([&] { return finished.count() == 2; }));
    EXPECT_TRUE(finished.at(1).isEmpty());
}

TEST_F(EnumerationThread, releasesTheCoaXPressProducerThatItKeptOpen)
{
    const char* const deviceClass = "KorvelGTC/Korvel/CXP";
    ::Test::SScriptedTransportConfig config;
    config.deviceClass = deviceClass;
    m_sdk.Add(std::make_shared<::Test::CScriptedTransport>(config));
    letPassesThrough();
    {
        CCameraEnumerationThread thread(nullptr);
        const CResultRecord finished(thread);
        thread.enable();
        thread.doEnumerationAsync(true);
        ASSERT_TRUE(::Test::waitUntil([&] { return finished.count() > 0; }, WaitMs));
        thread.stop();
        EXPECT_EQ(m_sdk.GetHeldTransportLayers(deviceClass), 1U) << "it may be started again";
    }
    EXPECT_EQ(m_sdk.GetHeldTransportLayers(deviceClass), 0U);
}

TEST_F(EnumerationThread, stopGivesUpOnAPassThatHangsAndTheThreadEndsWithThatPass)
{
    CCameraEnumerationThread thread(nullptr);
    thread.enable();
    thread.doEnumerationAsync(true);
    ASSERT_TRUE(m_inPass.tryAcquire(1, WaitMs));
    QElapsedTimer timer;
    timer.start();
    thread.stop();
    EXPECT_GE(timer.elapsed(), 29900); // milliseconds; 30000 but for the clocks
    EXPECT_TRUE(thread.isRunning());
    letPassesThrough();
    EXPECT_TRUE(thread.wait(WaitMs));
    thread.doEnumerationAsync(true); // forgotten: the thread has ended
    EXPECT_EQ(m_transport->GetCount(EStep::EnumerateDevices), 1U);
}

} // namespace
