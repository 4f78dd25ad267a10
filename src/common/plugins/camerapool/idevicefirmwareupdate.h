// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/firmwareupdateenums.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/ifirmwareupdateinfo.h"

namespace Plugin::CameraPool
{

/**
 * One firmware update of one camera, ready to be applied.
 *
 * Ownership: who asked the service for it holds it. The camera is in exclusive use for as long as the job lives and is
 * closed when it goes; destroy it on the main thread.
 * Threads: apply() runs on whatever thread calls it and blocks that until the update has ended, which may take minutes;
 * the signals are emitted there. The other functions may be called while it does not run.
 */
class CAMERAPOOL_EXPORT IDeviceFirmwareUpdate : public QObject
{
    Q_OBJECT
public:
    explicit IDeviceFirmwareUpdate(QObject* parent = nullptr);
    ~IDeviceFirmwareUpdate() override;

    virtual QSharedPointer<ICameraInfo> getInfoOfDeviceToUpdate() const = 0;
    virtual QSharedPointer<IFirmwareUpdateInfo> getFirmwareUpdateInfoToApply() const = 0;
    /** Of the update against what the camera has now; after a successful apply() that is Sidegrade. */
    virtual EFirmwareUpdateDirection getFirmwareUpdateDirection() const = 0;
    /** The version that the camera has now; "<unknown>" when it cannot be told. */
    virtual QString getDeviceVersion() const = 0;

signals:
    /** Durations and times in milliseconds, estimated by the package's author; 0: not known. */
    void firmwareUpdateBegin(QSharedPointer<IFirmwareUpdateInfo> firmwareUpdateInfo, unsigned int estimatedDuration);
    void firmwareUpdateProgressStepBegin(EFirmwareUpdateStep updateStep, unsigned int estimatedUpdateTime,
                                         const QString& description);
    /** Per cent of the step, 0 to 100. */
    void firmwareUpdateProgressStepProgressChanged(EFirmwareUpdateStep updateStep, double progressPercentDone);
    void firmwareUpdateProgressStepDone(EFirmwareUpdateStep updateStep, unsigned int estimatedUpdateTime);
    void firmwareUpdateDone();
    void firmwareUpdateError(const QString& errorMessage);

public slots:
    /**
     * Applies the update; true when all of it was done. Never throws: the reason of a failure is the camera record's
     * error string, and firmwareUpdateError has told it when the update had begun. It may be tried again.
     *
     * QThread::requestInterruption() of the applying thread ends the update before its next step; what the steps
     * before have done to the camera stays.
     */
    virtual bool apply() = 0;
};

} // namespace Plugin::CameraPool
