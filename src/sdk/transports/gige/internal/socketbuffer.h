// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Velmo::GigE::Internal
{

struct SSocketBuffer
{
    std::size_t wantedBytes = 0; // less loses images even where all is well
    std::size_t bytes = 0;       // what is taken: more than that where the system allows it
};

/** The largest receive buffer that a process may ask for, in bytes; 0 when the system does not tell. Threads: any. */
GIGE_TEST_EXPORT std::size_t ReceiveBufferLimit();
/** For tests: what ReceiveBufferLimit() says from now on; 0 is the system's again. Threads: any. */
GIGE_TEST_EXPORT void PretendReceiveBufferLimit(std::size_t bytes);

/**
 * Wanted is room for two images, and at least one mebibyte; taken are at least eight, which cost nothing until they are
 * used: an independent camera at 300 images/s of 256 KiB lost some in one run of seven with one mebibyte, when the
 * engine's thread got no processor for some 15 ms, and none in thirty with four. A limit of 0 is none.
 */
GIGE_TEST_EXPORT SSocketBuffer ChooseSocketBuffer(std::size_t payloadBytes, std::size_t limitBytes);

/** What the stream of that camera gets, in bytes; a warning is logged when the system allows too little. */
std::size_t SizeSocketBuffer(const std::string& cameraName, std::size_t payloadBytes);
/** The same for a stream whose missing packets cannot be asked for again: what the system allows, within reason. */
std::size_t SizeMulticastSocketBuffer(const std::string& cameraName, std::size_t payloadBytes);

/** Sizes the receive buffer of this process's UDP socket at that address (host byte order); false when there is none.
 */
GIGE_TEST_EXPORT bool ApplySocketBuffer(std::uint32_t ip, std::uint16_t port, std::size_t bytes);

} // namespace Velmo::GigE::Internal
