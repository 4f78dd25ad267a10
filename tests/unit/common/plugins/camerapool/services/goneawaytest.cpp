// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/camerainfolist.h"
#include "camerapool/camerapoolplugin.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/icameraenumerationservice.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/ideviceparameterservice.h"
#include "parametercollection/iparametercollection.h"
#include "support/scriptedtransport.h"
#include "unit/common/plugins/camerapool/testing/messagelog.h"

#include <gtest/gtest.h>

#include <QMap>

#include <memory>

namespace
{

using namespace Plugin::CameraPool;
using ServicePtr = QSharedPointer<Core::Service::IService>;
using ::Test::waitUntil;

class CInitializer : public Core::Plugin::IPluginInitializer
{
public:
    void registerService(const ServicePtr& service) override { m_services.append(service); }
    void unregisterService(const ServicePtr& service) override { m_services.removeOne(service); }
    QVector<ServicePtr> services() const override { return m_services; }

private:
    QVector<ServicePtr> m_services;
};

constexpr const char* serial = "1001";
constexpr int patienceMs = 60000;

/** The whole plugin with an open camera, and what a client of the status service is told when the camera goes. */
class GoneAway : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_transport->AddCamera({});
        m_plugin.initialize(&m_initializer);
        const auto status = m_initializer.findService<ICameraStatusService>();
        ASSERT_TRUE(waitUntil([this] { return !find().isNull(); }, patienceMs));
        m_camera = find();
        ASSERT_TRUE(m_initializer.findService<ICameraControlService>()->open(m_camera, false));
        const auto listen = [this, &status](const char* name, auto signal)
        {
            QObject::connect(status.data(), signal, &m_initializer, [this, name] { note(name); });
        };
        listen("deviceDisconnected", &ICameraStatusService::deviceDisconnected);
        listen("cameraConnectionLost", &ICameraStatusService::cameraConnectionLost);
        listen("deviceClosing", &ICameraStatusService::deviceClosing);
        listen("deviceClosed", &ICameraStatusService::deviceClosed);
        listen("deviceConnected", &ICameraStatusService::deviceConnected);
    }
    CameraInfoPtr find() const
    {
        CameraInfoPtr found;
        const auto layers = m_initializer.findService<ICameraEnumerationService>()->enumerate();
        for (const auto& layer : layers)
        {
            const auto records = layer->getCameraInfoList().toBaseInfoVector();
            for (const auto& record : records)
            {
                found = record.objectCast<ICameraInfo>();
            }
        }
        return found;
    }
    void note(const QString& signal)
    {
        const auto parameters = m_initializer.findService<IDeviceParameterService>();
        m_told.append(signal);
        m_hadDevice[signal] = !parameters->getParameterCollection(m_camera).isNull() ||
                              m_initializer.findService<ICameraStatusService>()->isDeviceOpen(m_camera);
    }
    /** All that is told until the device has gone and another camera, which is plugged in afterwards, was found. */
    QStringList toldUntilQuiet()
    {
        ::Test::SScriptedCamera next;
        next.serialNumber = "1002";
        m_transport->AddCamera(next);
        const auto enumeration = m_initializer.findService<ICameraEnumerationService>();
        enumeration->setEnumerationEnabled(true);
        EXPECT_TRUE(waitUntil(
            [&]
            {
                enumeration->triggerEnumeration();
                return m_told.contains(QStringLiteral("deviceConnected")) && m_transport->GetLivingDevices() == 0;
            },
            patienceMs));
        QStringList told = m_told;
        told.removeAll(QStringLiteral("deviceConnected"));
        return told;
    }

    std::shared_ptr<::Test::CScriptedTransport> m_transport = std::make_shared<::Test::CScriptedTransport>();
    ::Test::CScriptedSdk m_sdk{{m_transport}};
    CInitializer m_initializer;
    CCameraPoolPlugin m_plugin;
    CameraInfoPtr m_camera;
    QStringList m_told;
    QMap<QString, bool> m_hadDevice; // by signal: whether the services still knew it open or its parameters
};

TEST_F(GoneAway, aLossIsToldInThisOrderAndTheDeviceIsGoneAlready)
{
    // A pass that misses the camera first would tell that it is gone, and no loss.
    m_initializer.findService<ICameraEnumerationService>()->setEnumerationEnabled(false);
    m_transport->RemoveCamera(serial);
    EXPECT_TRUE(waitUntil([this] { return m_told.contains(QStringLiteral("deviceClosed")); }, patienceMs));
    EXPECT_EQ(m_told.mid(0, 3), (QStringList{"deviceDisconnected", "cameraConnectionLost", "deviceClosed"}));
    EXPECT_FALSE(m_hadDevice.value(QStringLiteral("cameraConnectionLost"), true));
    const QStringList all = toldUntilQuiet();
    EXPECT_EQ(all.mid(3), QStringList{"deviceClosed"}) << "once more by the device, when it is destroyed";
}

TEST_F(GoneAway, anOpenCameraThatAPassMissesIsDisconnectedAndThenClosed)
{
    m_transport->RemoveCamera(serial, 0);
    EXPECT_EQ(toldUntilQuiet(), (QStringList{"deviceDisconnected", "deviceClosed"}));
    EXPECT_FALSE(m_hadDevice.value(QStringLiteral("deviceDisconnected"), true));
}

TEST_F(GoneAway, aClosedCameraIsDisconnectedAlone)
{
    m_initializer.findService<ICameraControlService>()->close(BaseInfoPtr(m_camera));
    m_told.clear();
    m_transport->RemoveCamera(serial);
    EXPECT_EQ(toldUntilQuiet(), QStringList{"deviceDisconnected"});
}

} // namespace
