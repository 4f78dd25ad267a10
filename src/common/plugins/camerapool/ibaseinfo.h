// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "appcore/iinfo.h"
#include "camerapool/camerapool_export.h"

#include <QMetaType>
#include <QSharedPointer>
#include <QString>

namespace Plugin::CameraPool
{

/**
 * What is known of one device: base of the camera and the interface records.
 *
 * One record per device for the life of the process; records are compared by pointer. Threads: getters from any.
 */
class CAMERAPOOL_EXPORT IBaseInfo : public Plugin::AppCore::IInfo
{
    Q_OBJECT
public:
    explicit IBaseInfo(QObject* parent = nullptr);
    ~IBaseInfo() override;

    virtual QString getFriendlyName() const = 0;
    virtual QString getFullName() const = 0;
    virtual QString getVendorName() const = 0;
    /** One of the constants of tltypes.h. */
    virtual QString getTLType() const = 0;
    /** The kind of record: RecordType_Camera or RecordType_Interface. */
    virtual int getType() const = 0;
    /** The last error of this device; "" when there is none. */
    virtual QString errorString() const = 0;
    virtual void clearError() = 0;
};

/** Values of IBaseInfo::getType(); no kind of record uses 1. */
enum ERecordType
{
    RecordType_Camera = 0,
    RecordType_Interface = 2
};

using BaseInfoPtr = QSharedPointer<IBaseInfo>;

} // namespace Plugin::CameraPool

Q_DECLARE_METATYPE(Plugin::CameraPool::BaseInfoPtr)
