// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/transportlayerinfo.h"

#include "camerapool/internal/camerainfo.h"

#include <QMutexLocker>

#include <algorithm>

namespace Plugin::CameraPool::Internal
{

CTransportLayerInfo::CTransportLayerInfo(const QString& deviceClass, const QString& tlType, const QString& friendlyName,
                                         const QString& fullName, QObject* parent)
    : ITransportLayerInfo(parent), m_deviceClass(deviceClass), m_tlType(tlType), m_friendlyName(friendlyName),
      m_fullName(fullName)
{
}

CTransportLayerInfo::~CTransportLayerInfo() = default;

QSharedPointer<CTransportLayerInfo> CTransportLayerInfo::fromVelmoTransportLayer(Velmo::CTlInfo info)
{
    const auto deviceClass = CCameraInfo::qString(info.GetDeviceClass());
    const auto tlType = CCameraInfo::qString(info.GetTLType());
    const auto friendlyName = CCameraInfo::qString(info.GetFriendlyName());
    const auto fullName = CCameraInfo::qString(info.GetFullName());
    return QSharedPointer<CTransportLayerInfo>(
        new CTransportLayerInfo(deviceClass, tlType, friendlyName, fullName, nullptr));
}

void CTransportLayerInfo::setCameraInfoList(const CCameraInfoList& list)
{
    const QMutexLocker locker(&m_mutex);
    m_cameraInfoList = list;
}

void CTransportLayerInfo::setInterfaceInfoList(const CInterfaceInfoList& list)
{
    const QMutexLocker locker(&m_mutex);
    m_interfaceInfoList = list;
}

void CTransportLayerInfo::setHaveContainedCamerasChanged(bool changed)
{
    if (changed)
    {
        ++m_changeCount;
    }
    m_haveContainedCamerasChanged = changed;
}

void CTransportLayerInfo::replaceCameraInfoList(const CCameraInfoList& list, bool recordsUpdated)
{
    const QMutexLocker locker(&m_mutex);
    const bool same = list.isSharedWith(m_cameraInfoList) ||
                      std::equal(list.cbegin(), list.cend(), m_cameraInfoList.cbegin(), m_cameraInfoList.cend());
    m_cameraInfoList = list;
    if (recordsUpdated || !same)
    {
        setHaveContainedCamerasChanged(true);
    }
}

bool CTransportLayerInfo::removeCamera(const QSharedPointer<ICameraInfo>& camera)
{
    const QMutexLocker locker(&m_mutex);
    // A new list, not the old one shortened: whoever holds a copy of that one may still be reading it.
    CCameraInfoList kept;
    kept.reserve(m_cameraInfoList.size());
    for (const auto& candidate : qAsConst(m_cameraInfoList))
    {
        if (candidate.data() != camera.data())
        {
            kept.append(candidate);
        }
    }
    if (kept.size() == m_cameraInfoList.size())
    {
        return false;
    }
    m_cameraInfoList = kept;
    setHaveContainedCamerasChanged(true);
    return true;
}

unsigned int CTransportLayerInfo::changeCount() const
{
    return m_changeCount;
}

CCameraInfoList CTransportLayerInfo::cameraInfoList() const
{
    const QMutexLocker locker(&m_mutex);
    return m_cameraInfoList;
}

const CCameraInfoList& CTransportLayerInfo::getCameraInfoList() const
{
    const QMutexLocker locker(&m_mutex);
    return m_cameraInfoViews[std::this_thread::get_id()] = m_cameraInfoList;
}

const CInterfaceInfoList& CTransportLayerInfo::getInterfaceInfoList() const
{
    const QMutexLocker locker(&m_mutex);
    return m_interfaceInfoViews[std::this_thread::get_id()] = m_interfaceInfoList;
}

QString CTransportLayerInfo::getClass() const
{
    return m_deviceClass;
}

QString CTransportLayerInfo::getTlType() const
{
    return m_tlType;
}

QString CTransportLayerInfo::getFriendlyName() const
{
    return m_friendlyName;
}

QString CTransportLayerInfo::getFullName() const
{
    return m_fullName;
}

bool CTransportLayerInfo::haveContainedCamerasChanged() const
{
    return m_haveContainedCamerasChanged;
}

} // namespace Plugin::CameraPool::Internal
