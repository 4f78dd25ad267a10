// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamerastatusservice.h"
#include "camerapool/internal/poolselection.h"

#include <QMutex>

namespace Plugin::CameraPool::Internal
{

/** Repeats the signals of the pools, and keeps the active device. Main thread. */
class CAMERAPOOL_TEST_EXPORT CStatusService : public ICameraStatusService
{
    Q_OBJECT
public:
    CStatusService(QPointer<CCameraPool> cameraPool, QPointer<CInterfacePool> interfacePool, QObject* parent);
    ~CStatusService() override;

    bool isDeviceOpen(QSharedPointer<IBaseInfo> info) override;
    void setActiveDevice(QSharedPointer<IBaseInfo> info) override;
    QSharedPointer<IBaseInfo> getActiveDevice() override;

    bool isCameraOpenExclusive(QSharedPointer<ICameraInfo> info) override;
    bool isCameraGrabbing(QSharedPointer<ICameraInfo> info) override;
    int getCountGrabbing() override;

private:
    void connectDeviceSignals(const ADevicePool* pPool);
    void connectCameraSignals(const CCameraPool* pPool);

    SPools m_pools;
    QMutex m_mutex; // guards the change of the active device; not held while it is announced
};

} // namespace Plugin::CameraPool::Internal
