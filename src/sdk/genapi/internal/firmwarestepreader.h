// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/firmwarecontrol.h"
#include "genapi/internal/firmwareelement.h"

namespace GenApi
{
namespace Internal
{

/** The <Text> children: each language once, the first one is the default unless one has no language. */
FirmwareText ReadFirmwareText(const CFirmwareElement& element);

/** A <Procedure>. Throws FormatException, or OutOfRangeException beyond the limits. */
SFirmwareProcedure ReadFirmwareProcedure(const CFirmwareElement& element);

} // namespace Internal
} // namespace GenApi
