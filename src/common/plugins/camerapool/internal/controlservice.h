// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icameracontrolservice.h"
#include "camerapool/internal/poolselection.h"

namespace Plugin::CameraPool::Internal
{

/** Passes each call to the pool of its device; exceptions of the pools pass through. Main thread. */
class CAMERAPOOL_TEST_EXPORT CControlService : public ICameraControlService
{
    Q_OBJECT
public:
    CControlService(QPointer<CCameraPool> cameraPool, QPointer<CInterfacePool> interfacePool, QObject* parent);
    ~CControlService() override;

    bool open(QSharedPointer<IBaseInfo> info, bool monitorMode) override;
    void close(QSharedPointer<IDevice> device) override;
    void close(QSharedPointer<IBaseInfo> info) override;
    bool open(bool monitorMode) override;
    void close() override;

    QSharedPointer<ICamera> openCameraExclusive(QSharedPointer<ICameraInfo> info) override;
    QSharedPointer<ICamera> tryLock(QSharedPointer<ICameraInfo> info) override;
    bool unlock(QSharedPointer<ICamera> camera) override;
    void addRemoteGigECamera(const QString& ipAddress) override;

private:
    SPools m_pools;
};

} // namespace Plugin::CameraPool::Internal
