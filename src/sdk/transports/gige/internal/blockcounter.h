// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace Velmo::GigE::Internal
{

/**
 * Continues the 16-bit block ids of cameras without extended ids beyond their wrap from 65535 to 1 (0 is not used), and
 * counts those left out. Threads: one at a time.
 */
class CBlockCounter
{
public:
    std::uint64_t Extend(std::uint64_t id)
    {
        constexpr std::uint64_t wrap = 0xFFFF;
        if (id == 0)
        {
            return 0; // of a result without an image
        }
        if (id > wrap)
        {
            Count(id); // extended ids do not wrap
            return id;
        }
        // An image that comes late is a little lower than the last; a wrap is far lower, and an image from before the
        // wrap that comes late, or was given up, far higher.
        const bool isFromBeforeWrap = m_offset > 0 && id > m_last && id - m_last > wrap / 2;
        if (id < m_last && m_last - id > wrap / 2)
        {
            m_offset += wrap;
        }
        if (!isFromBeforeWrap)
        {
            m_last = id;
        }
        const std::uint64_t extended = (isFromBeforeWrap ? m_offset - wrap : m_offset) + id;
        Count(extended);
        return extended;
    }

    /** How many ids between the lowest and the highest so far are missing. */
    std::uint64_t CountSkipped() const { return m_skipped; }

private:
    void Count(std::uint64_t id)
    {
        if (m_highest == 0 || id > m_highest)
        {
            m_skipped += m_highest == 0 ? 0 : id - m_highest - 1;
            m_highest = id;
        }
        else if (id < m_highest && m_skipped > 0)
        {
            --m_skipped; // it was late, not left out
        }
    }

    std::uint64_t m_last = 0;
    std::uint64_t m_offset = 0;
    std::uint64_t m_highest = 0;
    std::uint64_t m_skipped = 0;
};

} // namespace Velmo::GigE::Internal
