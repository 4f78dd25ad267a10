// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/camera.h"
#include "transports/gige/internal/deviceport.h"
#include "transports/gige/internal/packetsize.h"

#include "genapi/inodemap.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace Velmo::GigE::Internal
{

/** A camera that is controlled. */
struct SOpenCamera : SCamera
{
    bool isLoopback = false;
    std::unique_ptr<CEngineCalls> pCalls; // what the camera may keep waiting without limit
    ObjectPtr<ArvDevice> pEngine;
    std::unique_ptr<CDevicePort> pPort;
    std::unique_ptr<GenApi::INodeMap> pNodeMap; // before the port in destruction
    std::uint32_t packetSettingAtOpen = 0;      // to see whether the user chose another
    CPacketSize packetSize;
    std::atomic<std::size_t> receiveBufferBytes{0};  // of the present or last stream's socket
    std::atomic<std::size_t> receiveBufferWanted{0}; // what it would have without the system's limit
    std::function<bool()> isAnswering;               // asks the camera
};

} // namespace Velmo::GigE::Internal
