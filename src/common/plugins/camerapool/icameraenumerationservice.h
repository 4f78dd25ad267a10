// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamerainfo.h"
#include "camerapool/itransportlayerinfo.h"
#include "servicecore/iservice.h"

#include <QVector>

namespace Plugin::CameraPool
{

/** Finds devices in the background, every ten seconds and on request. Main thread. */
class CAMERAPOOL_EXPORT ICameraEnumerationService : public Core::Service::IService
{
    Q_OBJECT
public:
    using Core::Service::IService::IService;
    ~ICameraEnumerationService() override;
    /** The latest result. */
    virtual QVector<TransportLayerInfoPtr> enumerate() = 0;
    /** Always empty. */
    virtual QVector<TransportLayerInfoPtr> enumerate(QString filter) = 0;
    virtual QVector<QSharedPointer<ICameraInfo>> getOpenCameras() = 0;
    virtual bool isEnumerationEnabled() = 0;

public slots:
    virtual void setEnumerationEnabled(bool enabled) = 0;

public:
    /** Asks for a pass now. */
    virtual void triggerEnumeration() = 0;
    /** A pass soon, also when enumeration is off. */
    virtual void forceUpdate() = 0;
    virtual void disableOnce() = 0;
    virtual void removeDevice(const QSharedPointer<Plugin::CameraPool::ICameraInfo>& info) = 0;

signals:
    void enumerationChanged();
};

} // namespace Plugin::CameraPool
