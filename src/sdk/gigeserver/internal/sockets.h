// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_testexport.h"

#include <cstdint>
#include <vector>

namespace GigEServer::Internal
{

/** A UDP socket for that address; the caller closes it. A shared one gets its copy of broadcasts beside others. Throws
 *  GenICam::RuntimeException with address, port and reason. */
GIGESERVER_TEST_EXPORT int OpenSocket(std::uint32_t ip, std::uint16_t port, bool isShared);
/** The port that the system chose. */
GIGESERVER_TEST_EXPORT std::uint16_t PortOf(int socket);

constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;

/** Addresses in host byte order. adapterIndex: the way out for a limited broadcast, which the routing table may not
 *  know; 0: the routing table's. */
void SendDatagram(int socket, const std::vector<std::uint8_t>& datagram, std::uint32_t ip, std::uint16_t port,
                  unsigned int adapterIndex);

} // namespace GigEServer::Internal
