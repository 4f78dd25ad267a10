// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "simulator/cameraconfig.h"
#include "simulator/cameradata.h"
#include "transport/infos.h"

namespace Velmo::Emulation::Internal
{

constexpr const char* AccessFree = "ReadWrite"; // value of Key::AccessStatus

CTlInfo MakeTlInfo();
CInterfaceInfo MakeInterfaceInfo(const Simulator::SInterfaceData& data);
/** userDefinedName is the camera's present one, which may differ from the data's. */
CDeviceInfo MakeDeviceInfo(const Simulator::SCameraConfig& camera, const std::string& userDefinedName);

} // namespace Velmo::Emulation::Internal
