// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/waitgraph.h"

#include <algorithm>

namespace Velmo::Internal
{

CWaitGraph::CWaiting::CWaiting(CWaitGraph& graph, const Threads& awaited)
    : m_graph(graph), m_position(graph.m_waiting.emplace(std::this_thread::get_id(), &awaited))
{
    m_graph.m_changed.notify_all(); // it may have closed a circle
}

CWaitGraph::CWaiting::~CWaiting()
{
    m_graph.m_waiting.erase(m_position);
}

void CWaitGraph::AwaitIdle(std::unique_lock<std::mutex>& lock, const Threads& runners)
{
    const std::thread::id self = std::this_thread::get_id();
    const auto isIdle = [&]
    {
        return std::all_of(runners.begin(), runners.end(),
                           [&](std::thread::id runner)
                           {
                               Threads visited;
                               return runner == self || WaitsFor(runner, self, visited);
                           });
    };
    if (isIdle())
    {
        return;
    }
    const CWaiting waiting(*this, runners);
    m_changed.wait(lock, isIdle);
}

bool CWaitGraph::WaitsFor(std::thread::id waiter, std::thread::id awaited, Threads& visited) const
{
    if (std::find(visited.begin(), visited.end(), waiter) != visited.end())
    {
        return false;
    }
    visited.push_back(waiter);
    const auto [begin, end] = m_waiting.equal_range(waiter);
    return std::any_of(begin, end,
                       [&](const auto& waiting)
                       {
                           return std::any_of(waiting.second->begin(), waiting.second->end(),
                                              [&](std::thread::id next) {
                                                  return next != waiter &&
                                                         (next == awaited || WaitsFor(next, awaited, visited));
                                              });
                       });
}

} // namespace Velmo::Internal
