// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/poolselection.h"

#include "camerapool/iinterface.h"

namespace Plugin::CameraPool::Internal
{

ADevicePool* SPools::of(const QSharedPointer<IBaseInfo>& info) const
{
    if (qobject_cast<ICameraInfo*>(info.data()))
    {
        return cameras;
    }
    if (qobject_cast<IInterfaceInfo*>(info.data()))
    {
        return interfaces;
    }
    return nullptr;
}

ADevicePool* SPools::of(const QSharedPointer<IDevice>& device) const
{
    if (qobject_cast<ICamera*>(device.data()))
    {
        return cameras;
    }
    if (qobject_cast<IInterface*>(device.data()))
    {
        return interfaces;
    }
    return nullptr;
}

ADevicePool* SPools::ofActiveDevice() const
{
    return of(ADevicePool::getActiveDeviceInfo());
}

} // namespace Plugin::CameraPool::Internal
