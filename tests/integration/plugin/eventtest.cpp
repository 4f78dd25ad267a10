// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "integration/plugin/hostfixture.h"
#include "parametercollection/iparametercollection.h"
#include "parametercollection/parameterpath.h"
#include "parametercollection/parameters.h"
#include "support/waitbox.h"

#include <atomic>
#include <thread>
#include <vector>

namespace
{

using namespace Plugin::CameraPool;
using namespace ParameterCollection;

/** An open emulated camera whose events are handled by callbacks of its nodes. */
class PluginEvents : public ::Test::HostFixture
{
protected:
    void SetUp() override
    {
        HostFixture::SetUp();
        if (!HasFatalFailure())
        {
            const auto infos = cameras();
            ASSERT_EQ(infos.size(), 2);
            m_info = infos.at(0);
            open();
        }
    }
    QByteArray emulation() const override
    {
        return R"({"cameras": [{"serial": "EVENT-A", "sensor": {"width": 64, "height": 48}, "frameRate": 200},
                               {"serial": "EVENT-B"}]})";
    }
    void open(bool monitorMode = false)
    {
        ASSERT_TRUE(service<ICameraControlService>()->open(m_info, monitorMode)) << m_info->errorString().toStdString();
        m_parameters = service<IDeviceParameterService>()->getParameterCollection(m_info);
    }
    void switchOn(const char* event)
    {
        CEnumParameter(m_parameters, QStringLiteral("EventSelector")).setValue(QLatin1String(event));
        CEnumParameter(m_parameters, QStringLiteral("EventNotification")).setValue(QStringLiteral("On"));
    }
    void generateTest() { CCommandParameter(m_parameters, QStringLiteral("TestEventGenerate")).execute(); }
    CParameter grabberParameter(const char* name) const
    {
        return CParameter(m_parameters, ParameterPath::EventGrabber + QLatin1Char('/') + QLatin1String(name));
    }
    GenApi::CallbackHandle watch(const char* name, ::Test::CWaitBox<std::int64_t>& values)
    {
        return m_parameters->node(QLatin1String(name))
            ->RegisterCallback([&values](GenApi::INode* pNode) { values.Put(GenApi::CIntegerPtr(pNode)->GetValue()); });
    }

    CameraInfoPtr m_info;
    QSharedPointer<IParameterCollection> m_parameters;
};

TEST_F(PluginEvents, ofEveryImageReachTheCallbacksInOrder)
{
    constexpr std::size_t wanted = 50;
    ::Test::CWaitBox<std::int64_t> frames;
    watch("EventExposureEndFrameID", frames);
    switchOn("ExposureEnd");
    service<ICameraStreamControlService>()->startGrabbing(m_info);
    ASSERT_TRUE(service<ICameraStatusService>()->isCameraGrabbing(m_info)) << m_info->errorString().toStdString();
    ASSERT_TRUE(QTest::qWaitFor([&] { return frames.Await(0).size() >= wanted; }, s_waitMs));
    service<ICameraStreamControlService>()->stopGrabbing(m_info);
    service<ICameraControlService>()->close(m_info); // ends the callbacks
    const std::vector<std::int64_t> seen = frames.Await(0);
    for (std::size_t i = 0; i < seen.size(); ++i)
    {
        ASSERT_EQ(seen[i], static_cast<std::int64_t>(i + 1));
    }
}

TEST_F(PluginEvents, areShownByTheParametersOfTheCameraAndOfItsEventGrabber)
{
    const CIntegerParameter id(m_parameters, QStringLiteral("@CameraDevice/EventTest"));
    const CIntegerParameter timestamp(m_parameters, QStringLiteral("@CameraDevice/EventTestTimestamp"));
    EXPECT_FALSE(id.isReadable());
    EXPECT_EQ(grabberParameter("Status").toString(), QStringLiteral("Open"));
    ::Test::CWaitBox<std::int64_t> events;
    const auto handle = watch("EventTest", events);
    generateTest(); // is off
    switchOn("Test");
    generateTest();
    EXPECT_EQ(events.Await(1), std::vector<std::int64_t>{0x9010});
    m_parameters->node(QStringLiteral("EventTest"))->DeregisterCallback(handle);
    EXPECT_EQ(id.value(), 0x9010);
    EXPECT_GT(timestamp.value(), 0);
    EXPECT_EQ(grabberParameter("EventDeliveredCount").toString(), QStringLiteral("1"));
    EXPECT_EQ(grabberParameter("EventDroppedCount").toString(), QStringLiteral("0"));
}

TEST_F(PluginEvents, comeAgainWhenTheCameraIsOpenedAgain)
{
    for (int round = 0; round < 2; ++round)
    {
        ::Test::CWaitBox<std::int64_t> events;
        watch("EventTest", events);
        switchOn("Test");
        generateTest();
        EXPECT_EQ(events.Await(1).size(), 1U);
        service<ICameraControlService>()->close(m_info);
        open();
    }
}

TEST_F(PluginEvents, areNotForMonitors)
{
    service<ICameraControlService>()->close(m_info);
    open(true);
    EXPECT_FALSE(grabberParameter("Status").isValid());
}

TEST_F(PluginEvents, closingWaitsForACallbackThatRuns)
{
    ::Test::CWaitBox<int> entered;
    ::Test::CWaitBox<int> released;
    std::atomic<bool> isDone{false};
    m_parameters->node(QStringLiteral("EventTest"))
        ->RegisterCallback(
            [&](GenApi::INode* pNode)
            {
                entered.Put(0);
                released.Await(1);
                EXPECT_EQ(GenApi::CIntegerPtr(pNode)->GetValue(), 0x9010);
                isDone = true;
            });
    switchOn("Test");
    generateTest();
    ASSERT_EQ(entered.Await(1).size(), 1U);
    std::thread release([&] { released.Put(0); });
    service<ICameraControlService>()->close(m_info);
    EXPECT_TRUE(isDone);
    release.join();
}

} // namespace
