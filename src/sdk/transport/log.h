// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/transport_export.h"

#include <functional>
#include <string>

namespace Velmo
{

enum class ELogLevel
{
    Debug,
    Info,
    Warning,
    Error
};

/** One line of the SDK's log. */
struct SLogRecord
{
    ELogLevel level = ELogLevel::Debug;
    std::string category; // "velmo.factory", "velmo.camera" ...
    std::string text;     // one line, no line break at its end
};

using LogSink = std::function<void(const SLogRecord&)>;

/**
 * Replaces where the log goes; a null sink restores the default (warnings and errors to stderr).
 * Threads: any; the sink is called on the logging thread, possibly on several at a time, with no lock held, and may
 * still be called by a line that is being logged while it is replaced.
 */
TRANSPORT_EXPORT void SetLogSink(LogSink sink);

/** Writes one line. Never throws: what a sink throws is dropped. Threads: any. */
TRANSPORT_EXPORT void Log(ELogLevel level, const char* category, const std::string& text) noexcept;

} // namespace Velmo
