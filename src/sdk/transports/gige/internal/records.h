// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/infos.h"
#include "transports/gige/internal/discovery.h"

namespace Velmo::GigE::Internal
{

/** How the records name it. */
GIGE_TEST_EXPORT const char* AccessText(EAccessStatus access);
/**
 * The record of a camera. Its full name is made of what the camera keeps when it restarts or moves: vendor, model,
 * serial number and MAC address, never its IP address.
 */
GIGE_TEST_EXPORT CDeviceInfo MakeDeviceInfo(const SFoundDevice& device);
GIGE_TEST_EXPORT CInterfaceInfo MakeInterfaceInfo(const SAdapter& adapter);
/** What stands for the adapters when there are none. */
GIGE_TEST_EXPORT CInterfaceInfo MakeDefaultInterfaceInfo();

} // namespace Velmo::GigE::Internal
