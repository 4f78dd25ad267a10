// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "velmo/velmo_export.h"

namespace Velmo
{

/**
 * Counts the users of the SDK. The first call starts it (registers the transports); the matching last
 * VelmoTerminate ends it: destroys the transports, and, with shutDownLogging, flushes the log.
 * Terminating more often than initialising throws GenICam::LogicalErrorException. Threads: any.
 */
VELMO_EXPORT void VelmoInitialize();
VELMO_EXPORT void VelmoTerminate(bool shutDownLogging = true);
/** Users now; 0: the SDK is not running and CTlFactory throws RuntimeException on use. */
VELMO_EXPORT unsigned int VelmoInitializationCount();

/** The range of real-time priorities (SCHED_RR) of this system. False, and both 0, when it has none. */
VELMO_EXPORT bool GetRTThreadPriorityCapabilities(int* pMin, int* pMax);

} // namespace Velmo
