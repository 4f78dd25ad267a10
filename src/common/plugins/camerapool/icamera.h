// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/compressionstatistic.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/idevice.h"
#include "velmo/grabresult.h"

#include <QMetaType>

#include <cstdint>

namespace Plugin::CameraPool
{

/**
 * One camera.
 *
 * Threads: functions on the main thread; signals marked [grab] are emitted on the SDK's grab thread, and
 * cameraConnectionLost on a thread of the SDK.
 */
class CAMERAPOOL_EXPORT ICamera : public IDevice
{
    Q_OBJECT
public:
    explicit ICamera(QObject* parent = nullptr);
    ~ICamera() override;

    virtual bool isGrabbing() const = 0;
    /** Open, and opened in monitor mode. */
    virtual bool isMonitorModeActive() const = 0;

signals:
    void cameraGrabStart();
    void cameraGrabStarted();
    void cameraGrabStopped();
    void cameraConnectionLost();
    /** [grab] Also for results whose grab failed. */
    void cameraImageGrabbed(Velmo::CGrabResultPtr);
    /** [grab] */
    void cameraImageGrabFailed();
    /** [grab], and on the main thread while the stream stalls. fps: frames per second; bps: bytes per second. */
    void cameraStatisticChanged(int imagesGrabbedCount, int imagesFailedCount, double fps, uint64_t bps,
                                CCompressionStatistic compressionStatistic);

public slots:
    virtual void startGrabbing() = 0;
    virtual void stopGrabbing() = 0;
    /** Grabs one image; the timeout is in milliseconds. */
    virtual void singleShot(unsigned int timeout) = 0;
};

} // namespace Plugin::CameraPool

Q_DECLARE_METATYPE(Velmo::CGrabResultPtr)
