// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_testexport.h"
#include "genapi/types.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace GenApi
{
namespace Internal
{

std::string_view Trim(std::string_view text);

/** Decimal or "0x" hexadecimal with an optional sign; hexadecimal up to 64 bits wraps. False when it is none. */
GENAPI_TEST_EXPORT bool ParseInteger(std::string_view text, std::int64_t& value);
/** Decimal point whatever the locale. False when it is no number. */
GENAPI_TEST_EXPORT bool ParseFloat(std::string_view text, double& value);
/** Hexadecimal with or without "0x". */
GENAPI_TEST_EXPORT bool ParseHex(std::string_view text, std::uint64_t& value);

/** An integer as its representation shows it: 0x..., a.b.c.d, aa:bb:cc:dd:ee:ff or decimal. */
GENAPI_TEST_EXPORT std::string FormatInteger(std::int64_t value, ERepresentation representation);
/** The reverse; decimal and 0x... are accepted for every representation. */
GENAPI_TEST_EXPORT bool ParseRepresented(std::string_view text, ERepresentation representation, std::int64_t& value);
/** precision below 0: as many digits as it takes to read the same number back. */
GENAPI_TEST_EXPORT std::string FormatFloat(double value, EDisplayNotation notation, std::int64_t precision);

} // namespace Internal
} // namespace GenApi
