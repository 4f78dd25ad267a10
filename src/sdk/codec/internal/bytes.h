// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Velmo::Codec::Internal
{

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "headers and samples are little-endian and used as they are");

template <class T> T Load(const void* pData, std::size_t offset = 0)
{
    T value;
    std::memcpy(&value, static_cast<const std::uint8_t*>(pData) + offset, sizeof value);
    return value;
}

template <class T> void Store(void* pData, std::size_t offset, T value)
{
    std::memcpy(static_cast<std::uint8_t*>(pData) + offset, &value, sizeof value);
}

} // namespace Velmo::Codec::Internal
