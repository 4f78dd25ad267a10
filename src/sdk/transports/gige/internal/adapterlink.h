// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/adapters.h"

namespace Velmo::GigE::Internal
{

constexpr std::int64_t UnknownLinkValue = -1;

/** Bytes of the largest packet that the adapter sends unfragmented; UnknownLinkValue when the system does not tell. */
GIGE_TEST_EXPORT std::int64_t ReadMtu(const SAdapter& adapter);

/** Mbit/s of the link as it is now; UnknownLinkValue when it is down or the system does not know (loopback, virtual
 *  adapters). folder: where the system has a folder of numbers for each adapter. */
GIGE_TEST_EXPORT std::int64_t ReadLinkSpeedMbps(const SAdapter& adapter, const std::string& folder = "/sys/class/net");

/** The default gateway of the adapter in host byte order; 0 when there is none. */
GIGE_TEST_EXPORT std::uint32_t ReadGateway(const SAdapter& adapter);

/** The same from the text of the system's routing table (its file of IPv4 routes). */
GIGE_TEST_EXPORT std::uint32_t GatewayIn(const std::string& routes, const std::string& adapterName);

} // namespace Velmo::GigE::Internal
