// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

/** Device classes of the camera SDK that are treated specially; compared exactly unless said otherwise. */
namespace Plugin::CameraPool::DeviceClass
{

constexpr const char* GigE = "KorvelGigE";
/** The GenTL consumer on a GigE producer. */
constexpr const char* GenTlGigE = "KorvelGTC/Korvel/GEV";
/** The GenTL consumer on the producer of a CoaXPress frame grabber. */
constexpr const char* GenTlCxp = "KorvelGTC/Korvel/CXP";
/** Part of the device class of everything reached through the GenTL consumer. */
constexpr const char* GenTlConsumer = "KorvelGTC";

} // namespace Plugin::CameraPool::DeviceClass
