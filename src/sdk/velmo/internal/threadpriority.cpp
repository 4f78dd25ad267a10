// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "velmo/internal/threadpriority.h"

#include "velmo/log.h"
#include "velmo/velmo.h"

#include <pthread.h>
#include <sched.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <system_error>

namespace Velmo::Internal
{

bool ApplyRealTimePriority(int priority, const char* threadName)
{
    static std::atomic<bool> reported{false};
    int lowest = 0;
    int highest = 0;
    GetRTThreadPriorityCapabilities(&lowest, &highest);
    sched_param parameters{};
    parameters.sched_priority = std::clamp(priority, lowest, highest);
    const int error = pthread_setschedparam(pthread_self(), SCHED_RR, &parameters);
    if (error != 0 && !reported.exchange(true))
    {
        Log(ELogLevel::Warning, "velmo.camera",
            std::string("The ") + threadName + " thread keeps the ordinary priority, real-time priority " +
                std::to_string(parameters.sched_priority) + " is refused: " + std::generic_category().message(error));
    }
    return error == 0;
}

} // namespace Velmo::Internal
