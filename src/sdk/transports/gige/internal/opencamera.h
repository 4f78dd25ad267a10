// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/deviceport.h"

#include "genapi/inodemap.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Velmo::GigE::Internal
{

/** What belongs to a camera from Open to Close; held by its device, used by its stream. */
struct SOpenCamera
{
    std::string name;            // for texts
    std::uint32_t deviceIp = 0;  // host byte order
    std::uint32_t adapterIp = 0; // host byte order
    bool isLoopback = false;
    ObjectPtr<ArvDevice> pEngine;
    std::shared_ptr<CRemoval> pRemoval;
    std::unique_ptr<CDevicePort> pPort;
    std::unique_ptr<GenApi::INodeMap> pNodeMap; // before the port in destruction
    std::uint32_t packetSettingAtOpen = 0;      // to see whether the user chose another
    bool isPacketSizeChosen = false;
    std::function<bool()> isAnswering; // asks the camera
};

} // namespace Velmo::GigE::Internal
