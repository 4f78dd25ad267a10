// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "simulator/framepump.h"

#include "simulator/cameramodel.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <set>
#include <thread>
#include <unordered_map>
#include <vector>

namespace Simulator
{

namespace
{

constexpr std::size_t MaxWorkers = 4;
constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

struct SEntry
{
    std::shared_ptr<CCameraModel> camera;
    std::int64_t deadlineNs = Never; // its place in the queue, when it is queued
    bool isRunning = false;
    bool isWoken = false; // while running: ask again at once
    bool isDetached = false;
};

} // namespace

struct CFramePump::SPrivate
{
    using Key = std::pair<std::int64_t, SEntry*>;

    void Run();
    void RunFirst(std::unique_lock<std::mutex>& lock);
    void Schedule(SEntry& entry, std::int64_t deadlineNs);
    void Wake(const CCameraModel* camera);

    std::mutex mutex;                      // guards all below; never held while a camera runs
    std::condition_variable leaderChanged; // for the worker that waits for the first deadline
    std::condition_variable work;          // for the others
    std::condition_variable finished;      // a camera's run ended
    std::set<Key> queue;
    std::unordered_map<const CCameraModel*, std::unique_ptr<SEntry>> entries;
    bool hasLeader = false;
    bool isStopping = false;
    std::vector<std::thread> workers;
};

void CFramePump::SPrivate::Schedule(SEntry& entry, std::int64_t deadlineNs)
{
    entry.deadlineNs = deadlineNs;
    if (deadlineNs == Never)
    {
        return;
    }
    queue.emplace(deadlineNs, &entry);
    if (queue.begin()->second == &entry)
    {
        hasLeader ? leaderChanged.notify_one() : work.notify_one();
    }
}

void CFramePump::SPrivate::Wake(const CCameraModel* camera)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = entries.find(camera);
    if (found == entries.end() || found->second->isDetached)
    {
        return;
    }
    SEntry& entry = *found->second;
    if (entry.isRunning)
    {
        entry.isWoken = true;
        return;
    }
    queue.erase({entry.deadlineNs, &entry});
    Schedule(entry, 0);
}

void CFramePump::SPrivate::RunFirst(std::unique_lock<std::mutex>& lock)
{
    SEntry& entry = *queue.begin()->second;
    queue.erase(queue.begin());
    entry.isRunning = true;
    if (!queue.empty())
    {
        work.notify_one(); // somebody else watches the next deadline meanwhile
    }
    lock.unlock();
    const std::int64_t next = entry.camera->Produce();
    lock.lock();
    entry.isRunning = false;
    if (entry.isDetached)
    {
        finished.notify_all();
        return;
    }
    const bool isWoken = entry.isWoken;
    entry.isWoken = false;
    Schedule(entry, isWoken ? 0 : next);
}

void CFramePump::SPrivate::Run()
{
    std::unique_lock<std::mutex> lock(mutex);
    while (!isStopping)
    {
        if (queue.empty() || hasLeader)
        {
            work.wait(lock);
            continue;
        }
        const std::int64_t deadlineNs = queue.begin()->first;
        if (SteadyClock().NowNs() >= deadlineNs)
        {
            RunFirst(lock);
            continue;
        }
        hasLeader = true;
        leaderChanged.wait_until(lock, std::chrono::steady_clock::time_point(std::chrono::nanoseconds(deadlineNs)));
        hasLeader = false;
    }
    // The next worker must see the stop too.
    work.notify_all();
}

std::shared_ptr<CFramePump> CFramePump::GetShared()
{
    static std::mutex mutex; // guards shared
    static std::weak_ptr<CFramePump> shared;
    const std::lock_guard<std::mutex> lock(mutex);
    auto pump = shared.lock();
    if (pump == nullptr)
    {
        pump = std::make_shared<CFramePump>();
        shared = pump;
    }
    return pump;
}

CFramePump::CFramePump(std::size_t workers) : m_p(std::make_shared<SPrivate>())
{
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t count = workers != 0 ? workers : std::min(processors, MaxWorkers);
    for (std::size_t i = 0; i < count; ++i)
    {
        m_p->workers.emplace_back([p = m_p.get()] { p->Run(); });
    }
}

CFramePump::~CFramePump()
{
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        m_p->isStopping = true;
        m_p->work.notify_all();
        m_p->leaderChanged.notify_all();
    }
    for (std::thread& worker : m_p->workers)
    {
        worker.join();
    }
    for (const auto& [camera, entry] : m_p->entries)
    {
        entry->camera->SetWakeHandler(nullptr);
    }
}

void CFramePump::Attach(const std::shared_ptr<CCameraModel>& camera)
{
    {
        const std::lock_guard<std::mutex> lock(m_p->mutex);
        auto& entry = m_p->entries[camera.get()];
        if (entry != nullptr)
        {
            return;
        }
        entry = std::make_unique<SEntry>();
        entry->camera = camera;
    }
    // A wake that is under way while the camera is detached finds no entry; one that outlives the pump no pump.
    camera->SetWakeHandler(
        [weak = std::weak_ptr<SPrivate>(m_p), p = camera.get()]
        {
            if (const auto alive = weak.lock())
            {
                alive->Wake(p);
            }
        });
    m_p->Wake(camera.get());
}

void CFramePump::Detach(const std::shared_ptr<CCameraModel>& camera)
{
    camera->SetWakeHandler(nullptr);
    std::unique_lock<std::mutex> lock(m_p->mutex);
    const auto found = m_p->entries.find(camera.get());
    if (found == m_p->entries.end())
    {
        return;
    }
    SEntry& entry = *found->second;
    entry.isDetached = true;
    m_p->queue.erase({entry.deadlineNs, &entry});
    m_p->finished.wait(lock, [&] { return !entry.isRunning; });
    m_p->entries.erase(camera.get());
}

} // namespace Simulator
