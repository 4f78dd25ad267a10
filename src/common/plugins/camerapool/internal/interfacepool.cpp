// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/interfacepool.h"

#include "camerapool/internal/interface.h"

namespace Plugin::CameraPool::Internal
{

CInterfacePool::CInterfacePool(QObject* parent) : ADevicePool(parent) {}

CInterfacePool::~CInterfacePool()
{
    releaseDevices();
}

bool CInterfacePool::openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode)
{
    emit deviceOpening(info);
    return ADevicePool::openDevice(info, monitorMode);
}

void CInterfacePool::closeDevice(QSharedPointer<IDevice> device)
{
    if (!device)
    {
        return;
    }
    emit deviceClosing(device->getInfo().objectCast<IBaseInfo>());
    ADevicePool::closeDevice(device);
}

QSharedPointer<IDevice> CInterfacePool::createDevice(QSharedPointer<IBaseInfo> info)
{
    const auto interfaceInfo = info.objectCast<IInterfaceInfo>();
    if (!interfaceInfo)
    {
        return {};
    }
    if (const auto known = findDevice(info))
    {
        return known;
    }
    const QSharedPointer<CInterface> device(new CInterface(interfaceInfo, this));
    appendDevice(device);
    connect(device.data(), &IDevice::deviceOpened, this, &CInterfacePool::onDeviceOpened);
    connect(device.data(), &IDevice::deviceClosed, this, &CInterfacePool::onDeviceClosed);
    return device;
}

} // namespace Plugin::CameraPool::Internal
