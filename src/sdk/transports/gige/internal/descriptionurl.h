// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <cstdint>
#include <string>

namespace Velmo::GigE::Internal
{

/** Where the description of a camera's features lies in the camera. */
struct SDescriptionPlace
{
    std::string fileName;
    std::uint32_t address = 0;
    std::uint32_t bytes = 0;
};

/** GigE Vision, "first URL" and "second URL": "Local:name.ext;address;length" with hexadecimal numbers, any case, and
 *  perhaps "///" and a query. False, and the place untouched, when the text is no such URL or the length is 0. */
GIGE_TEST_EXPORT bool ParseDescriptionUrl(const std::string& url, SDescriptionPlace& place);

} // namespace Velmo::GigE::Internal
