// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/devicepool.h"

#include "camerapool/iinterfaceinfo.h"
#include "velmo/velmo.h"

#include <QMutexLocker>
#include <QSet>

#include <utility>

namespace Plugin::CameraPool::Internal
{

QSharedPointer<IBaseInfo> ADevicePool::m_ptrActiveDevice;

ADevicePool::ADevicePool(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<QSharedPointer<IBaseInfo>>("Plugin::CameraPool::BaseInfoPtr");
    qRegisterMetaType<QSharedPointer<IBaseInfo>>("BaseInfoPtr");
    Velmo::VelmoInitialize();
}

ADevicePool::~ADevicePool()
{
    m_announced.clear();
    releaseDevices();
    Velmo::VelmoTerminate(true);
}

QSharedPointer<IDevice> ADevicePool::findDevice(QSharedPointer<IBaseInfo> info) const
{
    // Most ask with the record that a device was made of: no text has to be copied under that record's lock and hashed.
    const auto known = m_recordIndex.constFind(info.data());
    const int position = known != m_recordIndex.constEnd() ? *known : positionByKey(info.data());
    return position < 0 ? QSharedPointer<IDevice>() : m_devices.at(position);
}

int ADevicePool::positionByKey(const IBaseInfo* pInfo) const
{
    if (const auto* pInterface = qobject_cast<const IInterfaceInfo*>(pInfo))
    {
        return m_interfaceIndex.value(pInterface->getInterfaceId(), -1);
    }
    if (pInfo != nullptr && pInfo->getType() == RecordType_Camera)
    {
        return m_cameraIndex.value(pInfo->getFullName(), -1);
    }
    return -1;
}

bool ADevicePool::openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode)
{
    auto device = findDevice(info);
    if (!device)
    {
        device = createDevice(info);
    }
    return device && device->open(monitorMode);
}

bool ADevicePool::openDevice(bool monitorMode)
{
    const QMutexLocker locker(&m_mutex);
    return m_ptrActiveDevice && openDevice(m_ptrActiveDevice, monitorMode);
}

bool ADevicePool::isDeviceOpen(QSharedPointer<IBaseInfo> info) const
{
    if (!info)
    {
        return false;
    }
    const auto device = findDevice(info);
    return device && device->isOpen();
}

void ADevicePool::closeDevice(QSharedPointer<IDevice> device)
{
    if (device)
    {
        device->close();
    }
}

void ADevicePool::closeDevice(QSharedPointer<IBaseInfo> info)
{
    const QMutexLocker locker(&m_mutex);
    const auto device = findDevice(info);
    if (device)
    {
        closeDevice(device);
    }
}

void ADevicePool::closeDevice()
{
    if (m_ptrActiveDevice)
    {
        closeDevice(m_ptrActiveDevice);
    }
}

void ADevicePool::announceDevice(QSharedPointer<IBaseInfo> info)
{
    if (!info)
    {
        return;
    }
    if (!findDevice(info))
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
    QSet<const QObject*> announced;
    announced.reserve(m_announced.size());
    for (const auto& info : qAsConst(m_announced))
    {
        announced.insert(info.data());
    }
    QVector<QSharedPointer<IDevice>> kept;
    QVector<QSharedPointer<IDevice>> removed;
    kept.reserve(m_devices.size());
    for (const auto& device : qAsConst(m_devices))
    {
        (announced.contains(device->getInfo().data()) ? kept : removed).append(device);
    }
    if (removed.isEmpty())
    {
        return;
    }
    m_devices.swap(kept);
    rebuildIndex();
    m_removedDevices += removed;
    QMetaObject::invokeMethod(
        this, [this] { std::exchange(m_removedDevices, {}).clear(); }, Qt::QueuedConnection);
    for (const auto& device : qAsConst(removed))
    {
        emit deviceDisconnected(device->getInfo().objectCast<IBaseInfo>());
    }
}

bool ADevicePool::isDeviceOpenExclusive(QSharedPointer<IBaseInfo>) const
{
    return false;
}

void ADevicePool::setActiveDevice(QSharedPointer<IBaseInfo> info)
{
    if (m_ptrActiveDevice && m_ptrActiveDevice == info)
    {
        return;
    }
    m_ptrActiveDevice = std::move(info);
}

QSharedPointer<IBaseInfo> ADevicePool::getActiveDeviceInfo()
{
    return m_ptrActiveDevice;
}

void ADevicePool::appendDevice(const QSharedPointer<IDevice>& device)
{
    m_devices.append(device);
    addToIndex(m_devices.size() - 1);
}

void ADevicePool::connectOpenState(const IDevice* pDevice)
{
    connect(pDevice, &IDevice::deviceClosed, this, &ADevicePool::onDeviceClosed);
    connect(pDevice, &IDevice::deviceOpened, this, &ADevicePool::onDeviceOpened);
}

void ADevicePool::releaseDevices()
{
    clearIndex();
    // Taken out first: a device that closes while it goes may make a slot look for it here.
    const auto removed = std::exchange(m_removedDevices, {});
    const auto devices = std::exchange(m_devices, {});
}

void ADevicePool::addToIndex(int position)
{
    const auto info = m_devices.at(position)->getInfo();
    const auto* const pInfo = qobject_cast<const IBaseInfo*>(info.data());
    int first = positionByKey(pInfo);
    if (first < 0)
    {
        first = position;
        if (const auto* pInterface = qobject_cast<const IInterfaceInfo*>(pInfo))
        {
            m_interfaceIndex.insert(pInterface->getInterfaceId(), position);
        }
        else if (pInfo != nullptr && pInfo->getType() == RecordType_Camera)
        {
            m_cameraIndex.insert(pInfo->getFullName(), position);
        }
        else
        {
            return; // of a kind that is never found
        }
    }
    m_recordIndex.insert(pInfo, first);
}

void ADevicePool::clearIndex()
{
    m_recordIndex.clear();
    m_cameraIndex.clear();
    m_interfaceIndex.clear();
}

void ADevicePool::rebuildIndex()
{
    clearIndex();
    for (int i = 0; i < m_devices.size(); ++i)
    {
        addToIndex(i);
    }
}

void ADevicePool::onDeviceOpened()
{
    if (const auto* pDevice = qobject_cast<IDevice*>(sender()))
    {
        emit deviceOpened(pDevice->getInfo().objectCast<IBaseInfo>());
    }
}

void ADevicePool::onDeviceClosed()
{
    if (const auto* pDevice = qobject_cast<IDevice*>(sender()))
    {
        emit deviceClosed(pDevice->getInfo().objectCast<IBaseInfo>());
    }
}

} // namespace Plugin::CameraPool::Internal
