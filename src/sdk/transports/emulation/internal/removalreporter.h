// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/emulation/internal/notifier.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace Velmo::Emulation::Internal
{

/** Carries the loss of a camera to the user of one device object. Threads: any. */
class EMULATION_TEST_EXPORT CRemovalReporter : public std::enable_shared_from_this<CRemovalReporter>
{
public:
    explicit CRemovalReporter(std::shared_ptr<CNotifier> notifier);

    /** Reports go out only while the device is open. */
    void SetOpen(bool isOpen);
    bool IsRemoved() const;
    /** The first call counts; the callback is then called that many times, once it is set. */
    void SetRemoved(unsigned int reports);
    /** After it returned the callback before is not called any more, unless this is called by it. */
    void SetCallback(std::function<void()> callback);

private:
    void PostReports();
    void Report();

    const std::shared_ptr<CNotifier> m_notifier;
    mutable std::mutex m_mutex; // guards all below; not held while the callback runs
    std::condition_variable m_called;
    std::function<void()> m_callback;
    std::thread::id m_callingThread;
    unsigned int m_pendingReports = 0;
    bool m_isOpen = false;
    bool m_isRemoved = false;
    bool m_isCalling = false;
};

} // namespace Velmo::Emulation::Internal
