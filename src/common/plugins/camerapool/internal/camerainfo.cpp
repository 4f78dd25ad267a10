// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camerainfo.h"

#include "camerapool/deviceclasses.h"

#include <QMutexLocker>

namespace Plugin::CameraPool::Internal
{

namespace
{

QString friendlyNameOf(const Velmo::CDeviceInfo& info, const QString& userDefinedName, const QString& vendorName,
                       const QString& modelName, const QString& serialNumber)
{
    if (info.GetDeviceClass().str().find(DeviceClass::GenTlConsumer) == std::string::npos)
    {
        return CCameraInfo::qString(info.GetFriendlyName());
    }
    if (info.IsUserDefinedNameAvailable() && !userDefinedName.trimmed().isEmpty())
    {
        return QStringLiteral("%1 (%2)").arg(userDefinedName, serialNumber);
    }
    return QStringLiteral("%1 %2 (%3)").arg(vendorName, modelName, serialNumber);
}

} // namespace

std::atomic<unsigned int> CCameraInfo::m_updateCount{0};

CCameraInfo::CCameraInfo(const Velmo::CDeviceInfo& info, QObject* parent) : ICameraInfo(parent), m_deviceInfos{info}
{
    read();
    const auto identifier =
        QString::fromLatin1(info.GetDeviceClass().c_str()) + m_vendorName + m_modelName + m_serialNumber;
    setIds({Core::CId(identifier.toUtf8().constData())});
}

CCameraInfo::~CCameraInfo() = default;

QSharedPointer<CCameraInfo> CCameraInfo::fromDeviceInfo(const Velmo::CDeviceInfo& info)
{
    return QSharedPointer<CCameraInfo>(new CCameraInfo(info, nullptr));
}

void CCameraInfo::updateFromDeviceInfo(const Velmo::CDeviceInfo& info)
{
    const QMutexLocker locker(&m_mutex);
    if (!(m_deviceInfos.back() == info))
    {
        m_deviceInfos.push_back(info);
    }
    read();
    ++m_updateCount;
}

unsigned int CCameraInfo::updateCount()
{
    return m_updateCount;
}

void CCameraInfo::read()
{
    const auto& info = m_deviceInfos.back();
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

void CCameraInfo::setErrorString(QString text)
{
    const QMutexLocker locker(&m_mutex);
    m_errorString = std::move(text);
}

QString CCameraInfo::qString(const GenICam::gcstring& text)
{
    return QString::fromUtf8(text.c_str());
}

GenICam::gcstring CCameraInfo::velmoString(const QString& text)
{
    return text.toUtf8().constData();
}

QString CCameraInfo::friendlyName(const Velmo::CDeviceInfo& info)
{
    return friendlyNameOf(info, qString(info.GetUserDefinedName()), qString(info.GetVendorName()),
                          qString(info.GetModelName()), qString(info.GetSerialNumber()));
}

QString CCameraInfo::locked(const QString& member) const
{
    const QMutexLocker locker(&m_mutex);
    return member;
}

QString CCameraInfo::getTransportLayerName() const
{
    return locked(m_transportLayerName);
}

QString CCameraInfo::getCameraVersion() const
{
    return locked(m_cameraVersion);
}

QString CCameraInfo::getModelName() const
{
    return locked(m_modelName);
}

QString CCameraInfo::getSerialNumber() const
{
    return locked(m_serialNumber);
}

QString CCameraInfo::getUserDefinedName() const
{
    return locked(m_userDefinedName);
}

const Velmo::CDeviceInfo& CCameraInfo::getVelmoDeviceInfo() const
{
    const QMutexLocker locker(&m_mutex);
    return m_deviceInfos.back();
}

QString CCameraInfo::getFriendlyName() const
{
    const QMutexLocker locker(&m_mutex);
    return friendlyNameOf(m_deviceInfos.back(), m_userDefinedName, m_vendorName, m_modelName, m_serialNumber);
}

QString CCameraInfo::getFullName() const
{
    return locked(m_fullName);
}

QString CCameraInfo::getVendorName() const
{
    return locked(m_vendorName);
}

QString CCameraInfo::getTLType() const
{
    return locked(m_tlType);
}

int CCameraInfo::getType() const
{
    return RecordType_Camera;
}

QString CCameraInfo::errorString() const
{
    return locked(m_errorString);
}

void CCameraInfo::clearError()
{
    setErrorString(QString());
}

void setErrorStringHelper(const QSharedPointer<ICameraInfo>& info, const char* text)
{
    if (auto* pInfo = dynamic_cast<CCameraInfo*>(info.data()))
    {
        pInfo->setErrorString(QString::fromUtf8(text));
    }
}

} // namespace Plugin::CameraPool::Internal
