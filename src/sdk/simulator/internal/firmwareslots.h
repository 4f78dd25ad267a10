// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameraconfig.h"
#include "simulator/flash.h"
#include "simulator/simulator_testexport.h"

#include <string>

namespace Simulator::Internal
{

/**
 * The life of firmware in the flash; the running slot is only ever left by a boot that succeeded.
 *
 * Threads: the flash's mutex is held by the caller.
 */
class SIMULATOR_TEST_EXPORT CFirmwareSlots
{
public:
    CFirmwareSlots(SFirmwareFlash& flash, const SCameraConfig& config) : m_flash(flash), m_config(config) {}

    /** Power comes: boots what was activated, falls back when that fails, gives up a half upload. Returns the version
     *  that runs. */
    std::string Boot();
    /** Prepares the inactive slot for an upload: empties it, unless what is there is to be continued. */
    void BeginUpload(bool isContinued);
    /** Looks at what was uploaded. False when the camera cannot use it. */
    bool EndUpload();
    /** Ends an upload that the application gave up. */
    void AbandonUpload();
    void Erase();
    /** Throws GenICam::AccessException unless the inactive slot's image is Verified and still is what it was. */
    void Activate();

private:
    /** Empty when the camera can run the inactive slot's image. */
    std::string FindFlaw() const;

    SFirmwareFlash& m_flash;
    const SCameraConfig& m_config;
};

} // namespace Simulator::Internal
