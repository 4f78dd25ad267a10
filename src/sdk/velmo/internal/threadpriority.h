// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

namespace Velmo::Internal
{

/** Gives the calling thread that priority of SCHED_RR, brought into the system's range. Where it is not permitted the
 *  thread goes on as it is, false is returned, and one line is logged in the life of the process. */
bool ApplyRealTimePriority(int priority, const char* threadName);

} // namespace Velmo::Internal
