// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamera.h"
#include "camerapool/idevicefirmwareupdate.h"
#include "camerapool/internal/camerapool.h"
#include "genapi/firmwareupdate.h"

#include <QPointer>

namespace Plugin::CameraPool::Internal
{

/**
 * The job: passes what the firmware-update module tells on as signals.
 *
 * The exclusively opened camera is handed to the constructor and given back to the pool by the destructor.
 */
class CAMERAPOOL_TEST_EXPORT CDeviceFirmwareUpdate : public IDeviceFirmwareUpdate,
                                                     protected GenApi::IFirmwareUpdateProgressObserver
{
    Q_OBJECT
public:
    CDeviceFirmwareUpdate(QPointer<CCameraPool> pool, const QSharedPointer<ICamera>& camera,
                          const QSharedPointer<IFirmwareUpdateInfo>& updateInfo, QObject* parent);
    ~CDeviceFirmwareUpdate() override;

    QSharedPointer<ICameraInfo> getInfoOfDeviceToUpdate() const override;
    QSharedPointer<IFirmwareUpdateInfo> getFirmwareUpdateInfoToApply() const override;
    EFirmwareUpdateDirection getFirmwareUpdateDirection() const override;
    QString getDeviceVersion() const override;

public slots:
    bool apply() override;

protected:
    using EStep = GenApi::EFirmwareUpdateStepType;

    void OnFirmwareUpdateBegin(const GenApi::CFirmwareUpdateInfo& updateInfo, unsigned int estimatedDuration) override;
    /** Throws when the thread's interruption was asked for: here nothing of the step has been done. */
    void OnFirmwareUpdateProgressStepBegin(EStep step, unsigned int estimatedTime, const char* description) override;
    void OnFirmwareUpdateProgressStepPartialProgress(EStep step, double percent) override;
    void OnFirmwareUpdateProgressStepEnd(EStep step, unsigned int time) override;
    void OnFirmwareUpdateEnd() override;
    void OnFirmwareUpdateError(const GenICam::GenericException& error) override;

private:
    void updateFirmwareVersionAndFirmwareUpdateDirection();
    QString readDeviceVersion() const;
    EFirmwareUpdateDirection directionFrom(const QString& deviceVersion) const;

    QPointer<CCameraPool> m_pool;
    QSharedPointer<ICamera> m_camera;
    QSharedPointer<IFirmwareUpdateInfo> m_updateInfo;
    GenApi::CFirmwareUpdateInfo m_genApiUpdateInfo; // invalid when m_updateInfo is of another kind
    EFirmwareUpdateDirection m_direction = EFirmwareUpdateDirection::Unknown;
    QString m_deviceVersion;
};

} // namespace Plugin::CameraPool::Internal
