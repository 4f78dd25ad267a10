// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transport/log.h"

#include <mutex>
#include <string>
#include <vector>

namespace Test
{

/** Keeps what the SDK logs at warning level and above while it lives; one at a time. */
class CWarnings
{
public:
    CWarnings()
    {
        Velmo::SetLogSink(
            [this](const Velmo::SLogRecord& record)
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                if (record.level >= Velmo::ELogLevel::Warning)
                {
                    m_lines.push_back(record.text);
                }
            });
    }
    ~CWarnings() { Velmo::SetLogSink(nullptr); }
    std::vector<std::string> Lines()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_lines;
    }

private:
    std::mutex m_mutex;
    std::vector<std::string> m_lines;
};

} // namespace Test
