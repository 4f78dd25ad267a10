// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/notifier.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace Velmo::Emulation::Internal
{

struct CNotifier::SPrivate
{
    void Run()
    {
        std::unique_lock<std::mutex> lock(mutex);
        while (true)
        {
            changed.wait(lock, [this] { return isStopping || !tasks.empty(); });
            if (isStopping)
            {
                return;
            }
            {
                const std::function<void()> task = std::move(tasks.front());
                tasks.pop_front();
                lock.unlock();
                task();
            }
            lock.lock();
        }
    }

    std::mutex mutex; // guards all; never held while a task runs
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
    bool isStopping = false;
    std::thread thread;
};

CNotifier::CNotifier() : m_p(std::make_shared<SPrivate>()) {}

CNotifier::~CNotifier()
{
    std::thread thread;
    std::deque<std::function<void()>> dropped; // destroyed without the lock: a task may own the last of something
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        m_p->isStopping = true;
        m_p->tasks.swap(dropped);
        thread = std::move(m_p->thread);
    }
    m_p->changed.notify_all();
    if (thread.get_id() == std::this_thread::get_id())
    {
        thread.detach(); // the thread holds its state by itself
    }
    else if (thread.joinable())
    {
        thread.join();
    }
}

void CNotifier::Post(std::function<void()> task)
{
    const std::lock_guard<std::mutex> lock(m_p->mutex);
    m_p->tasks.push_back(std::move(task));
    if (!m_p->thread.joinable())
    {
        m_p->thread = std::thread([p = m_p] { p->Run(); });
    }
    m_p->changed.notify_one();
}

} // namespace Velmo::Emulation::Internal
