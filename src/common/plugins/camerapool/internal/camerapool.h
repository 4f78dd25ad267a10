// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/icamera.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/internal/devicepool.h"
#include "velmo/imagedecompressor.h"

#include <QHash>
#include <QList>
#include <QPointer>

namespace Plugin::CameraPool::Internal
{

class CCamera;

/**
 * The cameras of the process: relays what they tell with their record in front, and lends them out for exclusive use.
 *
 * A locked camera belongs to the client that locked it: its signals do not reach the pool, and the pool's grab and
 * open operations leave it alone until unlock() or closeDevice().
 * Threads: main. Images are emitted on the SDK's grab threads and arrive here queued.
 * Errors: Core::Exception::BaseException where stated; all other refusals are null, false or no effect.
 */
class CAMERAPOOL_TEST_EXPORT CCameraPool : public ADevicePool
{
    Q_OBJECT
public:
    explicit CCameraPool(QObject* parent);
    ~CCameraPool() override;

    using ADevicePool::closeDevice;
    using ADevicePool::openDevice;

    QSharedPointer<IDevice> createDevice(QSharedPointer<IBaseInfo> info) override;
    bool openDevice(QSharedPointer<IBaseInfo> info, bool monitorMode) override;
    void closeDevice(QSharedPointer<IDevice> device) override;
    void closeDevice(QSharedPointer<IBaseInfo> info) override;
    bool isDeviceOpenExclusive(QSharedPointer<IBaseInfo> info) const override;

    bool isCameraOpenExclusive(QSharedPointer<ICameraInfo> info) const;
    /** Locked cameras too. */
    bool isCameraGrabbing(QSharedPointer<ICameraInfo> info);

    /** Takes an open camera out of shared use; null when it is closed, locked or only monitors. */
    QSharedPointer<ICamera> tryLock(QSharedPointer<ICameraInfo> info);
    /** Opens and locks a closed camera; null when it is open already or cannot be opened. */
    QSharedPointer<ICamera> openCameraExclusive(QSharedPointer<ICameraInfo> info);
    /** Gives a locked camera back; false when it is not locked. One that was closed meanwhile, as a failed firmware
     *  update may leave it, is not told of as closed: whoever hears cameraAttached() asks isDeviceOpen(). */
    bool unlock(QSharedPointer<ICamera> camera);

    void stopGrabbingAll();
    /** Those that are not locked, in the order of their devices. */
    QVector<QSharedPointer<ICameraInfo>> getOpenCameras() const;
    int getCountGrabbing() const;

    void startGrabbing(QSharedPointer<ICameraInfo> info);
    void stopGrabbing(QSharedPointer<ICameraInfo> info);
    /** timeout in milliseconds. */
    void singleShot(QSharedPointer<ICameraInfo> info, unsigned int timeout);
    /** The active device. */
    void startGrabbing();
    void stopGrabbing();
    void singleShot(unsigned int timeout);

    /**
     * @name How a camera compresses its images
     *
     * What CCamera's functions of these names give and throw; Core::Exception::BaseException when the camera is not
     * known, is locked or, without a record, when the active device is no camera.
     * @{
     */
    Velmo::ECompressionMode getCompressionMode(QSharedPointer<ICameraInfo> info) const;
    QVector<unsigned char> getCompressionDescriptor(QSharedPointer<ICameraInfo> info) const;
    QVector<unsigned char> getCompressionDescriptorHash(QSharedPointer<ICameraInfo> info) const;
    unsigned int getImageSizeForDecompression(QSharedPointer<ICameraInfo> info) const;
    Velmo::ECompressionMode getCompressionMode() const;
    QVector<unsigned char> getCompressionDescriptor() const;
    QVector<unsigned char> getCompressionDescriptorHash() const;
    unsigned int getImageSizeForDecompression() const;
    /** @} */

    /**
     * Makes a GigE camera of another subnet known, so that the next enumeration finds it. Blocks while the camera is
     * asked. Throws Core::Exception::BaseException.
     */
    void addRemoteGigECamera(const QString& ipAddress);

signals:
    void cameraGrabStart(QSharedPointer<ICameraInfo> info);
    void cameraGrabStarted(QSharedPointer<ICameraInfo> info);
    void cameraGrabStopped(QSharedPointer<ICameraInfo> info);
    void cameraConnectionLost(QSharedPointer<ICameraInfo> info);
    void cameraImageGrabbed(QSharedPointer<ICameraInfo> info, const Velmo::CGrabResultPtr& grabResult);
    void cameraImageGrabFailed(QSharedPointer<ICameraInfo> info);
    void cameraStatisticUpdated(QSharedPointer<ICameraInfo> cameraInfo, int imagesGrabbedCount, int imagesFailedCount,
                                double fps, uint64_t bps, CCompressionStatistic compressionStatistic);
    void cameraDetached(QSharedPointer<ICameraInfo> info);
    void cameraAttached(QSharedPointer<ICameraInfo> info);

private slots:
    void onCameraGrabStart();
    void onCameraGrabStarted();
    void onCameraGrabStopped();
    void onCameraConnectionLost();
    void onCameraImageGrabbed(const Velmo::CGrabResultPtr& grabResult);
    void onCameraImageGrabFailed();
    void onCameraStatisticUpdated(int imagesGrabbedCount, int imagesFailedCount, double fps, uint64_t bps,
                                  CCompressionStatistic compressionStatistic);

private:
    /** One camera's way into the pool, from connectRelays() to disconnectRelays(). */
    struct SRelay
    {
        QPointer<ICamera> camera;
        QSharedPointer<ICameraInfo> info;
        bool isCut = false; // what still arrives is dropped
    };
    using RelayPtr = QSharedPointer<SRelay>;

    void connectRelays(ICamera* pCamera);
    void disconnectRelays(ICamera* pCamera);
    /** Runs the slot for the camera of that relay. */
    template <class Slot, class... Arguments>
    void relay(const RelayPtr& relay, Slot slot, const Arguments&... arguments);
    /** As relay(), but a loss that was under way when the camera was locked is told, and ends the lock. */
    void relayLoss(const RelayPtr& relay);
    /** The camera whose signal is being relayed; null when it is no camera. */
    const ICamera* relayedCamera() const;
    /** Does the work with its record, null or not; nothing when there is no such camera. */
    template <class Work> void withRelayedRecord(Work work) const;
    void relayConnectionLost(const QSharedPointer<ICameraInfo>& info);
    QSharedPointer<ICamera> findCamera(const QSharedPointer<ICameraInfo>& info) const;
    bool isLocked(const QSharedPointer<ICamera>& camera) const;
    /** Never null; throws what the compression queries throw. */
    QSharedPointer<CCamera> cameraForQueries(const QSharedPointer<ICameraInfo>& info) const;
    QSharedPointer<ICameraInfo> activeCameraInfo() const;
    /** Null unless the camera is known and not locked. */
    QSharedPointer<ICamera> findUnlockedCamera(const QSharedPointer<ICameraInfo>& info) const;

    QList<QSharedPointer<ICamera>> m_lockedCameras; // in order of locking; guarded by m_mutex
    QHash<const ICamera*, RelayPtr> m_relays;
    const SRelay* m_pCurrentRelay = nullptr; // while a slot runs for it
};

} // namespace Plugin::CameraPool::Internal
