// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerainfolist.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "hostkit/cameranames.h"
#include "hostkit/host.h"
#include "parametercollection/iparametercollection.h"
#include "parametercollection/parameterpath.h"
#include "support/cameraprogram.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace HostGigECamera
{

using HostKit::CameraInfoPtr;

constexpr int limitMs = 20000;

/** A whole host with the real plugins in front of a simulated camera on the network. */
class HostOnGigECamera : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("CAMERAPOOL_GIGE_ADAPTERS", "127.0.0.1");
        qputenv("CAMERAPOOL_EMULATION_CAMERAS", "0");
    }

    void startHost()
    {
        m_pHost = std::make_unique<HostKit::CHost>(QStringLiteral(PLUGIN_FOLDER));
        ASSERT_TRUE(m_pHost->start(QStringLiteral("en"))) << m_pHost->errors().join('\n').toStdString();
    }

    /** The camera with these features, as "name": value, and other members of its data; found. */
    void find(const std::string& features, const std::string& others = "\"frameRate\": 100")
    {
        m_pCamera = std::make_unique<::Test::CCameraProgram>(
            std::vector<std::string>{"--config", ::Test::WriteConfig(features, others)});
        startHost();
        ASSERT_TRUE(waitFor([this] { return !named("GC-1").isNull(); })) << "the camera was not found";
        m_info = named("GC-1");
    }

    /** The same, opened. */
    void start(const std::string& features, const std::string& others = "\"frameRate\": 100")
    {
        find(features, others);
        ASSERT_TRUE(m_pHost->control().open(m_info, false)) << m_info->errorString().toStdString();
        m_parameters = m_pHost->parameters().getParameterCollection(m_info);
        m_pNodes = m_parameters->nodeMap(ParameterCollection::ParameterPath::CameraDevice);
        ASSERT_NE(m_pNodes, nullptr);
    }

    /** Null when there is none. */
    CameraInfoPtr named(const char* serial) const
    {
        QVector<CameraInfoPtr> cameras;
        const auto layers = m_pHost->enumeration().enumerate();
        for (const auto& layer : layers)
        {
            const auto records = layer->getCameraInfoList().toBaseInfoVector();
            for (const auto& record : records)
            {
                cameras.append(record.objectCast<Plugin::CameraPool::ICameraInfo>());
            }
        }
        QString error;
        return HostKit::findByName(cameras, QString::fromLatin1(serial), error);
    }

    /** Looks again after every discovery that changed something, and asks for further ones. */
    bool waitFor(const std::function<bool()>& condition) const
    {
        QSignalSpy changed(&m_pHost->enumeration(), &Plugin::CameraPool::ICameraEnumerationService::enumerationChanged);
        constexpr int passes = 40;
        for (int pass = 0; pass < passes && !condition(); ++pass)
        {
            m_pHost->enumeration().triggerEnumeration();
            changed.wait(limitMs / passes);
        }
        return condition();
    }

    std::unique_ptr<::Test::CCameraProgram> m_pCamera;
    std::unique_ptr<HostKit::CHost> m_pHost;
    CameraInfoPtr m_info;
    QSharedPointer<ParameterCollection::IParameterCollection> m_parameters;
    GenApi::INodeMap* m_pNodes = nullptr;
};

} // namespace HostGigECamera
