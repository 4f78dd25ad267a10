// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "transports/emulation/emulation_testexport.h"

#include <functional>
#include <string>
#include <thread>

namespace Velmo::Emulation::Internal
{

/**
 * Tells that a file was written, or renamed into place, on a thread of its own.
 *
 * The file need not exist yet, and may be gone meanwhile: its folder is watched. A folder that cannot be watched, or
 * not any more, is logged; nothing is told then. Threads: one at a time.
 */
class EMULATION_TEST_EXPORT CFileWatcher
{
public:
    /** onChanged must not throw, and must not destroy the watcher. Several changes in a row may be told once. */
    CFileWatcher(const std::string& file, std::function<void()> onChanged);
    /** Waits for a call of onChanged that runs. */
    ~CFileWatcher();
    CFileWatcher(const CFileWatcher&) = delete;
    CFileWatcher& operator=(const CFileWatcher&) = delete;

private:
    enum class ENews
    {
        None,
        Changed,
        Ended // the folder is gone
    };
    void Watch();
    void LogUnwatched(const std::string& reason) const;
    void Run();
    ENews ReadEvents() const;

    const std::string m_file;
    std::string m_folder;
    std::string m_name; // within the folder
    const std::function<void()> m_onChanged;
    int m_events = -1; // descriptors; they live as long as the thread may
    int m_wake = -1;
    std::thread m_thread;
};

} // namespace Velmo::Emulation::Internal
