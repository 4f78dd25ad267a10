// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/genapi_testexport.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace GenApi
{
namespace Internal
{

/** No description is larger; larger ones are refused before memory is taken for them. */
constexpr std::size_t MaxDescriptionBytes = std::size_t{64} << 20;

/**
 * The XML text of a description: the bytes themselves, or, if they begin as a ZIP archive does, its one XML file.
 *
 * Errors: InvalidArgumentException for no bytes; RuntimeException for a broken archive, one without an XML file, or
 * contents beyond MaxDescriptionBytes.
 */
GENAPI_TEST_EXPORT std::string UnpackDescription(std::string_view bytes);

} // namespace Internal
} // namespace GenApi
