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
    // Who still holds an interface keeps it, closed: the SDK may be gone with this pool.
    const auto stillHeld = findChildren<IInterface*>(QString(), Qt::FindDirectChildrenOnly);
    for (IInterface* pInterface : stillHeld)
    {
        pInterface->close();
        pInterface->setParent(nullptr);
    }
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
    connectOpenState(device.data());
    return device;
}

} // namespace Plugin::CameraPool::Internal
