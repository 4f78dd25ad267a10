// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamerastreamcontrolservice.h"
#include "camerapool/internal/camerapool.h"

#include <QPointer>

namespace Plugin::CameraPool::Internal
{

/** Passes everything on to the camera pool, nothing when that is gone. Main thread. */
class CAMERAPOOL_TEST_EXPORT CCameraStreamControlService : public ICameraStreamControlService
{
    Q_OBJECT
public:
    CCameraStreamControlService(QPointer<CCameraPool> pool, QObject* parent);
    ~CCameraStreamControlService() override;

    void startGrabbing(QSharedPointer<ICameraInfo> info) override;
    void stopGrabbing(QSharedPointer<ICameraInfo> info) override;
    void singleShot(QSharedPointer<ICameraInfo> info, unsigned int timeout) override;

public slots:
    void startGrabbing() override;
    void stopGrabbing() override;
    void stopGrabbingAll() override;
    void singleShot(unsigned int timeout) override;

private:
    QPointer<CCameraPool> m_pool;
};

} // namespace Plugin::CameraPool::Internal
