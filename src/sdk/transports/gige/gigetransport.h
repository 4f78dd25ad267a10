// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport.h"
#include "transports/gige/gige_export.h"

#include <memory>
#include <string>
#include <vector>

/** Cameras reached through network adapters: GigE Vision. */
namespace Velmo::GigE
{

constexpr const char* DeviceClass = "KorvelGigE";
constexpr const char* TLType = "GEV";
/** Environment variable that names the adapters to search, as SetAdapters() takes them, separated by commas. */
constexpr const char* AdaptersVariable = "CAMERAPOOL_GIGE_ADAPTERS";

/**
 * Makes the GigE Vision transport. Destroying it waits for what it still does in the background, 20 s at most.
 * Threads: any.
 */
GIGE_EXPORT std::shared_ptr<Transport::ITransport> CreateTransport();

/**
 * Confines every GigE transport of the process, from its next enumeration on, to the adapters given by interface name
 * ("eth0") or by one of their IPv4 addresses ("127.0.0.1"); the entry "none" stands for no adapter.
 * An empty list goes back to the environment variable and, without it, to every adapter that is up, has an IPv4
 * address and is not the loopback one.
 * Threads: any.
 */
GIGE_EXPORT void SetAdapters(std::vector<std::string> adapters);

} // namespace Velmo::GigE
