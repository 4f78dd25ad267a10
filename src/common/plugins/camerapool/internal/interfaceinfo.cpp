// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/interfaceinfo.h"

#include "camerapool/internal/camerainfo.h"

#include <QMutexLocker>

namespace Plugin::CameraPool::Internal
{

CInterfaceInfo::CInterfaceInfo(const Velmo::CInterfaceInfo& info, QObject* parent)
    : IInterfaceInfo(parent), m_interfaceInfo(info)
{
    m_friendlyName = CCameraInfo::qString(info.GetFriendlyName());
    m_fullName = CCameraInfo::qString(info.GetFullName());
    m_vendorName = CCameraInfo::qString(info.GetVendorName());
    m_interfaceId = CCameraInfo::qString(info.GetInterfaceID());
    m_tlType = CCameraInfo::qString(info.GetTLType());
    setIds({Core::CId(m_interfaceId.toUtf8().constData())});
}

CInterfaceInfo::~CInterfaceInfo() = default;

QSharedPointer<CInterfaceInfo> CInterfaceInfo::fromInterfaceInfo(const Velmo::CInterfaceInfo& info)
{
    return QSharedPointer<CInterfaceInfo>(new CInterfaceInfo(info, nullptr));
}

void CInterfaceInfo::setErrorString(const QString& text)
{
    const QMutexLocker locker(&m_mutex);
    m_errorString = text;
}

QString CInterfaceInfo::getInterfaceId() const
{
    return m_interfaceId;
}

Velmo::CInterfaceInfo& CInterfaceInfo::getVelmoInterfaceInfo()
{
    return m_interfaceInfo;
}

QString CInterfaceInfo::getFriendlyName() const
{
    return m_friendlyName;
}

QString CInterfaceInfo::getFullName() const
{
    return m_fullName;
}

QString CInterfaceInfo::getVendorName() const
{
    return m_vendorName;
}

QString CInterfaceInfo::getTLType() const
{
    return m_tlType;
}

int CInterfaceInfo::getType() const
{
    return RecordType_Interface;
}

QString CInterfaceInfo::errorString() const
{
    const QMutexLocker locker(&m_mutex);
    return m_errorString;
}

void CInterfaceInfo::clearError()
{
    setErrorString(QString());
}

} // namespace Plugin::CameraPool::Internal
