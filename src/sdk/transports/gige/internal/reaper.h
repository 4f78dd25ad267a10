// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace Velmo::GigE::Internal
{

/**
 * Does, on threads of its own, what may block because a camera does not answer or keeps asking for more time; the work
 * of one camera one after the other, so that none waits for another's. Threads: any.
 */
class GIGE_TEST_EXPORT CReaper
{
public:
    CReaper();
    /** Waits until all is done, but not much longer than that: a camera may never come to an end. What is not done then
     *  goes on by itself. */
    explicit CReaper(std::chrono::milliseconds patienceAtEnd);
    ~CReaper();
    CReaper(const CReaper&) = delete;
    CReaper& operator=(const CReaper&) = delete;

    /** The work of one camera, by its address (host byte order), is done in the order in which it was added. */
    void Add(std::uint32_t deviceIp, std::function<void()> work);
    bool IsBusyWith(std::uint32_t deviceIp);
    /** For the end of that camera's work; false when it takes longer. */
    bool WaitFor(std::uint32_t deviceIp, std::chrono::milliseconds timeout);

private:
    struct SState;
    static void Run(const std::shared_ptr<SState>& pState, std::uint32_t deviceIp);
    void JoinEnded();

    const std::shared_ptr<SState> m_pState; // of the threads too, which may outlive the object
    const std::chrono::milliseconds m_patienceAtEnd;
};

} // namespace Velmo::GigE::Internal
