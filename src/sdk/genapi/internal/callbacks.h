// SPDX-FileCopyrightText: 2026 The CameraPool developers
// SPDX-License-Identifier: MIT

#pragma once

#include "genapi/inodes.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace GenApi
{
namespace Internal
{

/**
 * One registered callback. After Retire() returned it is not running on another thread and never runs again, so that
 * its owner may go. Threads: any; no lock is held while the callback runs.
 */
class CCallback
{
public:
    CCallback(CallbackHandle handle, std::function<void(INode*)> function);
    CallbackHandle Handle() const { return m_handle; }
    void Run(INode* node);
    void Retire();

private:
    const CallbackHandle m_handle;
    const std::function<void(INode*)> m_function;
    std::mutex m_mutex; // guards what follows; innermost
    std::condition_variable m_done;
    std::vector<std::thread::id> m_running;
    bool m_isRetired = false;
};

using CallbackPtr = std::shared_ptr<CCallback>;
using Callbacks = std::vector<CallbackPtr>;

} // namespace Internal
} // namespace GenApi
