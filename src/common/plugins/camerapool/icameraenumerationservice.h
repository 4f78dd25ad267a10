// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamerainfo.h"
#include "camerapool/itransportlayerinfo.h"
#include "servicecore/iservice.h"

#include <QVector>

namespace Plugin::CameraPool
{

/** Service: finds devices, every ten seconds and on demand. Main thread. */
class CAMERAPOOL_EXPORT ICameraEnumerationService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit ICameraEnumerationService(QObject* parent = nullptr);
    ~ICameraEnumerationService() override;

    /** What the latest enumeration found; asks nothing. */
    virtual QVector<TransportLayerInfoPtr> enumerate() = 0;
    /** Nothing, whatever the argument. */
    virtual QVector<TransportLayerInfoPtr> enumerate(QString) = 0;
    /** The open cameras that are not in exclusive use. */
    virtual QVector<CameraInfoPtr> getOpenCameras() = 0;
    virtual bool isEnumerationEnabled() const = 0;

public slots:
    /** Disabling waits for an enumeration that runs, at most 30 seconds. */
    virtual void setEnumerationEnabled(bool enabled) = 0;

public:
    /** Asks for an enumeration and returns at once; nothing while disabled. */
    virtual void triggerEnumeration() = 0;
    /** Asks for an enumeration, also while disabled, which it is again afterwards. */
    virtual void forceUpdate() = 0;
    /** Ends what forceUpdate() began; nothing otherwise. */
    virtual void disableOnce() = 0;
    /** Takes a lost camera from the latest result and announces that. */
    virtual void removeDevice(const CameraInfoPtr& info) = 0;

signals:
    /** Other transport layers, interfaces or cameras than before; emitted after the pools have announced them. */
    void enumerationChanged();
};

} // namespace Plugin::CameraPool
