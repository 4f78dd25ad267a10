// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/registerreader.h"

#include <algorithm>
#include <cstring>
#include <endian.h>

namespace Velmo::GigE::Internal
{

namespace
{
constexpr std::int64_t Word = 4;
}

SReadResult CRegisterReader::ReadWord(std::uint8_t* data, std::int64_t address)
{
    const SRegisterAnswer answer = m_client.ReadRegister(static_cast<std::uint32_t>(address), m_timeout, m_attempts);
    const std::uint32_t value = htobe32(answer.value);
    std::memcpy(data, &value, sizeof value);
    return {answer.result, answer.status, address, Word};
}

SReadResult CRegisterReader::Read(std::uint8_t* data, std::int64_t address, std::int64_t length)
{
    if (length == Word)
    {
        return ReadWord(data, address); // every camera reads registers; some refuse memory access to them
    }
    for (std::int64_t done = 0; done < length;)
    {
        const std::int64_t bytes = std::min<std::int64_t>(length - done, Gvcp::MaxMemoryBytes / Word * Word);
        const SMemoryAnswer answer = m_client.ReadMemory(static_cast<std::uint32_t>(address + done),
                                                         static_cast<std::size_t>(bytes), m_timeout, m_attempts);
        if (answer.result != ERequest::Answered)
        {
            return {answer.result, answer.status, address + done, bytes};
        }
        std::memcpy(data + done, answer.data.data(), answer.data.size());
        done += bytes;
    }
    return {};
}

} // namespace Velmo::GigE::Internal
