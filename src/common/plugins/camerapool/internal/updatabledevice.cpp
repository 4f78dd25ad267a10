// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/updatabledevice.h"

#include "genapi/exceptions.h"
#include "velmo/tlfactory.h"

#include <QThread>
#include <QtDebug>

#include <algorithm>
#include <utility>

// The same whatever folder it is built in.
#define UPDATABLE_DEVICE_THROW(Kind, description)                                                                      \
    throw ::GenICam::Kind((description), "src/common/plugins/camerapool/internal/updatabledevice.cpp", __LINE__)

namespace Plugin::CameraPool::Internal
{

namespace
{

constexpr int s_attempts = 30;
constexpr unsigned int s_shortestRebootMs = 1000;
constexpr unsigned int s_pauseMs = 500;

void executeDeviceReset(GenApi::INodeMap& nodeMap)
{
    const GenApi::CCommandPtr reset(nodeMap.GetNode("DeviceReset"));
    if (!reset.IsValid())
    {
        UPDATABLE_DEVICE_THROW(LogicalErrorException, "NULL pointer dereferenced");
    }
    reset->Execute(true);
}

void logFailedReturn(const Velmo::CDeviceInfo& info, bool isLast)
{
    const auto serialNumber = info.GetSerialNumber();
    if (isLast)
    {
        qCritical("Failed to re-open device '%s'", serialNumber.c_str());
    }
    else
    {
        qDebug("Failed to re-open device '%s'", serialNumber.c_str());
    }
}

} // namespace

CUpdatableDevice::CUpdatableDevice(Sleep sleep)
    : m_sleep(sleep ? std::move(sleep) : [](unsigned int timeMs) { QThread::msleep(timeMs); })
{
    // Opening must not change the device's settings.
    m_camera.RegisterConfiguration(nullptr, Velmo::RegistrationMode_ReplaceAll, Velmo::Cleanup_Delete);
}

CUpdatableDevice::~CUpdatableDevice() = default;

void CUpdatableDevice::PrepareForFirmwareUpdate()
{
    m_camera.Open();
}

GenApi::INodeMap& CUpdatableDevice::GetNodeMapOfDeviceToUpdate()
{
    return m_camera.GetNodeMap();
}

GenICam::gcstring CUpdatableDevice::GetDisplayName()
{
    return m_camera.GetDeviceInfo().GetFriendlyName();
}

void CUpdatableDevice::DeviceResetWhileUpdatingFirmware(unsigned int /*expectedTimeMs*/, unsigned int waitTimeMs)
{
    qDebug("Resetting device.");
    const Velmo::CDeviceInfo info = m_camera.GetDeviceInfo();
    executeDeviceReset(m_camera.GetNodeMap());
    m_wasReset = true;
    m_camera.DestroyDevice();

    Velmo::CDeviceInfo same;
    same.SetDeviceClass(info.GetDeviceClass());
    same.SetSerialNumber(info.GetSerialNumber());
    // Never emptied: a device that was found but could not be opened is found a second time by the next attempt, and
    // no attempt after that can succeed.
    Velmo::DeviceInfoList found;
    for (int attempt = 0; attempt < s_attempts && !m_camera.IsOpen(); ++attempt)
    {
        awaitReboot(attempt, waitTimeMs);
        try
        {
            tryToReturn({same}, found, attempt);
        }
        catch (const GenICam::GenericException&)
        {
            logFailedReturn(info, attempt == s_attempts - 1);
            m_camera.DestroyDevice();
        }
    }
    if (found.empty() || !m_camera.IsOpen())
    {
        UPDATABLE_DEVICE_THROW(RuntimeException, "Could not rediscover device after reset.");
    }
    if (found.size() > 1)
    {
        UPDATABLE_DEVICE_THROW(RuntimeException, "Multiple devices discovered after reset.");
    }
}

void CUpdatableDevice::awaitReboot(int attempt, unsigned int waitTimeMs) const
{
    if (attempt == 0 && waitTimeMs != 0)
    {
        const unsigned int timeMs = std::max(waitTimeMs, s_shortestRebootMs);
        qDebug("Waiting for device to reboot for %u ms.", timeMs);
        m_sleep(timeMs);
        return;
    }
    qDebug("Waiting (%d)\n", attempt);
    m_sleep(s_pauseMs);
}

void CUpdatableDevice::tryToReturn(const Velmo::DeviceInfoList& filter, Velmo::DeviceInfoList& found, int attempt)
{
    auto& factory = Velmo::CTlFactory::GetInstance();
    qDebug("Trying to rediscover the device.");
    factory.EnumerateDevices(found, filter, true);
    if (found.size() != 1)
    {
        return;
    }
    qDebug("Trying to re-create the device (%d).\n", attempt);
    m_camera.Attach(factory.CreateDevice(found.front()), Velmo::Cleanup_Delete);
    qDebug("Trying to re-open the device (%d).\n", attempt);
    m_camera.Open();
    if (m_camera.IsOpen())
    {
        qDebug("Trying to retrieve nodemap (%d).", attempt);
        m_camera.GetNodeMap();
    }
    else
    {
        qDebug("Destroying device and re-starting.");
        m_camera.DestroyDevice();
    }
}

void CUpdatableDevice::CleanupAfterFirmwareUpdate() {}

void CUpdatableDevice::attach(Velmo::IVelmoDevice* pDevice)
{
    m_camera.Attach(pDevice, Velmo::Cleanup_Delete);
    m_wasReset = false;
}

Velmo::IVelmoDevice* CUpdatableDevice::detach()
{
    return m_camera.DetachDevice();
}

bool CUpdatableDevice::deviceIsOpen() const
{
    return m_camera.IsOpen();
}

} // namespace Plugin::CameraPool::Internal
