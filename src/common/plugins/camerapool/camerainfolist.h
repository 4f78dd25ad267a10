// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"
#include "camerapool/ibaseinfo.h"
#include "transport/infos.h"

#include <QSharedPointer>
#include <QVector>

namespace Plugin::CameraPool
{

namespace Internal
{
class CCameraInfo;
}

/** Camera records in the order of the SDK; implicitly shared. */
class CAMERAPOOL_EXPORT CCameraInfoList : public QVector<QSharedPointer<Internal::CCameraInfo>>
{
public:
    using QVector<QSharedPointer<Internal::CCameraInfo>>::QVector;

    /** The same records in the same order, as the device pools take them. */
    QVector<QSharedPointer<IBaseInfo>> toBaseInfoVector() const;

    /**
     * The records of the SDK's cameras: for each the one that the process keeps for its full name, made anew for a
     * name never seen. A known record whose friendly or user-defined name has changed is refreshed.
     * changed: whether any was. Threads: the enumeration thread only.
     */
    static CCameraInfoList fromDeviceInfoList(Velmo::DeviceInfoList devices, bool& changed);

private:
    static QVector<QSharedPointer<Internal::CCameraInfo>>& knownCameras();

    /** Every record ever made; grows only. */
    static QVector<QSharedPointer<Internal::CCameraInfo>>* m_pKnownCameras;
};

} // namespace Plugin::CameraPool
