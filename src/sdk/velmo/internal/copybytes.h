// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace Velmo::Internal
{

/** Tells the size only when pBuffer is null. Throws InvalidArgumentException when pBytes is null and
 *  OutOfRangeException when *pBytes is too small; *pBytes is the size needed afterwards in any case. */
void CopyBytes(const char* what, const std::uint8_t* pSource, std::size_t sourceBytes, void* pBuffer,
               std::size_t* pBytes);

/** The check alone; true: there is room for sourceBytes to be copied to pBuffer. */
bool CheckRoom(const char* what, std::size_t sourceBytes, const void* pBuffer, std::size_t* pBytes);

} // namespace Velmo::Internal
