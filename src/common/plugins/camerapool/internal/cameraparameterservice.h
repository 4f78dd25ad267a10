// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/ideviceparameterservice.h"
#include "camerapool/internal/devicepool.h"

#include <QPointer>
#include <QVector>

namespace Plugin::CameraPool::Internal
{

/** Asks the pools for a device's parameters. Main thread. */
class CAMERAPOOL_TEST_EXPORT CCameraParameterService : public IDeviceParameterService
{
    Q_OBJECT
public:
    explicit CCameraParameterService(QObject* parent = nullptr);
    ~CCameraParameterService() override;

    /** Pools are asked in the order in which they were added; adding one again changes nothing. */
    void addPool(QPointer<ADevicePool> pool);

    QSharedPointer<ParameterCollection::IParameterCollection>
    getParameterCollection(QSharedPointer<IBaseInfo> deviceInfo) override;

private:
    QVector<QPointer<ADevicePool>> m_pools;
};

} // namespace Plugin::CameraPool::Internal
