// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/gige/gige_testexport.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace Velmo::GigE::Internal
{

/**
 * The news that a camera is gone: told once per Arm(), without a lock held.
 * Threads: any. Setting the user's handler waits for one that runs, unless it is called by a handler.
 */
class GIGE_TEST_EXPORT CRemoval
{
public:
    using Handler = std::function<void()>;

    /** The user's handler; kept over Arm() and Disarm(). */
    void SetHandler(Handler handler);
    /** A camera was opened; the first handler runs before the user's. */
    void Arm(Handler firstHandler);
    /** It was closed: nothing more is told; the first handler does not run any more. */
    void Disarm();
    /** The engine lost the camera; whoever watches it reports the removal. */
    void MarkLost() { m_isLost = true; }
    bool IsLost() const { return m_isLost; }
    bool IsRemoved() const { return m_isRemoved; }
    /** To be called on the thread that shall run the handlers. */
    void Report();

private:
    std::mutex m_mutex; // guards what follows but the atomics; not held while a handler runs
    std::condition_variable m_changed;
    Handler m_firstHandler;
    Handler m_handler;
    bool m_isArmed = false;
    bool m_isTelling = false;
    bool m_isFirstRunning = false;
    std::thread::id m_teller;
    std::atomic<bool> m_isRemoved{false};
    std::atomic<bool> m_isLost{false};
};

} // namespace Velmo::GigE::Internal
