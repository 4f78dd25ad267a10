// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameraconfig.h"
#include "simulator/internal/registermemory.h"

namespace Simulator::Internal
{

/** The faults that have registers, from these; the others stay as they are. */
void GetFaults(const CRegisterMemory& memory, SFaults& faults);
void SetFaults(CRegisterMemory& memory, const SFaults& faults);

/** The data of the camera that comes back after a reset: what the faults make of its serial number, and faults that
 *  strike once without those that did. */
SCameraConfig MakeConfigAfterReset(const SCameraConfig& config, const SFaults& faultsNow);

} // namespace Simulator::Internal
