// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/softwarenodemap.h"

#include <atomic>
#include <cstdint>

namespace Velmo::GigE::Internal
{

/** Entries of a stream's TransmissionType. */
namespace TransmissionType
{
constexpr std::int64_t Unicast = 0;
constexpr std::int64_t Multicast = 1;
constexpr std::int64_t UseCameraConfig = 2; // as the controlling application configured it
} // namespace TransmissionType

/** A time in microseconds; member lives as long as the node map. */
void AddTime(Transport::CSoftwareNodeMap& parameters, const char* name, const char* toolTip,
             std::atomic<std::int64_t>& member);

} // namespace Velmo::GigE::Internal
