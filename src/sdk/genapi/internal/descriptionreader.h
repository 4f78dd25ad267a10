// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/internal/description.h"

#include "genapi/genapi_testexport.h"

#include <memory>
#include <string>

namespace GenApi
{
namespace Internal
{

/**
 * Parses, resolves and checks a device description.
 *
 * Errors: RuntimeException for text that is no well-formed XML, has a document type (entities are never expanded) or
 * is no description; LogicalErrorException, naming the node, for everything else a description can get wrong.
 */
GENAPI_TEST_EXPORT std::shared_ptr<const SDescription> ReadDescription(const std::string& xml);

} // namespace Internal
} // namespace GenApi
