// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace Velmo::Internal
{

/**
 * Which thread of one camera waits for which others, so that no circle of them waits for ever.
 *
 * The camera's gate and its handler lists share it: a thread may wait for a handler's call to end that waits for the
 * gate, whose owner waits for the callback that the first one runs. Of such a circle the one that deregisters a
 * handler does not wait; every other wait there has to hold.
 * Threads: any; all but the constructor with the mutex held.
 */
class CWaitGraph
{
public:
    using Threads = std::vector<std::thread::id>;

    /** While it lives this thread waits for all threads that the list holds, as it changes, but for itself. */
    class CWaiting
    {
    public:
        CWaiting(CWaitGraph& graph, const Threads& awaited);
        ~CWaiting();
        CWaiting(const CWaiting&) = delete;
        CWaiting& operator=(const CWaiting&) = delete;

    private:
        CWaitGraph& m_graph;
        std::multimap<std::thread::id, const Threads*>::iterator m_position;
    };

    /** Waits until only such threads are left among the runners as cannot end before this one goes on: itself, and
     *  those that wait, directly or not, for this one. */
    void AwaitIdle(std::unique_lock<std::mutex>& lock, const Threads& runners);
    /** A handler's call has ended. */
    void NotifyIdle() { m_changed.notify_all(); }

    std::mutex mutex; // guards this, the gate and the lists; never held while a handler or transport is called

private:
    bool WaitsFor(std::thread::id waiter, std::thread::id awaited, Threads& visited) const;

    std::condition_variable m_changed;
    std::multimap<std::thread::id, const Threads*> m_waiting;
};

} // namespace Velmo::Internal
