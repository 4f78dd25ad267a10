// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "genapi/firmwareupdate.h"
#include "velmo/instantcamera.h"

#include <functional>

namespace Plugin::CameraPool::Internal
{

/**
 * A device under firmware update: survives its reset.
 *
 * Ownership: owns the attached device, which after a reset is another object, until detach().
 * Threads: the one that applies the update, which a reset blocks for max(waitTimeMs, 1000) ms (500 ms when that is 0)
 * and 29 times 500 ms at most, and for as long as discovery and opening take.
 * Errors: GenICam exceptions, to the firmware-update module.
 */
class CAMERAPOOL_TEST_EXPORT CUpdatableDevice : public GenApi::IFirmwareUpdatableDevice
{
public:
    /** Returns after that many milliseconds. */
    using Sleep = std::function<void(unsigned int)>;

    /** Null: sleeps by the clock. */
    explicit CUpdatableDevice(Sleep sleep = {});
    ~CUpdatableDevice() override;
    CUpdatableDevice(const CUpdatableDevice&) = delete;
    CUpdatableDevice& operator=(const CUpdatableDevice&) = delete;

    void PrepareForFirmwareUpdate() override;
    GenApi::INodeMap& GetNodeMapOfDeviceToUpdate() override;
    GenICam::gcstring GetDisplayName() override;
    /** The expected time does not matter. */
    void DeviceResetWhileUpdatingFirmware(unsigned int expectedTimeMs, unsigned int waitTimeMs) override;
    void CleanupAfterFirmwareUpdate() override;

    /** Takes the device over. */
    void attach(Velmo::IVelmoDevice* pDevice);
    /** Gives the device away, open or not; null when there is none, as after a reset that it did not return from. */
    Velmo::IVelmoDevice* detach();
    bool deviceIsOpen() const;
    /** A reset has put another device object in place of the attached one, or has left none. */
    bool wasReset() const { return m_wasReset; }

private:
    /** One attempt to find, make and open the device; what is found is added to the list. */
    void tryToReturn(const Velmo::DeviceInfoList& filter, Velmo::DeviceInfoList& found, int attempt);
    void awaitReboot(int attempt, unsigned int waitTimeMs) const;

    Velmo::CInstantCamera m_camera;
    const Sleep m_sleep;
    bool m_wasReset = false;
};

} // namespace Plugin::CameraPool::Internal
