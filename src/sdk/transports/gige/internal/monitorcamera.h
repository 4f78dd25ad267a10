// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/camera.h"
#include "transports/gige/internal/monitorport.h"

#include "genapi/inodemap.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Velmo::GigE::Internal
{

/** A camera that is watched. */
struct SMonitorCamera : SCamera
{
    std::unique_ptr<CMonitorPort> pPort;
    std::unique_ptr<GenApi::INodeMap> pNodeMap; // before the port in destruction
    // The same features once more, for the stream: it must read what the controlling application may have changed
    // since, and forgetting values in the map above would call back those who look at it.
    std::unique_ptr<GenApi::INodeMap> pStreamNodeMap;
};

/** Throws what the port throws, AccessException when another application has the camera for itself alone, and
 *  RuntimeException when the camera does not answer or its description cannot be read. */
std::unique_ptr<SMonitorCamera> OpenMonitorCamera(const std::string& name, std::uint32_t adapterIp,
                                                  std::uint32_t deviceIp, std::shared_ptr<CRemoval> pRemoval);

} // namespace Velmo::GigE::Internal
