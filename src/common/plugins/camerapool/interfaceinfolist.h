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
class CInterfaceInfo;
}

/** Interface records in the order of discovery. Enumeration thread: the static functions; any: a copy. */
class CAMERAPOOL_EXPORT CInterfaceInfoList : public QVector<QSharedPointer<Internal::CInterfaceInfo>>
{
public:
    CInterfaceInfoList() = default;

    /** The same records in the same order, as the device pools take them. */
    QVector<QSharedPointer<IBaseInfo>> toBaseInfoVector() const;

    /** The records of the SDK's interfaces: the known record of an ID seen before, as it was, else a new one. */
    static CInterfaceInfoList fromInterfaceInfoList(Velmo::InterfaceInfoList interfaces);

    /** Every record ever made, in the order of first sighting; null before the first. */
    static QVector<QSharedPointer<Internal::CInterfaceInfo>>* m_pKnownInterfaces;
};

} // namespace Plugin::CameraPool
