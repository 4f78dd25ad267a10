// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"
#include "genapi/firmwareupdate.h"

#include <QString>

namespace Plugin::CameraPool::Internal
{

/** A camera that takes firmware updates. */
class CAMERAPOOL_TEST_EXPORT IFirmwareUpdatable
{
public:
    virtual ~IFirmwareUpdatable();

    /** False when the check itself failed; matches is false then. Throws Core::Exception::InvalidOperationException
     *  when the camera is in use or disposed. */
    virtual bool matchesFirmwareUpdate(const GenApi::CFirmwareUpdateInfo& update, bool& matches) = 0;
    /** Blocks until the update has ended. The observer may be null and is called on this thread. failure: untouched,
     *  or, with the result false, the text for a person. Throws as matchesFirmwareUpdate(). */
    virtual bool applyFirmwareUpdate(const GenApi::CFirmwareUpdateInfo& update,
                                     GenApi::IFirmwareUpdateProgressObserver* pObserver, QString& failure) = 0;
};

} // namespace Plugin::CameraPool::Internal
