// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerainfolist.h"
#include "camerapool/icameraenumerationservice.h"
#include "plugincore/pluginmanager.h"
#include "servicecore/serviceregistry.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace Test
{

/** The plugins of the application, loaded from their folder, on two emulated cameras. */
class HostFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        writeEmulation(emulation());
        qputenv("CAMERAPOOL_EMULATION_FILE", QFile::encodeName(emulationFile()));
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", adapters());
        for (const QString& folder : pluginFolders())
        {
            m_manager->addFolder(folder);
        }
        m_manager->setLanguage(QStringLiteral("en"));
        ASSERT_TRUE(m_manager->start()) << m_manager->errors().join('\n').toStdString();
    }
    virtual QStringList pluginFolders() const { return {QStringLiteral(PLUGIN_FOLDER)}; }
    /** The data of the emulated cameras. */
    virtual QByteArray emulation() const
    {
        return R"({"cameras": [{"serial": "LIFE-A", "model": "Mono"}, {"serial": "LIFE-B", "model": "Mono"}]})";
    }
    QString emulationFile() const { return m_folder.filePath(QStringLiteral("cameras.json")); }
    /** At once: who searches for cameras meanwhile sees the old ones or the new ones. */
    void writeEmulation(const QByteArray& data) const
    {
        QSaveFile file(emulationFile());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(data) == data.size() && file.commit());
    }
    /** Where GigE cameras are searched. */
    virtual QByteArray adapters() const { return "none"; }
    void TearDown() override { qunsetenv("CAMERAPOOL_EMULATION_FILE"); }

    template <class T> QSharedPointer<T> service() const
    {
        const auto found = m_registry.find<T>();
        EXPECT_FALSE(found.isNull());
        return found;
    }

    /** In the order of the emulation; waits until both are found. */
    QVector<Plugin::CameraPool::CameraInfoPtr> cameras() const
    {
        const auto enumeration = service<Plugin::CameraPool::ICameraEnumerationService>();
        QVector<Plugin::CameraPool::CameraInfoPtr> found;
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
                        found.append(info.objectCast<Plugin::CameraPool::ICameraInfo>());
                    }
                }
                return found.size() == 2;
            },
            s_waitMs));
        return found;
    }

    static constexpr int s_waitMs = 20000;
    QTemporaryDir m_folder;
    Core::Service::CServiceRegistry m_registry;
    std::unique_ptr<Core::Plugin::CPluginManager> m_manager =
        std::make_unique<Core::Plugin::CPluginManager>(m_registry);
};

} // namespace Test
