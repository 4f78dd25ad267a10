// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/emulation/emulation_testexport.h"

#include <functional>
#include <memory>

namespace Velmo::Emulation::Internal
{

/** Runs tasks one after the other on a thread of its own, which starts with the first task. Threads: any. */
class EMULATION_TEST_EXPORT CNotifier
{
public:
    CNotifier();
    /** Tasks not begun are dropped. May run on the notifier's own thread. */
    ~CNotifier();
    CNotifier(const CNotifier&) = delete;
    CNotifier& operator=(const CNotifier&) = delete;

    /** Tasks must not throw. */
    void Post(std::function<void()> task);

private:
    struct SPrivate;
    const std::shared_ptr<SPrivate> m_p;
};

} // namespace Velmo::Emulation::Internal
