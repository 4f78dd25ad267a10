// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/interfaceinfolist.h"

#include "camerapool/internal/camerainfo.h"
#include "camerapool/internal/interfaceinfo.h"
#include "camerapool/internal/recordthread.h"

#include <QHash>

namespace Plugin::CameraPool
{

QVector<QSharedPointer<Internal::CInterfaceInfo>>* CInterfaceInfoList::m_pKnownInterfaces = nullptr;

QVector<QSharedPointer<Internal::CInterfaceInfo>>& CInterfaceInfoList::knownInterfaces()
{
    if (!m_pKnownInterfaces)
    {
        m_pKnownInterfaces = new QVector<QSharedPointer<Internal::CInterfaceInfo>>;
    }
    return *m_pKnownInterfaces;
}

QVector<QSharedPointer<IBaseInfo>> CInterfaceInfoList::toBaseInfoVector() const
{
    QVector<QSharedPointer<IBaseInfo>> result;
    result.reserve(size());
    for (const auto& info : *this)
    {
        result.append(info);
    }
    return result;
}

CInterfaceInfoList CInterfaceInfoList::fromInterfaceInfoList(Velmo::InterfaceInfoList interfaces)
{
    static QHash<QString, int> index; // interface ID to position among the known interfaces
    auto& known = knownInterfaces();
    CInterfaceInfoList result;
    result.reserve(static_cast<int>(interfaces.size()));
    for (const auto& velmoInfo : interfaces)
    {
        const auto interfaceId = Internal::CCameraInfo::qString(velmoInfo.GetInterfaceID());
        auto position = index.constFind(interfaceId);
        if (position == index.constEnd())
        {
            const auto info = Internal::CInterfaceInfo::fromInterfaceInfo(velmoInfo);
            Internal::moveToMainThread(*info);
            known.append(info);
            position = index.insert(interfaceId, known.size() - 1);
        }
        result.append(known.at(*position));
    }
    return result;
}

} // namespace Plugin::CameraPool
