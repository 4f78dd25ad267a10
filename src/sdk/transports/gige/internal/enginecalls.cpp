// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/gige/internal/enginecalls.h"

#include "genapi/exceptions.h"
#include "transport/log.h"

#include <condition_variable>
#include <utility>

namespace Velmo::GigE::Internal
{

/** Shared with the thread, which may outlive the object. */
struct CEngineCalls::SState
{
    std::mutex mutex; // guards what follows; not held while a call runs
    std::condition_variable changed;
    std::function<void()> call; // to be made
    bool isBusy = false;        // from the order until the call and what it held are gone
    bool isEnding = false;
};

CEngineCalls::CEngineCalls(std::string cameraName, std::shared_ptr<CRemoval> pRemoval)
    : m_cameraName(std::move(cameraName)), m_pRemoval(std::move(pRemoval)), m_pState(std::make_shared<SState>()),
      m_thread([pState = m_pState] { Work(pState); })
{
}

CEngineCalls::~CEngineCalls()
{
    bool isBusy = false;
    {
        const std::lock_guard<std::mutex> lock(m_pState->mutex);
        m_pState->isEnding = true;
        isBusy = m_pState->isBusy;
    }
    m_pState->changed.notify_all();
    isBusy ? m_thread.detach() : m_thread.join();
}

void CEngineCalls::Work(const std::shared_ptr<SState>& pState)
{
    std::unique_lock<std::mutex> lock(pState->mutex);
    for (;;)
    {
        pState->changed.wait(lock, [&pState] { return pState->isEnding || pState->call != nullptr; });
        if (pState->call == nullptr)
        {
            return;
        }
        std::function<void()> call = std::exchange(pState->call, nullptr);
        lock.unlock();
        call();
        call = nullptr;
        lock.lock();
        pState->isBusy = false;
        pState->changed.notify_all();
    }
}

void CEngineCalls::Run(const std::string& whatFails, std::function<void()> call, std::chrono::milliseconds patience)
{
    const std::lock_guard<std::mutex> callers(m_callers);
    std::unique_lock<std::mutex> lock(m_pState->mutex);
    if (m_pState->isBusy)
    {
        GENICAM_THROW(TimeoutException, whatFails + ": the camera has not come to an end with an earlier access.");
    }
    m_pState->call = std::move(call);
    m_pState->isBusy = true;
    m_pState->changed.notify_all();
    if (m_pState->changed.wait_for(lock, patience, [this] { return !m_pState->isBusy; }))
    {
        return;
    }
    lock.unlock();
    const std::string reason = "it has not come to an end within " + std::to_string(patience.count()) +
                               " ms, most likely because the camera keeps asking for more time";
    Log(ELogLevel::Warning, "velmo.gige",
        "The camera " + m_cameraName + " is given up as lost. " + whatFails + ": " + reason +
            ". Restart the camera if it does not come back.");
    m_pRemoval->MarkLost();
    GENICAM_THROW(TimeoutException, whatFails + ": " + reason + "; it is given up as lost.");
}

} // namespace Velmo::GigE::Internal
