// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "parametercollection/parameterpath.h"
#include "unit/common/plugins/camerapool/firmware/firmwarefixture.h"
#include "utils/exceptions.h"

namespace
{

using namespace Plugin::CameraPool;
using namespace Plugin::CameraPool::Internal;
using ::Test::EFault;
using ::Test::EStep;
namespace Path = ParameterCollection::ParameterPath;

/** A camera taken exclusively, and what it tells to those who hold it. */
class CameraFirmware : public ::Test::FirmwareFixture
{
protected:
    CameraFirmware() : m_camera(m_pool->openCameraExclusive(m_info).objectCast<CCamera>())
    {
        EXPECT_FALSE(m_camera.isNull()) << m_info->errorString().toStdString();
        const CCamera* pCamera = m_camera.data();
        m_own.watch(pCamera, &CCamera::deviceOpened, QStringLiteral("opened"));
        m_own.watch(pCamera, &CCamera::deviceClosed, QStringLiteral("closed"));
        m_own.watch(pCamera, &CCamera::cameraConnectionLost, QStringLiteral("lost"));
        m_order.clear();
    }
    ~CameraFirmware() override { m_pool->unlock(m_camera); }

    bool apply(const std::string& steps)
    {
        const auto info = update("2.0", steps).objectCast<CFirmwareUpdateInfo>();
        m_failure.clear();
        return m_camera->applyFirmwareUpdate(info->getGenApiFirmwareUpdateInfo(), nullptr, m_failure);
    }
    QString own() const { return m_own.names().join(QLatin1Char(' ')); }
    /** The camera can be used as after open(). */
    void expectOpen() const
    {
        EXPECT_TRUE(m_camera->isConnected())
            << m_info->errorString().toStdString() << m_log.lines().join(QLatin1Char('\n')).toStdString();
        EXPECT_EQ(m_camera->deviceState().state(), ParameterCollection::ObjectState_Open);
        EXPECT_NE(m_camera->getParameterCollection()->nodeMap(Path::CameraDevice), nullptr);
        EXPECT_NE(m_camera->getParameterCollection()->nodeMap(Path::StreamGrabber0), nullptr);
        EXPECT_EQ(m_transport->GetLivingDevices(), 1U);
    }
    void expectClosedAndOpenable()
    {
        EXPECT_FALSE(m_camera->isOpen());
        EXPECT_EQ(m_camera->deviceState().state(), ParameterCollection::ObjectState_Closed);
        EXPECT_EQ(m_camera->getParameterCollection()->nodeMap(Path::CameraDevice), nullptr);
        m_transport->SetFault(EStep::OpenControl, EFault::None);
        m_transport->AddCamera(::Test::SScriptedCamera());
        EXPECT_TRUE(m_camera->open(false)) << m_info->errorString().toStdString();
        expectOpen();
    }

