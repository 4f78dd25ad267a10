// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>

namespace Plugin::CameraPool
{

/** What one camera answered to an action command. */
struct SGigEActionCommandResult
{
    bool hasError = false;           // the camera refused the command
    char deviceAddress[16] = {'\0'}; // its IPv4 address, dotted, ends with a NUL
};

} // namespace Plugin::CameraPool
