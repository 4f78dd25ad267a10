// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <mutex>
#include <set>

namespace Velmo::GigE::Internal
{

/** The addresses of the cameras that this process controls. Threads: any. */
class COpenList
{
public:
    /** False when the camera is in the list already. */
    bool Add(std::uint32_t ip)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_addresses.insert(ip).second;
    }
    void Remove(std::uint32_t ip)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_addresses.erase(ip);
    }
    bool Contains(std::uint32_t ip) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_addresses.count(ip) != 0;
    }

private:
    mutable std::mutex m_mutex; // guards m_addresses
    std::set<std::uint32_t> m_addresses;
};

} // namespace Velmo::GigE::Internal
