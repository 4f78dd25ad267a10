// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamerainfo.h"

namespace Plugin::CameraPool::Internal
{

/** The record of one camera, filled from the SDK's. Threads: refreshed by the enumeration, read on the main thread. */
class CAMERAPOOL_TEST_EXPORT CCameraInfo : public ICameraInfo
{
    Q_OBJECT
public:
    CCameraInfo(const Velmo::CDeviceInfo& info, QObject* parent);
    ~CCameraInfo() override;

    static QSharedPointer<CCameraInfo> fromDeviceInfo(const Velmo::CDeviceInfo& info);
    /** Reads all anew but the identifier; the error string stays. */
    void updateFromDeviceInfo(const Velmo::CDeviceInfo& info);

    QString getFriendlyName() const override;
    QString getFullName() const override { return m_fullName; }
    QString getVendorName() const override { return m_vendorName; }
    QString getTLType() const override { return m_tlType; }
    int getType() const override { return 0; }
    QString errorString() const override { return m_errorString; }
    void clearError() override { m_errorString = QString(); }
    void setErrorString(const QString& text) { m_errorString = text; }

    QString getTransportLayerName() const override { return m_transportLayerName; }
    QString getCameraVersion() const override { return m_cameraVersion; }
    QString getModelName() const override { return m_modelName; }
    QString getSerialNumber() const override { return m_serialNumber; }
    QString getUserDefinedName() const override { return m_userDefinedName; }
    const Velmo::CDeviceInfo& getVelmoDeviceInfo() const override { return m_deviceInfo; }

    /** Both by way of UTF-8. */
    static QString qString(const GenICam::gcstring& text);
    static GenICam::gcstring velmoString(const QString& text);

private:
    Velmo::CDeviceInfo m_deviceInfo;
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

/** Keeps the text as the record's error string; nothing when there is no record or it is another class's. */
CAMERAPOOL_TEST_EXPORT void setErrorStringHelper(const QSharedPointer<ICameraInfo>& info, const char* text);

} // namespace Plugin::CameraPool::Internal
