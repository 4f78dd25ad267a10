// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "plugincore/pluginmanager.h"
#include "servicecore/serviceregistry.h"
#include "velmo/velmo.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace
{

using namespace Plugin::CameraPool;

constexpr int WaitMs = 20000;

/** The plugins of the application, loaded from their folder, on two emulated cameras. */
class PluginLifeCycle : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        const QString name = m_folder.filePath(QStringLiteral("cameras.json"));
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"cameras": [{"serial": "LIFE-A", "model": "Mono"}, {"serial": "LIFE-B", "model": "Mono"}]})");
        file.close();
        qputenv("CAMERAPOOL_EMULATION_FILE", QFile::encodeName(name));
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", "none");
        m_manager->addFolder(QStringLiteral(PLUGIN_FOLDER));
        m_manager->setLanguage(QStringLiteral("en"));
        ASSERT_TRUE(m_manager->start()) << m_manager->errors().join('\n').toStdString();
    }
    void TearDown() override { qunsetenv("CAMERAPOOL_EMULATION_FILE"); }

    template <class T> QSharedPointer<T> service() const
    {
        const auto found = m_registry.find<T>();
        EXPECT_FALSE(found.isNull());
        return found;
    }

    /** In the order of the emulation; waits until both are found. */
    QVector<CameraInfoPtr> cameras() const
    {
        const auto enumeration = service<ICameraEnumerationService>();
        QVector<CameraInfoPtr> found;
        EXPECT_TRUE(QTest::qWaitFor(
            [&]
            {
                found.clear();
                const auto layers = enumeration->enumerate();
                for (const auto& layer : layers)
                {
                    const auto infos = layer->getCameraInfoList().toBaseInfoVector();
                    for (const auto& info : infos)
                    {
                        found.append(info.objectCast<ICameraInfo>());
                    }
                }
                return found.size() == 2;
            },
            WaitMs));
        return found;
    }

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

    QTemporaryDir m_folder;
    Core::Service::CServiceRegistry m_registry;
    std::unique_ptr<Core::Plugin::CPluginManager> m_manager =
        std::make_unique<Core::Plugin::CPluginManager>(m_registry);
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
        [&] { return images[QStringLiteral("LIFE-A")] >= 3 && images[QStringLiteral("LIFE-B")] >= 3; }, WaitMs));
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
