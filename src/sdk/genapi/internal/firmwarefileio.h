// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>

namespace GenApi
{
namespace Internal
{

/** All bytes of a regular file. title: how messages name it, at the begin of a sentence. Throws FileNotFoundException,
 *  FileIOException, OutOfRangeException (more than maxBytes). */
std::string LoadWholeFile(const std::string& title, const std::string& fileName, std::size_t maxBytes);

/** What SaveWholeFile() writes before it gives it the name. */
std::string FirmwarePartName(const std::string& fileName);

/** Writes a file that is there as a whole or not at all; replaces one of that name. Throws FileIOException. */
void SaveWholeFile(const std::string& title, const std::string& fileName, const std::string& bytes);

} // namespace Internal
} // namespace GenApi
