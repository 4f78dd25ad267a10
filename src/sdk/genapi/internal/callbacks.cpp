// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#include "genapi/internal/callbacks.h"

#include <algorithm>
#include <utility>

namespace GenApi
{
namespace Internal
{

CCallback::CCallback(CallbackHandle handle, std::function<void(INode*)> function)
    : m_handle(handle), m_function(std::move(function))
{
}

void CCallback::Run(INode* node)
{
    struct SRunning
    {
        CCallback& callback;
        ~SRunning()
        {
            const std::lock_guard<std::mutex> lock(callback.m_mutex);
            auto& running = callback.m_running;
            running.erase(std::find(running.begin(), running.end(), std::this_thread::get_id()));
            callback.m_done.notify_all();
        }
    };
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_isRetired)
        {
            return;
        }
        m_running.push_back(std::this_thread::get_id());
    }
    const SRunning running{*this};
    m_function(node);
}

void CCallback::Retire()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_isRetired = true;
    const auto isOwn = [](std::thread::id id)
    {
        return id == std::this_thread::get_id();
    };
    m_done.wait(lock, [&] { return std::all_of(m_running.begin(), m_running.end(), isOwn); });
}

} // namespace Internal
} // namespace GenApi
