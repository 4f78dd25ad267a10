// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/copybytes.h"

#include "genapi/exceptions.h"

#include <cstring>
#include <string>

namespace Velmo::Internal
{

bool CheckRoom(const char* what, std::size_t sourceBytes, const void* pBuffer, std::size_t* pBytes)
{
    if (pBytes == nullptr)
    {
        GENICAM_THROW(InvalidArgumentException, std::string("There is no variable for the size of the ") + what + ".");
    }
    const std::size_t room = *pBytes;
    *pBytes = sourceBytes;
    if (pBuffer == nullptr)
    {
        return false;
    }
    if (room < sourceBytes)
    {
        GENICAM_THROW(OutOfRangeException, std::string("The ") + what + " has " + std::to_string(sourceBytes) +
                                               " bytes, and the buffer given for it " + std::to_string(room) + ".");
    }
    return sourceBytes != 0;
}

void CopyBytes(const char* what, const std::uint8_t* pSource, std::size_t sourceBytes, void* pBuffer,
               std::size_t* pBytes)
{
    if (CheckRoom(what, sourceBytes, pBuffer, pBytes))
    {
        std::memcpy(pBuffer, pSource, sourceBytes);
    }
}

} // namespace Velmo::Internal
