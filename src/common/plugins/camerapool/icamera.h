// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/compressionstatistic.h"
#include "camerapool/idevice.h"
#include "velmo/grabresult.h"

#include <QMetaType>

#include <cstdint>

namespace Plugin::CameraPool
{

/**
 * A camera.
 *
 * Threads: functions on the main thread. Signals marked [grab] are emitted on the SDK's grab or event thread;
 * receivers in other threads get them queued.
 */
class CAMERAPOOL_EXPORT ICamera : public IDevice
{
    Q_OBJECT
public:
    explicit ICamera(QObject* parent = nullptr);
    ~ICamera() override;

    virtual bool isGrabbing() const = 0;
    /** Open, and only watching what another application controls. */
    virtual bool isMonitorModeActive() const = 0;

public slots:
    /** Grabs until stopped. Failures are logged and kept in the record's error string. */
    virtual void startGrabbing() = 0;
    virtual void stopGrabbing() = 0;
    /** Grabs one image; timeout in milliseconds. */
    virtual void singleShot(unsigned int timeout) = 0;

signals:
    /** A grab is about to start. */
    void cameraGrabStart();
    void cameraGrabStarted();
    void cameraGrabStopped();
    /** [grab] Once per opening. */
    void cameraConnectionLost();
    /** [grab] Failed results too. */
    void cameraImageGrabbed(Velmo::CGrabResultPtr grabResult);
    /** [grab] */
    void cameraImageGrabFailed();
    /** [grab] Also from the main thread while a stream stalls. bps in bytes per second. */
    void cameraStatisticChanged(int imagesGrabbedCount, int imagesFailedCount, double fps, uint64_t bps,
                                CCompressionStatistic compressionStatistic);
};

} // namespace Plugin::CameraPool

Q_DECLARE_METATYPE(Velmo::CGrabResultPtr)
