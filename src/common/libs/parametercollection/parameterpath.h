// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace ParameterCollection::ParameterPath
{

static const QString CameraInstance = QStringLiteral("@CameraInstance");
static const QString CameraDevice = QStringLiteral("@CameraDevice");
static const QString StreamGrabber0 = QStringLiteral("@StreamGrabber0");
static const QString DeviceTransportLayer = QStringLiteral("@DeviceTransportLayer");
static const QString ChunkData = QStringLiteral("@ChunkData");
static const QString EventGrabber = QStringLiteral("@EventGrabber");
static const QString PixelDataConverter = QStringLiteral("@PixelDataConverter");
static const QString VideoWriter = QStringLiteral("@VideoWriter");
static const QString Interface = QStringLiteral("@Interface");

} // namespace ParameterCollection::ParameterPath
