// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace Velmo::GigE::Internal
{

struct SSocketBuffer
{
    std::size_t wantedBytes = 0;
    std::size_t bytes = 0; // what the system allows
};

/** Room for two images, and at least one mebibyte. */
SSocketBuffer ChooseSocketBuffer(std::size_t payloadBytes);

/** Sizes the receive buffer of this process's UDP socket with that port; false when there is none. */
bool ApplySocketBuffer(std::uint16_t port, std::size_t bytes);

} // namespace Velmo::GigE::Internal
