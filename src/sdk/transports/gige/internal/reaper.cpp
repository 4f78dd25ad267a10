// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/reaper.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace Velmo::GigE::Internal
{

namespace
{
constexpr std::chrono::milliseconds PatienceAtEnd{20000}; // a camera that is silent takes the engine some nine seconds
}

struct CReaper::SState
{
    struct SCamera
    {
        std::deque<std::function<void()>> work;
        std::thread thread;
    };

    std::mutex mutex; // guards what follows; not held while work is done
    std::condition_variable changed;
    std::map<std::uint32_t, SCamera> cameras; // those that have work, by their addresses
    std::vector<std::thread> ended;           // they touch nothing here any more
};

CReaper::CReaper() : CReaper(PatienceAtEnd) {}

CReaper::CReaper(std::chrono::milliseconds patienceAtEnd)
    : m_pState(std::make_shared<SState>()), m_patienceAtEnd(patienceAtEnd)
{
}

CReaper::~CReaper()
{
    {
        std::unique_lock<std::mutex> lock(m_pState->mutex);
        m_pState->changed.wait_for(lock, m_patienceAtEnd, [this] { return m_pState->cameras.empty(); });
        for (auto& [ip, camera] : m_pState->cameras)
        {
            camera.thread.detach();
        }
    }
    JoinEnded();
}

void CReaper::JoinEnded()
{
    std::vector<std::thread> ended;
    {
        const std::lock_guard<std::mutex> lock(m_pState->mutex);
        ended.swap(m_pState->ended);
    }
    for (std::thread& thread : ended)
    {
        thread.join();
    }
}

void CReaper::Add(std::uint32_t deviceIp, std::function<void()> work)
{
    JoinEnded();
    const std::lock_guard<std::mutex> lock(m_pState->mutex);
    SState::SCamera& camera = m_pState->cameras[deviceIp];
    camera.work.push_back(std::move(work));
    if (!camera.thread.joinable())
    {
        camera.thread = std::thread([pState = m_pState, deviceIp] { Run(pState, deviceIp); });
    }
}

bool CReaper::IsBusyWith(std::uint32_t deviceIp)
{
    const std::lock_guard<std::mutex> lock(m_pState->mutex);
    return m_pState->cameras.count(deviceIp) != 0;
}

bool CReaper::WaitFor(std::uint32_t deviceIp, std::chrono::milliseconds timeout)
{
    std::unique_lock<std::mutex> lock(m_pState->mutex);
    return m_pState->changed.wait_for(lock, timeout,
                                      [this, deviceIp] { return m_pState->cameras.count(deviceIp) == 0; });
}

void CReaper::Run(const std::shared_ptr<SState>& pState, std::uint32_t deviceIp)
{
    std::unique_lock<std::mutex> lock(pState->mutex);
    for (SState::SCamera& camera = pState->cameras[deviceIp]; !camera.work.empty();)
    {
        std::function<void()> work = std::move(camera.work.front());
        camera.work.pop_front();
        lock.unlock();
        work();
        work = nullptr; // what it holds goes without the lock
        lock.lock();
    }
    std::thread& self = pState->cameras[deviceIp].thread;
    if (self.joinable()) // else the reaper has gone
    {
        pState->ended.push_back(std::move(self));
    }
    pState->cameras.erase(deviceIp);
    pState->changed.notify_all();
}

} // namespace Velmo::GigE::Internal
