// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "gigeserver/gigeserver_testexport.h"
#include "simulator/cameramodel.h"

#include <cstdint>
#include <string>
#include <vector>

namespace GigEServer::Internal
{

constexpr std::uint32_t DescriptionAddress = 0x01000000;

/** The camera's description with the features of its network connection added. */
GIGESERVER_TEST_EXPORT std::string AddTransportFeatures(std::string xml);
/** As it is read from the camera: zipped. Throws GenICam::RuntimeException. */
GIGESERVER_TEST_EXPORT std::vector<std::uint8_t> ZipDescription(const Simulator::CCameraModel& model);
/** "Local:NAME.zip;ADDRESS;LENGTH", the numbers in hexadecimal. */
GIGESERVER_TEST_EXPORT std::string DescriptionUrl(const Simulator::CCameraModel& model, std::size_t bytes);

} // namespace GigEServer::Internal
