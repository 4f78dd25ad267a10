// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Plugin::CameraPool
{

/** Transport-layer types, as the records' getTLType() gives them. */
static const QString TLTypeGigE = QStringLiteral("GEV");
static const QString TLTypeUSB = QStringLiteral("U3V");
static const QString TLType1394 = QStringLiteral("IIDC");
/** A board-level LVDS camera interface. */
static const QString TLTypeQLNK = QStringLiteral("QLNK");
static const QString TLTypeCL = QStringLiteral("CL");
/** Camera emulation. */
static const QString TLTypeCamEmu = QStringLiteral("CamEmu");
static const QString TLTypeIPCam = QStringLiteral("IPCam");
static const QString TLTypeCXP = QStringLiteral("CXP");
/** Any other producer. */
static const QString TLTypeCustom = QStringLiteral("Custom");

} // namespace Plugin::CameraPool
