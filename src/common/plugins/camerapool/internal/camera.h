// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "camerapool/icamera.h"
#include "camerapool/icamerainfo.h"
#include "camerapool/internal/chunkparsingeventhandler.h"
#include "camerapool/internal/compressionstatisticcounter.h"
#include "camerapool/internal/grabsettings.h"
#include "camerapool/internal/ifirmwareupdatable.h"
#include "camerapool/internal/updatabledevice.h"
#include "genapi/exceptions.h"
#include "parametercollection/objectstate.h"
#include "parametercollection/parametercollection.h"
#include "utils/fpsstatistic.h"
#include "velmo/eventhandlers.h"
#include "velmo/imagedecompressor.h"
#include "velmo/instantcamera.h"

#include <QVector>

#include <atomic>
#include <memory>
#include <optional>
#include <utility>

namespace Plugin::CameraPool::Internal
{

class CFrameGrabberTimer;

/**
 * One camera of the process: its SDK device, its parameters, its grab settings and statistics.
 *
 * Ownership: the pool creates and holds it; a client that locked it holds a second reference. Destroying it stops,
 * closes and disposes.
 * States: Created -> Initialised -> Open -> Grabbing -> Open -> Closed -> Open ...; a removal leads from any open
 * state to ConnectionLost, which close() leaves; the next open() makes a fresh device.
 * Threads: lives on the main thread; the public functions belong there and serialise on the instance state. The SDK's
 * callbacks come on its grab and event threads; cameraGrabStart, deviceOpened and deviceClosed are emitted by the
 * caller of the operation, with the instance state held, so that a receiver on the same thread may call back in; the
 * other signals are emitted on SDK threads, holding nothing.
 * Errors: what the SDK throws never leaves; it is logged and kept in the camera record's error string.
 */
class CAMERAPOOL_TEST_EXPORT CCamera : public ICamera,
                                       protected Velmo::CImageEventHandler,
                                       protected Velmo::CConfigurationEventHandler,
                                       public IFirmwareUpdatable
{
    Q_OBJECT
public:
    /** The first camera that can be found. */
    explicit CCamera(QObject* parent);
    CCamera(QSharedPointer<ICameraInfo> info, QObject* parent);
    ~CCamera() override;

    /** Once, right after construction. */
    void initialize();
    /** Attaches a device unless there is one that was not removed. On failure the camera stays without. */
    void lazyCreateVelmoDevice();

    QSharedPointer<Plugin::AppCore::IInfo> getInfo() const override;
    /** As getInfo(), without a cast. */
    const QSharedPointer<ICameraInfo>& cameraInfo() const { return m_ptrCameraInfo; }
    bool isConnected() const override;
    bool isOpen() const override;
    bool isGrabbing() const override;
    bool isMonitorModeActive() const override;
    QSharedPointer<ParameterCollection::IParameterCollection> getParameterCollection() const override;

    /**
     * @name How the camera compresses its images, read from its node map
     *
     * Throw Core::Exception::RuntimeException for a value that cannot be, and exceptions of the SDK as those of the
     * host; InvalidOperationException when the camera does not compress.
     * @{
     */
    Velmo::ECompressionMode getCompressionMode() const;
    /** Opaque bytes, at least one. */
    QVector<unsigned char> getCompressionDescriptor() const;
    /** Opaque bytes, at least one. */
    QVector<unsigned char> getCompressionDescriptorHash() const;
    /** Bytes of a decompressed image, not 0. */
    unsigned int getImageSizeForDecompression() const;
    /** @} */

    /** Of an open camera. */
    bool matchesFirmwareUpdate(const GenApi::CFirmwareUpdateInfo& update, bool& matches) override;
    /**
     * Any thread; the instance state is held until the update has ended, so that whatever else would open or close the
     * camera waits. A camera that is not open is opened for it.
     *
     * The device is lent to a CUpdatableDevice meanwhile: the camera is not open then and has no parameters. A device
     * that comes back is attached again, open, and, when it was reset, opened anew as open() does. Otherwise the camera
     * is closed, which deviceClosed tells, or lost, which cameraConnectionLost tells; the next open() makes a device.
     */
    bool applyFirmwareUpdate(const GenApi::CFirmwareUpdateInfo& update,
                             GenApi::IFirmwareUpdateProgressObserver* pObserver, QString& failure) override;
    /** How recovery after a reset waits; before the first update. */
    void setRecoverySleep(CUpdatableDevice::Sleep sleep) { m_recoverySleep = std::move(sleep); }

    /** Throws Core::Exception::ObjectDisposedException. */
    void raiseExceptionIfDisposed() const;
    /** Throws Core::Exception::InvalidOperationException when anyone but the caller, who holds the instance state once,
     *  uses the camera or its stream grabber. */
    void raiseExceptionIfInUse() const;

    /** Guards the camera object. Taken before deviceState(). */
    const ParameterCollection::CObjectState& instanceState() const { return m_instanceState; }
    /** Guards the device's node maps; tells the device's state to the parameter layer. */
    const ParameterCollection::CObjectState& deviceState() const { return m_deviceState; }

public slots:
    /** True when the camera is open on return. */
    bool open(bool monitorMode) override;
    void close() override;
    void startGrabbing() override;
    void stopGrabbing() override;
    void singleShot(unsigned int timeout) override;
    void onFrameGrabberTimeout();

signals:
    /** [grab] Queued to the camera's own thread, where it (re)starts the no-frame timer. */
    void invokeTimeout(int64_t lastKnownImageNumber);

protected:
    void OnImageGrabbed(Velmo::CInstantCamera& camera, const Velmo::CGrabResultPtr& result) override;
    void OnGrabStart(Velmo::CInstantCamera& camera) override;
    void OnGrabStarted(Velmo::CInstantCamera& camera) override;
    void OnGrabStopped(Velmo::CInstantCamera& camera) override;
    void OnGrabError(Velmo::CInstantCamera& camera, const char* errorMessage) override;
    void OnCameraDeviceRemoved(Velmo::CInstantCamera& camera) override;

private:
    void createParameterCollection();
    void attachVelmoDeviceToParameterCollection();
    void detachVelmoDeviceFromParameterCollection();
    void registerEventHandlers();
    void deregisterEventHandlers();

    void openVelmoDevice(bool monitorMode);
    /** With the parameter layer. */
    void shareOpenVelmoDevice();
    void undoOpen();
    void closeVelmoDevice();
    void dispose();

    class CLoan;
    void lendVelmoDevice(CUpdatableDevice& borrower);
    /** Whatever state the borrower has it in; throws nothing. */
    void takeVelmoDeviceBack(CUpdatableDevice& borrower, bool wasOpen);
    bool reattachVelmoDevice(CUpdatableDevice& borrower);

    bool isReadyToGrab(const char* operation) const;
    void prepareGrab();
    void setBufferCount();
    void boostGrabEngine();
    void startContinuousGrab();
    void setAcquisitionMode(const QString& mode);
    void onImageArrived(int64_t imageNumber);
    void countImage(const Velmo::CGrabResultPtr& result);

    /** Keeps the text as the record's error string and logs it behind the message. */
    void reportFailure(const char* message, const char* reason);
    /** Runs a piece of work with the SDK; false, and the failure reported, when it throws. */
    template <class Work> bool attempt(const char* message, Work&& work)
    {
        try
        {
            work();
            return true;
        }
        catch (const GenICam::GenericException& e)
        {
            reportFailure(message, e.GetDescription());
        }
        catch (const std::exception& e)
        {
            reportFailure(message, e.what());
        }
        return false;
    }
    /** The same for what has to be done whatever is thrown. */
    template <class Work> bool attemptAnything(const char* message, Work&& work)
    {
        try
        {
            return attempt(message, std::forward<Work>(work));
        }
        catch (...)
        {
            reportFailure(message, "unexpected exception");
        }
        return false;
    }

    std::unique_ptr<Velmo::CInstantCamera> m_pVelmoDevice; // null: disposed
    QSharedPointer<ICameraInfo> m_ptrCameraInfo;           // may be null
    QSharedPointer<ParameterCollection::CParameterCollection> m_ptrParameterCollection;
    ParameterCollection::CObjectState m_instanceState;
    ParameterCollection::CObjectState m_deviceState;
    std::unique_ptr<CChunkParsingEventHander> m_pChunkParsingEventHandler;
    CCompressionStatisticCounter m_compressionStatistic;
    std::unique_ptr<FpsStatistic> m_pFpsStatistic;
    std::unique_ptr<CFrameGrabberTimer> m_pFrameGrabberTimer;
    int m_timeoutIntervalMs;
    std::uint64_t m_lastKnownImageNumber = 0;    // main thread
    std::optional<SGrabSettings> m_grabSettings; // since initialize()
    std::atomic<int> m_imagesFailed{0};
    std::atomic<bool> m_connectionLost{false}; // the loss of this opening has been reported
    CUpdatableDevice::Sleep m_recoverySleep;   // null: by the clock
    bool m_isClosing = false;                  // guarded by m_instanceState
};

} // namespace Plugin::CameraPool::Internal
