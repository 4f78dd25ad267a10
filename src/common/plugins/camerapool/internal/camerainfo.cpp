// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camerainfo.h"

namespace Plugin::CameraPool::Internal
{

CCameraInfo::CCameraInfo(const Velmo::CDeviceInfo& info, QObject* parent) : ICameraInfo(parent)
{
    updateFromDeviceInfo(info);
    const QString id = QString::fromLatin1(info.GetDeviceClass().c_str()) + m_vendorName + m_modelName + m_serialNumber;
    setIds({Core::CId(id.toUtf8().constData())});
}

CCameraInfo::~CCameraInfo() = default;

QSharedPointer<CCameraInfo> CCameraInfo::fromDeviceInfo(const Velmo::CDeviceInfo& info)
{
    return QSharedPointer<CCameraInfo>(new CCameraInfo(info, nullptr));
}

void CCameraInfo::updateFromDeviceInfo(const Velmo::CDeviceInfo& info)
{
    m_deviceInfo = info;
    m_transportLayerName = qString(info.GetDeviceFactory());
    m_cameraVersion = qString(info.GetDeviceVersion());
    m_friendlyName = qString(info.GetFriendlyName());
    m_fullName = qString(info.GetFullName());
    m_modelName = qString(info.GetModelName());
    m_serialNumber = qString(info.GetSerialNumber());
    m_userDefinedName = qString(info.GetUserDefinedName());
    m_vendorName = qString(info.GetVendorName());
    m_tlType = qString(info.GetTLType());
}

QString CCameraInfo::getFriendlyName() const
{
    if (!qString(m_deviceInfo.GetDeviceClass()).contains(QLatin1String("KorvelGTC")))
    {
        return m_friendlyName;
    }
    if (m_deviceInfo.IsUserDefinedNameAvailable() && !m_userDefinedName.trimmed().isEmpty())
    {
        return QStringLiteral("%1 (%2)").arg(m_userDefinedName, m_serialNumber);
    }
    return QStringLiteral("%1 %2 (%3)").arg(m_vendorName, m_modelName, m_serialNumber);
}

QString CCameraInfo::qString(const GenICam::gcstring& text)
{
    return QString::fromUtf8(text.c_str());
}

GenICam::gcstring CCameraInfo::velmoString(const QString& text)
{
    return GenICam::gcstring(text.toUtf8().constData());
}

void setErrorStringHelper(const QSharedPointer<ICameraInfo>& info, const char* text)
{
    if (auto* pRecord = dynamic_cast<CCameraInfo*>(info.data()))
    {
        pRecord->setErrorString(QString::fromLatin1(text));
    }
}

} // namespace Plugin::CameraPool::Internal
