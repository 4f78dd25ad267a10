// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/devicepool.h"

#include "velmo/velmo.h"

#include <QMutexLocker>

#include <algorithm>

namespace Plugin::CameraPool::Internal
{

QSharedPointer<IBaseInfo> ADevicePool::m_ptrActiveDevice;

ADevicePool::ADevicePool(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<BaseInfoPtr>("Plugin::CameraPool::BaseInfoPtr");
    qRegisterMetaType<BaseInfoPtr>("BaseInfoPtr");
    Velmo::VelmoInitialize();
}

ADevicePool::~ADevicePool()
{
    m_announced.clear();
    m_devices.clear();
    Velmo::VelmoTerminate(true);
}

QSharedPointer<IDevice> ADevicePool::findDevice(QSharedPointer<IBaseInfo> info) const
{
    if (info.isNull())
    {
        return {};
    }
    for (const auto& device : m_devices)
    {
        const auto known = qSharedPointerObjectCast<IBaseInfo>(device->getInfo());
        if (!known.isNull() && known->getType() == info->getType() && known->getFullName() == info->getFullName())
        {
            return device;
        }
    }
    return {};
}

bool ADevicePool::openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode)
{
    auto device = findDevice(info);
    if (device.isNull())
    {
        device = createDevice(info);
    }
    return !device.isNull() && device->open(monitorMode);
}

bool ADevicePool::openDevice(bool monitorMode)
{
    const QMutexLocker lock(&m_mutex);
    return !m_ptrActiveDevice.isNull() && openDevice(m_ptrActiveDevice, monitorMode);
}

bool ADevicePool::isDeviceOpen(QSharedPointer<IBaseInfo> info) const
{
    const auto device = findDevice(info);
    return !device.isNull() && device->isOpen();
}

void ADevicePool::closeDevice(QSharedPointer<IDevice> device)
{
    if (!device.isNull())
    {
        device->close();
    }
}

void ADevicePool::closeDevice(QSharedPointer<IBaseInfo> info)
{
    const QMutexLocker lock(&m_mutex);
    const auto device = findDevice(info);
    if (!device.isNull())
    {
        closeDevice(device);
    }
}

void ADevicePool::closeDevice()
{
    if (!m_ptrActiveDevice.isNull())
    {
        closeDevice(m_ptrActiveDevice);
    }
}

void ADevicePool::announceDevice(QSharedPointer<IBaseInfo> info)
{
    if (info.isNull())
    {
        return;
    }
    if (findDevice(info).isNull())
    {
        emit deviceConnected(info);
    }
    createDevice(info);
    m_announced.append(info);
}

void ADevicePool::announceDevices(QVector<QSharedPointer<IBaseInfo>> infos)
{
    for (const auto& info : qAsConst(infos))
    {
        announceDevice(info);
    }
}

void ADevicePool::beginAnnounce()
{
    m_announced.clear();
}

void ADevicePool::endAnnounce()
{
    const auto isGone = [this](const QSharedPointer<IDevice>& device)
    {
        return !m_announced.contains(qSharedPointerObjectCast<IBaseInfo>(device->getInfo()));
    };
    QVector<QSharedPointer<IDevice>> gone;
    std::copy_if(m_devices.cbegin(), m_devices.cend(), std::back_inserter(gone), isGone);
    m_devices.erase(std::remove_if(m_devices.begin(), m_devices.end(), isGone), m_devices.end());
    for (const auto& device : qAsConst(gone))
    {
        emit deviceDisconnected(qSharedPointerObjectCast<IBaseInfo>(device->getInfo()));
    }
}

bool ADevicePool::isDeviceOpenExclusive(QSharedPointer<IBaseInfo> /*info*/) const
{
    return false;
}

void ADevicePool::setActiveDevice(QSharedPointer<IBaseInfo> info)
{
    m_ptrActiveDevice = info;
}

QSharedPointer<IBaseInfo> ADevicePool::getActiveDeviceInfo()
{
    return m_ptrActiveDevice;
}

void ADevicePool::onDeviceOpened()
{
    if (const auto* pDevice = qobject_cast<IDevice*>(sender()))
    {
        emit deviceOpened(qSharedPointerObjectCast<IBaseInfo>(pDevice->getInfo()));
    }
}

void ADevicePool::onDeviceClosed()
{
    if (const auto* pDevice = qobject_cast<IDevice*>(sender()))
    {
        emit deviceClosed(qSharedPointerObjectCast<IBaseInfo>(pDevice->getInfo()));
    }
}

} // namespace Plugin::CameraPool::Internal
