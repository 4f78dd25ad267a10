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
 * What is known of a device, whatever its kind; one record per device for the life of the process.
 *
 * Threads: refreshed by the enumeration, read on the main thread.
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
    /** One of the transport-layer types. */
    virtual QString getTLType() const = 0;
    /** The kind of record: 0 camera, 2 interface. */
    virtual int getType() const = 0;
    /** The last error recorded against this device; "" when none. */
    virtual QString errorString() const = 0;
    virtual void clearError() = 0;
};

using BaseInfoPtr = QSharedPointer<IBaseInfo>;

} // namespace Plugin::CameraPool

Q_DECLARE_METATYPE(Plugin::CameraPool::BaseInfoPtr)
