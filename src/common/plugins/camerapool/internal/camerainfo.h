// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamerainfo.h"

#include <QMutex>

#include <atomic>
#include <list>

namespace Plugin::CameraPool::Internal
{

/** The one kind of camera record. Written by the enumeration thread and, as to the error, by any; read by any. */
class CAMERAPOOL_TEST_EXPORT CCameraInfo : public ICameraInfo
{
    Q_OBJECT
public:
    CCameraInfo(const Velmo::CDeviceInfo& info, QObject* parent);
    ~CCameraInfo() override;

    static QSharedPointer<CCameraInfo> fromDeviceInfo(const Velmo::CDeviceInfo& info);
    /** Takes over everything but the identifier and the error. */
    void updateFromDeviceInfo(const Velmo::CDeviceInfo& info);
    void setErrorString(QString text);
    /** Counts the updates of all records, so that what is kept of their names can be known to be old. */
    static unsigned int updateCount();

    /** Both by way of UTF-8; invalid bytes are replaced. */
    static QString qString(const GenICam::gcstring& text);
    static GenICam::gcstring velmoString(const QString& text);
    /** The friendly name that a record made of info would have. */
    static QString friendlyName(const Velmo::CDeviceInfo& info);

    QString getTransportLayerName() const override;
    QString getCameraVersion() const override;
    QString getModelName() const override;
    QString getSerialNumber() const override;
    QString getUserDefinedName() const override;
    const Velmo::CDeviceInfo& getVelmoDeviceInfo() const override;

    QString getFriendlyName() const override;
    QString getFullName() const override;
    QString getVendorName() const override;
    QString getTLType() const override;
    int getType() const override;
    QString errorString() const override;
    void clearError() override;

private:
    void read();
    QString locked(const QString& member) const;

    static std::atomic<unsigned int> m_updateCount;

    mutable QMutex m_mutex; // guards all members; nothing is called while it is held
    // The last one is in force. Earlier ones stay, since getVelmoDeviceInfo() has handed out references to them.
    std::list<Velmo::CDeviceInfo> m_deviceInfos;
    QString m_transportLayerName;
    QString m_cameraVersion;
    QString m_friendlyName;
    QString m_fullName;
    QString m_modelName;
    QString m_serialNumber;
    QString m_userDefinedName;
    QString m_vendorName;
    QString m_tlType;
    QString m_errorString;
};

/** Sets the error of a record that is a CCameraInfo, nothing for any other or null. Null text clears it. */
CAMERAPOOL_TEST_EXPORT void setErrorStringHelper(const QSharedPointer<ICameraInfo>& info, const char* text);

} // namespace Plugin::CameraPool::Internal
