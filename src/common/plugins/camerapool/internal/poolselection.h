// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/internal/camerapool.h"
#include "camerapool/internal/interfacepool.h"

#include <QPointer>

namespace Plugin::CameraPool::Internal
{

/** The two pools as a service sees them; either may be gone. Main thread. */
struct SPools
{
    QPointer<CCameraPool> cameras;
    QPointer<CInterfacePool> interfaces;

    /** The pool of that kind of record; null for any other kind, or when the pool is gone. */
    ADevicePool* of(const QSharedPointer<IBaseInfo>& info) const;
    ADevicePool* of(const QSharedPointer<IDevice>& device) const;
    ADevicePool* ofActiveDevice() const;
};

} // namespace Plugin::CameraPool::Internal
