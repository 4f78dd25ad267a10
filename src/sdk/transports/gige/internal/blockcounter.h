// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace Velmo::GigE::Internal
{

/**
 * Continues the 16-bit block ids of cameras without extended ids beyond their wrap from 65535 to 1 (0 is not used).
 * Threads: one at a time.
 */
class CBlockCounter
{
public:
    std::uint64_t Extend(std::uint64_t id)
    {
        constexpr std::uint64_t wrap = 0xFFFF;
        if (id > wrap)
        {
            return id; // extended ids do not wrap
        }
        // An image that comes late is a little lower; a wrap is far lower.
        if (id < m_last && m_last - id > wrap / 2)
        {
            m_offset += wrap;
        }
        m_last = id;
        return m_offset + id;
    }

private:
    std::uint64_t m_last = 0;
    std::uint64_t m_offset = 0;
};

} // namespace Velmo::GigE::Internal
