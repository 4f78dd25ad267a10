// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/iinterfaceinfo.h"

#include <QMutex>

namespace Plugin::CameraPool::Internal
{

/** The one kind of interface record; all but the error is as it was made. */
class CAMERAPOOL_TEST_EXPORT CInterfaceInfo : public IInterfaceInfo
{
    Q_OBJECT
public:
    CInterfaceInfo(const Velmo::CInterfaceInfo& info, QObject* parent);
    ~CInterfaceInfo() override;

    static QSharedPointer<CInterfaceInfo> fromInterfaceInfo(const Velmo::CInterfaceInfo& info);
    void setErrorString(const QString& text);

    QString getInterfaceId() const override;
    Velmo::CInterfaceInfo& getVelmoInterfaceInfo() override;

    QString getFriendlyName() const override;
    QString getFullName() const override;
    QString getVendorName() const override;
    QString getTLType() const override;
    int getType() const override;
    QString errorString() const override;
    void clearError() override;

private:
    Velmo::CInterfaceInfo m_interfaceInfo;
    QString m_friendlyName;
    QString m_fullName;
    QString m_vendorName;
    QString m_errorString;
    QString m_interfaceId;
    QString m_tlType;
    mutable QMutex m_mutex; // guards m_errorString
};

} // namespace Plugin::CameraPool::Internal
