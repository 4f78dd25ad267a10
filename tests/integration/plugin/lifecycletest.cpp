// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/icameracontrolservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "integration/plugin/hostfixture.h"
#include "velmo/velmo.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

namespace
{

using namespace Plugin::CameraPool;

class PluginLifeCycle : public ::Test::HostFixture
{
protected:
    QStringList startedNames() const
    {
        QStringList names;
        const auto started = m_manager->startedPlugins();
        for (const auto& spec : started)
        {
            names.append(spec->name());
        }
        return names;
    }
};

TEST_F(PluginLifeCycle, pluginsAreStartedAfterThoseTheyNeed)
{
    const auto names = startedNames();
    EXPECT_EQ(names.size(), 3);
    EXPECT_EQ(names.last(), QStringLiteral("CameraPool"));
    EXPECT_TRUE(names.contains(QStringLiteral("AppCore")));
    EXPECT_TRUE(names.contains(QStringLiteral("DataProcessingCore")));
}

TEST_F(PluginLifeCycle, twoCamerasAreFoundOpenedGrabbedFromAndClosed)
{
    const auto control = service<ICameraControlService>();
    const auto status = service<ICameraStatusService>();
    const auto stream = service<ICameraStreamControlService>();
    const auto infos = cameras();
    ASSERT_EQ(infos.size(), 2);
    QMap<QString, int> images;
    QObject::connect(status.data(), &ICameraStatusService::cameraImageGrabbed, status.data(),
                     [&](const CameraInfoPtr& info, const Velmo::CGrabResultPtr& result)
                     { images[info->getSerialNumber()] += result->GrabSucceeded() ? 1 : 0; });
    for (const auto& info : infos)
    {
        ASSERT_TRUE(control->open(info, false)) << info->errorString().toStdString();
        EXPECT_TRUE(status->isDeviceOpen(info));
        EXPECT_FALSE(service<IDeviceParameterService>()->getParameterCollection(info).isNull());
        stream->startGrabbing(info);
    }
    EXPECT_EQ(status->getCountGrabbing(), 2);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return images[QStringLiteral("LIFE-A")] >= 3 && images[QStringLiteral("LIFE-B")] >= 3; }, s_waitMs));
    stream->stopGrabbingAll();
    EXPECT_EQ(status->getCountGrabbing(), 0);
    for (const auto& info : infos)
    {
        control->close(BaseInfoPtr(info));
        EXPECT_FALSE(status->isDeviceOpen(info));
    }
}

TEST_F(PluginLifeCycle, languageFollowsWhileThePluginsRun)
{
    const char* const context = "Plugin::CameraPool::Internal::CCameraPool";
    const char* const text = "No GigE transport layer found.";
    QStringList shown;
    for (const auto* language : {"ja", "zh", "ko", "en", "xx", "ja"})
    {
        m_manager->setLanguage(QString::fromLatin1(language));
        shown.append(QCoreApplication::translate(context, text));
    }
    EXPECT_EQ(shown.at(3), QString::fromLatin1(text));
    EXPECT_EQ(shown.at(4), QString::fromLatin1(text)) << "an unknown language is shown in English";
    EXPECT_EQ(shown.at(5), shown.at(0));
    shown.removeLast();
    shown.removeLast();
    EXPECT_EQ(shown.removeDuplicates(), 0);
}

TEST_F(PluginLifeCycle, stoppingWhileCamerasGrabReleasesEverything)
{
    const auto infos = cameras();
    ASSERT_EQ(infos.size(), 2);
    for (const auto& info : infos)
    {
        ASSERT_TRUE(service<ICameraControlService>()->open(info, false));
        service<ICameraStreamControlService>()->startGrabbing(info);
    }
    const QWeakPointer<Core::Service::IService> status = service<ICameraStatusService>();
    m_manager->stop();
    EXPECT_TRUE(status.isNull());
    EXPECT_TRUE(m_registry.services().isEmpty());
    EXPECT_EQ(Velmo::VelmoInitializationCount(), 0U);
}

TEST_F(PluginLifeCycle, pluginsStartAgainAfterAStop)
{
    const auto before = cameras();
    m_manager->stop();
    m_manager = std::make_unique<Core::Plugin::CPluginManager>(m_registry);
    m_manager->addFolder(QStringLiteral(PLUGIN_FOLDER));
    ASSERT_TRUE(m_manager->start()) << m_manager->errors().join('\n').toStdString();
    EXPECT_EQ(cameras(), before) << "one record per camera for the life of the process";
}

} // namespace
