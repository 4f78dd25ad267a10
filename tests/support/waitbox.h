// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace Test
{

/** What other threads put in, for a test that waits for it. Threads: any. */
template <class T> class CWaitBox
{
public:
    void Put(T thing)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_things.push_back(std::move(thing));
        m_changed.notify_all();
    }
    /** All so far, when there are as many or the time is over. */
    std::vector<T> Await(std::size_t count, std::chrono::milliseconds limit = std::chrono::seconds(30))
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait_for(lock, limit, [&] { return m_things.size() >= count; });
        return m_things;
    }

private:
    std::mutex m_mutex; // guards all
    std::condition_variable m_changed;
    std::vector<T> m_things;
};

} // namespace Test
