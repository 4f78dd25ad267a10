// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace Velmo::GigE::Internal
{

/**
 * Does, one after the other on a thread of its own, what may block for seconds because a camera does not answer.
 * Threads: any.
 */
class GIGE_TEST_EXPORT CReaper
{
public:
    CReaper() = default;
    /** Waits until all is done. */
    ~CReaper();
    CReaper(const CReaper&) = delete;
    CReaper& operator=(const CReaper&) = delete;

    /** The work of one camera, by its address (host byte order), is done in the order in which it was added. */
    void Add(std::uint32_t deviceIp, std::function<void()> work);
    bool IsBusyWith(std::uint32_t deviceIp);
    /** Does that camera's work next and waits for its end; false when it takes longer. */
    bool WaitFor(std::uint32_t deviceIp, std::chrono::milliseconds timeout);

private:
    struct SItem
    {
        std::uint32_t deviceIp = 0;
        std::function<void()> work;
    };

    void Run();
    bool HasWorkOf(std::uint32_t deviceIp) const;

    std::mutex m_mutex; // guards what follows; not held while work is done
    std::condition_variable m_changed;
    std::deque<SItem> m_work;
    std::optional<std::uint32_t> m_current; // whose work is being done
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace Velmo::GigE::Internal
