// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "transport/infos.h"

namespace Plugin::CameraPool
{

/** One camera: names, serial number, version, and the SDK's record that opening needs. Threads: getters from any. */
class CAMERAPOOL_EXPORT ICameraInfo : public IBaseInfo
{
    Q_OBJECT
public:
    explicit ICameraInfo(QObject* parent = nullptr);
    ~ICameraInfo() override;

    virtual QString getTransportLayerName() const = 0;
    virtual QString getCameraVersion() const = 0;
    virtual QString getModelName() const = 0;
    virtual QString getSerialNumber() const = 0;
    /** "" when the camera has none. */
    virtual QString getUserDefinedName() const = 0;
    /** Valid and unchanged as long as this record; a renamed camera gives another one on the next call. */
    virtual const Velmo::CDeviceInfo& getVelmoDeviceInfo() const = 0;
};

using CameraInfoPtr = QSharedPointer<ICameraInfo>;

} // namespace Plugin::CameraPool

Q_DECLARE_METATYPE(Plugin::CameraPool::CameraInfoPtr)
