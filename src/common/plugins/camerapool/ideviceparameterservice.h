// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/ibaseinfo.h"
#include "parametercollection/iparametercollection.h"
#include "servicecore/iservice.h"

namespace Plugin::CameraPool
{

/** Service: finds the parameters of a device. Main thread. */
class CAMERAPOOL_EXPORT IDeviceParameterService : public Core::Service::IService
{
    Q_OBJECT
public:
    explicit IDeviceParameterService(QObject* parent = nullptr);
    ~IDeviceParameterService() override;

    /** Null when no device is known for that record. */
    virtual QSharedPointer<ParameterCollection::IParameterCollection>
    getParameterCollection(QSharedPointer<IBaseInfo> deviceInfo) = 0;
};

} // namespace Plugin::CameraPool
