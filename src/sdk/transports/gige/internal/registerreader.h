// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/internal/gvcpclient.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace Velmo::GigE::Internal
{

/** How a read ended; where it failed: the request that did. */
struct SReadResult
{
    ERequest result = ERequest::Answered;
    std::uint16_t status = 0;
    std::int64_t address = 0;
    std::int64_t bytes = 0;
};

/**
 * A camera's words by requests of our own, over one socket for its life. No request lasts longer than its time-outs and
 * CGvcpClient::MostPatience. Memory is the camera's: big-endian. Threads: one at a time.
 */
class GIGE_TEST_EXPORT CRegisterReader
{
public:
    /** Each request is sent up to attempts times and awaited for the time-out each time. */
    CRegisterReader(std::chrono::milliseconds timeout, int attempts) : m_timeout(timeout), m_attempts(attempts) {}

    /** False when the adapter's address cannot be used; GetError() says why. Addresses in host byte order. */
    bool Open(std::uint32_t adapterIp, std::uint32_t deviceIp) { return m_client.Open(adapterIp, deviceIp); }
    const std::string& GetError() const { return m_client.GetError(); }
    /** The address and the length, in bytes, are multiples of four. */
    SReadResult Read(std::uint8_t* data, std::int64_t address, std::int64_t length);

private:
    SReadResult ReadWord(std::uint8_t* data, std::int64_t address);

    CGvcpClient m_client;
    const std::chrono::milliseconds m_timeout;
    const int m_attempts;
};

} // namespace Velmo::GigE::Internal
