// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "camerapool/camerapool_testexport.h"

#include <cstdint>

namespace Plugin::CameraPool::Internal
{

/**
 * How many buffers a continuous grab gets: group "Grab" of the application's settings.
 *
 * Values that make no sense are replaced when they are read, with one warning each until they change; in the settings
 * they stay as somebody wrote them. Threads: main.
 */
struct CAMERAPOOL_TEST_EXPORT SGrabSettings
{
    int minNumBuffers = 10;
    int maxNumBuffers = 450;
    unsigned int usedBufferMemoryBytes = 8388608;

    bool isMinReplaced = false;
    bool isMaxReplaced = false;
    bool isMemoryReplaced = false;

    static SGrabSettings read();
    /** Makes all entries explicit. */
    void write() const;

    /** Buffers for images of that many bytes, which must not be 0: as many as the memory holds, within the limits. */
    int buffersFor(std::uint64_t payloadBytes) const;
};

} // namespace Plugin::CameraPool::Internal
