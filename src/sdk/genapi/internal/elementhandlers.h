// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <pugixml.hpp>

#include <string_view>

namespace GenApi
{
namespace Internal
{

class CElementReader;
struct SNodeDescription;

/** Takes one child element into the description of the reader's node. */
using ElementHandler = void (*)(CElementReader& reader, pugi::xml_node element);

/** Null for elements that mean nothing to a node of this kind or are looked up as text when asked for. */
ElementHandler FindElementHandler(const SNodeDescription& node, std::string_view elementName);

} // namespace Internal
} // namespace GenApi
