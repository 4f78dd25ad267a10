// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_testexport.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace GenApi
{
namespace Internal
{

/** Lower case hexadecimal digits of a SHA-256 checksum. */
constexpr std::size_t Sha256Digits = 64;

/** SHA-256 (FIPS 180-4) as lower case hexadecimal text. */
GENAPI_TEST_EXPORT std::string Sha256(std::string_view bytes);

/** CRC-32 as in IEEE 802.3 and ZIP: polynomial 0x04C11DB7 reflected, begun and ended with all ones. */
GENAPI_TEST_EXPORT std::uint32_t Crc32(std::string_view bytes);

} // namespace Internal
} // namespace GenApi
