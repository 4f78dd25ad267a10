// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport_export.h"

#include <cstddef>
#include <cstdint>

namespace Velmo
{

/** Makes the chunk values of one buffer readable through the device's node map. */
class TRANSPORT_EXPORT IChunkParser
{
public:
    virtual ~IChunkParser();
    /** The buffer must stay valid until it is replaced or detached. */
    virtual void AttachBuffer(const void* pBuffer, std::int64_t bytes, std::int64_t layoutId = 0,
                              std::size_t* pChunkOffset = nullptr) = 0;
    virtual void DetachBuffer() = 0;
};

} // namespace Velmo
