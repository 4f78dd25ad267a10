// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace Velmo::GigE::Internal
{

/** Does, one after the other on a thread of its own, what may block for seconds. Threads: any. */
class GIGE_TEST_EXPORT CReaper
{
public:
    CReaper() = default;
    /** Waits until all is done. */
    ~CReaper();
    CReaper(const CReaper&) = delete;
    CReaper& operator=(const CReaper&) = delete;

    void Add(std::function<void()> work);

private:
    void Run();

    std::mutex m_mutex; // guards what follows; not held while work is done
    std::condition_variable m_changed;
    std::deque<std::function<void()>> m_work;
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace Velmo::GigE::Internal
