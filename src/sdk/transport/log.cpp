// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transport/log.h"

#include <cstdio>
#include <memory>
#include <mutex>

namespace Velmo
{

namespace
{

struct SSinkHolder
{
    std::mutex mutex; // guards sink
    std::shared_ptr<const LogSink> sink;
};

SSinkHolder& Holder()
{
    static SSinkHolder& holder = *new SSinkHolder; // never destroyed: what ends with the process may still log
    return holder;
}

const char* LevelName(ELogLevel level)
{
    switch (level)
    {
    case ELogLevel::Debug:
        return "debug";
    case ELogLevel::Info:
        return "info";
    case ELogLevel::Warning:
        return "warning";
    case ELogLevel::Error:
        return "error";
    }
    return "";
}

} // namespace

void SetLogSink(LogSink sink)
{
    auto next = sink ? std::make_shared<const LogSink>(std::move(sink)) : nullptr;
    SSinkHolder& holder = Holder();
    const std::lock_guard<std::mutex> lock(holder.mutex);
    holder.sink.swap(next);
}

void Log(ELogLevel level, const char* category, const std::string& text) noexcept
{
    try
    {
        std::shared_ptr<const LogSink> sink;
        {
            SSinkHolder& holder = Holder();
            const std::lock_guard<std::mutex> lock(holder.mutex);
            sink = holder.sink;
        }
        if (sink != nullptr)
        {
            (*sink)({level, category, text});
        }
        else if (level >= ELogLevel::Warning)
        {
            std::fprintf(stderr, "%s: %s: %s\n", LevelName(level), category, text.c_str());
        }
    }
    catch (...)
    {
        // A log that fails must not fail what it reports on.
    }
}

} // namespace Velmo
