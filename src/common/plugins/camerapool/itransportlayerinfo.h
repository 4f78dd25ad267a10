// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerainfolist.h"
#include "camerapool/camerapool_export.h"
#include "camerapool/interfaceinfolist.h"

#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVector>

namespace Plugin::CameraPool
{

/**
 * One transport layer (producer) with what it contains.
 *
 * Threads: getters from any. The references to the lists are the calling thread's own: they stay valid and unchanged
 * until the same thread asks this record for the same list again.
 */
class CAMERAPOOL_EXPORT ITransportLayerInfo : public QObject
{
    Q_OBJECT
public:
    explicit ITransportLayerInfo(QObject* parent = nullptr);
    ~ITransportLayerInfo() override;

    virtual const CCameraInfoList& getCameraInfoList() const = 0;
    virtual const CInterfaceInfoList& getInterfaceInfoList() const = 0;
    /** The SDK's device class, such as "KorvelGigE". */
    virtual QString getClass() const = 0;
    virtual QString getTlType() const = 0;
    virtual QString getFriendlyName() const = 0;
    /** What tells one transport layer from another. */
    virtual QString getFullName() const = 0;
    /** The latest enumeration found other cameras, or other names of cameras, than the one before. */
    virtual bool haveContainedCamerasChanged() const = 0;
};

using TransportLayerInfoPtr = QSharedPointer<ITransportLayerInfo>;

} // namespace Plugin::CameraPool
