// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_export.h"
#include "camerapool/ibaseinfo.h"
#include "transport/infos.h"

#include <QVector>

namespace Plugin::CameraPool
{

namespace Internal
{
class CCameraInfo;
}

/** Camera records in the order of discovery. Enumeration thread: the static functions; any: a copy. */
class CAMERAPOOL_EXPORT CCameraInfoList : public QVector<QSharedPointer<Internal::CCameraInfo>>
{
public:
    CCameraInfoList() = default;

    /** The same records in the same order, as the device pools take them. */
    QVector<QSharedPointer<IBaseInfo>> toBaseInfoVector() const;

    /**
     * The records of the SDK's devices: the known record of a full name seen before, refreshed in place when a name
     * that people see has changed (then changed is true, otherwise false), else a new one.
     */
    static CCameraInfoList fromDeviceInfoList(Velmo::DeviceInfoList devices, bool& changed);

    /** Every record ever made, in the order of first sighting; null before the first. */
    static QVector<QSharedPointer<Internal::CCameraInfo>>* m_pKnownCameras;
};

} // namespace Plugin::CameraPool
