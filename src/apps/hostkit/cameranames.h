// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamerainfo.h"
#include "hostkit/hostkit_export.h"

#include <QSharedPointer>
#include <QStringList>
#include <QVector>

namespace HostKit
{

using CameraInfoPtr = QSharedPointer<Plugin::CameraPool::ICameraInfo>;

/** Every name by which a person may call the camera: user name, serial number, vendor-model-serial, full name. */
HOSTKIT_EXPORT QStringList namesOf(const Plugin::CameraPool::ICameraInfo& camera);

/**
 * The camera that is called that. A name that only one kind of name of one camera equals wins; null, with the reason in
 * error, when none or several are called so.
 */
HOSTKIT_EXPORT CameraInfoPtr findByName(const QVector<CameraInfoPtr>& cameras, const QString& name, QString& error);

} // namespace HostKit
