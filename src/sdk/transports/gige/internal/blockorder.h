// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "protocols/gvsp.h"

#include <cstdint>

namespace Velmo::GigE::Internal
{

/**
 * Puts block ids in order: those of 16 bits wrap from 65535 to 1, those of 64 bits do not.
 *
 * The nearest number to the newest one is meant. Threads: one at a time.
 */
class CBlockOrder
{
public:
    /** The number of that block id; 0 when there can be none before the first. Does not make it the newest. */
    std::uint64_t NumberOf(std::uint64_t blockId, bool isExtended) const
    {
        if (isExtended || m_newest == 0)
        {
            return blockId;
        }
        constexpr std::uint64_t wrap = Gvsp::MaxBlockId;
        const std::uint64_t newestId = Gvsp::BlockIdOf(m_newest, false);
        const std::uint64_t ahead = (blockId + wrap - newestId) % wrap;
        if (ahead <= wrap / 2)
        {
            return m_newest + ahead;
        }
        const std::uint64_t behind = wrap - ahead;
        return behind < m_newest ? m_newest - behind : 0;
    }
    void SetNewest(std::uint64_t number) { m_newest = number > m_newest ? number : m_newest; }
    std::uint64_t GetNewest() const { return m_newest; }

private:
    std::uint64_t m_newest = 0; // 0: none yet
};

} // namespace Velmo::GigE::Internal
