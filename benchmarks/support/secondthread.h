// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace Benchmarks
{

/** A thread that lives as long as the object and does one piece of work at a time. */
class CSecondThread
{
public:
    CSecondThread() : m_thread([this] { run(); }) {}
    ~CSecondThread()
    {
        start(nullptr);
        m_thread.join();
    }
    CSecondThread(const CSecondThread&) = delete;
    CSecondThread& operator=(const CSecondThread&) = delete;

    void start(std::function<void()> work)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_work = std::move(work);
        m_hasWork = true;
        m_changed.notify_all();
    }
    void wait()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_hasWork; });
    }

private:
    void run()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        while (true)
        {
            m_changed.wait(lock, [this] { return m_hasWork; });
            if (!m_work)
            {
                return;
            }
            lock.unlock();
            m_work();
            lock.lock();
            m_hasWork = false;
            m_changed.notify_all();
        }
    }

    std::mutex m_mutex; // guards the two below; not held while the work runs
    std::function<void()> m_work;
    bool m_hasWork = false;
    std::condition_variable m_changed;
    std::thread m_thread; // last: it uses all above
};

} // namespace Benchmarks
