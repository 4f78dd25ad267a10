// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/servedcamera.h"

#include <string>
#include <vector>

namespace GigECamera
{

/** What faults there are, for the help. */
std::string GetFaultHelp();

/** Adds what texts such as "lost=3" say to the faults. Throws GenICam::InvalidArgumentException on anything else. */
void ReadFaults(const std::vector<std::string>& texts, GigEServer::SNetworkFaults& network, Simulator::SFaults& camera);

} // namespace GigECamera
