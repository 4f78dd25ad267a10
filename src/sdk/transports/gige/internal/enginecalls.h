// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"
#include "transports/gige/internal/removal.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace Velmo::GigE::Internal
{

/**
 * The engine's calls for one camera, on a thread of their own: the engine waits as long as a camera goes on saying that
 * it needs more time, and nothing can call it back.
 *
 * Threads: any; calls come one after the other.
 */
class GIGE_TEST_EXPORT CEngineCalls
{
public:
    /** How long one call may take. Saving settings takes cameras seconds; the engine sends no sign of life meanwhile.
     */
    static constexpr std::chrono::milliseconds MostPatience{15000};

    CEngineCalls(std::string cameraName, std::shared_ptr<CRemoval> pRemoval);
    /** Does not wait for a call that went on for too long. */
    ~CEngineCalls();
    CEngineCalls(const CEngineCalls&) = delete;
    CEngineCalls& operator=(const CEngineCalls&) = delete;

    /**
     * Returns when the call has ended. When that takes longer than the patience, the camera is marked as lost and
     * TimeoutException thrown; the call goes on, so it must hold what it uses, and until it has ended every other one
     * is refused with TimeoutException. whatFails begins the text. The call throws nothing.
     */
    void Run(const std::string& whatFails, std::function<void()> call,
             std::chrono::milliseconds patience = MostPatience);

private:
    struct SState;
    static void Work(const std::shared_ptr<SState>& pState);

    const std::string m_cameraName;
    const std::shared_ptr<CRemoval> m_pRemoval;
    std::mutex m_callers; // one at a time; taken before the state's
    const std::shared_ptr<SState> m_pState;
    std::thread m_thread;
};

} // namespace Velmo::GigE::Internal
