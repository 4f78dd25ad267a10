// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerainfolist.h"
#include "camerapool/interfaceinfolist.h"

#include <QObject>

namespace Plugin::CameraPool
{

/** What is known of one transport layer, and what the latest discovery found on it. */
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
    /** The identity of the transport layer. */
    virtual QString getFullName() const = 0;
    /** Whether the latest discovery changed the cameras. */
    virtual bool haveContainedCamerasChanged() const = 0;
};

using TransportLayerInfoPtr = QSharedPointer<ITransportLayerInfo>;

} // namespace Plugin::CameraPool
