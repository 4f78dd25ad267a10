// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamerainfo.h"
#include "camerapool/iinterfaceinfo.h"
#include "hostkit/hostkit_export.h"

#include <QSharedPointer>
#include <QVector>

namespace HostKit
{

using InterfaceInfoPtr = QSharedPointer<Plugin::CameraPool::IInterfaceInfo>;

/** The interface of that identifier, friendly name or full name; null, with the reason in error, when none or several
 *  are called so. */
HOSTKIT_EXPORT InterfaceInfoPtr findInterface(const QVector<InterfaceInfoPtr>& interfaces, const QString& name,
                                              QString& error);

/** The interface that the camera was seen on; null when the list does not hold it. */
HOSTKIT_EXPORT InterfaceInfoPtr interfaceOf(const QVector<InterfaceInfoPtr>& interfaces,
                                            const Plugin::CameraPool::ICameraInfo& camera);

} // namespace HostKit
