// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "camerapool/internal/camera.h"
#include "genapi/firmwareupdate.h"
#include "velmo/tlfactory.h"

#include <memory>

namespace Plugin::CameraPool::Internal
{

using ParameterCollection::CScopedObjectStateLock;

namespace
{

const char* const s_updateFailed = "Failure while updating the firmware. Reason: ";
const char* const s_returnFailed = "Camera could not be opened after a firmware update. Reason: ";

/** Owns a device between two instant cameras. */
struct SDestroyDevice
{
    void operator()(Velmo::IVelmoDevice* pDevice) const { Velmo::CTlFactory::GetInstance().DestroyDevice(pDevice); }
};
using DevicePtr = std::unique_ptr<Velmo::IVelmoDevice, SDestroyDevice>;

} // namespace

/** The time in which the device is another's; takes it back at its end, however that comes. */
class CCamera::CLoan
{
public:
    CLoan(CCamera& camera, CUpdatableDevice& borrower)
        : m_camera(camera), m_borrower(borrower), m_wasOpen(camera.isOpen())
    {
    }
    ~CLoan() { m_camera.takeVelmoDeviceBack(m_borrower, m_wasOpen); }
    CLoan(const CLoan&) = delete;
    CLoan& operator=(const CLoan&) = delete;

private:
    CCamera& m_camera;
    CUpdatableDevice& m_borrower;
    const bool m_wasOpen;
};

bool CCamera::matchesFirmwareUpdate(const GenApi::CFirmwareUpdateInfo& update, bool& matches)
{
    matches = false;
    const CScopedObjectStateLock lock(m_instanceState);
    raiseExceptionIfDisposed();
    raiseExceptionIfInUse();
    return attempt("Failure while comparing a firmware update with the camera. Reason: ",
                   [&] { matches = GenApi::CFirmwareUpdater().MatchesDevice(update, m_pVelmoDevice->GetNodeMap()); });
}

bool CCamera::applyFirmwareUpdate(const GenApi::CFirmwareUpdateInfo& update,
                                  GenApi::IFirmwareUpdateProgressObserver* pObserver, QString& failure)
{
    const CScopedObjectStateLock lock(m_instanceState);
    raiseExceptionIfDisposed();
    raiseExceptionIfInUse();
    QString reason;
    const auto work = [&]
    {
        try
        {
            CUpdatableDevice device(m_recoverySleep);
            const CLoan loan(*this, device);
            lendVelmoDevice(device);
            GenApi::CFirmwareUpdater().ApplyUpdate(update, device, pObserver);
        }
        catch (const GenICam::GenericException& e)
        {
            reason = QString::fromUtf8(e.GetDescription());
            throw;
        }
        catch (const std::exception& e)
        {
            reason = QString::fromUtf8(e.what());
            throw;
        }
    };
    const bool isDone = attempt(s_updateFailed, work);
    if (!isDone)
    {
        failure = QLatin1String(s_updateFailed) + reason;
    }
    return isDone;
}

void CCamera::lendVelmoDevice(CUpdatableDevice& borrower)
{
    if (isGrabbing())
    {
        stopGrabbing();
    }
    lazyCreateVelmoDevice();
    DevicePtr device;
    {
        const CScopedObjectStateLock deviceLock(m_deviceState);
        m_deviceState.setState(ParameterCollection::ObjectState_Closed);
        detachVelmoDeviceFromParameterCollection();
        device.reset(m_pVelmoDevice->DetachDevice());
    }
    if (device == nullptr)
    {
        GENICAM_THROW(RuntimeException, "The camera cannot be reached.");
    }
    borrower.attach(device.get());
    static_cast<void>(device.release());
}

void CCamera::takeVelmoDeviceBack(CUpdatableDevice& borrower, bool wasOpen)
{
    bool isBack = false;
    attemptAnything(s_returnFailed, [&] { isBack = reattachVelmoDevice(borrower); });
    if (!isBack)
    {
        // Nothing of a half opened device may stay: the next open() begins with a new one.
        const CScopedObjectStateLock deviceLock(m_deviceState);
        m_deviceState.setState(ParameterCollection::ObjectState_Closed);
        detachVelmoDeviceFromParameterCollection();
        attemptAnything(s_returnFailed, [this] { m_pVelmoDevice->DestroyDevice(); });
    }
    if (isBack != wasOpen)
    {
        attemptAnything(s_returnFailed,
                        [&]
                        {
                            if (isBack)
                            {
                                emit deviceOpened();
                            }
                            else
                            {
                                emit deviceClosed();
                            }
                        });
    }
}

bool CCamera::reattachVelmoDevice(CUpdatableDevice& borrower)
{
    const bool wasReset = borrower.wasReset();
    DevicePtr device(borrower.detach());
    if (device == nullptr)
    {
        return false;
    }
    m_pVelmoDevice->Attach(device.get(), Velmo::Cleanup_Delete);
    static_cast<void>(device.release());
    if (!m_pVelmoDevice->IsOpen())
    {
        return false;
    }
    if (m_pVelmoDevice->IsCameraDeviceRemoved())
    {
        OnCameraDeviceRemoved(*m_pVelmoDevice);
        return true;
    }
    const CScopedObjectStateLock deviceLock(m_deviceState);
    if (wasReset)
    {
        // It was opened without the camera's settings and handlers.
        m_pVelmoDevice->Close();
        openVelmoDevice(false);
    }
    else
    {
        shareOpenVelmoDevice();
    }
    return true;
}

} // namespace Plugin::CameraPool::Internal
