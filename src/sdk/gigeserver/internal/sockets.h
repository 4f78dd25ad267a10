// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_testexport.h"

#include <cstdint>

namespace GigEServer::Internal
{

/** A UDP socket for that address; the caller closes it. A shared one gets its copy of broadcasts beside others. Throws
 *  GenICam::RuntimeException with address, port and reason. */
GIGESERVER_TEST_EXPORT int OpenSocket(std::uint32_t ip, std::uint16_t port, bool isShared);
/** The port that the system chose. */
GIGESERVER_TEST_EXPORT std::uint16_t PortOf(int socket);

} // namespace GigEServer::Internal
