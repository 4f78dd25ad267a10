// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "transports/emulation/internal/filewatcher.h"

#include "transport/log.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace Velmo::Emulation::Internal
{

CFileWatcher::CFileWatcher(const std::string& file, std::function<void()> onChanged)
    : m_file(file), m_onChanged(std::move(onChanged))
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(file, error);
    m_folder = path.parent_path().string();
    m_name = path.filename().string();
    Watch();
    if (m_wake >= 0)
    {
        m_thread = std::thread([this] { Run(); });
    }
}

CFileWatcher::~CFileWatcher()
{
    if (m_thread.joinable())
    {
        const std::uint64_t one = 1;
        // It can only fail when the counter is full, and then the thread wakes up anyway.
        static_cast<void>(!write(m_wake, &one, sizeof one));
        m_thread.join();
    }
    for (const int descriptor : {m_events, m_wake})
    {
        if (descriptor >= 0)
        {
            close(descriptor);
        }
    }
}

void CFileWatcher::Watch()
{
    m_events = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    // A file that is only deleted changes no camera; what is written over it later is told.
    if (m_events >= 0 && inotify_add_watch(m_events, m_folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO | IN_ONLYDIR) >= 0)
    {
        m_wake = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    }
    if (m_wake < 0)
    {
        LogUnwatched(std::generic_category().message(errno));
    }
}

void CFileWatcher::LogUnwatched(const std::string& reason) const
{
    Log(ELogLevel::Warning, "velmo.emulation",
        "Changes of '" + m_file + "' are noticed only when cameras are searched: its folder '" + m_folder +
            "' cannot be watched: " + reason + ".");
}

void CFileWatcher::Run()
{
    std::array<pollfd, 2> entries{{{m_events, POLLIN, 0}, {m_wake, POLLIN, 0}}};
    for (;;)
    {
        if (poll(entries.data(), entries.size(), -1) < 0)
        {
            continue; // interrupted by a signal
        }
        if (entries[1].revents != 0)
        {
            return;
        }
        const ENews news = ReadEvents();
        if (news == ENews::Ended)
        {
            LogUnwatched("it was removed");
            return;
        }
        if (news == ENews::Changed)
        {
            m_onChanged();
        }
    }
}

CFileWatcher::ENews CFileWatcher::ReadEvents() const
{
    ENews news = ENews::None;
    constexpr std::size_t bufferBytes = 4096; // holds at least one event with the longest name
    std::array<char, bufferBytes> buffer{};
    for (ssize_t bytes = 0; (bytes = read(m_events, buffer.data(), buffer.size())) > 0;)
    {
        inotify_event event{};
        for (std::size_t at = 0; at < static_cast<std::size_t>(bytes); at += sizeof event + event.len)
        {
            std::memcpy(&event, buffer.data() + at, sizeof event);
            if ((event.mask & IN_IGNORED) != 0)
            {
                return ENews::Ended;
            }
            // The kernel pads names with zeros. Events that it dropped may have been ours.
            if ((event.mask & IN_Q_OVERFLOW) != 0 || (event.len > 0 && m_name == buffer.data() + at + sizeof event))
            {
                news = ENews::Changed;
            }
        }
    }
    return news;
}

} // namespace Velmo::Emulation::Internal