    QSharedPointer<CCamera> m_camera;
    ::Test::CSignalOrder m_own;
    QString m_failure;
};

TEST_F(CameraFirmware, withoutAResetTheSameDeviceComesBackAsItWas)
{
    EXPECT_TRUE(apply(oneWrite));
    EXPECT_TRUE(m_failure.isEmpty());
    expectOpen();
    EXPECT_EQ(own(), QString());
    EXPECT_EQ(order(), QString());
    EXPECT_EQ(m_transport->GetCount(EStep::OpenControl, s_serial), 1U);
    EXPECT_EQ(m_transport->GetCount(EStep::CloseDevice, s_serial), 0U);
}

TEST_F(CameraFirmware, isNotOpenAndHasNoParametersMeanwhile)
{
    bool wasOpen = true;
    GenApi::INodeMap* pNodeMap = &m_camera->getParameterCollection()->nodeMap(Path::CameraDevice)[0];
    m_transport->SetHook(EStep::DeviceReset,
                         [&](const std::string&)
                         {
                             wasOpen = m_camera->isOpen();
                             pNodeMap = m_camera->getParameterCollection()->nodeMap(Path::CameraDevice);
                         });
    EXPECT_TRUE(apply(reset));
    EXPECT_FALSE(wasOpen);
    EXPECT_EQ(pNodeMap, nullptr);
}

TEST_F(CameraFirmware, afterAResetItIsOpenedAnewAsItsOwn)
{
    m_transport->ResetCounts();
    EXPECT_TRUE(apply(reset));
    expectOpen();
    EXPECT_EQ(own(), QString());
    EXPECT_EQ(m_transport->GetCount(EStep::OpenControl, s_serial), 2U) << "by the recovery, then by the camera";
    EXPECT_EQ(m_transport->GetLastWrite(s_serial, "ClearBufferModeEnable"), "1");
    m_camera->startGrabbing();
    EXPECT_TRUE(m_camera->isGrabbing());
    m_camera->stopGrabbing();
}

TEST_F(CameraFirmware, lossAfterAnUpdateIsTold)
{
    EXPECT_TRUE(apply(reset));
    m_transport->RemoveCamera(s_serial);
    EXPECT_TRUE(::Test::waitUntil([&] { return own() == QStringLiteral("lost"); }));
}

TEST_F(CameraFirmware, deviceThatNeverReturnsLeavesAClosedCamera)
{
    m_atSleep = [this](int attempt)
    {
        if (attempt == 0)
        {
            m_transport->RemoveCamera(s_serial);
        }
    };
    EXPECT_FALSE(apply(reset));
    EXPECT_EQ(m_sleeps.size(), 30U);
    EXPECT_EQ(m_info->errorString(), QStringLiteral("Could not rediscover device after reset."));
    EXPECT_EQ(m_failure, QStringLiteral("Failure while updating the firmware. Reason: "
                                        "Could not rediscover device after reset."));
    EXPECT_TRUE(m_log.contains(m_failure));
    EXPECT_EQ(own(), QStringLiteral("closed"));
    EXPECT_EQ(order(), QString()) << "it is locked: the pool hears nothing";
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    m_pool->unlock(m_camera);
    EXPECT_EQ(order(), QStringLiteral("cameraAttached"));
    EXPECT_FALSE(m_pool->isDeviceOpen(m_info));
    expectClosedAndOpenable();
}

TEST_F(CameraFirmware, deviceThatVanishesMidStepIsALostCamera)
{
    m_transport->SetHook(EStep::WriteRegister,
                         [this](const std::string&) { m_transport->RemoveCamera(s_serial, 1, false); });
    EXPECT_FALSE(apply(oneWrite));
    m_transport->SetHook(EStep::WriteRegister, nullptr);
    EXPECT_FALSE(m_camera->isConnected());
    EXPECT_EQ(m_camera->deviceState().state(), ParameterCollection::ObjectState_ConnectionLost);
    EXPECT_TRUE(::Test::waitUntil([&] { return own() == QStringLiteral("lost"); }));
    m_camera->close();
    EXPECT_EQ(own(), QStringLiteral("lost closed"));
    expectClosedAndOpenable();
}

TEST_F(CameraFirmware, deviceThatCannotBeReopenedByTheCameraIsClosed)
{
    int opens = 0;
    m_transport->SetHook(EStep::OpenControl,
                         [&](const std::string&)
                         {
                             if (++opens == 2)
                             {
                                 GENICAM_THROW(AccessException, "taken by another");
                             }
                         });
    EXPECT_TRUE(apply(reset)) << "the update was done";
    EXPECT_EQ(own(), QStringLiteral("closed"));
    EXPECT_EQ(m_info->errorString(), QStringLiteral("taken by another"));
    expectClosedAndOpenable();
}

TEST_F(CameraFirmware, mayBeTriedAgainAfterAFailedReset)
{
    m_transport->SetFault(EStep::OpenControl, EFault::Access, "still busy", s_serial, 1);
    EXPECT_FALSE(apply(reset));
    EXPECT_FALSE(m_camera->isOpen());
    EXPECT_TRUE(apply(reset)) << m_info->errorString().toStdString();
    expectOpen();
    EXPECT_EQ(own(), QStringLiteral("closed opened"));
}

TEST_F(CameraFirmware, withoutADeviceNothingIsApplied)
{
    m_camera->close();
    m_own.clear();
    m_transport->RemoveCamera(s_serial);
    EXPECT_FALSE(apply(oneWrite));
    EXPECT_TRUE(m_failure.startsWith(QStringLiteral("Failure while updating the firmware. Reason: ")));
    EXPECT_EQ(own(), QString());
    expectClosedAndOpenable();
}

TEST_F(CameraFirmware, guardsComeBeforeAnythingElse)
{
    ParameterCollection::CObjectState state = m_camera->instanceState(); // copies share it
    state.addUse();
    bool matches = true;
    const auto info = update("2.0").objectCast<CFirmwareUpdateInfo>();
    const auto& entry = info->getGenApiFirmwareUpdateInfo();
    EXPECT_THROW(m_camera->matchesFirmwareUpdate(entry, matches), Core::Exception::InvalidOperationException);
    EXPECT_THROW(m_camera->applyFirmwareUpdate(entry, nullptr, m_failure), Core::Exception::InvalidOperationException);
    state.removeUse();
    {
        const ParameterCollection::CScopedObjectStateLock lock(m_camera->instanceState());
        EXPECT_THROW(m_camera->applyFirmwareUpdate(entry, nullptr, m_failure),
                     Core::Exception::InvalidOperationException);
    }
    EXPECT_TRUE(m_camera->matchesFirmwareUpdate(entry, matches));
    EXPECT_TRUE(matches);
    expectOpen();
}

TEST_F(CameraFirmware, checkThatFailsMatchesNothing)
{
    bool matches = true;
    EXPECT_FALSE(m_camera->matchesFirmwareUpdate(GenApi::CFirmwareUpdateInfo(), matches));
    EXPECT_FALSE(matches);
    EXPECT_FALSE(m_info->errorString().isEmpty());
    EXPECT_FALSE(m_camera->applyFirmwareUpdate(GenApi::CFirmwareUpdateInfo(), nullptr, m_failure));
    expectOpen();
}

TEST_F(CameraFirmware, cameraThatLeavesTheListDuringItsResetIsLetGoAtTheEnd)
{
    m_atSleep = [this](int attempt)
    {
        if (attempt == 0)
        {
            m_pool->beginAnnounce();
            m_pool->endAnnounce();
        }
    };
    EXPECT_TRUE(apply(reset));
    expectOpen();
    EXPECT_EQ(order(), QStringLiteral("deviceDisconnected"));
    m_pool->announceDevice(m_info);
    EXPECT_FALSE(m_pool->unlock(m_camera));
    QCoreApplication::sendPostedEvents();
    m_camera.clear();
    EXPECT_EQ(m_transport->GetLivingDevices(), 0U);
    EXPECT_TRUE(m_pool->openDevice(BaseInfoPtr(m_info), false));
}

} // namespace
