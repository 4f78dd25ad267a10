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
class CInterfaceInfo;
}

/** Interface records in the order of the SDK; implicitly shared. */
class CAMERAPOOL_EXPORT CInterfaceInfoList : public QVector<QSharedPointer<Internal::CInterfaceInfo>>
{
public:
    using QVector<QSharedPointer<Internal::CInterfaceInfo>>::QVector;

    /** The same records in the same order, as the device pools take them. */
    QVector<QSharedPointer<IBaseInfo>> toBaseInfoVector() const;

    /**
     * The records of the SDK's interfaces: for each the one that the process keeps for its interface ID, as it was
     * made, or a new one. Threads: the enumeration thread only.
     */
    static CInterfaceInfoList fromInterfaceInfoList(Velmo::InterfaceInfoList interfaces);

private:
    static QVector<QSharedPointer<Internal::CInterfaceInfo>>& knownInterfaces();

    /** Every record ever made; grows only. */
    static QVector<QSharedPointer<Internal::CInterfaceInfo>>* m_pKnownInterfaces;
};

} // namespace Plugin::CameraPool
